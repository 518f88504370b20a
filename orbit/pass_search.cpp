#include "orbit/pass_search.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>

#include "orbit/comma_text.h"
#include "orbit/culminations.h"
#include "orbit/julian_date.h"
#include "orbit/look_angles.h"
#include "orbit/propagation.h"
#include "orbit/scalar_math.h"

namespace pelorin::orbit {
namespace {

/// No orbit round the Earth is shorter, or worth the search if longer. What claims to be shorter would have
/// more culminations than a search could end with.
constexpr double kShortestPeriodDays = 60 / kMinutesPerDay, kLongestPeriodDays = 366;
constexpr double kEdgeTolerance = 0.33 / kSecondsPerDay;  // a third of a second

/// Looks for the horizon in a turn before and a turn after a culmination.
constexpr int kLooks = 32;
/// A quarter of a turn away every low satellite has set. High ones are looked for further on.
constexpr int kLookOfHops = kLooks / 4;
constexpr int kFirstLook = 1;

/// Makes the passes of one satellite out of its culminations.
class PassSearch {
 public:
  PassSearch(const TSatellite& satellite, const Observer& observer, const PassRequest& request)
      : satellite_(satellite),
        request_(request),
        span_(SpanOf(satellite, request)),
        elevation_(satellite, observer,
                   Radians(std::clamp(request.MinimumElevationDeg, 0.0, kHighestMinElevationDeg))) {}

  std::vector<Pass> Run() {
    if (!(span_.Period >= kShortestPeriodDays && span_.Period <= kLongestPeriodDays)) return {};
    const std::vector<ElevationSample> hops = HopCulminations(elevation_, span_);
    std::vector<ElevationSample> missed = MissedCulminations(elevation_, span_, hops);
    std::vector<Pass> passes;
    for (const ElevationSample& top : hops) {
      if (const auto pass = DescribePass(top, kLookOfHops)) passes.push_back(*pass);
    }
    // A pass of hours may have two tops. The higher one is its culmination.
    std::sort(missed.begin(), missed.end(), [](const ElevationSample& a, const ElevationSample& b) {
      return a.AboveMinimum > b.AboveMinimum;
    });
    for (const ElevationSample& top : missed) {
      const bool isOfKnownPass = std::any_of(passes.begin(), passes.end(), [&top](const Pass& known) {
        return known.Aos < top.Jd && top.Jd < known.Los;
      });
      if (isOfKnownPass) continue;
      if (const auto pass = DescribePass(top, kFirstLook)) passes.push_back(*pass);
    }
    std::sort(passes.begin(), passes.end(),
              [](const Pass& a, const Pass& b) { return a.Culmination < b.Culmination; });
    return passes;
  }

 private:
  /// The days asked for, from 00:00 UTC on.
  static CulminationSpan SpanOf(const TSatellite& satellite, const PassRequest& request) {
    const DateTimeFields day = TakeApart(DatePart(request.Start));
    const double start = JulianDateOfYear(day.Year) + DayOfYear(day.Year, day.Month, day.Day);
    return {start, start + request.Days, satellite.PeriodDays(), satellite.IsDeepSpace};
  }

  /// The pass of a culmination. Nothing when the culmination lies outside of the span or below the minimum
  /// elevation, or when the satellite sets too soon or not for a turn.
  std::optional<Pass> DescribePass(const ElevationSample& top, int firstLook) {
    if (!(top.AboveMinimum > 0) || top.Jd > span_.To || top.Jd < span_.From) return std::nullopt;
    const std::optional<double> rise = FindRise(top.Jd, firstLook), set = FindSet(top.Jd, firstLook);
    if (!rise || !set) return std::nullopt;
    const double duration = std::round((*set - *rise) * kSecondsPerDay);
    if (!(duration > request_.MinimumDurationSeconds)) return std::nullopt;
    Geodetic below;
    SatLatLonAlt(top.State.Position, top.Jd, below);
    return Pass{*rise, top.Jd, *set,
                PassInfo{{DatePart(request_.Start).Days + (*rise - span_.From)},
                         top.State.Velocity.z < 0,
                         Degrees(below.Longitude),
                         Degrees(top.AboveMinimum + elevation_.MinElevationRad()),
                         static_cast<int>(duration),
                         satellite_.Name}};
  }

  std::optional<double> FindRise(double culmination, int firstLook) {
    const auto edge = LookForEdge(culmination, -1, firstLook);
    return edge ? std::optional(Bisect(edge->Below, edge->Above, true)) : std::nullopt;
  }
  std::optional<double> FindSet(double culmination, int firstLook) {
    const auto edge = LookForEdge(culmination, 1, firstLook);
    return edge ? std::optional(Bisect(edge->Above, edge->Below, false)) : std::nullopt;
  }

  /// A moment below the horizon before (`side` −1) or after (+1) a culmination, and the look next to it that
  /// was above. Nothing for a satellite that does not set for a turn.
  struct Edge {
    double Below, Above;
  };
  std::optional<Edge> LookForEdge(double culmination, int side, int firstLook) {
    double above = culmination;
    for (int look = firstLook; look <= kLooks; ++look) {
      const double t = culmination + side * span_.Period * (static_cast<double>(look) / kLooks);
      if (elevation_(t).AboveMinimum < 0) return Edge{t, above};
      above = t;
    }
    return std::nullopt;
  }

  /// The moment between `low` and `high` at which the horizon is crossed, upwards or downwards.
  double Bisect(double low, double high, bool rising) {
    double mid = (low + high) / 2;
    while (high - low > kEdgeTolerance) {
      mid = (low + high) / 2;
      const double value = elevation_(mid).AboveMinimum;
      if (rising ? value < 0 : value > 0) {
        low = mid;
      } else {
        high = mid;
      }
    }
    return mid;
  }

  const TSatellite& satellite_;
  const PassRequest request_;
  const CulminationSpan span_;
  ElevationFunction elevation_;
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
           satellite, observer, {startDateTime, days, minimumElevationDegrees, minimumDurationSeconds})) {
    records.push_back(pass.Record.ToText());
  }
  resultText = JoinCommaText(records);
}

TrueCulmination RefineCulmination(const TSatellite& satellite, const Observer& observer, const Pass& pass) {
  const ElevationFrame frame(observer);
  const auto elevation = [&](double jd) {
    return frame.Elevation(SatelliteStateKm(satellite, jd).Position, jd);
  };
  constexpr double tenthOfSecond = 0.1 / kSecondsPerDay;
  constexpr double golden = 0.6180339887498949;
  double low = pass.Aos, high = pass.Los;
  if (satellite.IsDeepSpace) {
    // A pass of hours may have two tops; around the higher one there is no other.
    constexpr int looks = 64;
    const double step = (high - low) / looks;
    double highest = low;
    for (int look = 1; look < looks; ++look) {
      if (elevation(low + look * step) > elevation(highest)) highest = low + look * step;
    }
    low = std::max(pass.Aos, highest - step);
    high = std::min(pass.Los, highest + step);
  }
  // Golden-section search.
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
