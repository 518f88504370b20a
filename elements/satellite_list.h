#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "orbit/element_file.h"
#include "orbit/satellite.h"

namespace pelorin::elements {

/// A set and the name of its satellite as the file writes it, blanks at the ends cut off.
struct NamedSet {
  std::string Name;
  orbit::TSatellite Set;
};

/// Every satellite of one element folder, sorted by name (case aside), one set a catalogue number: the one
/// with the later epoch, of equal epochs the first read; one with a wrong checksum counts as DoubtDays older.
/// Of two satellites with one name the first read stays. It says which set counts now; KnownSets has the
/// others.
class TSatelliteList {
 public:
  TSatelliteList() = default;
  /// Chooses among `sets`, in the order in which they were read; they are borrowed, and their addresses must
  /// last as long as the list. What goes without a place because its name is taken is added to `leftOut`.
  TSatelliteList(const std::filesystem::path& folder, const std::vector<NamedSet>& sets,
                 std::vector<orbit::RejectedSet>& leftOut);

  /// With a separator at its end.
  const std::filesystem::path& Folder() const { return folder_; }
  int Count() const { return static_cast<int>(entries_.size()); }
  /// The name as it stands in its file, blanks at the ends cut off.
  const std::string& Name(int index) const { return entries_[static_cast<std::size_t>(index)].Named->Name; }
  const orbit::TSatellite& Satellite(int index) const {
    return entries_[static_cast<std::size_t>(index)].Named->Set;
  }
  /// −1 when there is no such name; case aside.
  int IndexOf(std::string_view name) const;
  /// First satellite of that 5-character number, upper-cased before the search; −1 for none and for any other
  /// length.
  int IndexOfCatalogueNumber(std::string_view number) const;

 private:
  struct Entry {
    std::string FoldedName;
    const NamedSet* Named;
  };
  class Loader;

  std::filesystem::path folder_;
  std::vector<Entry> entries_;
};

}  // namespace pelorin::elements
