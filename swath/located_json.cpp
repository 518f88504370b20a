#include "swath/located_json.h"

#include <cstddef>
#include <iterator>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <utility>

namespace pelorin::swath {
namespace {

constexpr std::size_t kDeepest = 16;

/// Reads a text for the parser and counts its lines.
class CountingReader {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = const char&;

  CountingReader(const char* at, int* line) : at_(at), line_(line) {}
  reference operator*() const { return *at_; }
  CountingReader& operator++() {
    if (*at_++ == '\n') ++*line_;
    return *this;
  }
  CountingReader operator++(int) {
    CountingReader before = *this;
    ++*this;
    return before;
  }
  bool operator==(const CountingReader& other) const { return at_ == other.at_; }
  bool operator!=(const CountingReader& other) const { return at_ != other.at_; }

 private:
  const char* at_;
  int* line_;
};

/// Builds the tree while the parser goes over the text.
class TreeBuilder {
 public:
  TreeBuilder(LocatedJson& root, const int& line) : line_(line) { open_.push_back(&root); }

  std::string Problem;

  // What the parser calls.
  bool null() { return Take({}); }
  bool boolean(bool value) { return Take(value); }
  bool number_integer(std::int64_t value) { return Take(static_cast<double>(value)); }
  bool number_unsigned(std::uint64_t value) { return Take(static_cast<double>(value)); }
  bool number_float(double value, const std::string& /*text*/) { return Take(value); }
  bool string(std::string& value) { return Take(std::move(value)); }
  bool binary(std::vector<std::uint8_t>& /*bytes*/) { return false; }
  bool start_object(std::size_t /*members*/) { return Open(LocatedJson::Members{}); }
  bool start_array(std::size_t /*items*/) { return Open(LocatedJson::List{}); }
  bool end_object() { return Close(); }
  bool end_array() { return Close(); }
  bool key(std::string& name) {
    auto& members = std::get<LocatedJson::Members>(open_.back()->Value);
    const auto [place, isNew] = members.try_emplace(name);
    if (!isNew) return Fail("\"" + name + "\" is there twice");
    place->second.Line = line_;
    member_ = &place->second;
    return true;
  }
  bool parse_error(std::size_t /*position*/, const std::string& /*token*/, const nlohmann::json::exception&) {
    return Fail("from here on this is no JSON");
  }

 private:
  bool Fail(const std::string& what) {
    Problem = "line " + std::to_string(line_) + ": " + what;
    return false;
  }
  /// The place of the value that comes next.
  LocatedJson* Place() {
    if (member_ != nullptr) return std::exchange(member_, nullptr);
    if (auto* list = std::get_if<LocatedJson::List>(&open_.back()->Value)) {
      list->emplace_back().Line = line_;
      return &list->back();
    }
    return open_.back();
  }
  bool Take(decltype(LocatedJson::Value) value) {
    Place()->Value = std::move(value);
    return true;
  }
  bool Open(decltype(LocatedJson::Value) value) {
    if (open_.size() > kDeepest) return Fail("nested deeper than a table is");
    LocatedJson* place = Place();
    place->Value = std::move(value);
    open_.push_back(place);
    return true;
  }
  bool Close() {
    open_.pop_back();
    return true;
  }

  const int& line_;
  /// The values that are being filled, the root first. A list's items stay in place while one of them is
  /// open.
  std::vector<LocatedJson*> open_;
  LocatedJson* member_ = nullptr;
};

}  // namespace

LocatedJson ParseLocatedJson(const std::string& text) {
  LocatedJson root;
  int line = 1;
  TreeBuilder builder(root, line);
  const CountingReader begin(text.data(), &line), end(text.data() + text.size(), &line);
  if (!nlohmann::json::sax_parse(begin, end, &builder)) throw std::runtime_error(builder.Problem);
  return root;
}

}  // namespace pelorin::swath
