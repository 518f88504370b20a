#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Lists of texts in one line: items joined by commas, an item with a blank, a comma or a quote in double
/// quotes with inner quotes doubled.
namespace pelorin::orbit {

std::string JoinCommaText(const std::vector<std::string>& items);

/// Splits at commas and at blanks outside quotes. A missing closing quote ends with the text.
std::vector<std::string> SplitCommaText(std::string_view text);

}  // namespace pelorin::orbit
