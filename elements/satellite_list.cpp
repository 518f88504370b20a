#include "elements/satellite_list.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "orbit/element_fields.h"

namespace pelorin::elements {

/// Looking names and numbers up in tables, and sorting once at the end, keeps a folder of many thousand sets
/// quick.
class TSatelliteList::Loader {
 public:
  Loader(std::vector<Entry>& entries, std::vector<orbit::RejectedSet>& leftOut)
      : entries_(entries), leftOut_(leftOut) {}

  void Take(const NamedSet& named) {
    const std::string number = named.Set.CatalogueKey();
    const auto known = number.empty() ? byNumber_.end() : byNumber_.find(number);
    const bool isNew = known == byNumber_.end();
    if (!isNew && !IsBetter(named.Set, entries_[known->second].Named->Set)) return;
    const std::size_t place = isNew ? entries_.size() : known->second;
    Entry entry{orbit::UpperCased(named.Name), &named};
    if (const auto [holder, isFree] = byName_.emplace(entry.FoldedName, place);
        !isFree && holder->second != place) {
      LeaveOut(named, number);
      return;
    }
    if (isNew) {
      if (!number.empty()) byNumber_.emplace(number, place);
      entries_.push_back(std::move(entry));
      return;
    }
    if (entries_[place].FoldedName != entry.FoldedName) byName_.erase(entries_[place].FoldedName);
    entries_[place] = std::move(entry);
  }

 private:
  /// Of two sets of one satellite. One that loses by its checksum alone is told.
  bool IsBetter(const orbit::TSatellite& set, const orbit::TSatellite& known) {
    const bool isBetter = set.Epoch - set.DoubtDays() > known.Epoch - known.DoubtDays();
    const orbit::TSatellite& other = isBetter ? known : set;
    if (other.IsDoubtful && isBetter != (set.Epoch > known.Epoch)) {
      leftOut_.push_back({other.Name, other.SourceFile, "a checksum of its lines is wrong"});
    }
    return isBetter;
  }

  /// Once for each satellite, however many sets of it there are.
  void LeaveOut(const NamedSet& named, const std::string& number) {
    if (!number.empty() && !leftOutNumbers_.insert(number).second) return;
    leftOut_.push_back({named.Set.Name, named.Set.SourceFile, "another satellite has that name"});
  }

  std::vector<Entry>& entries_;
  std::vector<orbit::RejectedSet>& leftOut_;
  std::unordered_map<std::string, std::size_t> byNumber_, byName_;
  std::unordered_set<std::string> leftOutNumbers_;
};

TSatelliteList::TSatelliteList(const std::filesystem::path& folder, const std::vector<NamedSet>& sets,
                               std::vector<orbit::RejectedSet>& leftOut)
    : folder_(folder) {
  // A trailing separator makes file names follow the folder's text directly.
  if (!folder_.empty() && folder_.has_filename()) folder_ /= "";
  Loader loader(entries_, leftOut);
  for (const NamedSet& named : sets) loader.Take(named);
  std::sort(entries_.begin(), entries_.end(),
            [](const Entry& a, const Entry& b) { return a.FoldedName < b.FoldedName; });
}

int TSatelliteList::IndexOf(std::string_view name) const {
  const std::string folded = orbit::UpperCased(name);
  const auto at =
      std::lower_bound(entries_.begin(), entries_.end(), folded,
                       [](const Entry& entry, const std::string& text) { return entry.FoldedName < text; });
  return at != entries_.end() && at->FoldedName == folded ? static_cast<int>(at - entries_.begin()) : -1;
}

int TSatelliteList::IndexOfCatalogueNumber(std::string_view number) const {
  if (number.size() != 5) return -1;
  const std::string wanted = orbit::UpperCased(number);
  const auto at = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) {
    return entry.Named->Set.CatalogueNumber == wanted;
  });
  return at != entries_.end() ? static_cast<int>(at - entries_.begin()) : -1;
}

}  // namespace pelorin::elements
