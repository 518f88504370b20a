#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

#include "orbit/date_time.h"

/// Finds the picture of a pass. Pictures are named "mmddhhnn" by the time of the pass, then a channel suffix
/// and an extension.
///
/// `preference` is 0 for the visible channel, 1 for infrared, 2 for plain pictures. A folder may end with any
/// number of slashes or backslashes; one that does not exist is passed over. A file whose name has exactly
/// the wanted letters goes before one that differs in case. `onBaseName` is told every base name that is
/// searched.
namespace pelorin::swath {

using BaseNameCallback = std::function<void(const QString& baseName)>;

/// A picture that was looked for.
struct FoundPicture {
  QString Path;          ///< of its file; empty when there is none
  int MinutesLater = 0;  ///< from the time that was looked for to that of the name, UTC: −2 … 9
};

/// The suffixes of a preference, best first.
QStringList PictureSuffixes(int preference);

/// Looks for a picture by its key: the path of a file, or a time stamp of which the first eight characters,
/// "mmddhhnn", count. After the stamp itself the minutes from 2 before to 9 after it are searched, in UTC and
/// then by the local clock: pictures may be named by standard or daylight time, minutes east of UTC. Folders
/// come first, suffixes second: a less preferred picture in an earlier folder wins. Raises ConvertError when
/// the key is neither.
FoundPicture LookUpPicture(const QString& key, int preference, const QStringList& folders,
                           int standardOffsetMinutes, int daylightOffsetMinutes,
                           const BaseNameCallback& onBaseName = {});

/// The picture that the user names for the pass of a minute, as LookUpPicture would have found it; nothing
/// when the name tells none of the minutes that are searched.
std::optional<FoundPicture> PictureNamedFor(const QString& path, orbit::TDateTime pass,
                                            int standardOffsetMinutes, int daylightOffsetMinutes);

/// A picture of the pass of a minute by any other name that tells date and year, or the folder that a decoder
/// left of it: begun in the minutes that LookUpPicture searches, by UTC or the local clock, and sent by the
/// satellite if the name tells one. Empty when there is none. Of several the earliest folder and name counts.
QString FindDatedPicture(orbit::TDateTime pass, const QString& satellite, const QStringList& folders,
                         int standardOffsetMinutes, int daylightOffsetMinutes);

// Of the described interface; the program itself calls LookUpPicture, which reads each folder once.

/// The path of the picture with this base name.
QString FindPicture(const QString& baseName, int preference, const QStringList& folders,
                    const BaseNameCallback& onBaseName = {});

/// Looks for the twelve minutes from `start` on, in names that are an offset ahead of UTC. Minutes are
/// counted from `start`.
FoundPicture ScanMinutes(orbit::TDateTime start, int offsetMinutes, int preference,
                         const QStringList& folders, const BaseNameCallback& onBaseName = {});

}  // namespace pelorin::swath
