#include "elements/archived_sets.h"

#include <QDir>
#include <algorithm>
#include <cmath>
#include <limits>

#include "orbit/element_file.h"

namespace pelorin::elements {
namespace {

/// A pass list asks for one satellite after the other, and near the first of a month for two files in turn.
constexpr std::size_t kFilesKept = 3;

/// Days from a Julian date to the nearest that an archived satellite's sets can be.
double DaysFrom(double jd, const ArchivedSatellite& satellite) {
  return std::max({satellite.FirstEpochJd - jd, jd - satellite.LastEpochJd, 0.0});
}

}  // namespace

std::optional<orbit::TSatellite> ArchivedSets::Nearest(const std::string& catalogueKey, double jd,
                                                       double withinDays) {
  struct Candidate {
    double Days;
    const QString* FileName;
  };
  std::vector<Candidate> candidates;
  for (const ArchiveFile& file : Index()) {
    const ArchivedSatellite* satellite = file.Find(catalogueKey);
    if (satellite != nullptr) candidates.push_back({DaysFrom(jd, *satellite), &file.Name});
  }
  std::sort(candidates.begin(), candidates.end(),
            [](const Candidate& a, const Candidate& b) { return a.Days < b.Days; });
  std::optional<orbit::TSatellite> nearest;
  for (const Candidate& candidate : candidates) {
    if (candidate.Days >= withinDays) break;
    for (const orbit::TSatellite& set : SetsOf(*candidate.FileName)) {
      const double days = std::fabs(set.Epoch - jd) + set.DoubtDays();
      if (days >= withinDays || set.CatalogueKey() != catalogueKey) continue;
      withinDays = days;
      nearest = set;
    }
  }
  return nearest;
}

std::string ArchivedSets::KeyOf(std::string_view name, double jd) {
  std::string key;
  double nearest = std::numeric_limits<double>::infinity();
  for (const ArchiveFile& file : Index()) {
    for (const ArchivedSatellite& satellite : file.Satellites) {
      if (satellite.Name != name || DaysFrom(jd, satellite) >= nearest) continue;
      nearest = DaysFrom(jd, satellite);
      key = satellite.Key;
    }
  }
  return key;
}

std::set<std::string> ArchivedSets::Keys() {
  std::set<std::string> keys;
  for (const ArchiveFile& file : Index()) {
    for (const ArchivedSatellite& satellite : file.Satellites) keys.insert(satellite.Key);
  }
  return keys;
}

const ArchiveIndex& ArchivedSets::Index() {
  if (!index_) index_ = UpdatedArchiveIndex(folder_);
  return *index_;
}

const std::vector<orbit::TSatellite>& ArchivedSets::SetsOf(const QString& fileName) {
  const auto known = std::find_if(lastRead_.begin(), lastRead_.end(),
                                  [&fileName](const ReadFile& file) { return file.Name == fileName; });
  if (known != lastRead_.end()) {
    lastRead_.splice(lastRead_.begin(), lastRead_, known);
    return lastRead_.front().Sets;
  }
  lastRead_.push_front({fileName, {}});
  if (lastRead_.size() > kFilesKept) lastRead_.pop_back();
  std::vector<orbit::TSatellite>& sets = lastRead_.front().Sets;
  try {
    std::vector<orbit::RejectedSet> rejected;
    sets = orbit::ReadAllElementSets(QDir(folder_).filePath(fileName).toStdU16String(), rejected);
  } catch (const orbit::ReadError&) {
    // It was there when the index was made; without it the next nearest set does.
  }
  return sets;
}

}  // namespace pelorin::elements
