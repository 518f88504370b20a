// Makes Countries.dat, the polygons that the overlay master and the map backdrop are drawn from.

#include <QFile>
#include <array>
#include <utility>

#include "files/atomic_file.h"
#include "tools/countries_file.h"
#include "tools/gshhg_source.h"
#include "tools/maker.h"

namespace pelorin::tools {
namespace {

/// Half the unit of the file: simplifying this much cannot be seen in it.
constexpr double kToleranceMin = 0.5;

/// An island of 5 km² is hardly a pixel of a picture, but alone in the sea it is a mark to steer by. A lake
/// is a mark only when it is some pixels wide; the thousands of smaller ones would cover Canada and
/// Finland with boundary colour.
double SmallestKm2(Level level) {
  switch (level) {
    case Level::Land:
      return 5;
    case Level::Lake:
      return 50;
    case Level::IslandInLake:
    case Level::PondOnIsland:
      return 25;
  }
  return 0;
}

std::uint8_t KindOf(Level level) {
  return level == Level::Lake || level == Level::PondOnIsland ? overlay::kWaterRecord : overlay::kLandRecord;
}

void MakeCountries(const char* shorelineFile, const char* borderFile, const char* output) {
  std::vector<CountryRecord> records;
  for (const Shoreline& shoreline : ReadShorelines(shorelineFile)) {
    if (shoreline.AreaKm2 < SmallestKm2(shoreline.Kind)) continue;
    for (std::vector<overlay::PolyPoint>& shape : FileShapes(shoreline.Coast, kToleranceMin)) {
      records.push_back({KindOf(shoreline.Kind), std::move(shape)});
    }
  }
  for (const Points& border : ReadNationalBorders(borderFile)) {
    std::vector<overlay::PolyPoint> line = Round(Simplify(border, kToleranceMin, false), false);
    if (line.size() >= 2) records.push_back({overlay::kBorderRecord, std::move(line)});
  }
  files::ReplaceFile(QFile::decodeName(output), EncodeRecords(records));
}

}  // namespace
}  // namespace pelorin::tools

int main(int argc, char** argv) {
  return pelorin::tools::RunMaker(argc, argv, 3, "<shorelines.nc> <borders.nc> <Countries.dat>",
                                  [&] { pelorin::tools::MakeCountries(argv[1], argv[2], argv[3]); });
}
