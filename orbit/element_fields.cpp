#include "orbit/element_fields.h"

#include <algorithm>

#include "orbit/number_text.h"

namespace pelorin::orbit {
namespace {

constexpr char DigitOf(int number) { return static_cast<char>('0' + number % 10); }

/// The columns of a field with their blanks filled. Fields are short enough to stay out of the heap.
std::string FilledField(std::string_view line, int firstColumn, int length) {
  const auto first = static_cast<std::size_t>(firstColumn - 1);
  std::string field(first < line.size() ? line.substr(first, static_cast<std::size_t>(length))
                                        : std::string_view());
  ZeroFill(field);
  return field;
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

int IntegerField(std::string_view line, int firstColumn, int length) {
  return WholeNumber(FilledField(line, firstColumn, length)).value_or(0);
}

double RealField(std::string_view line, int firstColumn, int length) {
  return DecimalNumber(FilledField(line, firstColumn, length)).value_or(0);
}

}  // namespace pelorin::orbit
