#include "tests/support/program_fixture.h"

#include <gtest/gtest.h>

#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTimerEvent>

#include "app/settings.h"
#include "files/atomic_file.h"
#include "picture/picture_file.h"
#include "session/list_box.h"

namespace pelorin::tests {
namespace {

const QString kKeyPath = app::SettingsKeyPath(QStringLiteral("pelorin"));

}  // namespace

ProgramFixture::ProgramFixture(const QString& activeSatellites)
    : Now(orbit::MakeDateTime(2022, 2, 23, 6, 0)), before_(QDir::currentPath()) {
  for (const char* name : {"bin", "elsewhere", "share", "config", "pictures"}) {
    QDir(folder_.path()).mkdir(QString::fromLatin1(name));
  }
  files::ReplaceFile(Path(QStringLiteral("bin/pelorin-portable.txt")), "");
  QFile::link(QStringLiteral(PELORIN_BUILT_DATA), Path(QStringLiteral("share/pelorin")));
  QDir::setCurrent(Path(QStringLiteral("elsewhere")));
  qputenv("PELORIN_DATA_DIR", Path(QStringLiteral("user")).toLocal8Bit());
  // Its cache, too.
  qputenv("HOME", folder_.path().toLocal8Bit());
  store_ = std::make_unique<app::RegistryStore>(Path(QStringLiteral("config")));
  if (!activeSatellites.isEmpty()) GiveOrdinarySettings(activeSatellites);
}

ProgramFixture::~ProgramFixture() {
  if (Form) Close();
  QDir::setCurrent(before_);
  qunsetenv("PELORIN_DATA_DIR");
}

void ProgramFixture::Set(const QString& name, const app::RegistryDocument::Value& value) {
  store_->Update([&](app::RegistryDocument& document) { document.Set(kKeyPath, name, value); });
}

QString ProgramFixture::SavedText(const QString& name) const {
  return store_->Read().Find<QString>(kKeyPath, name).value_or(QStringLiteral("(none)"));
}

std::optional<int> ProgramFixture::SavedNumber(const QString& name) const {
  return store_->Read().Find<std::int32_t>(kKeyPath, name);
}

void ProgramFixture::GiveOrdinarySettings(const QString& activeSatellites) {
  QFile::copy(QStringLiteral(PELORIN_DEMO_ELEMENTS), Path(QStringLiteral("bin/weather.2li")));
  Set(QStringLiteral("ObserverHeight"), QStringLiteral("150"));
  Set(QStringLiteral("SatelliteList"), activeSatellites);
  Set(QStringLiteral("ImagePathList"), Path(QStringLiteral("pictures")));
}

QString ProgramFixture::GivePicture(const QString& name, const QColor& colour, const QDate& written) const {
  QImage picture(909, 300, QImage::Format_RGB32);
  picture.fill(colour);
  const QString path = Path(QStringLiteral("pictures/") + name);
  picture::SavePicture(picture, path);
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadWrite) &&
              file.setFileTime(written.startOfDay(), QFileDevice::FileModificationTime));
  return path;
}

void ProgramFixture::Start(const QString& passString) {
  SplashTexts.clear();
  Unattended.reset();
  if (!passString.isEmpty()) {
    Unattended = std::make_unique<session::UnattendedRun>(
        passString, *UserBoxes, [this](const QString& text) { CallerTexts.append(text); });
  }
  Form = std::make_unique<desktop::TFormMain>(
      desktop::Surroundings{*store_,
                            ProgramPath(),
                            *UserBoxes,
                            Unattended.get(),
                            [this] { return Now; },
                            TimeZone,
                            [this](const QString& text) { SplashTexts.append(text); },
                            {},
                            desktop::LoadBackdropAhead(Path(QStringLiteral("bin/")))});
  Form->CreateForms();
  Form->show();
  auto* firstList = Find<QTimer>("TimerPassDateChanging");
  EXPECT_TRUE(QTest::qWaitFor([firstList] { return !firstList->isActive(); }, 5000));
  QCoreApplication::processEvents();
}

void ProgramFixture::StartOn(session::Page page) {
  Start();
  Form->ShowPage(page);
}

void ProgramFixture::Close() {
  Form->close();
  Form.reset();
}

void ProgramFixture::Click(const char* button) const {
  QTest::mouseClick(Find<QAbstractButton>(button), Qt::LeftButton);
}

QString ProgramFixture::Text(const char* name) const {
  const QWidget* control = Find(name);
  const QVariant chosen = control->property("currentText");
  return (chosen.isValid() ? chosen : control->property("text")).toString();
}

QString ProgramFixture::ChoosePass(const QString& start, const QString& satellite) const {
  auto* list = Find<session::TListBox>("ListBoxPasses");
  QList<int> rows;
  for (int row = 0; row < list->count(); ++row) {
    const QString entry = list->item(row)->text();
    if (entry.startsWith(start) && entry.endsWith(satellite)) rows.append(row);
  }
  if (rows.size() != 1) throw std::runtime_error("not one pass of " + satellite.toStdString());
  list->setCurrentRow(rows.first());
  return list->SelectedText();
}

void ProgramFixture::InDialog(const char* opener, const std::function<void(QDialog& dialog)>& work) const {
  bool wasOpen = false;
  QTimer::singleShot(0, Form.get(), [&] {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    wasOpen = dialog != nullptr;
    if (!wasOpen) return;
    work(*dialog);
    if (dialog->isVisible()) dialog->reject();
  });
  auto* item = Form->findChild<QAction*>(QLatin1StringView(opener));
  item != nullptr ? item->trigger() : Click(opener);
  EXPECT_TRUE(wasOpen);
}

void ProgramFixture::Fire(const char* timer) const {
  auto* found = Find<QTimer>(timer);
  QTimerEvent event(found->timerId());
  QCoreApplication::sendEvent(found, &event);
}

void ClickAndType(QAbstractSpinBox* picker, int position, const QString& typed) {
  auto* text = picker->findChild<QLineEdit*>();
  QPoint place(0, text->height() / 2);
  while (text->cursorPositionAt(place) < position && place.x() < text->width()) place.rx() += 1;
  QTest::mouseClick(text, Qt::LeftButton, {}, place);
  QTest::keyClicks(picker, typed);
}

}  // namespace pelorin::tests
