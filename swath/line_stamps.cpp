#include "swath/line_stamps.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace pelorin::swath {
namespace {

constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();
/// The year 2100: before that a stamp must be.
constexpr double kLatestUnixS = 4102444800;
/// No pass lasts longer.
constexpr double kLongestPassS = 1800;
/// Groups that are added before the first stamp and behind the last.
constexpr int kGroupsBeyond = 4;
/// Of rows, that a stamp may be early. Stamps are noted to the millisecond; rows must not overtake each
/// other.
constexpr double kMostEarlyRows = 0.5;
/// Of a group, that the time between two stamps may differ from that of the rows between them. Rows are left
/// out by whole groups.
constexpr double kSameGroups = 0.5;
/// Fewer stamps than these say nothing about their period.
constexpr std::size_t kFewest = 4;

struct Stamp {
  int Group;
  double UnixS;
};
using Stamps = std::vector<Stamp>;

double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

/// Those that are moments.
Stamps Noted(const std::vector<double>& unixS) {
  Stamps noted;
  for (std::size_t i = 0; i < unixS.size(); ++i) {
    if (unixS[i] > 0 && unixS[i] < kLatestUnixS) noted.push_back({static_cast<int>(i), unixS[i]});
  }
  return noted;
}

/// Seconds a group between neighbours.
std::vector<double> Slopes(const Stamps& stamps) {
  std::vector<double> slopes;
  for (std::size_t i = 1; i < stamps.size(); ++i) {
    const Stamp &from = stamps[i - 1], &to = stamps[i];
    slopes.push_back((to.UnixS - from.UnixS) / (to.Group - from.Group));
  }
  return slopes;
}

/// Seconds from a group to the next; 0 when the stamps do not tell.
double PeriodOf(const Stamps& stamps) {
  // Neighbours tell it first, as rows may be left out anywhere. Of half wrong stamps a quarter of the
  // neighbours are true, and the others' slopes lie about as often above as below.
  const std::vector<double> slopes = Slopes(stamps);
  if (slopes.size() < kFewest) return 0;
  double period = Median(slopes);
  const auto alike = std::count_if(slopes.begin(), slopes.end(),
                                   [&](double slope) { return std::abs(slope - period) < period / 4; });
  if (5 * static_cast<std::size_t>(alike) < slopes.size()) return 0;
  // Then ever longer ways between which nothing was left out: milliseconds weigh less there.
  for (std::size_t span = 4; span < stamps.size(); span *= 4) {
    std::vector<double> unbroken;
    for (std::size_t i = span; i < stamps.size(); ++i) {
      const int groups = stamps[i].Group - stamps[i - span].Group;
      const double seconds = stamps[i].UnixS - stamps[i - span].UnixS;
      if (std::abs(seconds - groups * period) < kSameGroups * period) unbroken.push_back(seconds / groups);
    }
    if (unbroken.size() < kFewest) break;
    period = Median(std::move(unbroken));
  }
  return period;
}

/// How late a stamp is for its group. It grows where rows were left out, and never falls.
double Lateness(const Stamp& stamp, double period) { return stamp.UnixS - stamp.Group * period; }

/// Those of one pass: a decoder that takes the day from elsewhere can be whole days off.
Stamps OfOnePass(Stamps stamps, double longestS) {
  if (stamps.empty()) return stamps;
  std::vector<double> moments;
  for (const Stamp& stamp : stamps) moments.push_back(stamp.UnixS);
  const double median = Median(std::move(moments));
  std::erase_if(stamps, [&](const Stamp& stamp) { return std::abs(stamp.UnixS - median) > longestS; });
  return stamps;
}

/// The most stamps that can all be true: none is earlier than the ones before it allow.
Stamps Consistent(const Stamps& stamps, double period, double mostEarlyS) {
  // A chain does not step over more wrong stamps than these.
  constexpr std::size_t farthestStep = 2000;
  struct Link {
    double LateS;
    int Length;          ///< of the longest chain that ends here
    std::size_t Before;  ///< in it; itself for the first
  };
  std::vector<Link> links;
  std::size_t last = 0;
  for (std::size_t i = 0; i < stamps.size(); ++i) {
    Link link{Lateness(stamps[i], period), 1, i};
    for (std::size_t j = i; j-- > 0 && i - j <= farthestStep;) {
      const bool follows = stamps[j].UnixS < stamps[i].UnixS && links[j].LateS <= link.LateS + mostEarlyS;
      if (follows && links[j].Length >= link.Length) {
        link.Length = links[j].Length + 1;
        link.Before = j;
      }
    }
    links.push_back(link);
    if (link.Length > links[last].Length) last = i;
  }
  Stamps chain;
  for (std::size_t i = last; i < stamps.size(); i = links[i].Before) {
    chain.push_back(stamps[i]);
    if (links[i].Before == i) break;
  }
  std::reverse(chain.begin(), chain.end());
  return chain;
}

/// Drops stamps that stand alone, far from the next: before the first two and after the last two that agree
/// nothing speaks for them, and between others one does not jump farther than it is told to.
Stamps WithoutLoners(const Stamps& stamps, double period, double mostEarlyS, double mostJumpS) {
  std::vector<double> jumps;  // to each from the one before
  for (std::size_t i = 1; i < stamps.size(); ++i) {
    jumps.push_back(Lateness(stamps[i], period) - Lateness(stamps[i - 1], period));
  }
  const auto agrees = [&](double jump) { return jump <= mostEarlyS; };
  const auto first = std::find_if(jumps.begin(), jumps.end(), agrees);
  if (first == jumps.end()) return stamps;
  const auto last = std::find_if(jumps.rbegin(), jumps.rend(), agrees);
  const auto begin = static_cast<std::size_t>(first - jumps.begin());
  const auto end = static_cast<std::size_t>(jumps.rend() - last);

  Stamps kept;
  for (std::size_t i = begin; i <= end; ++i) {
    const bool isOuter = i == begin || i == end;
    if (isOuter || jumps[i - 1] <= mostJumpS || jumps[i] <= mostJumpS) kept.push_back(stamps[i]);
  }
  return kept;
}

/// The moments of all groups that have one, and of those near them.
class Groups {
 public:
  Groups(Stamps stamps, double period) : stamps_(std::move(stamps)), period_(period) {}

