#include "orbit/element_fields.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace pelorin::orbit {
namespace {

constexpr char DigitOf(int number) { return static_cast<char>('0' + number % 10); }

/// A field with its blanks filled, on the stack: element files are read by the thousand. A leading "+",
/// which std::from_chars refuses, is left out.
class FilledField {
 public:
  FilledField(std::string_view line, int firstColumn, int length) {
    const auto first = static_cast<std::size_t>(firstColumn - 1);
    if (first >= line.size()) return;
    const std::string_view field = line.substr(first, std::min<std::size_t>(length, text_.size()));
    for (const char c : field) text_[size_++] = c == ' ' ? '0' : c;
    if (size_ > 1 && text_[0] == '+' && text_[1] != '-' && text_[1] != '+') begin_ = 1;
  }
  const char* begin() const { return text_.data() + begin_; }
  const char* end() const { return text_.data() + size_; }

 private:
  std::array<char, 32> text_{};
  std::size_t begin_ = 0, size_ = 0;
};

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

int IntegerField(std::string_view line, int firstColumn, int length) {
  const FilledField field(line, firstColumn, length);
  int value = 0;
  const auto [stop, error] = std::from_chars(field.begin(), field.end(), value);
  return error == std::errc() && stop == field.end() ? value : 0;
}

double RealField(std::string_view line, int firstColumn, int length) {
  const FilledField field(line, firstColumn, length);
  // "inf" and "nan" are numbers to from_chars and never to an element line.
  const bool plain = std::all_of(field.begin(), field.end(), [](char c) {
    return (c >= '0' && c <= '9') || c == '.' || c == '-' || c == '+' || c == 'e' || c == 'E';
  });
  double value = 0;
  const auto [stop, error] = std::from_chars(field.begin(), field.end(), value);
  return plain && error == std::errc() && stop == field.end() ? value : 0;
}

}  // namespace pelorin::orbit
