#include "session/doubt_label.h"

namespace pelorin::session {

TDoubtLabel::TDoubtLabel(QWidget* parent) : QLabel(parent) {
  setObjectName(QStringLiteral("LabelElementAge"));
  setTextFormat(Qt::PlainText);
  setWordWrap(true);
  setMargin(4);
  setAlignment(Qt::AlignCenter);
  // What stands beside it must not move for its sake.
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

void TDoubtLabel::ShowDoubt(const std::optional<elements::SetDoubt>& doubt, elements::DoubtLevel level) {
  setText(doubt ? elements::DoubtText(*doubt) : QString());
  setToolTip(doubt ? text() + u'\n' + doubt->Source : QString());
  // Black on yellow and white on red are read in light and dark windows alike.
  const bool isGrave = level == elements::DoubtLevel::Grave;
  setAutoFillBackground(doubt && level != elements::DoubtLevel::None);
  QPalette colours;
  if (autoFillBackground()) {
    colours.setColor(QPalette::Window, isGrave ? QColor(178, 34, 34) : QColor(255, 221, 87));
    colours.setColor(QPalette::WindowText, isGrave ? Qt::white : Qt::black);
  }
  setPalette(colours);
}

}  // namespace pelorin::session
