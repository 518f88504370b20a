#include "align/pass_search.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <exception>
#include <iterator>
#include <memory>
#include <thread>

#include "align/coarse_search.h"
#include "orbit/julian_date.h"
#include "orbit/pass_search.h"
#include "swath/scanner_match.h"

namespace pelorin::align {
namespace {

constexpr std::array<swath::Stored, 4> kAllWays{{{false, false}, {true, false}, {false, true}, {true, true}}};

/// What is tried in every pass: less than where the pass is known, since there are many.
VoteGrid PlainGrid(const swath::Recording& recording, const SampleMesh& mesh) {
  VoteGrid grid = GridFor(recording, mesh);
  constexpr double mostYaw = 4;
  std::erase_if(grid.YawCells, [](double yaw) { return std::fabs(yaw) > mostYaw || std::fmod(yaw, 2) != 0; });
  std::vector<AcrossMove>& uniform = grid.Across.front();
  uniform.erase(uniform.begin());
  uniform.pop_back();
  grid.Across.resize(1);
  return grid;
}

/// What was found in a pass, stored in one way.
struct Tried {
  PassPlace Place;
  std::vector<float> Votes;  ///< by shift
};

class Searching {
 public:
  Searching(std::span<const PassCandidate> candidates, std::span<const swath::Stored> ways,
            std::span<const QImage> channels, const Ground& ground)
      : candidates_(candidates), ways_(ways), ground_(ground), tried_(candidates.size()) {
    for (const swath::Stored& way : ways) {
      pictures_.emplace_back();
      swath::Recording stored;
      stored.Lies = way;
      for (const QImage& channel : channels)
        pictures_.back().push_back(MedianOfNine(ReceivedGrey(channel, stored)));
    }
  }

  /// False when it was ended.
  bool Run(const AfterStep& afterStep) {
    std::exception_ptr trouble;
    std::thread other([this, &trouble] {
      try {
        while (TakeOne([this] { return !isEnded_; })) {
        }
      } catch (...) {
        trouble = std::current_exception();
        isEnded_ = true;
      }
    });
    const Joined joined(other, isEnded_);
    while (TakeOne([&] {
      const double done = static_cast<double>(std::min(next_.load(), candidates_.size())) /
                          static_cast<double>(candidates_.size());
      if (!isEnded_ && !afterStep(done)) isEnded_ = true;
      return !isEnded_;
    })) {
    }
    other.join();
    if (trouble) std::rethrow_exception(trouble);
    return !isEnded_;
  }

  std::vector<Tried> Result() {
    std::vector<Tried> all;
    for (auto& ofPass : tried_) std::move(ofPass.begin(), ofPass.end(), std::back_inserter(all));
    return all;
  }

 private:
  /// Whatever leaves the caller's part, the other thread has ended by then.
  class Joined {
   public:
    Joined(std::thread& thread, std::atomic<bool>& isEnded) : thread_(thread), isEnded_(isEnded) {}
    Joined(const Joined&) = delete;
    Joined& operator=(const Joined&) = delete;
    ~Joined() {
      if (!thread_.joinable()) return;
      isEnded_ = true;
      thread_.join();
    }

   private:
    std::thread& thread_;
    std::atomic<bool>& isEnded_;
  };

  template <class GoesOn>
  bool TakeOne(const GoesOn& goesOn) {
    const std::size_t candidate = next_++;
    if (candidate >= candidates_.size()) return false;
    Try(candidate, goesOn);
    return goesOn();
  }

