#pragma once

#include <optional>

#include "desktop/overlay/tab_sheet_ground_path_layout.h"
#include "overlay/overlay_generator.h"
#include "session/tab_sheet.h"
#include "swath/time_correction.h"

namespace pelorin::desktop {

/// The page on which the received picture of a pass lies beside its map.
class TTabSheetGroundPath : public session::TTabSheet {
  Q_OBJECT

 public:
  TTabSheetGroundPath(session::Session& session, QWidget* parent);

  /// What maps are made from; borrowed for the page's life.
  void SetSources(const overlay::OverlaySources& sources);

  /// Turns both pickers to a moment, cut to the minute, and looks for no picture.
  void SetPassTime(orbit::TDateTime moment);
  /// By its place among the active satellites.
  void ChooseSatellite(int index);
  /// Takes over a moment and a satellite and looks for the picture. When the program was started with a pass,
  /// the picture or the map follows a little later.
  void ShowFor(orbit::TDateTime moment, int satellite);

  /// Makes the map that is shown once more, with the marks that the menu now has ticked.
  void OverlayMarksChanged();

  /// A map is being made.
  bool IsBusy() const { return session_.Run.MakingMap; }

  /// Makes the map and writes its files; ends the making if it is under way. An automatic run closes the
  /// window afterwards, whatever came of it.
  void ButtonGenTopoClick();
  void Open1Click();
  void PrintImageClick();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void TabSheetGroundPathShow();
  void TabSheetGroundPathHide();
  void ActiveSatellitesChanged();
  void PassDirectionChanged();
  void PassDurationChanged();

  void ComboBoxSatForPicChange();
  void DateTimePickerTimeChange();
  void DateTimePickerTimeExit();
  void RadioGroupPrefPicChannelClick();
  void ButtonReloadClick();
  void TimerLoadTimer();
  void ButtonPassDirectionClick();
  void SpinEditPassDurationExit();
  void TimeCorrectionChanged(double seconds);
  void TimerSaveResultsTimer();
  void CheckBoxZoomClick();
  void CheckBoxScrollBothClick();
  void SliderOpacityChange();
  void CheckBoxOverlaidClick();
  void ButtonFlickerClick();
  void ButtonSaveBlendClick();

  QString CurrentKey() const;
  /// The path of a key's picture in the picture folders, or an empty text.
  QString LookUp(const QString& key);
  void LoadPicture(const QString& key);
  void ShowPictureOf(const QString& key, const QString& path);
  /// For a picture's file name, or the key of one that was not found.
  void BeginCorrection(const QString& name);

  overlay::OverlayRequest Request() const;
  void MakeMap();
  void GenerateLive(const overlay::OverlayRequest& request);
  /// As if "Make map" were pressed; what is under way ends first.
  void MakeAgain();
  void RemakeMap(const overlay::OverlayRequest& request);
  void ShowResult(const overlay::OverlayRequest& request, overlay::OverlayResult result);
  void ShowMap();
  void SaveResults();
  QString ResultsFile(const QString& ending) const;
  void EnableControls();
  /// The one can lie on the other.
  bool MapIsOfPicture() const;
  QString TitleOf(const overlay::OverlayRequest& request) const;

  TabSheetGroundPathLayout ui_;
  overlay::OverlaySources sources_;
  swath::TimeCorrection correction_;
  QString correctedRecording_, correctedSatellite_;  ///< what the correction is for; the former as a stamp
  orbit::TDateTime passTime_;
  QString key_;                     ///< of the picture that was looked for last
  QString openedPath_, openedKey_;  ///< what "Open..." opened, and the key that stands for it
  QString shownPath_;               ///< of the picture shown; empty for none
  orbit::TDateTime shownTime_;      ///< of the pass that it was loaded for
  bool hasPictureOfPass_ = false;   ///< the picture shown is the one that was looked for last
  bool stopRequested_ = false;
  bool againRequested_ = false;  ///< something changed while the map was being made
  std::optional<overlay::OverlayResult> result_;
  overlay::OverlayRequest madeFor_;  ///< what `result_` is the map of
};

}  // namespace pelorin::desktop
