#include "tools/ageing.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "orbit/propagation.h"
#include "orbit/scalar_math.h"

namespace pelorin::tools {
namespace {

constexpr double kPart = 0.9;
/// Sets nearer in time tell of each other's noise only, or are one set that was published twice.
constexpr double kLeastDays = 0.05;

/// Sets so far apart in time say whether one of them was made wrong, and so far apart along the orbit that
/// one was: age alone does not do that.
constexpr double kNeighbourDays = 30, kSpoiltKm = 1000;

struct Comparison {
  double Days, Km;
};

/// Kilometres along the orbit from where the newer knowledge has the satellite at its own epoch.
double AlongTrackKm(const orbit::TSatellite& aged, const orbit::TSatellite& fresh) {
  const orbit::SatelliteState was = SatelliteStateKm(aged, fresh.Epoch),
                              is = SatelliteStateKm(fresh, fresh.Epoch);
  const orbit::Vector normal = Cross(is.Position, is.Velocity), ahead = Cross(normal, is.Position);
  // As an angle about the Earth's centre: after months the chord would be shorter than the way.
  const double along = Dot(was.Position, ahead) / std::sqrt(Dot(ahead, ahead));
  const double radius = std::sqrt(Dot(is.Position, is.Position));
  return std::fabs(std::atan2(along, Dot(was.Position, is.Position) / radius)) * radius;
}

/// The curve b·d + c·d² of least squares, weighted so that a tenth counts alike for sets of a day and of a
/// month. No term is negative: errors do not shrink with age.
elements::AgeingLaw MeanCurve(const std::vector<Comparison>& points) {
  double dd = 0, dddd = 0, ddd = 0, dk = 0, ddk = 0;
  for (const auto& [days, km] : points) {
    const double weight = 1 / (days * days), square = days * days;
    dd += weight * square;
    ddd += weight * square * days;
    dddd += weight * square * square;
    dk += weight * days * km;
    ddk += weight * square * km;
  }
  const double determinant = dd * dddd - ddd * ddd;
  double linear = (dk * dddd - ddk * ddd) / determinant, quadratic = (dd * ddk - ddd * dk) / determinant;
  if (!(quadratic > 0)) linear = dk / dd, quadratic = 0;
  if (!(linear > 0)) linear = 0, quadratic = ddk / dddd;
  return {.KmPerDay = linear, .KmPerDay2 = quadratic};
}

/// Sets of one satellite in the order of their epochs, without those that lie far off from most of the sets
/// round them: a set that was made wrong tells nothing of what age does.
std::vector<orbit::TSatellite> SoundSets(std::vector<orbit::TSatellite> sets) {
  std::ranges::sort(sets, {}, &orbit::TSatellite::Epoch);
  std::vector<orbit::TSatellite> sound;
  for (std::size_t at = 0; at < sets.size(); ++at) {
    std::vector<double> apart;
    for (std::size_t other = at < 3 ? 0 : at - 3; other < std::min(at + 4, sets.size()); ++other) {
      const bool isNear = std::fabs(sets[other].Epoch - sets[at].Epoch) <= kNeighbourDays;
      if (other != at && isNear) apart.push_back(AlongTrackKm(sets[other], sets[at]));
    }
    std::ranges::sort(apart);
    if (apart.empty() || apart[(apart.size() - 1) / 2] < kSpoiltKm) sound.push_back(sets[at]);
  }
  return sound;
}

AgeingReport ReportOf(const std::vector<Comparison>& points) {
  AgeingReport report;
  const elements::AgeingLaw mean = MeanCurve(points);
  std::vector<double> ratios;
  for (const Comparison& point : points) ratios.push_back(point.Km / mean.BoundKm(point.Days));
  const auto bound =
      ratios.begin() + static_cast<std::ptrdiff_t>(kPart * static_cast<double>(ratios.size() - 1));
  std::nth_element(ratios.begin(), bound, ratios.end());
  report.Law.KmPerDay = mean.KmPerDay * *bound;
  report.Law.KmPerDay2 = mean.KmPerDay2 * *bound;
  for (double days = 1;; days *= 2) {
    AgeingReport::Band band{days, 0, 0};
    bool isLast = true;
    for (const Comparison& point : points) {
      report.Law.LongestDays = std::max(report.Law.LongestDays, point.Days);
      isLast = isLast && point.Days <= days;
      if (point.Days > days || point.Days <= (days == 1 ? 0 : days / 2)) continue;
      ++band.Comparisons;
      band.Within += point.Km <= report.Law.BoundKm(point.Days);
    }
    if (band.Comparisons > 0) {
      band.Within /= band.Comparisons;
      report.Bands.push_back(band);
    }
    if (isLast) return report;
  }
}

}  // namespace

std::map<std::string, AgeingReport> MeasureAgeing(const std::vector<orbit::TSatellite>& sets,
                                                  double longestDays, int fewestComparisons) {
  std::map<std::string, std::vector<orbit::TSatellite>> bySatellite;
  for (const orbit::TSatellite& set : sets) {
    if (!set.CatalogueKey().empty() && CanPropagate(set)) bySatellite[set.CatalogueKey()].push_back(set);
  }
  std::map<std::string, std::vector<Comparison>> points;
  std::map<std::string, std::set<std::pair<std::string, double>>> used;
  std::map<std::string, std::set<std::string>> satellites;
  for (const auto& [key, all] : bySatellite) {
    const std::vector<orbit::TSatellite> sound = SoundSets(all);
    for (const orbit::TSatellite& aged : sound) {
      for (const orbit::TSatellite& fresh : sound) {
        const double days = std::fabs(fresh.Epoch - aged.Epoch);
        if (days < kLeastDays || days > longestDays) continue;
        const std::string ageingClass = elements::AgeingClassOf(aged);
        points[ageingClass].push_back({days, AlongTrackKm(aged, fresh)});
        used[ageingClass].insert({key, aged.Epoch});
        satellites[ageingClass].insert(key);
      }
    }
  }
  std::map<std::string, AgeingReport> reports;
  for (const auto& [ageingClass, comparisons] : points) {
    if (static_cast<int>(comparisons.size()) < fewestComparisons) continue;
    AgeingReport& report = reports[ageingClass] = ReportOf(comparisons);
    report.Law.Sets = static_cast<int>(used[ageingClass].size());
    report.Law.Satellites = static_cast<int>(satellites[ageingClass].size());
  }
  return reports;
}

}  // namespace pelorin::tools
