#include "elements/update_verdict.h"

#include <map>
#include <string>

namespace pelorin::elements {
namespace {

/// A second: epochs are written to a thousandth of that, in one form to the day's fraction, in the other to
/// the second's.
constexpr double kSameEpochDays = 1.0 / 86400;

/// Satellites without a number that tells them apart are told apart by their names.
std::string IdentityOf(const orbit::TSatellite& set) {
  const std::string key = set.CatalogueKey();
  return key.empty() ? ' ' + set.Name : key;
}

std::map<std::string, const orbit::TSatellite*> NewestOfEach(const ElementData& data) {
  std::map<std::string, const orbit::TSatellite*> newest;
  for (const orbit::TSatellite& set : data.Sets) {
    const orbit::TSatellite*& known = newest[IdentityOf(set)];
    if (known == nullptr || set.Epoch > known->Epoch) known = &set;
  }
  return newest;
}

}  // namespace

bool IsPlausibleSize(qint64 received, qint64 present) {
  return received > present * 4 / 5 && received < present * 6 / 5;
}

bool IsPlausibleCount(std::size_t received, std::size_t present) {
  return received * 5 >= present * 4 && received * 5 <= present * 6;
}

UpdateVerdict JudgeUpdate(const ElementData& received, const ElementData& present) {
  UpdateVerdict verdict{UpdateFault::None, present.Sets.size(), received.Sets.size(), {}, 0};
  if (!received.IsWhole || received.Sets.empty()) {
    verdict.Fault = UpdateFault::NoElements;
    return verdict;
  }
  const auto after = NewestOfEach(received);
  const auto before = NewestOfEach(present);
  int both = 0;
  for (const auto& [identity, earlier] : before) {
    const auto found = after.find(identity);
    if (found == after.end()) {
      verdict.Gone.append(QString::fromStdString(earlier->Name));
      continue;
    }
    verdict.DaysOlder += earlier->Epoch - found->second->Epoch;
    ++both;
  }
  if (both > 0) verdict.DaysOlder /= both;
  const bool isPlausible =
      IsPlausibleCount(received.Sets.size(), present.Sets.size()) &&
      IsPlausibleCount(static_cast<std::size_t>(both), before.size()) &&
      (received.Form != present.Form || IsPlausibleSize(received.Bytes.size(), present.Bytes.size()));
  if (verdict.DaysOlder > kSameEpochDays) {
    verdict.Fault = UpdateFault::Older;
  } else if (!isPlausible) {
    verdict.Fault = UpdateFault::OtherNumber;
  }
  return verdict;
}

}  // namespace pelorin::elements
