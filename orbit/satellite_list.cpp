#include "orbit/satellite_list.h"

#include <algorithm>
#include <unordered_map>

#include "orbit/element_fields.h"
#include "orbit/scalar_math.h"

namespace pelorin::orbit {

/// Takes sets in the order of the files. Looking names and numbers up in tables, and sorting once at the end,
/// keeps a folder of many thousand sets quick.
class TSatelliteList::Loader {
 public:
  explicit Loader(TSatelliteList& list) : list_(list) {}

  void LoadElementFile(const std::filesystem::path& file) {
    const std::u8string u8name = file.filename().u8string();
    const std::string fileName(u8name.begin(), u8name.end());
    ReadElementTriples(file, [&](std::string_view name, std::string_view line1, std::string_view line2) {
      auto satellite = std::make_unique<TSatellite>();
      try {
        satellite->ParseElements(line1, line2);
      } catch (const MathError& error) {
        list_.rejected_.push_back({std::string(name), fileName, error.what()});
        return;
      }
      Take(name, fileName, std::move(satellite));
    });
  }

  void Finish() {
    std::erase_if(list_.entries_, [](const Entry& entry) { return !entry.satellite; });
    std::sort(list_.entries_.begin(), list_.entries_.end(),
              [](const Entry& a, const Entry& b) { return a.folded < b.folded; });
  }

 private:
  void Take(std::string_view name, const std::string& fileName, std::unique_ptr<TSatellite> satellite) {
    // Only a full number identifies a satellite; sets with a shorter one stand for themselves.
    const bool numbered = satellite->CatalogueNumber.size() == 5;
    if (numbered) {
      if (const auto known = byNumber_.find(satellite->CatalogueNumber); known != byNumber_.end()) {
        Entry& older = list_.entries_[known->second];
        if (satellite->Epoch <= older.satellite->Epoch) return;
        byName_.erase(older.folded);
        byNumber_.erase(known);
        older.satellite.reset();
      }
    }
    std::string folded = UpperCased(name);
    const std::size_t index = list_.entries_.size();
    if (!byName_.emplace(folded, index).second) return;
    if (numbered) byNumber_.emplace(satellite->CatalogueNumber, index);
    satellite->SetIdentity(name, fileName);
    list_.entries_.push_back({std::string(name), std::move(folded), std::move(satellite)});
  }

  TSatelliteList& list_;
  std::unordered_map<std::string, std::size_t> byNumber_, byName_;
};

TSatelliteList::TSatelliteList(const std::filesystem::path& folder) : folder_(folder) {
  // A trailing separator makes file names follow the folder's text directly.
  if (!folder_.empty() && folder_.has_filename()) folder_ /= "";
  Loader loader(*this);
  for (const auto& file : ElementFilesIn(folder_)) loader.LoadElementFile(file);
  loader.Finish();
}

int TSatelliteList::IndexOf(std::string_view name) const {
  const std::string folded = UpperCased(name);
  const auto at =
      std::lower_bound(entries_.begin(), entries_.end(), folded,
                       [](const Entry& entry, const std::string& text) { return entry.folded < text; });
  return at != entries_.end() && at->folded == folded ? static_cast<int>(at - entries_.begin()) : -1;
}

int TSatelliteList::IndexOfCatalogueNumber(std::string_view number) const {
  if (number.size() != 5) return -1;
  const std::string wanted = UpperCased(number);
  const auto at = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) {
    return entry.satellite->CatalogueNumber == wanted;
  });
  return at != entries_.end() ? static_cast<int>(at - entries_.begin()) : -1;
}

}  // namespace pelorin::orbit
