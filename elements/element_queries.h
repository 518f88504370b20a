#pragma once

#include <QString>

/// How an element service is asked for the sets of a local file.
namespace pelorin::elements {

/// A local file's name as services of old know it: the extension replaced by ".txt", in lower case.
QString RemoteFileName(const QString& fileName);

/// The address of that; `baseAddress` ends in "/". What has a meaning of its own in addresses is escaped in
/// the name.
QString RemoteAddress(const QString& baseAddress, const QString& fileName);

/// What a local file's sets are called at the service, by the file's name without its extension: a catalogue
/// number is a satellite, as in "CATNR=25338", everything else a group, as in "GROUP=weather".
QString QueryOf(const QString& fileName);

/// The address that gives the sets of a local file as messages in CSV.
QString QueryAddress(const QString& baseAddress, const QString& fileName);

}  // namespace pelorin::elements
