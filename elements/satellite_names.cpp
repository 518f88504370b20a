#include "elements/satellite_names.h"

#include "orbit/element_fields.h"

namespace pelorin::elements {

std::string PlainName(std::string_view name) {
  std::string plain = orbit::UpperCased(orbit::Trimmed(name));
  // "NOAA 15 [B]" tells of its state.
  if (const std::size_t bracket = plain.find_first_of("(["); bracket > 0 && bracket < plain.size()) {
    plain.resize(bracket);
  }
  std::erase_if(plain, [](char c) { return c == ' ' || c == '-'; });
  return plain;
}

}  // namespace pelorin::elements
