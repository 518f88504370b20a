#pragma once

#include <optional>

#include "align/alignment_log.h"
#include "align/alignment_medians.h"
#include "desktop/overlay/tab_sheet_ground_path_layout.h"
#include "lines/fine_lines.h"
#include "overlay/minute_mark_offer.h"
#include "overlay/opened_picture.h"
#include "overlay/overlay_generator.h"
#include "session/tab_sheet.h"
#include "swath/attitude_corrections.h"
#include "swath/picture_of_pass.h"
#include "swath/scanner_table.h"

namespace pelorin::desktop {

struct PassQuestion;
struct PictureDetails;
class TCoastAlignment;
class TFormPictureDetails;
class THandFit;

/// The page on which the received picture of a pass lies beside its map.
class TTabSheetGroundPath : public session::TTabSheet {
  Q_OBJECT

 public:
  TTabSheetGroundPath(session::Session& session, QWidget* parent);

  /// What maps are made from; borrowed for the page's life.
  void SetSources(const overlay::OverlaySources& sources, const swath::ScannerTable& scanners);

  /// The coasts that can be drawn over pictures; borrowed for the page's life. Null where there are none, for
  /// a reason that the user is told.
  void SetLines(const lines::FineLines* lines, const QString& problem);

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
  void OpenFolder1Click();
  void PrintImageClick();
  /// Shows a picture, a decoder's folder, or a file of one, and what it tells of its pass; asks for what is
  /// not told, or `isAsked`. False, with the page as it was, when the user does not say; raises FileError
  /// likewise. `half`: see PictureChannel.
  bool OpenPath(const QString& path, int half = -1, bool isAsked = false);

  /// The user has accepted an alignment: it is logged, and opens its picture from now on. Where that is the
  /// picture of the page, its map follows. `picture` is the path of its file; `chancePeaks`: see
  /// align::LoggedAlignment. Nothing is learnt from it of the satellite or of its clock. Raises FileError
  /// when it cannot be logged; the page has taken it all the same.
  void RememberAlignment(const swath::Recording& aligned, const QString& picture, align::FoundBy how,
                         std::optional<double> chancePeaks);
  /// Rows may be gone; the picture lies as it did.
  void AlignmentLogChanged();

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
  void ComboBoxPictureChannelChange(int index);
  void ButtonDetailsClick();
  void CheckBoxNorthUpClick();
  void TimeCorrectionChanged(double seconds);
  void TimeCorrectionReset();
  void ButtonMinuteMarksClick();
  void AttitudeChanged(const swath::Attitude& attitude);
  void AttitudeReset();
  void ButtonFitByHandClick();
  void HandFitTaken(const swath::Recording& fitted);
  void HandFitCancelled();
  void ButtonAlignClick();
  void AlignKeyPressed();
  void OfferAlignment();
  void AlignmentEnded();
  void AlignmentFlipped();
  void TakeOffered();
  void UndoTaken();
  void ButtonAlignedBeforeClick();
  void ButtonClockMedianClick();
  void ButtonAttitudeMedianClick();
  void TimerSaveResultsTimer();
  void CheckBoxZoomClick();
  void CheckBoxScrollBothClick();
  void SliderOpacityChange();
  void CheckBoxOverlaidClick();
  void ButtonFlickerClick();
  void ButtonSaveBlendClick();

  /// Where choosers of pictures begin; empty when nothing is known.
  QString PicturesFolder() const;
  /// Looks for the picture of a key, in the picture folders if it is no file.
  swath::FoundPicture LookUp(const QString& key);
  /// Looks for the pass's picture, unless one was opened, and shows it.
  void LoadPicture();
  /// The same, and where there is none the one that another name tells to be of the pass.
  void FindPicture();
  /// Which of the two has the preferred channel, in a picture with whole lines of the old format.
  std::size_t PreferredHalf() const;
  void ShowPicture(const swath::FoundPicture& found);
  /// Pickers and correction follow the pass.
  void ShowPass();

  overlay::ClockOffsets LocalClock(int year) const;
  /// Those that could have sent a picture: the active ones first.
  std::vector<orbit::TSatellite> PictureSatellites(const overlay::OpenedPicture& opened) const;
  int SatelliteOf(const overlay::OpenedPicture& opened,
                  const std::vector<orbit::TSatellite>& satellites) const;
  std::optional<overlay::PlacedRecording> Place(const overlay::OpenedPicture& opened,
                                                const orbit::TSatellite& satellite) const;
  /// Why the user is asked about it; empty when all is told.
  /// For whoever looks for its pass.
  PassQuestion QuestionOf(const overlay::OpenedPicture& opened,
                          const std::vector<orbit::TSatellite>& satellites) const;
  QString ReasonToAsk(const overlay::OpenedPicture& opened,
                      const std::optional<overlay::PlacedRecording>& placed) const;
  void TakeDetails(const PictureDetails& details, const PictureDetails& before,
                   overlay::OpenedPicture& opened) const;
  void TakeOpened(overlay::OpenedPicture opened, const overlay::PlacedRecording& placed,
                  const orbit::TSatellite& satellite);
  /// The active satellites, and the opened picture's where it is none of them.
  void FillSatellites(const QString& chosen);
  /// The chosen satellite's set that is nearest to a moment; nothing when none is chosen.
  std::optional<orbit::TSatellite> ChosenSet(orbit::TDateTime moment) const;
  void ShowChannels();
  /// The direction is that of the recording by its elements.
  void FlyAsElementsTell();
  /// The duration that has all of a recording's lines, as far as the page goes.
  int MinutesOf(const swath::Recording& recording) const;
  /// How the page shows a recording's picture and map.
  swath::Stored ShownLies(const swath::Recording& recording) const;
  /// Shows the picture that was read, turned as the user wants it.
  void ShowTurned();
  void ShowTitle();
  QString PictureTitle(const swath::Recording& recording, swath::Stored shown) const;

