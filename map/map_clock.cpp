#include "map/map_clock.h"

#include <QDateTime>
#include <QFileInfo>
#include <algorithm>
#include <limits>

#include "files/file_error.h"
#include "orbit/scalar_math.h"

namespace pelorin::map {
namespace {

constexpr qsizetype kPictureStampLength = 8;  // "mmddhhnn"

}  // namespace

int StepIntervalMs(int updateIntervalS) {
  return std::clamp(updateIntervalS, 1, std::numeric_limits<int>::max() / 1000) * 1000;
}

orbit::TDateTime MapTimeOfPicture(const QString& path) {
  const QFileInfo file(path);
  if (!file.isFile())
    throw files::FileError(QStringLiteral("Cannot read %1: there is no such file").arg(path));
  const std::string stamp = file.fileName().left(kPictureStampLength).toStdString();
  try {
    return orbit::ParseTimeString(stamp, orbit::MakeDateTime(file.lastModified().date().year(), 1, 1));
  } catch (const orbit::ConvertError& error) {
    throw orbit::ConvertError("The name of " + file.fileName().toStdString() +
                              " does not begin with a month, day, hour and minute as in 02231015.  " +
                              error.what());
  }
}

orbit::TDateTime ManualMapTime(orbit::TDateTime pickedDate, int hour, int minute, orbit::TDateTime before) {
  const orbit::DateTimeFields was = orbit::TakeApart(before);
  int minutes = hour * 60 + minute;
  if (hour == was.Hour && was.Minute == 59 && minute == 0) minutes += 60;
  if (hour == was.Hour && was.Minute == 0 && minute == 59) minutes -= 60;
  return {orbit::DatePart(pickedDate).Days + minutes / 1440.0};
}

}  // namespace pelorin::map
