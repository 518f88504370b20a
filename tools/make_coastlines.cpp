// Makes Coastlines.dat, the fine coasts, lakes and borders that are drawn over received pictures.

#include <QFile>
#include <utility>

#include "files/atomic_file.h"
#include "tools/fine_lines_file.h"
#include "tools/gshhg_source.h"
#include "tools/maker.h"

namespace pelorin::tools {
namespace {

/// Half of all islands are smaller, and no more than a speck in a pixel of 1 km; of lakes there are hardly
/// any. Nothing is thinned here: the source is already, to 0.2 km, and 0.05′ more would save a hundredth.
constexpr double kSmallestKm2 = 0.5;

lines::LineKind KindOf(Level level) {
  return level == Level::Land ? lines::LineKind::Coast : lines::LineKind::Lake;
}

void MakeCoastlines(const char* shorelineFile, const char* borderFile, const char* output) {
  std::vector<SourceLine> lines;
  for (const Shoreline& shoreline : ReadShorelines(shorelineFile)) {
    if (shoreline.AreaKm2 < kSmallestKm2) continue;
    lines.push_back({KindOf(shoreline.Kind), OutlineOf(shoreline.Coast)});
  }
  for (const Points& border : ReadNationalBorders(borderFile)) {
    lines.push_back({lines::LineKind::Border, border});
  }
  files::ReplaceFile(QFile::decodeName(output), EncodeFineLines(lines));
}

}  // namespace
}  // namespace pelorin::tools

int main(int argc, char** argv) {
  return pelorin::tools::RunMaker(argc, argv, 3, "<shorelines.nc> <borders.nc> <Coastlines.dat>",
                                  [&] { pelorin::tools::MakeCoastlines(argv[1], argv[2], argv[3]); });
}
