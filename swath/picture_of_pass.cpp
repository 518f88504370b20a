#include "swath/picture_of_pass.h"

#include <QFileInfo>

#include "orbit/time_stamp.h"

namespace pelorin::swath {

PictureOfPass::PictureOfPass(const QString& savedCorrections) : corrections_(savedCorrections) {}

void PictureOfPass::SetSatellite(const QString& name) {
  const bool isShown = Shows(recording_);
  Recording next = recording_;
  next.Satellite = name;
  next.OffsetS = UsualOffsetS();
  next.ShiftColumns = next.DriftPpm = 0;
  TakeUp(next);
  if (isShown) shown_->Satellite = name;
}

void PictureOfPass::SetPass(orbit::TDateTime moment) {
  const orbit::TDateTime minute = orbit::CutToMinute(moment);
  const bool isOpened = opened_.has_value();
  if (minute == pass_ && !isOpened) return;
  // The year is no part of a name: the user may have to correct it.
  const bool isOtherYear = isOpened && minute != pass_ && orbit::StampOf(minute) == orbit::StampOf(pass_);
  if (isOtherYear) {
    opened_->Known.Start.Days += minute.Days - pass_.Days;
  } else {
    opened_.reset();
    soughtPath_.clear();
  }
  pass_ = minute;
  TakeUp(OfPass());
}

void PictureOfPass::Open(const QString& path, const Recording& known) {
  opened_.reset();
  SetPass(known.Start);
  opened_ = {path, known};
}

void PictureOfPass::Seek(const FoundPicture& found) {
  soughtPath_ = found.Path;
  Recording next = OfPass();
  if (opened_ && found.Path == opened_->Path) {
    next = opened_->Known;
    next.Satellite = recording_.Satellite;
    next.Rows = next.Columns = 0;
  } else if (!found.Path.isEmpty()) {
    const auto seconds = orbit::SecondsOfStamp(QFileInfo(found.Path).fileName().toStdString());
    next.Start.Days +=
        found.MinutesLater / orbit::kMinutesPerDay + seconds.value_or(0) / orbit::kSecondsPerDay;
    next.StartIsFrom = seconds ? StartFrom::NameSecond : StartFrom::NameMinute;
  }
  TakeUp(next);
}

void PictureOfPass::Show(int columns, int rows) {
  shownPath_ = soughtPath_;
  shown_ = recording_;
  shown_->Columns = columns;
  shown_->Rows = rows;
}

Recording PictureOfPass::ForMap(bool southBound) const {
  Recording recording = recording_;
  recording.SouthBound = southBound;
  if (Shows(recording)) {
    recording.Rows = shown_->Rows;
    recording.Columns = shown_->Columns;
  }
  return recording;
}

bool PictureOfPass::Shows(const Recording& recording) const {
  return shown_ && IsSameRecording(*shown_, recording);
}

void PictureOfPass::SetOffset(double seconds) {
  recording_.OffsetS = ToOffsetStep(seconds);
  corrections_.Learn(recording_);
}

void PictureOfPass::SetCut(double shiftColumns, double driftPpm) {
  recording_.ShiftColumns = shiftColumns;
  recording_.DriftPpm = driftPpm;
}

void PictureOfPass::ResetOffset() {
  recording_.OffsetS = UsualOffsetS();
  const Recording usual = opened_ ? opened_->Known : Recording();
  SetCut(usual.ShiftColumns, usual.DriftPpm);
  corrections_.Forget(recording_);
}

void PictureOfPass::TakeAlignment(double offsetS, double shiftColumns, double driftPpm) {
  recording_.OffsetS = offsetS;
  SetCut(shiftColumns, driftPpm);
}

void PictureOfPass::LeaveAlignment() {
  const Recording usual = opened_ ? opened_->Known : Recording();
  TakeAlignment(corrections_.OffsetOf(recording_).value_or(UsualOffsetS()), usual.ShiftColumns,
                usual.DriftPpm);
}

Recording PictureOfPass::OfPass() const {
  Recording recording;
  recording.Satellite = recording_.Satellite;
  recording.Start = pass_;
  return recording;
}

void PictureOfPass::TakeUp(Recording next) {
  const Recording& last = recording_;
  // Channels of a recording may be named without its second.
  const bool isToMinute = next.StartIsFrom == StartFrom::Pass || next.StartIsFrom == StartFrom::NameMinute;
  if (last.StartIsFrom == StartFrom::NameSecond && isToMinute &&
      orbit::CutToMinute(last.Start) == orbit::CutToMinute(next.Start)) {
    next.Start = last.Start;
    next.StartIsFrom = last.StartIsFrom;
  }
  // What was found by eye alone is about the picture; another clock has nothing to do with it.
  const auto isStamped = [](const Recording& one) { return one.StartIsFrom == StartFrom::Stamps; };
  const bool isOfClock = next.StartIsFrom == StartFrom::NameSecond || isStamped(next);
  const bool isOtherClock =
      isStamped(next) != isStamped(last) || (isOfClock && next.Satellite != last.Satellite);
  const bool isKept = BeginTogether(last, next) && !isOtherClock;
  next.OffsetS = isKept ? last.OffsetS : corrections_.OffsetOf(next).value_or(next.OffsetS);
  if (isKept) {
    next.ShiftColumns = last.ShiftColumns;
    next.DriftPpm = last.DriftPpm;
  }
  recording_ = next;
}

}  // namespace pelorin::swath
