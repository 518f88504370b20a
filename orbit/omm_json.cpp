#include <algorithm>
#include <nlohmann/json.hpp>

#include "orbit/omm.h"

namespace pelorin::orbit {
namespace {

/// A file that breaks off more often is not made of messages.
constexpr int kMostBreaks = 1000;

/// Collects messages while the parser goes over them: a whole catalogue is never held as a tree.
class OmmJsonSink {
 public:
  explicit OmmJsonSink(const TakeOmmRecord& take) : take_(take) {}

  /// Bytes read up to the damage.
  std::size_t DamageAt = 0;

  // What the parser calls.
  bool null() { return Take(std::string_view()); }
  bool boolean(bool /*value*/) { return Take(std::string_view()); }
  bool number_integer(std::int64_t value) { return Take(std::to_string(value)); }
  bool number_unsigned(std::uint64_t value) { return Take(std::to_string(value)); }
  bool number_float(double /*value*/, const std::string& text) { return Take(text); }
  bool string(const std::string& text) { return Take(text); }
  bool binary(const std::vector<std::uint8_t>& /*bytes*/) { return true; }
  bool key(const std::string& keyword) {
    field_ = depth_ == messageDepth_ ? OmmFieldOf(keyword) : kOmmFieldCount;
    return true;
  }
  bool start_object(std::size_t /*elements*/) {
    Open(1);
    if (depth_ == messageDepth_) std::for_each(record_.begin(), record_.end(), [](auto& v) { v.clear(); });
    return true;
  }
  bool end_object() {
    if (depth_-- == messageDepth_ && IsOmm(record_)) take_(record_);
    return true;
  }
  bool start_array(std::size_t /*elements*/) {
    Open(2);
    return true;
  }
  bool end_array() {
    --depth_;
    return true;
  }
  bool parse_error(std::size_t position, const std::string& /*token*/, const nlohmann::json::exception&) {
    DamageAt = position;
    return false;
  }

 private:
  /// Messages are the elements of the outermost array, or are the outermost object.
  void Open(int messageDepth) {
    if (depth_++ == 0) messageDepth_ = messageDepth;
    field_ = kOmmFieldCount;
  }
  bool Take(std::string_view value) {
    if (field_ != kOmmFieldCount) record_[field_] = value;
    field_ = kOmmFieldCount;
    return true;
  }

  const TakeOmmRecord& take_;
  OmmRecord record_;
  OmmField field_ = kOmmFieldCount;
  int depth_ = 0, messageDepth_ = 0;
};

}  // namespace

void ReadOmmJson(std::string text, const TakeOmmRecord& take) {
  std::size_t begin = 0;
  for (int breaks = 0; breaks < kMostBreaks; ++breaks) {
    OmmJsonSink sink(take);
    const auto first = text.cbegin() + static_cast<std::ptrdiff_t>(begin);
    if (nlohmann::json::sax_parse(first, text.cend(), &sink)) return;
    // What follows the damage is read as an array of its own, whose bracket takes the place of a character
    // already gone over.
    const std::size_t next = text.find('{', begin + std::max<std::size_t>(sink.DamageAt, 2) - 1);
    if (next == std::string::npos) return;
    begin = next - 1;
    text[begin] = '[';
  }
}

}  // namespace pelorin::orbit
