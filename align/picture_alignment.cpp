#include "align/picture_alignment.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "align/coarse_search.h"
#include "align/fine_land.h"
#include "align/sample_mesh.h"
#include "align/voted_places.h"
#include "files/file_error.h"
#include "orbit/scalar_math.h"
#include "swath/clock_corrections.h"

namespace pelorin::align {
namespace {

/// A place that is told apart from others needs so many windows with coasts.
constexpr int kLeastCoastWindows = 8;
/// Pure noise has some 0.3 when its median was taken.
constexpr double kMostNoise = 0.27;
/// Of the blur that both get, samples.
constexpr double kPictureBlur = 0.8, kLandBlur = 1;

/// How clear the fit by pixels must be, and how far from that by samples it may be.
constexpr double kClearPixels = 20, kMostSamplesOff = 3;

/// A larger picture's pixels are many times smaller than samples, and take gigabytes as numbers.
constexpr double kMostPixels = 2e7;

/// How large each is thought to be.
MoveDoubts DoubtsFor(const swath::Recording& recording) {
  const double unknown = std::numeric_limits<double>::infinity();
  switch (recording.SeenBy.Line.Law) {
    case swath::ScanLaw::Zones:
      return {unknown, 3, 0.4, 0.6};
    case swath::ScanLaw::ZonesSphere:
      return {unknown, 12, 0, 0};
    case swath::ScanLaw::EvenAngles:
      // A shift is a roll.
      break;
  }
  return {unknown, 0, 0.7, 0.6};
}

/// What a coarse place means for the recording.
Moves MovesTo(const CoarsePlace& place, const SampleMesh& mesh, const swath::Recording& recording) {
  Moves moves;
  moves.TimeS = place.TimeS;
  if (TurnsWithAttitude(recording)) {
    constexpr std::size_t yaw = 3;
    const Frame frame = Frame::OfSamples(mesh);
    const double row = frame.Rows / 2;
    const auto ends = MovesOf(frame, {{0, row}, {frame.Columns - 1.0, row}});
    const double rowsByDegree = (ends[1].Rows[yaw] - ends[0].Rows[yaw]) / 2;
    // An end that is not seen does not move.
    const bool bothSeen = ends[0].Rows[yaw] != 0 && ends[1].Rows[yaw] != 0;
    if (bothSeen) moves.YawDeg = -place.YawCells * SampleMesh::kPerCell / rowsByDegree;
  }
  moves.RollDeg = place.Across.RollDeg;
  if (place.Across.UniformCells != 0) {
    const swath::LineShape& line = recording.SeenBy.Line;
    double columns = 0, angle = 0;
    for (int x = 0; x < mesh.Columns(); ++x) {
      const double from = mesh.ScannerColumn(x);
      const double to = mesh.ScannerColumn(x + place.Across.UniformCells * SampleMesh::kPerCell);
      columns += (to - from) / mesh.Columns();
      angle += (swath::ColumnAngle(line, to) - swath::ColumnAngle(line, from)) / mesh.Columns();
    }
    if (line.Law == swath::ScanLaw::EvenAngles) {
      moves.RollDeg += orbit::Degrees(angle);
    } else {
      moves.ShiftColumns -= columns;
    }
  }
  return moves;
}

double Rounded(double value) {
  constexpr double step = 100;
  return std::round(value * step) / step;
}

/// What is remembered, and shown.
swath::Recording Rounded(swath::Recording recording) {
  recording.OffsetS = Rounded(recording.OffsetS);
  recording.ShiftColumns = Rounded(recording.ShiftColumns);
  recording.Offsets.RollDeg = Rounded(recording.Offsets.RollDeg);
  recording.Offsets.YawDeg = Rounded(recording.Offsets.YawDeg);
  return recording;
}

Moves Together(const Moves& a, const Moves& b) {
  return {a.TimeS + b.TimeS, a.ShiftColumns + b.ShiftColumns, a.RollDeg + b.RollDeg, a.YawDeg + b.YawDeg};
}

struct FineStep {
  FineFit Fit;
  WindowLayout Layout;
};

class Aligning {
 public:
  Aligning(const swath::Recording& recording, std::span<const QImage> channels, const Ground& ground,
           const AfterStep& afterStep)
      : recording_(recording), ground_(ground), afterStep_(afterStep) {
    for (const QImage& channel : channels) {
      if (channel.width() == recording.Columns && channel.height() == recording.Rows) {
        pictures_.push_back(MedianOfNine(ReceivedGrey(channel, recording)));
      }
    }
  }

