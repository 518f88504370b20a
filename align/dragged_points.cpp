#include "align/dragged_points.h"

#include <QStringList>
#include <algorithm>
#include <cmath>
#include <utility>

#include "orbit/scalar_math.h"

namespace pelorin::align {
namespace {

using lines::PixelLine;
using swath::PixelPoint;
using swath::Recording;

/// On the screen.
constexpr double kNearPixels = 12;

/// In pixels of the screen, from a place that is the origin.
PixelPoint OnScreen(PixelPoint place, PixelPoint origin, ScreenScale scale) {
  return {(place.Column - origin.Column) * scale.Across, (place.Row - origin.Row) * scale.Down};
}

double Length(PixelPoint to) { return std::hypot(to.Column, to.Row); }

/// How far along a step the place is that is nearest to the origin, 0 … 1.
double NearestShare(PixelPoint a, PixelPoint b) {
  const double dx = b.Column - a.Column, dy = b.Row - a.Row, square = dx * dx + dy * dy;
  return square > 0 ? std::clamp(-(a.Column * dx + a.Row * dy) / square, 0.0, 1.0) : 0;
}

/// The whole map moved so far in its file.
Recording Shifted(Recording recording, PixelPoint by) {
  const double columns = recording.RunsLeft() ? -by.Column : by.Column;
  const double lines = recording.Lies.Turned ? -by.Row : by.Row;
  recording.OffsetS -= lines / recording.SeenBy.RowsPerSecond;
  const swath::LineShape& line = recording.SeenBy.Line;
  if (line.Law == swath::ScanLaw::ZonesSphere) {
    recording.ShiftColumns += columns;
  } else {
    const double middle = (line.Columns - 1) / 2.0;
    recording.Offsets.RollDeg -= orbit::Degrees(swath::ColumnAngle(line, middle + columns));
  }
  return recording;
}

QString Signed(double value, int decimals) {
  return (value < 0 ? QString() : QStringLiteral("+")) + QString::number(value, 'f', decimals);
}

QString FittedText(const PointFit& fit, Third third) {
  const Recording& fitted = fit.Fitted;
  QStringList parts{QStringLiteral("time %1 s").arg(Signed(fitted.OffsetS, 2))};
  if (fitted.SeenBy.Line.Law == swath::ScanLaw::ZonesSphere) {
    parts.append(QStringLiteral("shift %1 columns").arg(Signed(fitted.ShiftColumns, 1)));
  } else {
    parts.append(QStringLiteral("roll %1°").arg(Signed(fitted.Offsets.RollDeg, 2)));
  }
  if (fit.WhyNoThird == Untold::Nothing) {
    parts.append(third == Third::Yaw ? QStringLiteral("yaw %1°").arg(Signed(fitted.Offsets.YawDeg, 2))
                                     : QStringLiteral("clock drift %1 ppm").arg(Signed(fitted.DriftPpm, 0)));
  }
  return parts.join(QStringLiteral(", "));
}

/// What of the picture the points tell.
QString ToldBy(std::size_t points, Untold whyNot, Third third) {
  const QString count = points == 1 ? QStringLiteral("1 point") : QStringLiteral("%1 points").arg(points);
  const bool isYaw = third == Third::Yaw;
  switch (whyNot) {
    case Untold::Nothing:
      return QStringLiteral("%1: time, shift and %2")
          .arg(count, isYaw ? QStringLiteral("yaw") : QStringLiteral("clock drift"));
    case Untold::TooClose:
      return (isYaw ? QStringLiteral("%1 at one distance from the track, which cannot tell yaw: time and "
                                     "shift only")
                    : QStringLiteral("%1 in the same lines, which cannot tell the clock's drift: time and "
                                     "shift only"))
          .arg(count);
    case Untold::DoesNotTurn:
      return QStringLiteral("%1, on a map that knows no yaw: time and shift only").arg(count);
    case Untold::TooFew:
      break;
  }
  return QStringLiteral("%1: time and shift only").arg(count);
}

}  // namespace

DraggedPoints::DraggedPoints(const Recording& recording, const lines::FineLines& file)
    : recording_(recording), file_(file) {
  Settle();
}

QString DraggedPoints::Told() const {
  const bool isMoved = now_.Moved.Column != 0 || now_.Moved.Row != 0;
  if (now_.Points.empty() && !isMoved) {
    return QStringLiteral("Drag a line to where the picture shows it.");
  }
  const auto leftOut = static_cast<std::size_t>(std::ranges::count(fit_.IsLeftOut, true));
  QString told = now_.Points.empty() ? QStringLiteral("The whole map: time and shift only")
                                     : ToldBy(now_.Points.size() - leftOut, fit_.WhyNoThird, now_.Third);
  if (leftOut > 0) told += QStringLiteral("; %1 left out").arg(leftOut);
  return QStringLiteral("%1 (%2).").arg(told, FittedText(fit_, now_.Third));
}

int DraggedPoints::PointAt(PixelPoint at, ScreenScale scale) const {
  int nearest = -1;
  double least = kNearPixels;
  for (std::size_t i = 0; i < now_.Points.size(); ++i) {
    const double apart = Length(OnScreen(now_.Points[i].Pixel, at, scale));
    if (apart > least) continue;
    least = apart;
    nearest = static_cast<int>(i);
  }
  return nearest;
}

std::optional<PixelPoint> DraggedPoints::LineAt(PixelPoint at, ScreenScale scale) const {
  std::optional<PixelPoint> nearest;
  double least = kNearPixels;
  const auto look = [&](const PixelLine& line) {
    PixelPoint from = OnScreen(line.front(), at, scale);
    for (std::size_t i = 1; i < line.size(); ++i) {
      const PixelPoint to = OnScreen(line[i], at, scale);
      const double share = NearestShare(from, to);
      const PixelPoint there{from.Column + share * (to.Column - from.Column),
                             from.Row + share * (to.Row - from.Row)};
      if (const double apart = Length(there); apart < least) {
        least = apart;
        nearest = {at.Column + there.Column / scale.Across, at.Row + there.Row / scale.Down};
      }
      from = to;
    }
  };
  for (const PixelLine& line : lines_->Shores) look(line);
  for (const PixelLine& line : lines_->Borders) look(line);
  return nearest;
}

bool DraggedPoints::Grab(PixelPoint at, ScreenScale scale) {
  if (const int point = PointAt(at, scale); point >= 0) {
    Begin(static_cast<std::size_t>(point), at, now_, false);
    return true;
  }
  const auto place = LineAt(at, scale);
  // As the lines are drawn, not as they would be with all of a turn's finer points.
  const auto ground = place ? swath::PixelGeometry(fit_.Fitted).GroundOf(*place) : std::nullopt;
  if (!ground) {
    chosen_ = -1;
    return false;
  }
  State before = now_;
  now_.Points.push_back({*ground, *place});
  Begin(now_.Points.size() - 1, at, std::move(before), true);
  fit_ = FollowPoints(recording_, movable_->Near(), now_.Points, now_.Third, drag_->LeftOut);
  return true;
}

void DraggedPoints::Begin(std::size_t point, PixelPoint pointer, State before, bool isNew) {
  const PixelPoint pixel = now_.Points[point].Pixel;
  std::vector<bool> leftOut = fit_.IsLeftOut;
  leftOut.resize(now_.Points.size(), false);
  leftOut[point] = false;
  drag_ = Drag{std::move(before),  chosen_, point, {pixel.Column - pointer.Column, pixel.Row - pointer.Row},
               std::move(leftOut), isNew,   false};
  chosen_ = static_cast<int>(point);
}

void DraggedPoints::DragTo(PixelPoint at) {
  if (!drag_) return;
  drag_->HasMoved = true;
  now_.Points[drag_->Point].Pixel = {at.Column + drag_->FromPointer.Column, at.Row + drag_->FromPointer.Row};
  fit_ = FollowPoints(recording_, movable_->Near(), now_.Points, now_.Third, drag_->LeftOut);
  lines_ = std::make_shared<const MovedLines>(movable_->QuickIn(fit_.Fitted));
}

void DraggedPoints::Drop() {
  if (!drag_) return;
  const Drag drag = *std::exchange(drag_, std::nullopt);
  if (!drag.IsNew && !drag.HasMoved) return;
  State next = std::exchange(now_, drag.Before);
  Do(std::move(next));
}

void DraggedPoints::GiveUp() {
  if (!drag_) return;
  chosen_ = drag_->ChosenBefore;
  now_ = drag_->Before;
  drag_.reset();
  Settle();
}

void DraggedPoints::Remove() {
  if (drag_ || chosen_ < 0) return;
  State next = now_;
  next.Points.erase(next.Points.begin() + std::exchange(chosen_, -1));
  next.Moved = {0, 0};
  Do(std::move(next));
}

void DraggedPoints::Nudge(double columns, double rows) {
  if (drag_) return;
  State next = now_;
  const auto move = [&](PixelPoint& place) {
    place.Column += columns;
    place.Row += rows;
  };
  if (next.Points.empty()) move(next.Moved);
  for (std::size_t i = 0; i < next.Points.size(); ++i) {
    if (chosen_ < 0 || chosen_ == static_cast<int>(i)) move(next.Points[i].Pixel);
  }
  Do(std::move(next));
}

void DraggedPoints::SetThird(Third third) {
  if (drag_ || third == now_.Third) return;
  State next = now_;
  next.Third = third;
  Do(std::move(next));
}

void DraggedPoints::Undo() { Restore(done_, undone_); }

void DraggedPoints::Redo() { Restore(undone_, done_); }

void DraggedPoints::Do(State next) {
  done_.push_back(std::exchange(now_, std::move(next)));
  undone_.clear();
  Settle();
}

void DraggedPoints::Restore(std::vector<State>& from, std::vector<State>& to) {
  if (drag_ || from.empty()) return;
  to.push_back(std::exchange(now_, std::move(from.back())));
  from.pop_back();
  chosen_ = -1;
  Settle();
}

void DraggedPoints::Settle() {
  fit_ =
      FitPoints(now_.Points.empty() ? Shifted(recording_, now_.Moved) : recording_, now_.Points, now_.Third);
  if (!movable_ || !movable_->IsGoodFor(fit_.Fitted)) {
    movable_ = std::make_unique<MovableLines>(fit_.Fitted, file_);
  }
  lines_ = std::make_shared<const MovedLines>(movable_->In(fit_.Fitted));
}

}  // namespace pelorin::align