  double MomentOf(int group) const {
    const auto next = std::lower_bound(stamps_.begin(), stamps_.end(), group,
                                       [](const Stamp& stamp, int wanted) { return stamp.Group < wanted; });
    if (next != stamps_.end() && next->Group == group) return next->UnixS;
    if (next == stamps_.begin() || next == stamps_.end()) return Beyond(group);
    const Stamp &before = *(next - 1), &after = *next;
    const double leftOutS = Lateness(after, period_) - Lateness(before, period_);
    if (std::abs(leftOutS) > kSameGroups * period_) return kUnknown;
    const double share = static_cast<double>(group - before.Group) / (after.Group - before.Group);
    return before.UnixS + share * (after.UnixS - before.UnixS);
  }

 private:
  double Beyond(int group) const {
    if (stamps_.empty()) return kUnknown;
    const Stamp& end = group < stamps_.front().Group ? stamps_.front() : stamps_.back();
    const int groups = group - end.Group;
    return period_ > 0 && std::abs(groups) <= kGroupsBeyond ? end.UnixS + groups * period_ : kUnknown;
  }

  Stamps stamps_;
  double period_;
};

}  // namespace

std::vector<double> MomentsOfRows(const LineStamps& stamps, double firstRow, int rows) {
  const int perStamp = std::max(stamps.RowsPerStamp, 1);
  Stamps noted = Noted(stamps.UnixS);
  const double estimated = stamps.RowIsExact ? 0 : PeriodOf(noted);
  const double period = estimated > 0 ? estimated : stamps.RowS * perStamp;
  const double rowS = period / perStamp, mostEarlyS = kMostEarlyRows * rowS;

  noted =
      OfOnePass(std::move(noted), std::max(kLongestPassS, period * static_cast<double>(stamps.UnixS.size())));
  noted = Consistent(noted, period, mostEarlyS);
  const Groups groups(WithoutLoners(noted, period, mostEarlyS, stamps.MostJumpS), period);

  std::vector<double> moments;
  for (int row = 0; row < rows; ++row) {
    const double position = row + firstRow;
    const double group = std::floor(position / perStamp);
    const double rowsFromStamp = position - group * perStamp - perStamp / 2;  // NOLINT: n/2 is whole
    const double stamp = std::abs(group) < 1e9 ? groups.MomentOf(static_cast<int>(group)) : kUnknown;
    moments.push_back(rowS > 0 || rowsFromStamp == 0 ? stamp + rowsFromStamp * rowS : kUnknown);
  }
  return moments;
}

}  // namespace pelorin::swath
