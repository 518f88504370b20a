#include "elements/known_sets.h"

#include <QStringList>
#include <algorithm>
#include <cmath>
#include <limits>
#include <set>

#include "elements/satellite_names.h"
#include "orbit/element_fields.h"

namespace pelorin::elements {
namespace {

/// What TSatellite::CatalogueKey makes of a number as a user types it: 5 characters or 1 … 9 digits.
std::string KeyOfNumber(std::string_view text) {
  orbit::TSatellite satellite;
  satellite.CatalogueNumber = orbit::UpperCased(orbit::Trimmed(text));
  const std::size_t length = satellite.CatalogueNumber.size();
  if (length < 5) satellite.CatalogueNumber.insert(0, 5 - length, '0');
  return satellite.CatalogueKey();
}

bool IsOlder(const orbit::TSatellite* a, const orbit::TSatellite* b) {
  return a->Epoch - a->DoubtDays() < b->Epoch - b->DoubtDays();
}

}  // namespace

KnownSets::KnownSets(const std::filesystem::path& fileOrFolder, const QString& archiveFolder)
    : archive_(archiveFolder) {
  std::error_code error;
  if (std::filesystem::exists(fileOrFolder, error)) {
    orbit::ReadElementSetsIn(
        fileOrFolder,
        [this](std::string_view name, orbit::TSatellite&& set) {
          loaded_.push_back({std::string(name), std::move(set)});
        },
        leftOut_);
  }
  for (const NamedSet& named : loaded_) {
    if (const std::string key = named.Set.CatalogueKey(); !key.empty()) byKey_[key].push_back(&named.Set);
  }
  satellites_ = TSatelliteList(fileOrFolder, loaded_, leftOut_);
}

orbit::TSatellite KnownSets::Nearest(const orbit::TSatellite& satellite, double jd) {
  const std::string key = satellite.CatalogueKey();
  if (key.empty()) return satellite;
  const orbit::TSatellite* best = &satellite;
  const auto distance = [jd](const orbit::TSatellite& set) {
    return std::fabs(set.Epoch - jd) + set.DoubtDays();
  };
  double days = distance(satellite);
  if (const auto known = byKey_.find(key); known != byKey_.end()) {
    for (const orbit::TSatellite* set : known->second) {
      if (distance(*set) >= days) continue;
      best = set;
      days = distance(*set);
    }
  }
  const std::optional<orbit::TSatellite> archived = archive_.Nearest(key, jd, days);
  orbit::TSatellite nearest = archived ? *archived : *best;
  // Lists and choosers know the satellite by the name that it has now.
  if (nearest.Name != satellite.Name) {
    const std::string file = nearest.SourceFile;
    nearest.SetIdentity(satellite.Name, file);
  }
  return nearest;
}

const orbit::TSatellite* KnownSets::Find(std::string_view nameOrNumber) const {
  const std::string wanted = orbit::UpperCased(orbit::Trimmed(nameOrNumber));
  if (wanted.empty()) return nullptr;
  if (const int index = satellites_.IndexOf(wanted); index >= 0) return &satellites_.Satellite(index);
  const auto ofNumber = byKey_.find(KeyOfNumber(wanted));
  if (ofNumber != byKey_.end())
    return *std::max_element(ofNumber->second.begin(), ofNumber->second.end(), IsOlder);
  const orbit::TSatellite* newest = nullptr;
  for (const NamedSet& named : loaded_) {
    if (named.Set.Name == wanted && (newest == nullptr || IsOlder(newest, &named.Set))) newest = &named.Set;
  }
  return newest != nullptr ? newest : FindByPlainName(wanted);
}

const orbit::TSatellite* KnownSets::FindByPlainName(std::string_view name) const {
  const std::string plain = PlainName(name);
  const orbit::TSatellite* found = nullptr;
  for (int index = 0; index < satellites_.Count(); ++index) {
    const orbit::TSatellite& satellite = satellites_.Satellite(index);
    if (PlainName(satellite.Name) != plain) continue;
    if (found != nullptr) return nullptr;
    found = &satellite;
  }
  return found;
}

std::optional<orbit::TSatellite> KnownSets::FindNearest(std::string_view nameOrNumber, double jd) {
  if (const orbit::TSatellite* found = Find(nameOrNumber)) return Nearest(*found, jd);
  const std::string wanted = orbit::UpperCased(orbit::Trimmed(nameOrNumber));
  if (wanted.empty()) return std::nullopt;
  const std::string named = archive_.KeyOf(wanted, jd);
  return archive_.Nearest(named.empty() ? KeyOfNumber(wanted) : named, jd,
                          std::numeric_limits<double>::infinity());
}

std::vector<orbit::TSatellite> KnownSets::AllNearest(double jd) {
  std::vector<orbit::TSatellite> nearest;
  std::set<std::string> others = archive_.Keys();
  for (int index = 0; index < satellites_.Count(); ++index) {
    const orbit::TSatellite& satellite = satellites_.Satellite(index);
    others.erase(satellite.CatalogueKey());
    nearest.push_back(Nearest(satellite, jd));
  }
  for (const std::string& key : others) {
    if (auto set = archive_.Nearest(key, jd, std::numeric_limits<double>::infinity())) {
      nearest.push_back(std::move(*set));
    }
  }
  std::stable_sort(nearest.begin(), nearest.end(),
                   [](const orbit::TSatellite& a, const orbit::TSatellite& b) { return a.Name < b.Name; });
  return nearest;
}

QStringList DoubtTexts(const TSatelliteList& satellites) {
  QStringList texts;
  for (int index = 0; index < satellites.Count(); ++index) {
    const orbit::TSatellite& satellite = satellites.Satellite(index);
    if (!satellite.IsDoubtful) continue;
    texts.append(
        QStringLiteral("%1 in %2 is used, although a checksum of its lines is wrong")
            .arg(QString::fromStdString(satellite.Name), QString::fromStdString(satellite.SourceFile)));
  }
  return texts;
}

QStringList LeftOutTexts(const std::vector<orbit::RejectedSet>& leftOut) {
  struct Alike {
    const orbit::RejectedSet* First;
    int Count;
  };
  std::vector<Alike> kinds;
  for (const orbit::RejectedSet& set : leftOut) {
    const auto isSame = [&set](const Alike& kind) {
      return kind.First->Name == set.Name && kind.First->File == set.File && kind.First->Reason == set.Reason;
    };
    // Those alike stand together in their file.
    const auto known = std::find_if(kinds.rbegin(), kinds.rend(), isSame);
    if (known != kinds.rend()) {
      ++known->Count;
    } else {
      kinds.push_back({&set, 1});
    }
  }
  QStringList texts;
  for (const Alike& kind : kinds) {
    QString text = QString::fromStdString(kind.First->File);
    if (!kind.First->Name.empty())
      text.prepend(QString::fromStdString(kind.First->Name) + QStringLiteral(" in "));
    if (kind.Count > 1) text += QStringLiteral(" (%1 times)").arg(kind.Count);
    texts.append(text + QStringLiteral(", because ") + QString::fromStdString(kind.First->Reason));
  }
  return texts;
}

}  // namespace pelorin::elements
