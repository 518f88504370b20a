#include "overlay/fit_conditions.h"

namespace pelorin::overlay {

QString WhyNotFitted(const FitConditions& now) {
  if (!now.Trouble.isEmpty()) return now.Trouble;
  if (now.MakesMap) return QStringLiteral("Wait until the map is made.");
  if (!now.HasPicture) return QStringLiteral("Load a picture first.");
  if (!now.HasSatellite) return QStringLiteral("Choose the satellite that sent the picture.");
  if (!now.Problem.isEmpty()) return now.Problem;
  if (!now.IsSeen) {
    return QStringLiteral("The picture that is seen is of another pass than the one that is chosen.");
  }
  return {};
}

}  // namespace pelorin::overlay
