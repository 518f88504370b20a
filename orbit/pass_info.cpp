#include "orbit/pass_info.h"

#include <cmath>

namespace pelorin::orbit {
namespace {

std::string WholeNumber(double value) { return std::to_string(std::lrint(value)) + ' '; }

std::string StartAndPlace(const PassInfo& pass) {
  return FormatDateTime("mmddhhnnss ", pass.Aos) + (pass.SouthBound ? "S " : "N ") +
         WholeNumber(pass.LongitudeDeg);
}

std::string DurationAndName(const PassInfo& pass) {
  return std::to_string(pass.DurationSeconds) + ' ' + pass.Name;
}

}  // namespace

std::string PassInfo::ToText() const {
  return StartAndPlace(*this) + WholeNumber(MaxElevationDeg) + DurationAndName(*this);
}

std::string PassInfo::ToListEntry() const { return StartAndPlace(*this) + DurationAndName(*this); }

}  // namespace pelorin::orbit
