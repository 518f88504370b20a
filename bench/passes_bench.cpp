#include <benchmark/benchmark.h>

#include "orbit/element_file.h"
#include "passes/ephemeris_file.h"
#include "passes/ephemeris_report.h"

namespace {

using namespace pelorin;

passes::EphemerisRequest YearForTwentySatellites() {
  std::vector<orbit::RejectedSet> rejected;
  auto sets = orbit::ReadAllElementSets(PELORIN_DEMO_ELEMENTS, rejected);
  std::erase_if(sets, [](const orbit::TSatellite& set) { return set.IsDeepSpace; });
  sets.resize(20);
  return {sets, orbit::MakeDateTime(2022, 2, 23), 365, orbit::ObserverFromDegrees(55.905, -3.2, 150), 1.5};
}

passes::EphemerisOutput ReportOf(const passes::EphemerisRequest& request) {
  passes::EphemerisOutput report{{}, {}, passes::StationText(request.Station), request.StartDate};
  MakeEphemeris(request, [&report](const passes::EphemerisDay& day) {
    report.Lines += day.Lines;
    report.Passes.insert(report.Passes.end(), day.Passes.begin(), day.Passes.end());
    return true;
  });
  return report;
}

void EphemerisOfAYearForTwentySatellites(benchmark::State& state) {
  const passes::EphemerisRequest request = YearForTwentySatellites();
  std::size_t count = 0;
  for (auto _ : state) count = ReportOf(request).Passes.size();
  state.counters["passes"] = static_cast<double>(count);
}
BENCHMARK(EphemerisOfAYearForTwentySatellites)->Unit(benchmark::kMillisecond);

void CalendarOfThatYear(benchmark::State& state) {
  const passes::EphemerisOutput report = ReportOf(YearForTwentySatellites());
  for (auto _ : state) benchmark::DoNotOptimize(EphemerisCalendar(report));
}
BENCHMARK(CalendarOfThatYear)->Unit(benchmark::kMillisecond);

}  // namespace
