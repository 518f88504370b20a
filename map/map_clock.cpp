#include "map/map_clock.h"

#include <QDateTime>
#include <QFileInfo>
#include <algorithm>
#include <limits>

#include "files/file_error.h"
#include "orbit/time_stamp.h"

namespace pelorin::map {

int StepIntervalMs(int updateIntervalS) {
  return std::clamp(updateIntervalS, 1, std::numeric_limits<int>::max() / 1000) * 1000;
}

orbit::TDateTime MapTimeOfPicture(const QString& path) {
  const QFileInfo file(path);
  if (!file.isFile())
    throw files::FileError(QStringLiteral("Cannot read %1: there is no such file").arg(path));
  return orbit::TimeOfStamp(file.fileName().toStdString(), file.lastModified().date().year());
}

}  // namespace pelorin::map