  /// What is known of the picture that is looked for, stored as in its file.
  struct KnownRecording {
    swath::Recording Recording;
    QString Problem;  ///< for the user, why no map can be made; mostly empty
  };
  /// Nothing when no satellite is chosen.
  std::optional<KnownRecording> Known() const;
  /// Looks for minute marks in the picture that is seen.
  void FindMarks();
  std::optional<overlay::MinuteMarkOffer> Offer() const;
  /// Attitude and offer follow what is known.
  void ShowFit();
  /// Remembers what the user has fitted, and lets the map follow.
  void TakeFit();
  /// The recording of the picture that is seen, and why it cannot be fitted now: `trouble` goes before all
  /// else.
  KnownRecording ForFit(const QString& trouble) const;
  /// As the picture is shown.
  KnownRecording ForHandFit() const;
  void ShowHandFit();
  /// What is fitted by hand must be what is seen.
  void EndHandFitOfAnother();

  void ConnectAlignment();
  KnownRecording ForAlignment() const;
  void ShowAlign();
  /// `isAsked`: see TCoastAlignment.
  void BeginAlignment(bool isAsked);
  /// A picture was opened: what the settings say.
  void AlignOpened();
  /// Makes the map of what was found, and shows it.
  void PreviewAlignment();
  void ShowWindows();
  /// All is as it was before, whatever the alignment is at; what was taken stays.
  void DropAlignment();
  /// What is aligned must be what is seen.
  void EndAlignmentOfAnother();
  void FollowFit();

  /// What the log would have of the picture that is seen, as it lies now; nothing where no map can lie on it.
  std::optional<align::LoggedAlignment> Seen() const;
  /// The picture that is seen was aligned, and lies so.
  bool LiesAsLogged() const;
  /// A picture that was aligned before lies so from now on, unless it is the one of before, which stays as it
  /// is.
  void OpenAligned();
  void TakeAlignment(const align::LoggedAlignment& alignment);
  /// True when there was an alignment to leave.
  bool LeaveAlignment();
  void ShowRemembered(bool marksTellTime);

  /// The map that the page is set to make now. Raises OverlayError where none can be made.
  overlay::OverlayRequest Request() const;
  void MakeMap();
  void GenerateLive(const overlay::OverlayRequest& request);
  /// As if "Make map" were pressed; what is under way ends first.
  void MakeAgain();
  void RemakeMap(const overlay::OverlayRequest& request);
  void ShowMap();
  void SaveResults();
  QString ResultsFile(const QString& ending) const;
  void EnableControls();
  /// The one can lie on the other.
  bool MapIsOfPicture() const;
  QString TitleOf(const overlay::OverlayRequest& request) const;

  /// A map and what it was made of.
  struct MadeMap {
    overlay::OverlayRequest Request;
    overlay::OverlayResult Result;
  };
  void ShowResult(MadeMap made);
  /// Null for none.
  const MadeMap* SeenMap() const;

  TabSheetGroundPathLayout ui_;
  overlay::OverlaySources sources_;
  const swath::ScannerTable* scanners_ = nullptr;
  const lines::FineLines* lines_ = nullptr;
  QString noLines_;  ///< why not
  swath::PictureOfPass picture_;
  swath::AttitudeCorrections attitudes_;
  std::optional<overlay::OpenedPicture>
      opened_;                              ///< the picture that the user named, until another pass is chosen
  std::optional<orbit::TSatellite> guest_;  ///< its satellite, which need not be an active one
  /// What the user has told of the opened pictures.
  struct Told {
    QStringList Paths;
    QString Satellite;
    std::optional<orbit::TDateTime> Start;
    QString Scanner;
    std::optional<swath::Stored> Lies;
    bool IsStartByCoasts = false;
  };
  std::optional<Told> told_;
  QImage file_;       ///< the picture that is seen, as its file has it
  QImage otherHalf_;  ///< of a picture that was looked for: what its whole lines have beside it
  align::AlignmentLog log_;
  std::optional<align::LoggedAlignment> alignment_;  ///< its attitude counts, for its picture
  std::optional<align::LoggedAlignment> sought_;     ///< the picture that was looked up in the log
  QString toldNote_;                                 ///< of the log
  std::vector<int> marks_;                           ///< lines of it where minute marks begin
  QString damage_;                                   ///< what its title says of it
  TFormPictureDetails* FormPictureDetails;
  THandFit* hand_;
  bool stopRequested_ = false;
  bool againRequested_ = false;  ///< something changed while the map was being made
  std::optional<MadeMap> made_;  ///< the map that is seen, unless another one is offered

  TCoastAlignment* coasts_ = nullptr;
  std::optional<MadeMap> preview_;   ///< of what it has found, until that is taken or left
  std::optional<bool> wasOverlaid_;  ///< before the preview was laid over the picture
  bool wantsAlignment_ = false;      ///< a picture was opened before the alignment of another had ended
  /// What was there before an alignment was taken, in the page and in the log.
  struct Undo {
    std::optional<align::LoggedAlignment> Alignment, Logged;
    std::optional<bool> WasOverlaid;  ///< the map, over the picture
  };
  Undo undo_;
};

}  // namespace pelorin::desktop
