#pragma once

#include <QString>

namespace pelorin::overlay {

/// What a page is at when its user wants to bring picture and map together.
struct FitConditions {
  QString Trouble;            ///< for the user, what goes before all else; mostly empty
  bool MakesMap = false;      ///< at this moment
  bool HasPicture = false;    ///< one is seen
  bool HasSatellite = false;  ///< one is chosen
  QString Problem = {};       ///< for the user, why no map can lie on the picture; mostly empty
  bool IsSeen = false;        ///< the picture that is seen is of the pass that is chosen
};

/// For the user: why it cannot be done now, and what to do; empty when it can.
QString WhyNotFitted(const FitConditions& now);

}  // namespace pelorin::overlay
