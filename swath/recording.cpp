#include "swath/recording.h"

#include <cmath>

namespace pelorin::swath {

bool BeginTogether(const Recording& one, const Recording& other) {
  constexpr double closeS = 0.5;
  return std::abs(one.Start.Days - other.Start.Days) * orbit::kSecondsPerDay < closeS;
}

bool IsSameRecording(const Recording& one, const Recording& other) {
  return one.Satellite == other.Satellite && BeginTogether(one, other);
}

}  // namespace pelorin::swath
