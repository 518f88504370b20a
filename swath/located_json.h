#pragma once

#include <map>
#include <string>
#include <variant>
#include <vector>

namespace pelorin::swath {

/// A value of a JSON file that remembers its line, for messages to those who write such files by hand.
struct LocatedJson {
  using List = std::vector<LocatedJson>;
  using Members = std::map<std::string, LocatedJson>;

  int Line = 1;  ///< from 1
  std::variant<std::monostate, bool, double, std::string, List, Members> Value;

  template <class Kind>
  const Kind* As() const {
    return std::get_if<Kind>(&Value);
  }
};

/// Raises std::runtime_error, "line 12: …", for a text that is not JSON, or that is nested deeper than any
/// table is.
LocatedJson ParseLocatedJson(const std::string& text);

}  // namespace pelorin::swath
