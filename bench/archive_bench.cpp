// How long it takes to find the set nearest to a moment in a year's archive: 60 satellites, two sets a day.

#include <benchmark/benchmark.h>

#include <QTemporaryDir>
#include <cstdio>
#include <fstream>
#include <map>
#include <string>

#include "elements/known_sets.h"
#include "orbit/date_time.h"
#include "orbit/julian_date.h"

namespace pelorin {
namespace {

constexpr int kSatellites = 60, kSetsPerDay = 2, kFirstNumber = 10000;
constexpr double kMayJd = 2460811.3;  // 15 May 2025

/// The line with its checksum: digits count as they are, a minus as one.
std::string Checked(const std::string& line) {
  int sum = 0;
  for (const char c : line) sum += c == '-' ? 1 : c >= '0' && c <= '9' ? c - '0' : 0;
  return line + static_cast<char>('0' + sum % 10) + "\r\n";
}

struct YearsArchive {
  QTemporaryDir Folder;

  YearsArchive() {
    std::map<std::string, std::ofstream> months;
    for (int half = 0; half < 365 * kSetsPerDay; ++half) {
      const double day = 1 + half / static_cast<double>(kSetsPerDay);
      const orbit::TDateTime moment{orbit::MakeDateTime(2025, 1, 1).Days + day - 1};
      const std::string month = orbit::FormatDateTime("yyyy-mm", moment);
      if (!months.contains(month)) {
        months[month].open(Folder.filePath(QString::fromStdString(month + ".2li")).toStdString(),
                           std::ios::binary);
      }
      for (int satellite = 0; satellite < kSatellites; ++satellite) {
        char first[80], second[80];
        std::snprintf(first, sizeof first, "1 %05dU 91032A   25%012.8f  .00000272  00000-0  13981-3 0  148",
                      kFirstNumber + satellite, day);
        std::snprintf(second, sizeof second,
                      "2 %05d  98.5313  39.9325 0013250   4.9627 355.1680 14.2295046240111",
                      kFirstNumber + satellite);
        months[month] << "SATELLITE " << satellite << "\r\n" << Checked(first) << Checked(second);
      }
    }
  }
};

const YearsArchive& Archive() {
  static const YearsArchive archive;
  return archive;
}

bool Finds(elements::KnownSets& known, int satellite) {
  return known.FindNearest(std::to_string(kFirstNumber + satellite), kMayJd).has_value();
}

/// As on a first question after the start: the index and one month are read.
void ArchiveFirstSet(benchmark::State& state) {
  {
    // The index is written by whoever asks first.
    elements::KnownSets known({}, Archive().Folder.path());
    if (!Finds(known, 0)) state.SkipWithError("no set found");
  }
  for (auto _ : state) {
    elements::KnownSets known({}, Archive().Folder.path());
    benchmark::DoNotOptimize(Finds(known, 7));
  }
}
BENCHMARK(ArchiveFirstSet)->Unit(benchmark::kMillisecond);

/// Another satellite of the same days.
void ArchiveNextSet(benchmark::State& state) {
  elements::KnownSets known({}, Archive().Folder.path());
  if (!Finds(known, 0)) state.SkipWithError("no set found");
  int satellite = 0;
  for (auto _ : state) benchmark::DoNotOptimize(Finds(known, ++satellite % kSatellites));
}
BENCHMARK(ArchiveNextSet)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace pelorin