  PictureAlignment Align(const SearchRange& range) {
    PictureAlignment result;
    result.Aligned = recording_;
    if (recording_.Rows < 2 || recording_.Columns < 2 || pictures_.empty()) {
      return NotFound(result, NotFoundFor::TooSmall);
    }
    const SampleMesh mesh(recording_);
    if (mesh.Columns() == 0) return NotFound(result, NotFoundFor::NoOrbit);
    std::vector<PictureCells> cells;
    double noise = 0, most = 0;
    for (const GreyPlane& picture : pictures_) {
      cells.push_back(CellsOf(mesh.Resampled(picture)));
      noise += cells.back().NoiseShare / static_cast<double>(pictures_.size());
      for (const std::int16_t cell : cells.back().Contrast.Values) most = std::max(most, std::fabs(cell));
    }
    if (!HasWindows(cells.front())) return NotFound(result, NotFoundFor::TooSmall);
    if (most == 0) return NotFound(result, NotFoundFor::OneColour);
    const auto coarse = SearchAlong(mesh, cells, ground_.SurfacesOf, range.TimeS,
                                    [this](double share) { return afterStep_(0.5 * share); });
    if (!coarse) {
      result.Is = Finding::Stopped;
      return result;
    }
    result.ChancePeaks = coarse->ChancePeaks;
    result.HalvesAgree = coarse->HalvesAgree;
    if (!coarse->IsSure()) return NotFound(result, WhyNot(*coarse, noise));
    result.Is = Finding::Roughly;
    result.Aligned.OffsetS = Rounded(recording_.OffsetS + coarse->TimeS);
    if (!IsPossible(result.Aligned)) return NotFound(result, NotFoundFor::AtTheEnd);
    if (!ground_.Shores) {
      result.NoShores = ground_.NoShores;
      return result;
    }
    try {
      Refine(MovesTo(*coarse, mesh, recording_), result);
    } catch (const Ended&) {
      result = {};
      result.Aligned = recording_;
      result.Is = Finding::Stopped;
    } catch (const files::FileError& error) {
      result.NoShores = error.Text();
    }
    return result;
  }

 private:
  PictureAlignment NotFound(PictureAlignment& result, NotFoundFor reason) const {
    result.Is = Finding::NotFound;
    result.Aligned = recording_;
    result.Reason = reason;
    return result;
  }

  NotFoundFor WhyNot(const CoarsePlace& place, double noise) const {
    if (place.CoastWindows < kLeastCoastWindows * static_cast<int>(pictures_.size())) {
      return NotFoundFor::FewCoasts;
    }
    if (noise > kMostNoise) return NotFoundFor::Noise;
    if (place.IsAtEnd) return NotFoundFor::AtTheEnd;
    return place.HalvesAgree ? NotFoundFor::Clouds : NotFoundFor::HalvesApart;
  }

  /// Somebody has told the work to end.
  struct Ended {};
  void GoOn(double share) const {
    if (!afterStep_(share)) throw Ended();
  }

  /// The offset is one that a recording may have, and the spacecraft does not fly more askew than is searched
  /// for.
  bool IsPossible(const swath::Recording& aligned) const {
    constexpr double mostRollDeg = 1.5, mostYawDeg = 3.5;
    return std::fabs(aligned.OffsetS) <= swath::kOffsetLimitS &&
           std::fabs(aligned.Offsets.RollDeg - recording_.Offsets.RollDeg) <= mostRollDeg &&
           std::fabs(aligned.Offsets.YawDeg - recording_.Offsets.YawDeg) <= mostYawDeg;
  }

