#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "orbit/element_file.h"
#include "orbit/satellite.h"

namespace pelorin::elements {

/// Every satellite of one element folder, sorted by name (case aside), one set a catalogue number: the one
/// with the later epoch, of equal epochs the first read. Of two satellites with one name the first read
/// stays. Owns its satellites; their addresses last as long as the list.
class TSatelliteList {
 public:
  /// An empty or missing folder gives an empty list; a file that cannot be read raises ReadError.
  explicit TSatelliteList(const std::filesystem::path& folder);

  const std::filesystem::path& Folder() const { return folder_; }
  int Count() const { return static_cast<int>(entries_.size()); }
  /// The name as it stands in its file, blanks at the ends cut off.
  const std::string& Name(int index) const { return entries_[static_cast<std::size_t>(index)].name; }
  const orbit::TSatellite& Satellite(int index) const {
    return *entries_[static_cast<std::size_t>(index)].satellite;
  }
  /// −1 when there is no such name; case aside.
  int IndexOf(std::string_view name) const;
  /// First satellite of that 5-character number, upper-cased before the search; −1 for none and for any other
  /// length.
  int IndexOfCatalogueNumber(std::string_view number) const;
  /// Sets whose elements describe no orbit.
  const std::vector<orbit::RejectedSet>& Rejected() const { return rejected_; }

 private:
  struct Entry {
    std::string name, folded;
    std::unique_ptr<orbit::TSatellite> satellite;  // null once a newer set has taken its place
  };
  class Loader;

  std::filesystem::path folder_;
  std::vector<Entry> entries_;
  std::vector<orbit::RejectedSet> rejected_;
};

}  // namespace pelorin::elements
