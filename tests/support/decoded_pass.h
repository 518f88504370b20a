#pragma once

#include <QDir>
#include <QImage>
#include <QString>
#include <nlohmann/json.hpp>

#include "files/atomic_file.h"
#include "orbit/date_time.h"

namespace pelorin::tests {

inline constexpr double kLrptGroupS = 1.231141;  ///< eight lines

/// What a decoder leaves of a pass of METEOR-M 2 over LRPT: two channels of grey and their product file, with
/// a stamp for each eight of `rows` lines from `start` on.
inline void LeaveDecodedPass(const QString& folder, orbit::TDateTime start, int rows) {
  using nlohmann::json;
  QDir().mkpath(folder);
  json stamps = json::array(), images = json::array();
  const double startS = (start.Days - orbit::MakeDateTime(1970, 1, 1).Days) * orbit::kSecondsPerDay;
  for (int group = 0; group < rows / 8; ++group) stamps.push_back(startS + (group + 0.5) * kLrptGroupS);
  for (int channel = 1; channel <= 2; ++channel) {
    QImage picture(1568, rows, QImage::Format_Grayscale8);
    picture.fill(80 * channel);
    const QString name = QStringLiteral("MSU-MR-%1.png").arg(channel);
    picture.save(QDir(folder).filePath(name));
    images.push_back({{"file", name.toStdString()}, {"name", std::to_string(channel)}});
  }
  const json product{
      {"instrument", "msu_mr"},
      {"type", "image"},
      {"images", images},
      {"projection_cfg",
       {{"type", "normal_single_line"},
        {"scan_angle", 110.6},
        {"image_width", 1568},
        {"roll_offset", 2.3},
        {"yaw_offset", 2.4},
        {"timestamp_offset", 0.2},
        {"timestamps", stamps},
        {"interpolate_timestamps", 8},
        {"interpolate_timestamps_scantime", kLrptGroupS / 8},
        {"tle",
         {{"norad", 40069},
          {"name", "METEOR M2"},
          {"line1", "1 40069U 14037A   22053.73745983  .00000001  00000-0  19577-4 0  9996"},
          {"line2", "2 40069  98.4414  76.7218 0004671 303.6169  56.4551 14.20698080395571"}}}}}};
  const auto bytes = json::to_cbor(product);
  files::ReplaceFile(
      QDir(folder).filePath(QStringLiteral("product.cbor")),
      QByteArray(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size())));
}

}  // namespace pelorin::tests