  /// By samples, which are alike for all scanners, and then by the picture's own pixels. Raises Ended.
  void Refine(const Moves& coarse, PictureAlignment& result) {
    const FineStep first = BySamples(coarse);
    GoOn(0.75);
    result.Gate = first.Fit.Gate;
    if (result.Gate < kClearGate) return;
    const Moves bySamples = Together(coarse, first.Fit.Found);
    const swath::Recording sampled = Rounded(Moved(recording_, bySamples));
    if (!IsPossible(sampled)) return;
    result.Is = Finding::Found;
    result.Aligned = sampled;
    if (1.0 * recording_.Rows * recording_.Columns > kMostPixels) return;
    const VotedPlaces voted(SampleMesh(Moved(recording_, coarse)), first.Fit.Windows, first.Layout.Rows,
                            first.Layout.Columns);
    const FineStep last = ByPixels(bySamples, voted);
    GoOn(1);
    if (!Confirms(last, Moved(recording_, bySamples))) return;
    result.Aligned = Rounded(Moved(recording_, Together(bySamples, last.Fit.Found)));
    for (const WindowResidual& window : last.Fit.Windows) {
      result.Windows.push_back(InFile(window, last.Layout));
    }
  }

  FineStep BySamples(const Moves& already) const {
    const SampleMesh mesh(Moved(recording_, already));
    // The set may end within what is searched.
    if (mesh.Columns() == 0) return {};
    std::vector<Plane> contrasts;
    GreyPlane seen;
    for (const GreyPlane& picture : pictures_) {
      SampleMesh::Samples samples = mesh.Resampled(picture);
      contrasts.push_back(Contrast(samples.Grey, samples.Seen, 1));
      seen = std::move(samples.Seen);
    }
    return Fit(Frame::OfSamples(mesh), contrasts, seen, {}, already);
  }

  /// Pixels of a sample.
  double Scale() const { return std::clamp(recording_.SeenBy.RowsPerSecond * SampleMesh::kRowS, 1.0, 3.0); }

  /// Pixels say the same as samples did, only more exactly. In small or noisy pictures a few windows may find
  /// each other elsewhere.
  bool Confirms(const FineStep& step, const swath::Recording& bySamples) const {
    const Frame frame = Frame::OfPixels(bySamples);
    std::vector<swath::PixelPoint> places;
    for (const double across : {0.1, 0.5, 0.9}) {
      for (const double along : {0.1, 0.5, 0.9})
        places.push_back({across * frame.Columns, along * frame.Rows});
    }
    const auto found = step.Fit.Found.AsArray();
    double farthest = 0;
    for (const PlaceMoves& moves : MovesOf(frame, places)) {
      double rows = 0, columns = 0;
      for (std::size_t i = 0; i < found.size(); ++i) {
        rows += moves.Rows[i] * found[i];
        columns += moves.Columns[i] * found[i];
      }
      farthest = std::max(farthest, std::hypot(rows, columns));
    }
    return step.Fit.Gate >= kClearPixels && farthest <= kMostSamplesOff * Scale();
  }

  FineStep ByPixels(const Moves& already, const VotedPlaces& voted) const {
    const Frame frame = Frame::OfPixels(Moved(recording_, already));
    const double scale = Scale();
    WindowLayout layout;
    layout.Rows = static_cast<int>(layout.Rows * std::sqrt(scale));
    layout.Columns = static_cast<int>(layout.Columns * std::sqrt(scale));
    // Where the place is known already, no window need be kept from deciding it.
    layout.MostVote = 4;
    // Small pixels: a coast's votes reach as far as the land is moved.
    layout.Backgrounds /= scale;
    GreyPlane seen(frame.Columns, frame.Rows);
    for (int row = 0; row < frame.Rows; ++row) {
      if (!std::isfinite(recording_.SecondsOfLine(row))) continue;
      for (int x = 0; x < frame.Columns; ++x) {
        const double column = frame.ScannerColumn(x);
        seen.Row(row)[x] = column > -0.5 && column < recording_.SeenBy.Line.Columns - 0.5;
      }
    }
    std::vector<Plane> contrasts;
    for (const GreyPlane& picture : pictures_) {
      Plane grey(picture.Columns, picture.Rows);
      std::copy(picture.Values.begin(), picture.Values.end(), grey.Values.begin());
      contrasts.push_back(Contrast(grey, seen, scale));
      GoOn(0.75);
    }
    return Fit(frame, contrasts, seen, layout, already, [&](swath::PixelPoint middle) {
      return voted.At(recording_.SecondsOfLine(static_cast<int>(middle.Row)),
                      frame.ScannerColumn(middle.Column));
    });
  }

