#pragma once

#include <string>
#include <vector>

#include "elements/set_ageing.h"

namespace pelorin::tools {

/// What the sets of one class say of ageing, and how well the law holds.
struct AgeingReport {
  elements::AgeingLaw Law;
  /// For ages up to so many days: how many comparisons there were, and the part of them within the bound.
  struct Band {
    double Days;
    int Comparisons;
    double Within;
  };
  std::vector<Band> Bands;
};

/// How far sets of a satellite are from each other along its orbit: each is taken to the epochs of the
/// others, forward and back, up to `longestDays`. For each class the curve b·d + c·d² that nine of ten
/// comparisons do not exceed; sets that were made wrong are left out. A class of fewer than
/// `fewestComparisons` has no law.
std::map<std::string, AgeingReport> MeasureAgeing(const std::vector<orbit::TSatellite>& sets,
                                                  double longestDays, int fewestComparisons);

}  // namespace pelorin::tools
