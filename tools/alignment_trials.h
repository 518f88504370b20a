#pragma once

#include <functional>
#include <vector>

#include "tools/alignment_pictures.h"

/// A picture made harder to find in many ways, or made one that must not be found.
namespace pelorin::tools {

/// One try.
struct AlignmentTrial {
  QString Of;    ///< the picture's name
  QString Part;  ///< "whole", "upper", "lower"
  QString Kind;  ///< "start", or what makes it one that must be refused: "mirrored", "orbit", …
  bool IsInverted = false;
  double NoiseSd = 0;  ///< grey levels
  double WrongByS = 0;
  bool MustBeRefused = false;
  swath::Recording Recording;
  std::vector<QImage> Channels;
  swath::Recording Reference;  ///< where it should come to lie
};

enum class TrialEnd { Found, Roughly, Refused, Wrong };

struct TrialResult {
  TrialEnd End;
  align::PictureAlignment Alignment;
  Misfit FromReference;  ///< when it was accepted
  double Seconds;        ///< how long it took
};

/// An accepted picture is at its place within these.
inline constexpr double kMostWrongS = 2, kMostWrongColumns = 4;

TrialResult Run(const AlignmentTrial& trial, const align::Ground& ground);

/// Starts that are wrong, either way, of the whole picture and its upper and lower 600 rows, as they are and
/// inverted, with noise. `reference` is the whole picture's recording as it should be.
std::vector<AlignmentTrial> StartTrials(const MeasuredPicture& picture, const swath::Recording& reference,
                                        double noiseSd);

/// What is none of the recording's pictures, in the same parts, as they are and inverted: mirrored and turned
/// ones, those of neighbouring orbits and other days, and those of other satellites.
std::vector<AlignmentTrial> RefusalTrials(const MeasuredPicture& picture);

}  // namespace pelorin::tools
