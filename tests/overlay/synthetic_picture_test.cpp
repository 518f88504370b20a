#include <gtest/gtest.h>

#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <set>

#include "files/atomic_file.h"
#include "orbit/julian_date.h"
#include "orbit/scalar_math.h"
#include "orbit/sidereal.h"
#include "overlay/opened_picture.h"
#include "overlay/overlay_generator.h"
#include "tests/support/tables.h"

/// Pictures of a made-up ground, rendered without the program's geometry: axes by numbers, zones by their
/// widths, rays followed step by step. Opened and mapped as any other, they must lie under their map.
namespace pelorin::overlay {
namespace {

using namespace Qt::StringLiterals;
using nlohmann::json;
using orbit::Vector;

constexpr double kRadiusKm = 6378.135, kSquareOfOval = 2 / 298.26 - 1 / (298.26 * 298.26);

Vector Sum(const Vector& a, const Vector& b, double times) {
  return {a.x + b.x * times, a.y + b.y * times, a.z + b.z * times, 0};
}
Vector Unit(const Vector& a) { return Sum({}, a, 1 / std::sqrt(Dot(a, a))); }

/// Radians; the latitude is that of the ellipsoid's normal through the place, found by steps.
struct Geodetic {
  double Latitude, Longitude;
};
Geodetic PlaceOf(const Vector& at) {
  const double toAxis = std::hypot(at.x, at.y);
  Geodetic place{std::atan2(at.z, toAxis * (1 - kSquareOfOval)), std::atan2(at.y, at.x)};
  for (int step = 0; step < 4; ++step) {
    const double sine = std::sin(place.Latitude);
    const double normalKm = kRadiusKm / std::sqrt(1 - kSquareOfOval * sine * sine);
    place.Latitude = std::atan2(at.z + kSquareOfOval * normalKm * sine, toAxis);
  }
  return place;
}

/// Above 0 outside of the ellipsoid, 0 on it.
double Above(const Vector& at) {
  return std::hypot(at.x, at.y, at.z / std::sqrt(1 - kSquareOfOval)) - kRadiusKm;
}

/// Degrees from the middle of a line, by the widths of its columns.
std::vector<double> AnglesOf(const swath::LineShape& line) {
  std::vector<double> widths(static_cast<std::size_t>(line.Columns), line.AngleDeg / line.Columns);
  if (line.Law == swath::ScanLaw::Zones) {
    for (int column = 0; column < line.Columns; ++column) {
      const int out = std::abs(column - line.Columns / 2);
      const double samples = out <= 78 ? 4 : out <= 188 ? 3 : out <= 271 ? 2 : out <= 333 ? 1.5 : 1;
      widths[static_cast<std::size_t>(column)] = samples * line.AngleDeg / 2047;
    }
  }
  double edge = 0;
  std::vector<double> angles;
  for (const double width : widths) {
    angles.push_back(edge + width / 2);
    edge += width;
  }
  for (double& angle : angles) angle -= edge / 2;
  return angles;
}

Vector OverTurningEarth(const orbit::TSatellite& satellite, double jd) {
  const Vector at = orbit::SatelliteStateKm(satellite, jd).Position;
  const double turn = orbit::ThetaGOfJulianDate(jd);
  return {at.x * std::cos(turn) + at.y * std::sin(turn), at.y * std::cos(turn) - at.x * std::sin(turn), at.z,
          0};
}

/// One grey for every minute of latitude, and one for every minute of longitude.
int GreyOf(int minute) { return static_cast<int>((static_cast<std::uint32_t>(minute) * 2654435761U) >> 24); }

QRgb ColourOf(const Geodetic& place) {
  const int south = static_cast<int>(std::lround((90 - orbit::Degrees(place.Latitude)) * 60));
  const int east = static_cast<int>(std::lround((orbit::Degrees(place.Longitude) + 180) * 60)) % 21600;
  return qRgb(GreyOf(south), GreyOf(east), 0);
}

/// What a scanner sees; lines at seconds after `jd`.
QImage Rendered(const orbit::TSatellite& satellite, const swath::Instrument& scanner,
                const swath::Attitude& off, double jd, const std::vector<double>& seconds) {
  QImage picture(scanner.Line.Columns, static_cast<int>(seconds.size()), QImage::Format_RGB32);
  const std::vector<double> angles = AnglesOf(scanner.Line);
  for (int line = 0; line < picture.height(); ++line) {
    const double now = jd + seconds[static_cast<std::size_t>(line)] / 86400, tick = 1.0 / 86400;
    const Vector at = OverTurningEarth(satellite, now);
    Vector flight = Sum(OverTurningEarth(satellite, now + tick), OverTurningEarth(satellite, now - tick), -1);
    // In space the flight goes on with the turn of the Earth, here for two seconds.
    if (!scanner.YawSteering) flight = Sum(flight, {-at.y, at.x, 0, 0}, 2 * 7.292115e-5);
    const Geodetic below = PlaceOf(at);
    const Vector up{std::cos(below.Latitude) * std::cos(below.Longitude),
                    std::cos(below.Latitude) * std::sin(below.Longitude), std::sin(below.Latitude), 0};
    const Vector across = Cross(at, flight), level = Unit(Sum(across, up, -Dot(across, up)));
    const Vector ahead = Cross(level, up);
    const double yaw = std::tan(orbit::Radians(off.YawDeg)), pitch = std::tan(orbit::Radians(off.PitchDeg));
    const Vector left = Unit(Sum(level, ahead, yaw));
    const Vector down = Unit(Sum(Sum({}, up, -1), Cross(left, up), pitch));
    double way = Above(at);
    for (int column = 0; column < picture.width(); ++column) {
      const double angle = orbit::Radians(angles[static_cast<std::size_t>(column)] + off.RollDeg);
      const Vector ray = Sum(Sum({}, down, std::cos(angle)), left, std::sin(angle));
      double above = Above(Sum(at, ray, way));
      for (int step = 0; step < 20 && std::fabs(above) > 1e-4; ++step) {
        way -= above / (Above(Sum(at, ray, way + 1)) - above);
        above = Above(Sum(at, ray, way));
      }
      picture.setPixel(column, line, ColourOf(PlaceOf(Sum(at, ray, way))));
    }
  }
  return picture;
}

/// The ground in one column or one row, as the map takes it.
QImage BaseImage(QSize size, int red, int green) {
  QImage base(size, QImage::Format_RGB32);
  for (int minute = 0; minute < size.width() * size.height(); ++minute) {
    base.setPixel(minute % size.width(), minute / size.width(),
                  qRgb(red * GreyOf(minute), green * GreyOf(minute), 0));
  }
  return base;
}

/// The share of a picture's pixels that have the ground of the map's pixel so many columns and lines on.
double Alike(const PlacedRecording& placed, const QImage& picture, const std::array<OverlayResult, 2>& maps,
             int columnsOn, int linesOn) {
  const swath::Recording &own = placed.Recording, &map = maps[0].Recording;
  int same = 0, all = 0;
  const auto at = [](const swath::Recording& recording, const QImage& image, int column, int line) {
    const int received = column + recording.FirstColumn;
    return image.pixel(recording.RunsLeft() ? image.width() - 1 - received : received,
                       recording.RowOfLine(line));
  };
  const int begin = std::max(1, -own.FirstColumn);
  for (int line = 1; line + 1 < own.Rows; line += 3) {
    for (int column = begin; column + 1 < own.SeenBy.Line.Columns; column += 7, ++all) {
      const QRgb seen = at(own, picture, column, line);
      same += qRed(seen) == qRed(at(map, maps[0].Map, column + columnsOn, line + linesOn)) &&
              qGreen(seen) == qGreen(at(map, maps[1].Map, column + columnsOn, line + linesOn));
    }
  }
  return static_cast<double>(same) / all;
}

/// What decoders do to a channel. A shifted one lacks what lies before its first column and row.
enum class Kept { Whole, Inverted, Shifted };
constexpr int kColumnsShifted = 10, kRowsShifted = 8;

enum class Told { ByName, ByNameTurned, ByProduct, ByStampsOfEight };

constexpr double kPacketS = 1.231141;

/// When lines were noted, Unix seconds, one stamp a group; `seconds` takes when they were seen.
json StampsOf(Told how, double rowsPerSecond, double startUnixS, std::vector<double>& seconds) {
  json stamps;
  const int perGroup = how == Told::ByStampsOfEight ? 8 : 1, groups = 192 / perGroup;
  for (int group = 0; group < groups; ++group) {
    // Ten packets were left out of the picture, and of one the stamp was lost.
    const int sent = how == Told::ByStampsOfEight && group >= 12 ? group + 10 : group;
    const double stamp = perGroup == 8 ? (sent + 0.5) * kPacketS : group / rowsPerSecond;
    stamps.push_back(perGroup == 8 && group == 5 ? -1 : startUnixS + stamp);
    for (int i = 0; i < perGroup; ++i) seconds.push_back(stamp + (i - perGroup / 2) * kPacketS / perGroup);
  }
  return stamps;
}

json GeometryOf(const swath::Instrument& scanner, const swath::Attitude& off, double lateS, Told how,
                const json& stamps) {
  const bool isOfZones = scanner.Line.Law == swath::ScanLaw::Zones;
  json geometry{{"type", isOfZones ? "noaa_apt_single_line" : "normal_single_line"},
                {"scan_angle", scanner.Line.AngleDeg},
                {"image_width", scanner.Line.Columns},
                {"roll_offset", off.RollDeg},
                {"pitch_offset", off.PitchDeg},
                {"yaw_offset", off.YawDeg},
                {"timestamp_offset", lateS},
                {"timestamps", stamps}};
  if (how == Told::ByStampsOfEight) {
    geometry["interpolate_timestamps"] = 8;
    geometry["interpolate_timestamps_scantime"] = 0.16;
  }
  return geometry;
}

void PutProduct(const QTemporaryDir& folder, const char* picture, Kept kept, json geometry) {
  const bool isOfPackets = geometry.contains("interpolate_timestamps");
  json image{{"file", picture}, {"name", "1"}};
  if (kept == Kept::Shifted) image["transform"] = {{"bx", kColumnsShifted}, {"by", kRowsShifted}};
  geometry["invert_scan"] = kept == Kept::Inverted;
  const auto bytes = json::to_cbor({{"instrument", isOfPackets ? "msu_mr" : "avhrr_3"},
                                    {"type", "image"},
                                    {"images", json::array({image})},
                                    {"projection_cfg", geometry}});
  files::ReplaceFile(
      folder.filePath(u"product.cbor"_s),
      QByteArray(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size())));
}

/// With the elements of the days in which its pictures were looked at.
orbit::TSatellite SatelliteOf(const std::string& name) {
  return name == "METEOR-M2 4" ? tests::ReferenceSatellite(name, "swath-elements.2li")
                               : tests::DemonstrationSatellite(name);
}

/// A moment at which the satellite flies south, or north.
orbit::TDateTime WhenBound(const orbit::TSatellite& satellite, bool south) {
  orbit::TDateTime moment{std::floor(orbit::DateTimeOfJulianDate(satellite.Epoch).Days) +
                          (8 * 3600 + 7) / 86400.0};
  const auto northKmS = [&] {
    return orbit::SatelliteStateKm(satellite, orbit::JulianDateOfDateTime(moment)).Velocity.z;
  };
  while (south ? northKmS() > -4 : northKmS() < 4) moment.Days += 1 / 1440.0;
  return moment;
}

TEST(SyntheticPicture, LiesUnderItsMap) {
  std::vector<std::string> problems;
  const swath::ScannerTable table = swath::LoadScannerTables({QStringLiteral(PELORIN_SCANNERS)}, problems);
  const QImage south = BaseImage({1, 10800}, 1, 0), east = BaseImage({21600, 1}, 0, 1);
  const struct {
    const char *Scanner, *Set;
    Told How;
    bool IsSouthBound;
    const char* Name;
    Kept As = Kept::Whole;
  } rows[] = {
      {"AVHRR APT", "NOAA 19", Told::ByProduct, true, "APT-A.png"},
      {"AVHRR APT", "NOAA 15", Told::ByNameTurned, false, "mmddhhnnss.png"},
      {"AVHRR HRPT", "NOAA 18", Told::ByName, true, "NOAA-18-yyyymmdd-hhnnss.png"},
      {"AVHRR AHRPT", "METOP-B", Told::ByProduct, false, "AVHRR-2.png"},
      {"MSU-MR LRPT", "METEOR M2", Told::ByStampsOfEight, true, "MSU-MR-1.png"},
      {"MSU-MR LRPT", "METEOR-M2 4", Told::ByName, true, "METEOR-M2-4_yyyymmdd_hhnnss.png"},
      {"MSU-MR LRPT", "METEOR-M2 4", Told::ByStampsOfEight, false, "MSU-MR-2.png", Kept::Inverted},
      {"MSU-MR LRPT", "METEOR-M2 4", Told::ByStampsOfEight, true, "MSU-MR-3.png", Kept::Shifted},
      {"MSU-MR HRPT", "METEOR M2-2", Told::ByName, false, "METEOR-M2-2_yyyymmdd_hhnnss.png"},
      {"VIRR AHRPT", "FENGYUN 3B", Told::ByName, true, "FY-3B_yyyymmdd_hhnnss.png"},
  };
  std::set<std::string> seen;
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.Scanner) + ' ' + row.Set + ' ' + row.Name);
    seen.insert(row.Scanner);
    const orbit::TSatellite satellite = SatelliteOf(row.Set);
    const auto flown = table.Of(satellite);
    const auto one = std::ranges::find(flown, row.Scanner, [](const auto& f) { return f.Instrument->Name; });
    ASSERT_NE(one, flown.end());
    swath::Instrument scanner = *one->Instrument;
    scanner.Line = one->Line();
    const orbit::TDateTime start = WhenBound(satellite, row.IsSouthBound);
    const bool isProduct = row.How == Told::ByProduct || row.How == Told::ByStampsOfEight;
    const double unixS = std::round((start.Days - orbit::MakeDateTime(1970, 1, 1).Days) * 86400);
    std::vector<double> seconds;
    const json stamps = StampsOf(row.How, scanner.RowsPerSecond, unixS, seconds);
    const swath::Attitude off = isProduct ? swath::Attitude{0.5, -0.7, 1.2} : one->Satellite->Offsets;
    const double lateS = isProduct ? 0.75 : 0;
    for (double& moment : seconds) moment += lateS;
    QImage file = Rendered(satellite, scanner, off, orbit::JulianDateOfDateTime(start), seconds);
    // Some recorders cut a little of the frame with the image, and turn it north up.
    if (row.How == Told::ByNameTurned)
      file = file.copy(-6, 0, file.width() + 6, file.height()).mirrored(true, true);
    if (row.As == Kept::Inverted) file = file.mirrored(true, false);
    if (row.As == Kept::Shifted) file = file.copy(file.rect().adjusted(kColumnsShifted, kRowsShifted, 0, 0));

    const QTemporaryDir folder;
    const QString path = folder.filePath(QString::fromStdString(orbit::FormatDateTime(row.Name, start)));
    ASSERT_TRUE(file.save(path));
    QFile stored(path);
    ASSERT_TRUE(stored.open(QFile::ReadWrite) &&
                stored.setFileTime(QDateTime({2022, 3, 1}, {12, 0}), QFile::FileModificationTime));
    stored.close();
    if (isProduct) PutProduct(folder, row.Name, row.As, GeometryOf(scanner, off, lateS, row.How, stamps));

    const OpenedPicture opened = OpenPicture(
        isProduct ? folder.path() : path, [](int) { return ClockOffsets(); }, table);
    EXPECT_EQ(opened.Problem, QString());
    const auto placed =
        PlaceRecording(opened, [&](orbit::TDateTime) { return std::optional(satellite); }, table, {});
    ASSERT_TRUE(placed && placed->Match.Problem.isEmpty());
    OverlayRequest request;
    request.Picture = placed->Recording;
    request.DurationMinutes = 0;
    const std::array<OverlayResult, 2> maps{GenerateOverlay(request, {{nullptr, &south}, nullptr}),
                                            GenerateOverlay(request, {{nullptr, &east}, nullptr})};
    EXPECT_GT(Alike(*placed, opened.Image, maps, 0, 0), 0.99);
    for (const auto& [columns, lines] : {std::pair{1, 0}, {-1, 0}, {0, 1}, {0, -1}}) {
      EXPECT_LT(Alike(*placed, opened.Image, maps, columns, lines), 0.45) << columns << ' ' << lines;
    }
  }
  for (const swath::Scanner& scanner : table.Scanners()) EXPECT_TRUE(seen.contains(scanner.Name));
}

}  // namespace
}  // namespace pelorin::overlay
