#include "desktop/form_splash.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>

#include "session/controls.h"

namespace pelorin::desktop {
namespace {

constexpr int kClientWidth = 353, kClientHeight = 90;

}  // namespace

TFormSplash::TFormSplash()
    : QWidget(nullptr,
              Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::MSWindowsFixedSizeDialogHint),
      status_(session::Named(new QLabel(this), "LabelStatus")) {
  setObjectName(QStringLiteral("FormSplash"));
  setWindowTitle(QStringLiteral("Loading Pelorin"));
  setFixedSize(kClientWidth, kClientHeight);
  status_->setAlignment(Qt::AlignCenter);
  status_->setWordWrap(true);
  status_->setTextFormat(Qt::PlainText);
  auto* rows = new QVBoxLayout(this);
  rows->addWidget(status_);
}

void TFormSplash::Open() {
  const QRect desktop = screen()->availableGeometry();
  move(desktop.center() - rect().center());
  show();
  RepaintNow();
}

void TFormSplash::ShowStatus(const QString& text) {
  status_->setText(text);
  RepaintNow();
}

void TFormSplash::closeEvent(QCloseEvent* event) { event->setAccepted(!event->spontaneous()); }

void TFormSplash::RepaintNow() {
  status_->repaint();
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

}  // namespace pelorin::desktop
