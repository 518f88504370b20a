#include "orbit/pass_info.h"

#include <charconv>

namespace pelorin::orbit {
namespace {

/// The text up to the next blank, which is cut off with it.
std::string TakeField(std::string_view& line) {
  const std::size_t blank = line.find(' ');
  std::string field(line.substr(0, blank));
  line.remove_prefix(blank == std::string_view::npos ? line.size() : blank + 1);
  return field;
}

}  // namespace

std::string PassInfo::ToText() const {
  return AosStamp + (SouthBound ? " S " : " N ") + LongitudeDeg + ' ' + MaxElevationDeg + ' ' +
         std::to_string(DurationSeconds) + ' ' + Name;
}

std::string PassInfo::ToListEntry() const {
  return AosStamp + (SouthBound ? " S " : " N ") + LongitudeDeg + ' ' + std::to_string(DurationSeconds) +
         ' ' + Name;
}

std::optional<PassInfo> PassInfo::FromText(std::string_view line) {
  PassInfo info;
  info.AosStamp = TakeField(line);
  const std::string direction = TakeField(line);
  info.LongitudeDeg = TakeField(line);
  info.MaxElevationDeg = TakeField(line);
  const std::string duration = TakeField(line);
  const auto [stop, error] =
      std::from_chars(duration.data(), duration.data() + duration.size(), info.DurationSeconds);
  if (info.AosStamp.size() != 10 || (direction != "N" && direction != "S") || error != std::errc() ||
      stop != duration.data() + duration.size() || line.empty()) {
    return std::nullopt;
  }
  info.SouthBound = direction == "S";
  info.Name = line;
  return info;
}

}  // namespace pelorin::orbit
