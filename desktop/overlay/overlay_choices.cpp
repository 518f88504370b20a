#include "desktop/overlay/overlay_choices.h"

namespace pelorin::desktop {

overlay::Marks ChosenMarks(const app::Settings& settings) {
  if (settings.OverlayLinesOnly.Value) return overlay::Marks::Lines;
  return settings.ShowOverlay.Value ? overlay::Marks::All : overlay::Marks::None;
}

QString DirectionCaption(bool southBound) {
  return southBound ? QStringLiteral("---> S") : QStringLiteral("---> N");
}

}  // namespace pelorin::desktop
