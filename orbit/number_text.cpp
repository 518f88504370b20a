#include "orbit/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

#include "orbit/element_fields.h"
#include "orbit/scalar_math.h"

namespace pelorin::orbit {
namespace {

template <class Number>
std::optional<Number> Whole(std::string_view text) {
  text = Trimmed(text);
  // from_chars refuses the plus sign.
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  Number value = 0;
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() && stop == text.data() + text.size() ? std::optional(value) : std::nullopt;
}

}  // namespace

std::optional<double> DecimalNumber(std::string_view text) {
  const std::optional<double> value = Whole<double>(text);
  return value && std::isfinite(*value) ? value : std::nullopt;
}

std::optional<int> WholeNumber(std::string_view text) { return Whole<int>(text); }

int DigitsAt(std::string_view text, std::size_t position, std::size_t length) {
  const std::string_view field = position < text.size() ? text.substr(position, length) : std::string_view();
  const bool isDigits = std::all_of(field.begin(), field.end(), [](char c) { return c >= '0' && c <= '9'; });
  const std::optional<int> value = WholeNumber(field);
  if (!isDigits || !value || field.size() != length) {
    throw ConvertError("'" + std::string(field) + "' is not a valid integer value");
  }
  return *value;
}

}  // namespace pelorin::orbit
