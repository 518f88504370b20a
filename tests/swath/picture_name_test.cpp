#include "swath/picture_name.h"

#include <gtest/gtest.h>

#include <string>

namespace pelorin::swath {
namespace {

using namespace Qt::StringLiterals;

/// "2024-01-04 11:25:44 UTC | NOAA 18 | 137.9125 map corrected"; what a name does not tell is left out.
std::string Told(const char* path) {
  const PictureName name = ReadPictureName(QString::fromUtf8(path));
  std::string told;
  if (name.Start) {
    told = FormatDateTime(name.YearIsKnown ? "yyyy-mm-dd hh:nn" : "mm-dd hh:nn", *name.Start);
    if (name.SecondIsKnown) told += FormatDateTime(":ss", *name.Start);
    if (name.IsUtc) told += " UTC";
  }
  told += "|" + name.Satellite.toStdString() + "|";
  if (name.FrequencyMHz) told += QString::number(*name.FrequencyMHz, 'g', 10).toStdString();
  if (name.IsProjected) told += " map";
  if (name.IsCorrected) told += " corrected";
  return told;
}

TEST(PictureName, EveryWayToNameAPictureIsRead) {
  const std::pair<const char*, const char*> rows[] = {
      // A minute or a second of a year that is not told, and nothing else of this kind.
      {"05211525V.png", "05-21 15:25||"},
      {"/a/0229000059-C.jpg", "02-29 00:00:59||"},
      {"0521152575.png", "05-21 15:25||"},
      {"05211525123.png", "05-21 15:25||"},
      {"2024-03-10_00-22/05211525.png", "05-21 15:25||"},
      {"05211525/MSU-MR-1.png", "||"},
      {"x05211525.png", "||"},
      // Decoders, stations and recorders.
      {"2024-03-10_00-22_noaa_apt_137.9125 MHz/avhrr_3_rgb_221.png", "2024-03-10 00:22||137.9125"},
      {"2024-04-09_00-18-23_meteor_m2-x_lrpt", "2024-04-09 00:18:23||"},
      {"2025-04-12_19-35_METEOR-M2-4/MSU-MR/MSU-MR-1.png", "2025-04-12 19:35|METEOR-M2 4|"},
      {"a/2025-04-12_19-35/b/c/MSU-MR-1.png", "||"},
      {"NOAA-18-20240104-112544.png", "2024-01-04 11:25:44|NOAA 18|"},
      {"METEOR-M2-4_20250412_193512_rgb_221_map.png", "2025-04-12 19:35:12|METEOR-M2 4| map"},
      {"gqrx_20220101_143000_137912500.png", "2022-01-01 14:30:00 UTC||137.9125"},
      {"SDR_20220101_143000Z_137100000Hz_AF.wav", "2022-01-01 14:30:00 UTC||137.1"},
      {"2024-03-10T00:22:05Z.png", "2024-03-10 00:22:05 UTC||"},
      {"20240310T0022Z.png", "2024-03-10 00:22 UTC||"},
      {"2024-03-10 00.22.05 UTC.png", "2024-03-10 00:22:05 UTC||"},
      {"2024-03-10_00-22_Zenith.png", "2024-03-10 00:22||"},
      {"199912312359.png", "1999-12-31 23:59||"},
      {"noaa_19_20240229235959.png", "2024-02-29 23:59:59|NOAA 19|"},
      {"2024-03-10_00-22-137.9MHz.png", "2024-03-10 00:22||137.9"},
      // No moments, and moments behind them.
      {"2024-13-10_00-22.png", "||"},
      {"2023-02-29_00-22.png", "||"},
      {"2024-03-10_25-22.png", "||"},
      {"20240104112575.png", "||"},
      {"196912312359.png", "||"},
      {"210001010000.png", "||"},
      {"120240104112544.png", "||"},
      {"2024010411254.png", "||"},
      {"2024-13-10_00-22_20240310-0022.png", "2024-03-10 00:22||"},
      {"02301200_2024-03-10_00-22.png", "2024-03-10 00:22||"},
      {"", "||"},
      // What was done to a picture is told by a word of its own name.
      {"MSU-MR_rgb_221_corrected_map.png", "|| map corrected"},
      {"2024-03-10_00-22_map/roadmap_maps.png", "2024-03-10 00:22||"},
      {"map_uncorrected.map", "||"},
  };
  for (const auto& [path, told] : rows) EXPECT_EQ(Told(path), told) << path;
}

TEST(PictureName, SpellingsOfASatelliteAreOne) {
  const std::pair<const char*, const char*> rows[] = {
      {"NOAA 18 [B]", "NOAA 18"},
      {"noaa19", "NOAA 19"},
      {"NOAA-2024-01-04", ""},
      {"METEOR M2-3", "METEOR-M2 3"},
      {"meteor_m_n2-4_x", "METEOR-M2 4"},
      {"METEOR-M2_20250412", "METEOR-M 2"},
      {"METEOR M2", "METEOR-M 2"},
      {"METEOR-M", "METEOR-M 1"},
      {"METEOR 3-5", "METEOR 3-5"},
      {"MetOp_B_ahrpt", "METOP-B"},
      {"metopic", ""},
      {"FY-3D", "FENGYUN 3D"},
      {"FENGYUN 3C", "FENGYUN 3C"},
      {"ISS", ""},
  };
  for (const auto& [name, common] : rows) {
    EXPECT_EQ(CommonSatelliteName(QString::fromUtf8(name)).toStdString(), common) << name;
  }
}

TEST(PictureName, YearIsThatOfTheFileUnlessItCannotBe) {
  const struct {
    const char *name, *changed;
    int year;
    bool isPossible;
  } rows[] = {
      {"05211525.png", "2019-06-01T00:00:00", 2019, true},
      {"05211525.png", "2019-05-21T05:25:00", 2019, true},
      {"12312355.png", "2020-01-01T00:10:00", 2020, false},
      {"02291200.png", "2023-12-01T00:00:00", 2023, false},
      {"02291200.png", "2024-12-01T00:00:00", 2024, true},
  };
  for (const auto& row : rows) {
    const YearOfFile year = YearByFile(ReadPictureName(QString::fromLatin1(row.name)),
                                       QDateTime::fromString(QString::fromLatin1(row.changed), Qt::ISODate));
    EXPECT_EQ(year.Year, row.year) << row.name << " of " << row.changed;
    EXPECT_EQ(year.IsPossible, row.isPossible) << row.name << " of " << row.changed;
  }
}

}  // namespace
}  // namespace pelorin::swath
