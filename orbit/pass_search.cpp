#include "orbit/pass_search.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "orbit/comma_text.h"
#include "orbit/julian_date.h"
#include "orbit/look_angles.h"
#include "orbit/propagation.h"
#include "orbit/scalar_math.h"

namespace pelorin::orbit {
namespace {

/// The elevation function at one moment: height above the minimum elevation (radians) and the state it came
/// from.
struct Sample {
  double jd = 0;
  double value = 0;
  SatelliteState state;
};

struct Maximum {
  bool converged = false;
  Sample top;
};

class PassSearch {
 public:
  PassSearch(const TSatellite& satellite, const Observer& observer, const PassRequest& request)
      : satellite_(satellite),
        frame_(observer),
        request_(request),
        minElevation_(Radians(std::clamp(request.MinimumElevationDeg, 0.0, kHighestMinElevationDeg))),
        period_(satellite.PeriodDays()) {
    const DateTimeFields day = TakeApart(DatePart(request.Start));
    jd0_ = JulianDateOfYear(day.Year) + DayOfYear(day.Year, day.Month, day.Day);
    jdEnd_ = jd0_ + request.Days;
  }

  std::vector<Pass> Run() {
    if (!(period_ >= kShortestPeriod) || !std::isfinite(period_)) return {};
    Hop(kLeadIn);
    std::vector<Pass> passes = std::move(passes_);
    // The first culmination found may be one of a satellite far below the horizon; from there the windows
    // need some turns to fall into step with the passes. What they hop over meanwhile, a longer lead-in
    // finds.
    jdEnd_ = std::min(jdEnd_, jd0_ + kTurnsIntoStep * period_);
    Hop(kLeadIn + kTurnsIntoStep);
    for (Pass& pass : passes_) {
      const bool isKnown = std::any_of(passes.begin(), passes.end(), [&](const Pass& known) {
        return std::abs(known.Culmination - pass.Culmination) < 0.2 * period_;
      });
      if (!isKnown) passes.push_back(std::move(pass));
    }
    std::sort(passes.begin(), passes.end(),
              [](const Pass& a, const Pass& b) { return a.Culmination < b.Culmination; });
    return passes;
  }

 private:
  /// From culmination to culmination, beginning some periods before the span.
  void Hop(double leadIn) {
    passes_.clear();
    const double step = 0.4 * period_;
    std::optional<Sample> culmination = NextCulmination(jd0_ - leadIn * period_);
    if (!culmination) return;
    // The first culmination counts too when it lies in the span, unless the next one found is the same again.
    std::optional<Sample> first = culmination;
    double t = culmination->jd;
    while (t <= jdEnd_) {
      // The windows, each a step wide, in the order of their numbers 2, 1, 3, 4, … steps after the last
      // culmination: first where the next one is due, then from the beginning. A window's end is the next
      // one's start to the bit.
      const auto window = [&](int number) {
        return GoldenMaximum(t + number * step, t + (number + 1) * step);
      };
      Maximum next = window(2);
      for (int number = 1; !next.converged && t + number * step <= jdEnd_; ++number) {
        if (number != 2) next = window(number);
      }
      if (first) {
        if (!next.converged || next.top.jd - first->jd > 0.2 * period_) DescribePass(*first);
        first.reset();
      }
      if (!next.converged) break;
      t = next.top.jd;
      DescribePass(next.top);
    }
  }

  /// No orbit round the Earth is shorter; what claims to be would have more culminations than a search could
  /// end with.
  static constexpr double kShortestPeriod = 60 / kMinutesPerDay;
  /// Periods before the span at which the search begins, and those in which its windows may be out of step.
  static constexpr double kLeadIn = 1.2;
  static constexpr double kTurnsIntoStep = 4;
  static constexpr double kTolerance = 1 / kMinutesPerDay;         // one minute
  static constexpr double kEdgeTolerance = 0.33 / kSecondsPerDay;  // a third of a second
  /// Enough for the windows of low orbits. Those of deep-space orbits are hours wide.
  static constexpr int kGoldenRounds = 15;
  static constexpr int kDeepSpaceRounds = 45;

  /// No moment is propagated twice while its neighbours are still in use: windows share their ends.
  Sample F(double jd) {
    for (const Sample& known : recent_) {
      if (known.jd == jd) return known;
    }
    Sample sample{jd, 0, SatelliteStateKm(satellite_, jd)};
    sample.value = frame_.Elevation(sample.state.Position, jd) - minElevation_;
    return sample;
  }

  /// An end of a window, kept for the windows that begin or end there.
  Sample End(double jd) {
    const Sample sample = F(jd);
    recent_[nextRecent_++ % recent_.size()] = sample;
    return sample;
  }

  /// The highest moment between `start` and `end`, to a minute; not converged when the top is not inside.
  Maximum GoldenMaximum(double start, double end) {
    if (end < start) return {};
    Sample a = End(start), b = End(end);
    double width = end - start;
    const int rounds = satellite_.IsDeepSpace ? kDeepSpaceRounds : kGoldenRounds;
    for (int round = 0; round < rounds && width > kTolerance; ++round) {
      const double nearer = b.value <= a.value ? 0.38 : 0.62;
      const Sample x = F(nearer * b.jd + (1 - nearer) * a.jd);
      if (round == 0 && (x.value < a.value || x.value < b.value)) break;
      const Sample m = F((a.jd + x.jd) / 2);
      if (m.value < x.value) {
        a = m;
      } else {
        b = x;
      }
      width = b.jd - a.jd;
    }
    return {width <= kTolerance, a};
  }

