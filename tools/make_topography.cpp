// Makes etopo5.elev, the heights of the Earth that ground images and the map backdrop are coloured by.

#include <QFile>
#include <QtEndian>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>

#include "files/atomic_file.h"
#include "tools/elevation_grid.h"
#include "tools/maker.h"
#include "tools/netcdf_file.h"

namespace pelorin::tools {
namespace {

/// The source: 5′ nodes, row 0 at 90° S, column 0 at Greenwich, both poles but Greenwich only once.
constexpr std::size_t kSourceRows = 2161;
constexpr std::size_t kSourceColumns = 4320;

void MakeTopography(const std::string& source, const char* output) {
  const NetcdfFile file(source);
  if (file.Shape("ROSE") != std::vector<std::size_t>{kSourceRows, kSourceColumns}) {
    throw std::runtime_error(source + ": not a 5-minute grid of the whole Earth");
  }
  const std::vector<int> heights = file.Integers("ROSE");
  QByteArray bytes(qsizetype{sizeof(std::int16_t)} * ElevationGrid::kRows * ElevationGrid::kColumns, '\0');
  char* at = bytes.data();
  // From the north pole down; the last source row, the south pole, has no place in the file.
  for (int row = 0; row < ElevationGrid::kRows; ++row) {
    const std::size_t sourceRow = kSourceRows - 1 - static_cast<std::size_t>(row);
    for (int column = 0; column < ElevationGrid::kColumns; ++column) {
      const int height =
          heights[sourceRow * kSourceColumns + static_cast<std::size_t>(column) % kSourceColumns];
      if (height < std::numeric_limits<std::int16_t>::min() ||
          height > std::numeric_limits<std::int16_t>::max()) {
        throw std::runtime_error(source + ": a height is missing");
      }
      qToLittleEndian(static_cast<std::int16_t>(height), at);
      at += sizeof(std::int16_t);
    }
  }
  files::ReplaceFile(QFile::decodeName(output), bytes);
}

}  // namespace
}  // namespace pelorin::tools

int main(int argc, char** argv) {
  return pelorin::tools::RunMaker(argc, argv, 2, "<etopo5.cdf> <etopo5.elev>",
                                  [&] { pelorin::tools::MakeTopography(argv[1], argv[2]); });
}