  template <class GoesOn>
  void Try(std::size_t candidate, const GoesOn& goesOn) {
    const PassCandidate& pass = candidates_[candidate];
    swath::Recording recording = pass.Recording;
    // A set is made ready when it is first used, which two threads must not do at once.
    recording.Elements = std::make_shared<const orbit::TSatellite>(*recording.Elements);
    if (recording.Rows < 2 || recording.Columns < 2) return;
    const SampleMesh mesh(recording);
    const VoteGrid grid = PlainGrid(recording, mesh);
    std::optional<CellPlane> strip;
    const int before = static_cast<int>(std::ceil(pass.MarginS / kCellS));
    for (std::size_t way = 0; way < ways_.size(); ++way) {
      std::vector<PictureCells> cells;
      for (const GreyPlane& picture : pictures_[way]) {
        if (picture.Columns != recording.Columns || picture.Rows != recording.Rows) continue;
        cells.push_back(CellsOf(mesh.Resampled(picture)));
      }
      if (cells.empty() || !HasWindows(cells.front())) return;
      if (!strip) {
        const int rows = static_cast<int>(std::ceil((pass.LengthS + 2 * pass.MarginS) / kCellS));
        strip = CoastStrip(mesh, ground_.SurfacesOf, -before * SampleMesh::kPerCell,
                           std::max(rows, cells.front().Contrast.Rows + 2 * before));
      }
      const int last = strip->Rows - cells.front().Contrast.Rows;
      const auto votes = VotesInStrip(cells, *strip, grid, 0, last, [&](double) { return goesOn(); });
      if (!votes) return;
      const PassPlace place{candidate, ways_[way], (votes->Peak.Shift - before) * kCellS, votes->Peak.Votes};
      tried_[candidate].push_back({place, votes->Best});
    }
  }

