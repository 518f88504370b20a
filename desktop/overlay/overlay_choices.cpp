#include "desktop/overlay/overlay_choices.h"

namespace pelorin::desktop {

overlay::Marks ChosenMarks(const app::Settings& settings) {
  return overlay::ChosenMarks(settings.OverlayLinesOnly.Value, settings.ShowOverlay.Value);
}

QString DirectionCaption(bool southBound) {
  return southBound ? QStringLiteral("---> S") : QStringLiteral("---> N");
}

}  // namespace pelorin::desktop
