#include <gtest/gtest.h>

#include <QApplication>
#include <QStandardPaths>
#include <QStringList>

namespace {

QStringList& Warnings() {
  static QStringList warnings;
  return warnings;
}

/// What the toolkit complains about is a fault of ours, but for what every run on this platform says.
void CollectWarning(QtMsgType type, const QMessageLogContext&, const QString& text) {
  const bool usual = text.contains(QStringLiteral("propagateSizeHints")) ||
                     text.contains(QStringLiteral("support raise()")) ||
                     text.contains(QStringLiteral("XDG_RUNTIME_DIR"));
  if (type != QtDebugMsg && type != QtInfoMsg && !usual) Warnings().append(text);
}

class FailOnWarnings : public testing::EmptyTestEventListener {
  void OnTestEnd(const testing::TestInfo&) override {
    for (const QString& text : std::exchange(Warnings(), {})) ADD_FAILURE() << text.toStdString();
  }
};

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("TZ", "UTC");
  QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
  qInstallMessageHandler(CollectWarning);
  QApplication application(argc, argv);
  application.setQuitOnLastWindowClosed(false);
  application.setStyle(QStringLiteral("Fusion"));
  QStandardPaths::setTestModeEnabled(true);
  testing::InitGoogleTest(&argc, argv);
  testing::UnitTest::GetInstance()->listeners().Append(new FailOnWarnings);
  return RUN_ALL_TESTS();
}
