#pragma once

#include <QImage>
#include <QString>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "align/coast_votes.h"
#include "align/fine_fit.h"
#include "lines/fine_lines.h"
#include "swath/pixel_geometry.h"
#include "swath/recording.h"
#include "swath/surface.h"

/// A picture finds its place by its coasts.
namespace pelorin::align {

/// The ground that pictures are compared with; borrowed.
struct Ground {
  swath::SurfaceOfLine SurfacesOf;
  const lines::FineLines* Shores = nullptr;  ///< without them a place is found roughly at best
  QString NoShores{};                        ///< for the user, why there are none
};

enum class Finding {
  Found,     ///< to a line and a column; of more than 20 million pixels to half a kilometre or so
  Roughly,   ///< to some two seconds; attitude and shift are as they were
  NotFound,  ///< nothing is known
  Stopped,   ///< somebody has ended the search
};

/// Why nothing was found.
enum class NotFoundFor {
  Nothing,
  TooSmall,     ///< fewer lines or columns than a coast needs
  NoOrbit,      ///< the elements give no position then
  OneColour,    ///< the picture shows nothing
  FewCoasts,    ///< the satellite passed over sea, or over land
  Noise,        ///< what the picture shows is mostly noise
  Clouds,       ///< no place stands out
  HalvesApart,  ///< one does, but half of the picture would rather lie elsewhere
  AtTheEnd,     ///< the best place is at the end of what was searched
};

/// For the user, what is wrong and what could be done: a sentence or two.
QString TextOf(NotFoundFor reason);

/// A window of the picture that has voted for the place.
struct VotingWindow {
  /// In the picture's file: its middle, and half of its size.
  swath::PixelPoint Middle;
  double HalfColumns = 0, HalfRows = 0;
  /// How far from the map the picture's coast lies in it, in columns and rows of the file.
  double MisfitColumns = 0, MisfitRows = 0;
  double Votes = 0;
};

struct PictureAlignment {
  Finding Is = Finding::NotFound;
  NotFoundFor Reason = NotFoundFor::Nothing;
  /// The recording with its new offsets; as it was when nothing was found.
  swath::Recording Aligned;
  /// How many places as good as this one chance would find in such a picture.
  double ChancePeaks = 0;
  bool HalvesAgree = false;
  /// How clear the fine fit is; kClearGate and more is one to a line and a column.
  double Gate = 0;
  /// What is wrong with the ground's shores, where the place is rough for that.
  QString NoShores;
  std::vector<VotingWindow> Windows;
  /// Of a picture that was not found: how it would have to be stored to be; see AlignInAnyWay.
  std::optional<swath::Stored> StoredAs;
};
inline constexpr double kClearGate = 40;

/// How far from what is known a recording may be.
struct SearchRange {
  double TimeS = 600;  ///< either way; no more than kOffsetLimitS in all is ever found
};

/// Compares pictures of one recording, its channels, with the ground. The recording must have its scanner,
/// size and elements; pictures are as it is stored, and of its size.
///
/// The start is searched over a whole strip of ground at once, roll and yaw to 1° and 3° with it; a clock's
/// drift is left as it is. Nothing is found rather than something wrong: chance finds such a place in fewer
/// than one of a few hundred pictures.
PictureAlignment AlignPicture(const swath::Recording& recording, std::span<const QImage> channels,
                              const Ground& ground, const SearchRange& range, const AfterStep& afterStep);

}  // namespace pelorin::align
