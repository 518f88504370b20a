// Map and picture together: how they are shown, saved and printed.

#include <QCheckBox>
#include <QFileInfo>
#include <QPrinter>
#include <QPushButton>
#include <QScopeGuard>
#include <QSlider>

#include "desktop/overlay/hand_fit.h"
#include "desktop/overlay/picture_panes.h"
#include "desktop/overlay/picture_print.h"
#include "desktop/overlay/tab_sheet_ground_path.h"
#include "orbit/time_stamp.h"
#include "picture/picture_file.h"
#include "session/hourglass.h"
#include "session/print_out.h"

namespace pelorin::desktop {

void TTabSheetGroundPath::EnableControls() {
  ShowHandFit();
  ShowAlign();
  const bool areBoth = MapIsOfPicture() && !IsBusy();
  const bool isOverlaid = areBoth && ui_.CheckBoxOverlaid->isChecked();
  ui_.CheckBoxOverlaid->setEnabled(areBoth);
  ui_.SliderOpacity->setEnabled(areBoth);
  ui_.ButtonFlicker->setEnabled(isOverlaid);
  // A map of which nothing else tells is not hidden.
  if (!isOverlaid) ui_.ButtonFlicker->setChecked(false);
  ui_.Panes->SetMapHidden(ui_.ButtonFlicker->isChecked());
  ui_.ButtonSaveBlend->setEnabled(areBoth);
  ui_.Panes->SetLevel(MapIsOfPicture());
  // What the elements tell of a pass nobody has to choose.
  ui_.ButtonPassDirection->setEnabled(!hand_->IsOn() && !preview_ &&
                                      (!opened_ || opened_->Known.LiesIsFrom == swath::KnownFrom::Default));
  ui_.Panes->SetOverlaid(isOverlaid);
}

bool TTabSheetGroundPath::MapIsOfPicture() const {
  return made_ && picture_.Shows(made_->Request.Picture) && (!opened_ || opened_->Problem.isEmpty());
}

void TTabSheetGroundPath::CheckBoxZoomClick() { ui_.Panes->SetZoom(ui_.CheckBoxZoom->isChecked()); }

void TTabSheetGroundPath::CheckBoxScrollBothClick() {
  ui_.Panes->SetScrollBoth(ui_.CheckBoxScrollBoth->isChecked());
}

void TTabSheetGroundPath::SliderOpacityChange() { ui_.Panes->SetOpacity(ui_.SliderOpacity->value()); }

void TTabSheetGroundPath::CheckBoxOverlaidClick() { EnableControls(); }

void TTabSheetGroundPath::ButtonFlickerClick() { ui_.Panes->SetMapHidden(ui_.ButtonFlicker->isChecked()); }

void TTabSheetGroundPath::ButtonSaveBlendClick() {
  const QImage blend = ui_.Panes->Blend();
  if (blend.isNull()) return;
  auto path = Boxes().SaveFile(
      QStringLiteral("Save blended picture"), ResultsFile(QStringLiteral("-blend.jpg")),
      {QStringLiteral("JPEG files (*.jpg)"), QStringLiteral("Portable Network Graphic files (*.png)")});
  if (!path) return;
  const QStringList kinds{QStringLiteral("jpg"), QStringLiteral("jpeg"), QStringLiteral("png")};
  if (!kinds.contains(QFileInfo(*path).suffix(), Qt::CaseInsensitive)) {
    *path += QStringLiteral(".jpg");
    // The box has asked for the other name only.
    if (QFileInfo::exists(*path) &&
        !Boxes().Confirm(QStringLiteral("%1 exists already. Replace it?").arg(*path), 0,
                         session::Answer::No)) {
      return;
    }
  }
  picture::SavePicture(blend, *path);
}

QString TTabSheetGroundPath::ResultsFile(const QString& ending) const {
  return app::WithSeparator(session_.Settings.ResultsPath.Value) +
         QString::fromStdString(orbit::StampOf(made_ ? made_->Request.Picture.Start : picture_.Pass())) +
         ending;
}

void TTabSheetGroundPath::PrintImageClick() {
  PicturePage page{made_ ? TitleOf(made_->Request) : QFileInfo(picture_.ShownPath()).fileName(),
                   ui_.Panes->Map().Map, ui_.Panes->Picture()};
  if (ui_.CheckBoxOverlaid->isEnabled() && ui_.CheckBoxOverlaid->isChecked()) {
    page.Map = QImage();
    page.Picture = ui_.Panes->Blend();
  }
  if (page.Map.isNull() && page.Picture.isNull()) {
    Boxes().Message(
        QStringLiteral("There is nothing to print yet. Please load a picture or make a map first."));
    return;
  }
  QPrinter& printer = session_.Window.Printer();
  // Where no printer is known, a page goes to a file.
  const bool isForFile = session::NeedsFileName(printer);
  if (isForFile) {
    const auto path =
        Boxes().SaveFile(QStringLiteral("Print to a PDF file"), ResultsFile(QStringLiteral(".pdf")),
                         {QStringLiteral("PDF files (*.pdf)")});
    if (!path) return;
    printer.setOutputFileName(*path);
  }
  const auto forget = qScopeGuard([&] {
    if (isForFile) printer.setOutputFileName(QString());
  });
  const session::Hourglass hourglass;
  PrintPicturePage(printer, page);
}

}  // namespace pelorin::desktop
