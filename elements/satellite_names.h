#pragma once

#include <string>
#include <string_view>

namespace pelorin::elements {

/// What a satellite's name has in common with its names in other sources: capitals, without blanks, hyphens
/// and what stands in brackets at its end. "NOAA 20 (JPSS-1)" and "NOAA-20" are "NOAA20"; "METEOR-M2 4" and
/// "METEOR-M 2-4" are "METEORM24". Two satellites may have it in common, too.
std::string PlainName(std::string_view name);

}  // namespace pelorin::elements
