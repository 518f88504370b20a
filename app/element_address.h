#pragma once

#include <QString>

#include "app/settings.h"

namespace pelorin::app {

/// The public element service, with a "/" at its end.
QString PublicElementAddress();

/// Whether an address is of that service, by whatever way it is asked.
bool IsPublicService(const QString& address);

/// Where element files are fetched from, with a "/" at its end: environment variable PELORIN_ELEMENTS_URL, or
/// else the setting "ElementsAddress", or else the public element service. Stations with a mirror of their
/// own set one of the two.
QString ElementAddress(const Settings& settings);

/// An address as a user types it: "https://" before it and "/" behind it where they are missing. The public
/// one for an empty text.
QString ElementAddressOf(const QString& typed);

}  // namespace pelorin::app