  std::span<const PassCandidate> candidates_;
  std::span<const swath::Stored> ways_;
  const Ground& ground_;
  std::vector<std::vector<GreyPlane>> pictures_;  ///< by way, as received
  std::vector<std::vector<Tried>> tried_;         ///< by candidate, each written by one thread
  std::atomic<std::size_t> next_ = 0;
  std::atomic<bool> isEnded_ = false;
};

float MedianOf(std::vector<float> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

/// A part of the whole work.
AfterStep Part(const AfterStep& afterStep, double from, double to) {
  return [&afterStep, from, to](double share) { return afterStep(from + (to - from) * share); };
}

/// Nothing when it was ended.
std::optional<std::vector<Tried>> TryPasses(std::span<const PassCandidate> candidates,
                                            std::span<const swath::Stored> ways,
                                            std::span<const QImage> channels, const Ground& ground,
                                            const AfterStep& afterStep) {
  Searching searching(candidates, ways, channels, ground);
  if (!searching.Run(afterStep)) return std::nullopt;
  return searching.Result();
}

/// The places in their order, and the best one aligned if it is clear.
PassSearch Ranked(const std::vector<Tried>& all, std::span<const PassCandidate> candidates,
                  std::span<const QImage> channels, const Ground& ground, const AfterStep& afterStep) {
  PassSearch search;
  std::vector<float> votes;
  for (const Tried& tried : all) votes.insert(votes.end(), tried.Votes.begin(), tried.Votes.end());
  if (votes.empty()) return search;
  // By all passes together: over much sea even the best place of a pass is a poor one.
  const auto places = static_cast<double>(votes.size());
  const float middle = MedianOf(votes);
  for (float& vote : votes) vote = std::fabs(vote - middle);
  const double deviation = std::max(static_cast<double>(MedianOf(std::move(votes))), 1e-6);
  for (const Tried& tried : all) {
    search.Places.push_back(tried.Place);
    search.Places.back().Score = (tried.Place.Score - static_cast<double>(middle)) / deviation;
  }
  std::sort(search.Places.begin(), search.Places.end(),
            [](const PassPlace& a, const PassPlace& b) { return a.Score > b.Score; });
  const PassPlace& best = search.Places.front();
  const double second = search.Places.size() > 1 ? search.Places[1].Score : 0;
  search.Margin = best.Score / std::max(second, 1.0);
  if (search.Margin < kClearMargin) return search;
  swath::Recording recording = candidates[best.Candidate].Recording;
  recording.Lies = best.Lies;
  recording.Start.Days += best.TimeS / orbit::kSecondsPerDay;
  // Where several passes were compared, the start is known to the width of a peak.
  constexpr double rangeS = 60;
  search.Best = AlignPicture(recording, channels, ground, {rangeS}, afterStep);
  if (search.Best->Is == Finding::Stopped) return {};
  search.Best->ChancePeaks *= std::max(1.0, places * kCellS / (2 * rangeS));
  return search;
}

}  // namespace

bool PassSearch::IsClear() const {
  // Chance has so many places to choose from that a rough one must be the clearer.
  constexpr double mostChancePeaks = 3e-3;
  return Best && (Best->Is == Finding::Found ||
                  (Best->Is == Finding::Roughly && Best->ChancePeaks <= mostChancePeaks));
}

std::vector<PassCandidate> CandidatesOf(QSize picture, std::span<const orbit::TSatellite> satellites,
                                        const swath::ScannerTable& scanners, const orbit::Observer& station,
                                        orbit::TDateTime from, int days) {
  std::vector<PassCandidate> candidates;
  for (const orbit::TSatellite& satellite : satellites) {
    const auto match = swath::MatchScanner(scanners, satellite, picture.width());
    if (!match.Problem.isEmpty() || !match.Note.isEmpty()) continue;
    for (const orbit::Pass& pass : orbit::SearchPasses(satellite, station, {from, days})) {
      PassCandidate candidate;
      swath::Recording& recording = candidate.Recording;
      recording.Satellite = QString::fromStdString(satellite.Name);
      recording.Columns = picture.width();
      recording.Rows = picture.height();
      recording.Start = orbit::DateTimeOfJulianDate(pass.Aos);
      recording.FirstColumn = match.FirstColumn;
      recording.SouthBound = pass.Record.SouthBound;
      swath::TakeElements(satellite, scanners, recording);
      swath::SettleLies(recording);
      candidate.LengthS = (pass.Los - pass.Aos) * orbit::kSecondsPerDay;
      candidates.push_back(std::move(candidate));
    }
  }
  return candidates;
}

PassSearch FindPass(std::span<const PassCandidate> candidates, std::span<const swath::Stored> ways,
                    std::span<const QImage> channels, const Ground& ground, const AfterStep& afterStep) {
  constexpr double share = 0.9;
  const auto all = TryPasses(candidates, ways, channels, ground, Part(afterStep, 0, share));
  return all ? Ranked(*all, candidates, channels, ground, Part(afterStep, share, 1)) : PassSearch();
}

PassSearch FindPassAndWay(std::span<const PassCandidate> candidates, std::span<const QImage> channels,
                          const Ground& ground, const AfterStep& afterStep) {
  const std::vector<swath::Stored> usual{{false, false}, {true, false}}, others{{false, true}, {true, true}};
  auto all = TryPasses(candidates, usual, channels, ground, Part(afterStep, 0, 0.45));
  if (!all) return {};
  const PassSearch search = Ranked(*all, candidates, channels, ground, Part(afterStep, 0.45, 0.5));
  if (search.Places.empty() || search.IsClear()) return search;
  auto more = TryPasses(candidates, others, channels, ground, Part(afterStep, 0.5, 0.95));
  if (!more) return {};
  std::move(more->begin(), more->end(), std::back_inserter(*all));
  return Ranked(*all, candidates, channels, ground, Part(afterStep, 0.95, 1));
}

PictureAlignment AlignInAnyWay(const swath::Recording& recording, std::span<const QImage> channels,
                               const Ground& ground, const SearchRange& range, const AfterStep& afterStep) {
  constexpr double share = 0.8;
  PictureAlignment alignment = AlignPicture(recording, channels, ground, range, Part(afterStep, 0, share));
  const bool showsSomething =
      alignment.Reason == NotFoundFor::Clouds || alignment.Reason == NotFoundFor::HalvesApart;
  if (alignment.Is != Finding::NotFound || !showsSomething) return alignment;
  const PassCandidate here{recording, recording.LengthS(), range.TimeS};
  const PassSearch search =
      FindPass(std::span(&here, 1), kAllWays, channels, ground, Part(afterStep, share, 1));
  if (search.Places.empty()) {
    alignment.Is = Finding::Stopped;
  } else if (search.IsClear() && search.Places.front().Lies != recording.Lies) {
    alignment.StoredAs = search.Places.front().Lies;
  }
  return alignment;
}

}  // namespace pelorin::align