  static Plane Contrast(const Plane& grey, const GreyPlane& seen, double scale) {
    constexpr int half = 32;
    constexpr double leastSd = 3;
    return LocalContrast(BlurredWhereSeen(grey, seen, kPictureBlur), seen, static_cast<int>(half * scale),
                         leastSd);
  }

  FineStep Fit(const Frame& frame, const std::vector<Plane>& contrasts, const GreyPlane& seen,
               const WindowLayout& layout, const Moves& already, const Promise& promise = {}) const {
    const int margin = std::max(layout.RowReach, layout.ColumnReach);
    const double share = promise ? 0.75 : 0.5;
    GoOn(share);
    const Plane land = Blurred(LandIn(frame, margin, *ground_.Shores, ground_.SurfacesOf), kLandBlur);
    const auto windows =
        WindowsWithCoasts(contrasts, seen, land, margin, layout, promise, [this, share] { GoOn(share); });
    return {FitWindows(frame, windows, DoubtsFor(recording_), already), layout};
  }

  VotingWindow InFile(const WindowResidual& window, const WindowLayout& layout) const {
    const bool isTurned = recording_.Lies.Turned, runsLeft = recording_.RunsLeft();
    VotingWindow in;
    in.Middle = {runsLeft ? recording_.Columns - 1 - window.Middle.Column : window.Middle.Column,
                 isTurned ? recording_.Rows - 1 - window.Middle.Row : window.Middle.Row};
    in.HalfColumns = layout.Columns / 2.0;
    in.HalfRows = layout.Rows / 2.0;
    // What the map has farther on than it should, the picture has before.
    in.MisfitColumns = runsLeft ? window.Columns : -window.Columns;
    in.MisfitRows = isTurned ? window.Rows : -window.Rows;
    in.Votes = window.Votes;
    return in;
  }

  swath::Recording recording_;
  std::vector<GreyPlane> pictures_;  ///< as received
  const Ground& ground_;
  const AfterStep& afterStep_;
};

}  // namespace

QString TextOf(NotFoundFor reason) {
  switch (reason) {
    case NotFoundFor::Nothing:
      break;
    case NotFoundFor::TooSmall:
      return QStringLiteral("The picture is too small to be recognised by its coasts.");
    case NotFoundFor::NoOrbit:
      return QStringLiteral("The satellite's elements give no position at the picture's time.");
    case NotFoundFor::OneColour:
      return QStringLiteral("The picture shows nothing: it is of one colour.");
    case NotFoundFor::FewCoasts:
      return QStringLiteral("There are too few coasts below this pass.");
    case NotFoundFor::Noise:
      return QStringLiteral("The picture is too noisy for its coasts to be recognised.");
    case NotFoundFor::Clouds:
      return QStringLiteral(
          "No coasts are recognised: clouds hide them, or satellite, time or the way it is stored are not "
          "those of the picture.");
    case NotFoundFor::HalvesApart:
      return QStringLiteral(
          "Parts of the picture would lie at different places: clouds hide its coasts, or satellite, time or "
          "the way it is stored are not those of the picture.");
    case NotFoundFor::AtTheEnd:
      return QStringLiteral("The picture seems to lie beyond what was searched: its time is too far off.");
  }
  return {};
}

PictureAlignment AlignPicture(const swath::Recording& recording, std::span<const QImage> channels,
                              const Ground& ground, const SearchRange& range, const AfterStep& afterStep) {
  return Aligning(recording, channels, ground, afterStep).Align(range);
}

}  // namespace pelorin::align
