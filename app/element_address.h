#pragma once

#include <QString>

#include "app/settings.h"

namespace pelorin::app {

/// Where element files are fetched from, with a "/" at its end: environment variable PELORIN_ELEMENTS_URL, or
/// else the setting "ElementsAddress", or else the public element service. Stations with a mirror of their
/// own set one of the two.
QString ElementAddress(const Settings& settings);

}  // namespace pelorin::app
