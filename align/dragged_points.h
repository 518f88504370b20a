#pragma once

#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "align/movable_lines.h"
#include "align/point_fit.h"

namespace pelorin::align {

/// How large a pixel of the picture is on the screen: what is near is judged there.
struct ScreenScale {
  double Across = 1, Down = 1;
};

/// A picture that is fitted by hand: the lines of its map, the points at which they were pulled to where the
/// picture shows them, and the recording that follows from these. All places are pixels of the picture's
/// file.
///
/// A point is grabbed (Grab), pulled (DragTo) and let go (Drop); what is done is undone step by step.
class DraggedPoints {
 public:
  /// `file` is borrowed. A damaged tile of it raises FileError; so does Drop, where more of it comes into
  /// sight.
  DraggedPoints(const swath::Recording& recording, const lines::FineLines& file);

  const std::vector<TiePoint>& Points() const { return now_.Points; }
  /// Of the points, in their order.
  const PointFit& Fit() const { return fit_; }
  /// As the fitted recording shows them.
  const std::shared_ptr<const MovedLines>& Lines() const { return lines_; }
  /// What is fitted and what came of it, in a sentence or two.
  QString Told() const;

  /// The point within some 12 pixels of the screen; −1 for none.
  int PointAt(swath::PixelPoint at, ScreenScale scale) const;
  /// The nearest place of a line within the same distance.
  std::optional<swath::PixelPoint> LineAt(swath::PixelPoint at, ScreenScale scale) const;

  /// Takes hold of a point, or of a line, which gets a point there; that one is chosen then. False when
  /// nothing is near; no point is chosen any more.
  bool Grab(swath::PixelPoint at, ScreenScale scale);
  bool IsDragging() const { return drag_.has_value(); }
  /// The pointer is here now. Lines follow; no other point is left out or taken in before it is dropped.
  void DragTo(swath::PixelPoint at);
  void Drop();
  /// The point goes back to where it was grabbed.
  void GiveUp();

  int Chosen() const { return chosen_; }
  /// Takes the chosen point away.
  void Remove();
  /// Moves the chosen point; without one, all of them, and without any the whole map.
  void Nudge(double columns, double rows);
  Third ThirdWanted() const { return now_.Third; }
  void SetThird(Third third);

  bool CanUndo() const { return !done_.empty(); }
  bool CanRedo() const { return !undone_.empty(); }
  void Undo();
  void Redo();

 private:
  /// What undoing brings back.
  struct State {
    std::vector<TiePoint> Points;
    align::Third Third = align::Third::Yaw;
    swath::PixelPoint Moved{0, 0};  ///< the whole map, while there are no points
  };
  struct Drag {
    State Before;
    int ChosenBefore;
    std::size_t Point;
    swath::PixelPoint FromPointer;  ///< to the point
    std::vector<bool> LeftOut;      ///< without the point
    bool IsNew, HasMoved;
  };
  void Begin(std::size_t point, swath::PixelPoint pointer, State before, bool isNew);
  /// Remembers what was before, and fits.
  void Do(State next);
  void Restore(std::vector<State>& from, std::vector<State>& to);
  void Settle();

  swath::Recording recording_;  ///< as it was
  const lines::FineLines& file_;
  State now_;
  std::vector<State> done_, undone_;
  int chosen_ = -1;
  std::optional<Drag> drag_;
  PointFit fit_;
  std::unique_ptr<MovableLines> movable_;
  std::shared_ptr<const MovedLines> lines_;  ///< made anew with every step
};

}  // namespace pelorin::align
