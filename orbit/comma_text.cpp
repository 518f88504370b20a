#include "orbit/comma_text.h"

#include <algorithm>

namespace pelorin::orbit {
namespace {

bool IsBlank(char c) { return static_cast<unsigned char>(c) <= ' '; }

bool NeedsQuotes(const std::string& item) {
  return item.empty() ||
         std::any_of(item.begin(), item.end(), [](char c) { return IsBlank(c) || c == ',' || c == '"'; });
}

}  // namespace

std::string JoinCommaText(const std::vector<std::string>& items) {
  std::string text;
  for (const std::string& item : items) {
    if (&item != &items.front()) text += ',';
    if (!NeedsQuotes(item)) {
      text += item;
      continue;
    }
    text += '"';
    for (const char c : item) text.append(c == '"' ? 2 : 1, c);
    text += '"';
  }
  return text;
}

std::vector<std::string> SplitCommaText(std::string_view text) {
  std::vector<std::string> items;
  std::size_t at = 0;
  const auto skipBlanks = [&] {
    while (at < text.size() && IsBlank(text[at])) ++at;
  };
  skipBlanks();
  while (at < text.size()) {
    std::string item;
    if (text[at] == '"') {
      for (++at; at < text.size(); ++at) {
        if (text[at] == '"') {
          ++at;
          if (at == text.size() || text[at] != '"') break;
        }
        item += text[at];
      }
    } else {
      while (at < text.size() && text[at] != ',' && !IsBlank(text[at])) item += text[at++];
    }
    items.push_back(std::move(item));
    skipBlanks();
    if (at < text.size() && text[at] == ',') {
      ++at;
      skipBlanks();
      // A comma at the very end announces one more, empty item.
      if (at == text.size()) items.emplace_back();
    }
  }
  return items;
}

}  // namespace pelorin::orbit
