#pragma once

#include <QFont>

namespace pelorin::desktop {

/// The font with every character as wide as in Courier: columns stand below each other.
QFont FixedFont(QFont font);

}  // namespace pelorin::desktop
