#pragma once

#include <QString>
#include <optional>

#include "swath/clock_corrections.h"
#include "swath/picture_lookup.h"
#include "swath/recording.h"

namespace pelorin::swath {

/// Which picture a map is made for: the pass and its satellite, as they are chosen; the picture that is
/// looked for, and what its recording is; and the picture that is seen, which may still be an earlier one.
/// Files and pixels are its user's affair.
///
/// The order is: a pass (SetPass or Open), the look-up's answer (Seek), and, when that could be read, Show.
class PictureOfPass {
 public:
  /// `savedCorrections` is what SavedCorrections gave.
  explicit PictureOfPass(const QString& savedCorrections);

  /// Of the picture that is looked for, and of those to come.
  void SetSatellite(const QString& name);

  /// The pass to find a picture of, cut to the minute. Forgets what was opened, unless only the year is
  /// another.
  void SetPass(orbit::TDateTime moment);
  /// UTC, to the minute. With a found picture its map may begin some minutes off.
  orbit::TDateTime Pass() const { return pass_; }

  /// The pass is the one that a picture is of; the picture itself is to be taken, until the pass is set or it
  /// is forgotten. Of what is known of it, its satellite is left to SetSatellite.
  void Open(const QString& path, const Recording& known);
  void ForgetOpened() { opened_.reset(); }
  /// Empty when the picture is to be looked for.
  QString OpenedPath() const { return opened_ ? opened_->Path : QString(); }

  /// The pass's picture, or that there is none. Its offset is what its satellite's clock was off, unless it
  /// is the recording of before: channels differ in their names, but not in their lines.
  void Seek(const FoundPicture& found);
  /// What Seek was told last; empty for none.
  const QString& SoughtPath() const { return soughtPath_; }
  /// The picture that Seek told of was read, and is seen now.
  void Show(int columns, int rows);
  /// Empty until a picture is seen.
  const QString& ShownPath() const { return shownPath_; }

  /// What to make a map of now: the recording that is looked for, of the size of the picture seen if that is
  /// of the same one.
  Recording ForMap(bool southBound) const;
  /// The picture seen is of this recording.
  bool Shows(const Recording& recording) const;

  /// The user has fitted the recording that is looked for; the offset is brought to what is possible.
  void SetOffset(double seconds);
  /// What the user has found of how its lines were cut and paced (Recording's ShiftColumns and DriftPpm): it
  /// is this recording's alone, and goes with it.
  void SetCut(double shiftColumns, double driftPpm);
  double OffsetS() const { return recording_.OffsetS; }
  /// What the offset is without the user's doing: the opened picture's, by its product file or the table of
  /// scanners, or 0.
  double UsualOffsetS() const { return opened_ ? opened_->Known.OffsetS : 0; }
  /// Goes back to that, and remembers nothing of its clock and cut.
  void ResetOffset();
  /// The recording that is looked for lies as it was aligned. This is about the picture alone: nothing is
  /// learnt of its clock.
  void TakeAlignment(double offsetS, double shiftColumns, double driftPpm);
  /// It lies as it would without; nothing is forgotten.
  void LeaveAlignment();
  QString SavedCorrections() const { return corrections_.Saved(); }

 private:
  /// What is known without a picture.
  Recording OfPass() const;
  /// From now on this is looked for.
  void TakeUp(Recording next);

  /// A picture that was opened, and what was known of it.
  struct Opened {
    QString Path;
    Recording Known;
  };

  ClockCorrections corrections_;
  orbit::TDateTime pass_;
  std::optional<Opened> opened_;
  QString soughtPath_, shownPath_;
  Recording recording_;  ///< looked for; its size is not known
  std::optional<Recording> shown_;
};

}  // namespace pelorin::swath
