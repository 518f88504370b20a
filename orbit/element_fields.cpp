#include "orbit/element_fields.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace pelorin::orbit {
namespace {

constexpr char DigitOf(int number) { return static_cast<char>('0' + number % 10); }

/// The columns of a field with their blanks filled, without a leading "+", which std::from_chars refuses.
/// Fields are short enough to stay out of the heap.
std::string FilledField(std::string_view line, int firstColumn, int length) {
  const auto first = static_cast<std::size_t>(firstColumn - 1);
  std::string field(first < line.size() ? line.substr(first, static_cast<std::size_t>(length))
                                        : std::string_view());
  ZeroFill(field);
  if (field.size() > 1 && field[0] == '+' && field[1] != '-' && field[1] != '+') field.erase(0, 1);
  return field;
}

/// The whole of a field as a number, or 0.
template <class Number>
Number WholeOrZero(const std::string& field) {
  Number value = 0;
  const auto [stop, error] = std::from_chars(field.data(), field.data() + field.size(), value);
  return error == std::errc() && stop == field.data() + field.size() ? value : 0;
}

}  // namespace

std::string TwoDigit(int number) { return {DigitOf(number / 10), DigitOf(number)}; }

std::string ThreeDigit(int number) { return DigitOf(number / 100) + TwoDigit(number % 100); }

void ZeroFill(std::string& text) { std::replace(text.begin(), text.end(), ' ', '0'); }

std::string_view Trimmed(std::string_view text) {
  const auto blank = [](char c) { return static_cast<unsigned char>(c) <= ' '; };
  while (!text.empty() && blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && blank(text.back())) text.remove_suffix(1);
  return text;
}

std::string UpperCased(std::string_view text) {
  std::string upper(text);
  for (char& c : upper) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return upper;
}

bool TakeLine(std::string_view& text, std::string_view& line) {
  line = {};
  if (text.empty()) return false;
  const std::size_t end = text.find('\n');
  line = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return true;
}

std::optional<double> DecimalNumber(std::string_view text) {
  text = Trimmed(text);
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  double value = 0;
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  const bool whole = error == std::errc() && stop == text.data() + text.size();
  return whole && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

int IntegerField(std::string_view line, int firstColumn, int length) {
  return WholeOrZero<int>(FilledField(line, firstColumn, length));
}

double RealField(std::string_view line, int firstColumn, int length) {
  const std::string field = FilledField(line, firstColumn, length);
  // "inf" and "nan" are numbers to from_chars and never to an element line.
  return field.find_first_not_of("0123456789.+-eE") == std::string::npos ? WholeOrZero<double>(field) : 0;
}

}  // namespace pelorin::orbit
