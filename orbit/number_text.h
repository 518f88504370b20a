#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

/// Numbers as files and users write them. The whole text must be the number; blanks and control characters at
/// its ends are passed over, a leading "+" is allowed, and the decimal point is a point.
namespace pelorin::orbit {

/// A finite decimal number, "1.5" or "1.5e-3"; nothing for any other text.
std::optional<double> DecimalNumber(std::string_view text);

/// A whole number; nothing for any other text and for one that no int holds.
std::optional<int> WholeNumber(std::string_view text);

/// Exactly `length` digits from `position` (from 0) on, as in times; raises ConvertError.
int DigitsAt(std::string_view text, std::size_t position, std::size_t length);

}  // namespace pelorin::orbit
