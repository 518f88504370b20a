#pragma once

#include <QLabel>
#include <optional>

#include "elements/set_ageing.h"

namespace pelorin::session {

/// How old the elements of what is shown are, and what that may cost: yellow where it is worth a look, red
/// where the map should not be believed. Nothing is seen of it while there is nothing to tell.
class TDoubtLabel : public QLabel {
  Q_OBJECT

 public:
  explicit TDoubtLabel(QWidget* parent = nullptr);

  void ShowDoubt(const std::optional<elements::SetDoubt>& doubt, elements::DoubtLevel level);
};

}  // namespace pelorin::session
