#include "elements/satellite_list.h"

#include <algorithm>
#include <unordered_map>

#include "orbit/element_fields.h"

namespace pelorin::elements {

/// Takes sets in the order of the files. Looking names and numbers up in tables, and sorting once at the end,
/// keeps a folder of many thousand sets quick.
class TSatelliteList::Loader {
 public:
  explicit Loader(TSatelliteList& list) : list_(list) {}

  void LoadElementFile(const std::filesystem::path& file) {
    orbit::ReadElementSets(
        file, [this](std::string_view name, orbit::TSatellite&& set) { Take(name, std::move(set)); },
        list_.rejected_);
  }

  void Finish() {
    std::erase_if(list_.entries_, [](const Entry& entry) { return !entry.satellite; });
    std::sort(list_.entries_.begin(), list_.entries_.end(),
              [](const Entry& a, const Entry& b) { return a.folded < b.folded; });
  }

 private:
  void Take(std::string_view name, orbit::TSatellite&& set) {
    const std::string key = set.CatalogueKey();
    if (!key.empty()) {
      if (const auto known = byNumber_.find(key); known != byNumber_.end()) {
        Entry& older = list_.entries_[known->second];
        if (set.Epoch <= older.satellite->Epoch) return;
        byName_.erase(older.folded);
        byNumber_.erase(known);
        older.satellite.reset();
      }
    }
    std::string folded = orbit::UpperCased(name);
    const std::size_t index = list_.entries_.size();
    if (!byName_.emplace(folded, index).second) return;
    if (!key.empty()) byNumber_.emplace(key, index);
    list_.entries_.push_back(
        {std::string(name), std::move(folded), std::make_unique<orbit::TSatellite>(std::move(set))});
  }

  TSatelliteList& list_;
  std::unordered_map<std::string, std::size_t> byNumber_, byName_;
};

TSatelliteList::TSatelliteList(const std::filesystem::path& folder) : folder_(folder) {
  // A trailing separator makes file names follow the folder's text directly.
  if (!folder_.empty() && folder_.has_filename()) folder_ /= "";
  Loader loader(*this);
  for (const auto& file : orbit::ElementFilesIn(folder_)) loader.LoadElementFile(file);
  loader.Finish();
}

int TSatelliteList::IndexOf(std::string_view name) const {
  const std::string folded = orbit::UpperCased(name);
  const auto at =
      std::lower_bound(entries_.begin(), entries_.end(), folded,
                       [](const Entry& entry, const std::string& text) { return entry.folded < text; });
  return at != entries_.end() && at->folded == folded ? static_cast<int>(at - entries_.begin()) : -1;
}

int TSatelliteList::IndexOfCatalogueNumber(std::string_view number) const {
  if (number.size() != 5) return -1;
  const std::string wanted = orbit::UpperCased(number);
  const auto at = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) {
    return entry.satellite->CatalogueNumber == wanted;
  });
  return at != entries_.end() ? static_cast<int>(at - entries_.begin()) : -1;
}

}  // namespace pelorin::elements
