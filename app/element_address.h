#pragma once

#include <QString>

#include "app/registry_store.h"

namespace pelorin::app {

/// Where element files are fetched from, with a "/" at its end: environment variable PELORIN_ELEMENTS_URL, or
/// else the text "ElementsAddress" in the subkey "Network" of the program's settings, or else the public
/// element service. Stations with a mirror of their own set one of the two.
QString ElementAddress(const RegistryStore& store, const QString& programName);

}  // namespace pelorin::app
