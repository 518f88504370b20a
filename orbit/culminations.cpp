#include "orbit/culminations.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "orbit/date_time.h"

namespace pelorin::orbit {
namespace {

using Sample = ElevationSample;

constexpr double kTolerance = 1 / kMinutesPerDay;  // one minute

/// Rounds in which a window is narrowed down. The few are enough for the hops of low orbits; windows of
/// deep-space orbits are hours wide.
constexpr int kFewRounds = 15;
constexpr int kManyRounds = 45;

/// The highest moment between `start` and `end`, to a minute; nothing when the top is not inside. A window
/// sees only tops in its middle: the first look, 0.38 of its width from one end, must be above both ends.
std::optional<Sample> GoldenMaximum(ElevationFunction& f, double start, double end, int rounds) {
  if (end < start) return std::nullopt;
  Sample a = f.Keep(start), b = f.Keep(end);
  double width = end - start;
  for (int round = 0; round < rounds && width > kTolerance; ++round) {
    const double nearer = b.AboveMinimum <= a.AboveMinimum ? 0.38 : 0.62;
    const Sample x = f(nearer * b.Jd + (1 - nearer) * a.Jd);
    if (round == 0 && (x.AboveMinimum < a.AboveMinimum || x.AboveMinimum < b.AboveMinimum)) break;
    const Sample m = f((a.Jd + x.Jd) / 2);
    if (m.AboveMinimum < x.AboveMinimum) {
      a = m;
    } else {
      b = x;
    }
    width = b.Jd - a.Jd;
  }
  return width <= kTolerance ? std::optional(a) : std::nullopt;
}

/// The first culmination from `start` on that a window sees. Nothing when the windows run beyond the span: an
/// orbit without culminations.
std::optional<Sample> NextCulmination(ElevationFunction& f, const CulminationSpan& span, double start,
                                      int rounds) {
  const double width = 0.25 * span.Period;
  for (double t = start; t <= span.To; t += width * 2 / 3) {
    if (const auto top = GoldenMaximum(f, t, t + width, rounds)) return top;
  }
  return std::nullopt;
}

/// Whether all of a stretch is within `apart` of one of the culminations, which are in time order.
bool IsNearOneOf(const std::vector<Sample>& culminations, double from, double to, double apart) {
  const auto next = std::lower_bound(culminations.begin(), culminations.end(), to - apart,
                                     [](const Sample& sample, double jd) { return sample.Jd < jd; });
  return next != culminations.end() && next->Jd <= from + apart;
}

}  // namespace

Sample ElevationFunction::operator()(double jd) {
  for (const Sample& known : kept_) {
    if (known.Jd == jd) return known;
  }
  Sample sample{jd, 0, SatelliteStateKm(satellite_, jd)};
  sample.AboveMinimum = frame_.Elevation(sample.State.Position, jd) - minElevationRad_;
  return sample;
}

Sample ElevationFunction::Keep(double jd) {
  const Sample sample = (*this)(jd);
  kept_[nextKept_++ % kept_.size()] = sample;
  return sample;
}

std::vector<Sample> HopCulminations(ElevationFunction& f, const CulminationSpan& span) {
  const int rounds = span.IsDeepSpace ? kManyRounds : kFewRounds;
  const double step = 0.4 * span.Period;
  std::vector<Sample> found;
  std::optional<Sample> last = NextCulmination(f, span, span.From - 1.2 * span.Period, rounds);
  while (last && last->Jd <= span.To) {
    const double t = last->Jd;
    // The windows, each a step wide, in the order of their numbers 2, 1, 3, 4, … steps after the last
    // culmination: first where the next one is due, then from the beginning. A window's end is the next
    // one's start to the bit.
    const auto window = [&](int number) {
      return GoldenMaximum(f, t + number * step, t + (number + 1) * step, rounds);
    };
    last = window(2);
    for (int number = 1; !last && t + number * step <= span.To; ++number) {
      if (number != 2) last = window(number);
    }
    if (last) found.push_back(*last);
  }
  return found;
}

std::vector<Sample> MissedCulminations(ElevationFunction& f, const CulminationSpan& span,
                                       const std::vector<Sample>& found) {
  // Each window begins in the middle of the one before: what lies too near an end of one is well inside of
  // another. One that holds nothing but the surroundings of a known culmination need not be looked into.
  const double step = span.Period / 8, apart = span.Period / 5;
  const auto end = [&](int number) { return span.From + number * step; };
  std::vector<Sample> missed;
  for (int number = -1; end(number) <= span.To; ++number) {
    const double first = end(number), last = end(number + 2);
    if (IsNearOneOf(found, first, last, apart) || IsNearOneOf(missed, first, last, apart)) continue;
    const auto top = GoldenMaximum(f, first, last, kManyRounds);
    if (!top || IsNearOneOf(found, top->Jd, top->Jd, apart) || IsNearOneOf(missed, top->Jd, top->Jd, apart)) {
      continue;
    }
    missed.push_back(*top);
  }
  return missed;
}

}  // namespace pelorin::orbit