  /// Nothing when the windows run beyond the span: an orbit without culminations.
  std::optional<Sample> NextCulmination(double start) {
    const double width = 0.25 * period_;
    for (double t = start; t <= jdEnd_; t += width * 2 / 3) {
      const Maximum maximum = GoldenMaximum(t, t + width);
      if (maximum.converged) return maximum.top;
    }
    return std::nullopt;
  }

  /// Bisection for the horizon between `low` and `high`; `rising` tells which way it is crossed.
  double FindEdge(double low, double high, bool rising) {
    double mid = (low + high) / 2;
    while (high - low > kEdgeTolerance) {
      mid = (low + high) / 2;
      const double value = F(mid).value;
      if (rising ? value < 0 : value > 0) {
        low = mid;
      } else {
        high = mid;
      }
    }
    return mid;
  }
  /// A moment below the horizon before (`side` −1) or after (+1) the culmination, and the moment next to it
  /// that may be above. A quarter of a turn away every low satellite has set; high ones are looked for all
  /// round their orbit. Nothing for one that never sets.
  struct Bracket {
    double below, above;
  };
  std::optional<Bracket> BracketEdge(double tMax, int side) {
    constexpr int looks = 24;
    double above = tMax;
    for (int look = 0; look <= looks; ++look) {
      const double t = tMax + side * period_ * (0.25 + 0.75 * look / looks);
      if (F(t).value < 0) return Bracket{t, above};
      above = t;
    }
    return std::nullopt;
  }
  std::optional<double> FindRise(double tMax) {
    const auto bracket = BracketEdge(tMax, -1);
    return bracket ? std::optional(FindEdge(bracket->below, bracket->above, true)) : std::nullopt;
  }
  std::optional<double> FindSet(double tMax) {
    const auto bracket = BracketEdge(tMax, 1);
    return bracket ? std::optional(FindEdge(bracket->above, bracket->below, false)) : std::nullopt;
  }

  void DescribePass(const Sample& top) {
    if (!(top.value > 0) || top.jd > jdEnd_ || top.jd < jd0_) return;
    const std::optional<double> rise = FindRise(top.jd), set = FindSet(top.jd);
    if (!rise || !set) return;
    Pass pass{*rise, top.jd, *set, {}};
    const double duration = std::round((pass.Los - pass.Aos) * kSecondsPerDay);
    if (!(duration > request_.MinimumDurationSeconds)) return;
    Geodetic below;
    SatLatLonAlt(top.state.Position, top.jd, below);
    const TDateTime aos{DatePart(request_.Start).Days + (pass.Aos - jd0_)};
    pass.Record = {aos,
                   top.state.Velocity.z < 0,
                   Degrees(below.Longitude),
                   Degrees(top.value + minElevation_),
                   static_cast<int>(duration),
                   satellite_.Name};
    passes_.push_back(std::move(pass));
  }

  const TSatellite& satellite_;
  ElevationFrame frame_;
  PassRequest request_;
  double minElevation_, period_;
  double jd0_ = 0, jdEnd_ = 0;
  std::array<Sample, 4> recent_{};
  std::size_t nextRecent_ = 0;
  std::vector<Pass> passes_;
};

}  // namespace

std::vector<Pass> SearchPasses(const TSatellite& satellite, const Observer& observer,
                               const PassRequest& request) {
  return PassSearch(satellite, observer, request).Run();
}

void FindPasses(const TSatellite& satellite, int minimumDurationSeconds, int days, std::string& resultText,
                const Observer& observer, double minimumElevationDegrees, TDateTime startDateTime) {
  std::vector<std::string> records;
  for (const Pass& pass : SearchPasses(
           satellite, observer, {startDateTime, days, minimumDurationSeconds, minimumElevationDegrees})) {
    records.push_back(pass.Record.ToText());
  }
  resultText = JoinCommaText(records);
}

TrueCulmination RefineCulmination(const TSatellite& satellite, const Observer& observer, const Pass& pass) {
  const ElevationFrame frame(observer);
  const auto elevation = [&](double jd) {
    return frame.Elevation(SatelliteStateKm(satellite, jd).Position, jd);
  };
  // Golden-section search; a low satellite's elevation has a single top between rise and set.
  constexpr double tenthOfSecond = 0.1 / kSecondsPerDay;
  constexpr double golden = 0.6180339887498949;
  double low = pass.Aos, high = pass.Los;
  double x1 = high - golden * (high - low), x2 = low + golden * (high - low);
  double e1 = elevation(x1), e2 = elevation(x2);
  while (high - low > tenthOfSecond) {
    if (e1 < e2) {
      low = x1;
      x1 = x2;
      e1 = e2;
      x2 = low + golden * (high - low);
      e2 = elevation(x2);
    } else {
      high = x2;
      x2 = x1;
      e2 = e1;
      x1 = high - golden * (high - low);
      e1 = elevation(x1);
    }
  }
  return e1 > e2 ? TrueCulmination{x1, e1} : TrueCulmination{x2, e2};
}

}  // namespace pelorin::orbit
