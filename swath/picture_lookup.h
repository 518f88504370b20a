#pragma once

#include <QString>
#include <QStringList>
#include <functional>

#include "orbit/date_time.h"

/// Finds the picture of a pass. Pictures are named "mmddhhnn" by the time of the pass, then a channel suffix
/// and an extension. All functions give the file's path, or an empty text when there is none.
///
/// `preference` is 0 for the visible channel, 1 for infrared, 2 for plain pictures. A folder may end with any
/// number of slashes or backslashes; one that does not exist is passed over. A file whose name has exactly
/// the wanted letters goes before one that differs in case. `onBaseName` is told every base name that is
/// searched.
namespace pelorin::swath {

using BaseNameCallback = std::function<void(const QString& baseName)>;

/// The suffixes of a preference, best first.
QStringList PictureSuffixes(int preference);

/// Folders come first, suffixes second: a less preferred picture in an earlier folder wins.
QString FindPicture(const QString& baseName, int preference, const QStringList& folders,
                    const BaseNameCallback& onBaseName = {});

/// Looks for the twelve minutes from `start` on, shifted by an offset from UTC.
QString ScanMinutes(orbit::TDateTime start, int offsetMinutes, int preference, const QStringList& folders,
                    const BaseNameCallback& onBaseName = {});

/// Looks for a picture by its key: the path of a file, or a time stamp of which the first eight characters,
/// "mmddhhnn", count. After the stamp itself the minutes from 2 before to 9 after it are searched, in UTC and
/// then by the local clock: pictures may be named by standard or daylight time, minutes east of UTC. Raises
/// ConvertError when the key is neither.
QString LookUpPicture(const QString& key, int preference, const QStringList& folders,
                      int standardOffsetMinutes, int daylightOffsetMinutes,
                      const BaseNameCallback& onBaseName = {});

}  // namespace pelorin::swath
