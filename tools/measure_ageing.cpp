// Measures what age costs element sets: set-ageing.json out of a folder that holds many sets of each
// satellite.

#include <QFile>
#include <cstdio>
#include <filesystem>

#include "elements/known_sets.h"
#include "files/atomic_file.h"
#include "tools/ageing.h"
#include "tools/maker.h"

namespace pelorin::tools {
namespace {

constexpr double kLongestDays = 60;
/// Ninety per cent of fewer say little.
constexpr int kFewestComparisons = 50;

void Measure(const char* folder, const char* output) {
  std::vector<orbit::TSatellite> sets;
  const elements::KnownSets known(folder, {});
  for (const elements::NamedSet& named : known.Loaded()) sets.push_back(named.Set);
  elements::SetAgeing ageing;
  for (const auto& [name, report] : MeasureAgeing(sets, kLongestDays, kFewestComparisons)) {
    ageing.Laws[name] = report.Law;
    std::printf("%s: %d sets of %d satellites\n", name.c_str(), report.Law.Sets, report.Law.Satellites);
    for (const AgeingReport::Band& band : report.Bands) {
      std::printf("  up to %2.0f days  %5d comparisons  bound %7.1f km  %3.0f %% within\n", band.Days,
                  band.Comparisons, report.Law.BoundKm(band.Days), 100 * band.Within);
    }
  }
  files::ReplaceFile(QFile::decodeName(output), ageing.ToJson());
}

}  // namespace
}  // namespace pelorin::tools

int main(int argc, char** argv) {
  return pelorin::tools::RunMaker(argc, argv, 2, "<folder of element sets> <set-ageing.json>",
                                  [&] { pelorin::tools::Measure(argv[1], argv[2]); });
}
