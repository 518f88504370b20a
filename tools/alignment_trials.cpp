#include "tools/alignment_trials.h"

#include <chrono>
#include <cmath>
#include <random>

#include "orbit/scalar_math.h"

namespace pelorin::tools {
namespace {

struct Part {
  const char* Name;
  int FirstRow, Rows;
};

std::vector<Part> PartsOf(const swath::Recording& recording) {
  constexpr int rows = 600;
  std::vector<Part> parts{{"whole", 0, recording.Rows}};
  if (recording.Rows > rows) {
    parts.push_back({"upper", 0, rows});
    parts.push_back({"lower", recording.Rows - rows, rows});
  }
  return parts;
}

/// The recording of some rows of the file.
swath::Recording PartOf(const swath::Recording& whole, const Part& part) {
  swath::Recording recording = whole;
  recording.Rows = part.Rows;
  const int firstLine = whole.Lies.Turned ? whole.Rows - part.FirstRow - part.Rows : part.FirstRow;
  if (whole.LineTimesS) {
    recording.LineTimesS = std::make_shared<const std::vector<double>>(
        whole.LineTimesS->begin() + firstLine, whole.LineTimesS->begin() + firstLine + part.Rows);
  } else {
    recording.Start.Days += whole.SecondsOfLine(firstLine) / orbit::kSecondsPerDay;
  }
  return recording;
}

std::vector<QImage> ChannelsOf(const MeasuredPicture& picture, const Part& part, bool isInverted) {
  std::vector<QImage> channels;
  for (const QImage& channel : picture.Channels) {
    channels.push_back(channel.copy(0, part.FirstRow, channel.width(), part.Rows)
                           .convertToFormat(QImage::Format_Grayscale8));
    if (isInverted) channels.back().invertPixels();
  }
  return channels;
}

/// Normally distributed, the same for the same seed everywhere.
void AddNoise(double sd, unsigned seed, QImage& image) {
  if (sd <= 0) return;
  std::mt19937 random(seed);
  const auto even = [&random] { return (static_cast<double>(random()) + 0.5) / 4294967296.0; };
  for (int row = 0; row < image.height(); ++row) {
    uchar* pixels = image.scanLine(row);
    for (int column = 0; column < image.width(); ++column) {
      const double off = std::sqrt(-2 * std::log(even())) * std::cos(orbit::kTwoPi * even());
      pixels[column] = static_cast<uchar>(std::clamp(pixels[column] + sd * off, 0.0, 255.0));
    }
  }
}

/// For every part, as it is and inverted.
void ForEachPart(const MeasuredPicture& picture,
                 const std::function<void(const Part&, const AlignmentTrial&)>& take) {
  for (const Part& part : PartsOf(picture.Recording)) {
    for (const bool isInverted : {false, true}) {
      AlignmentTrial trial;
      trial.Of = picture.Name;
      trial.Part = QLatin1String(part.Name);
      trial.IsInverted = isInverted;
      trial.Recording = PartOf(picture.Recording, part);
      trial.Channels = ChannelsOf(picture, part, isInverted);
      take(part, trial);
    }
  }
}

}  // namespace

TrialResult Run(const AlignmentTrial& trial, const align::Ground& ground) {
  const auto begin = std::chrono::steady_clock::now();
  TrialResult result{TrialEnd::Refused, {}, {}, 0};
  result.Alignment =
      align::AlignPicture(trial.Recording, trial.Channels, ground, {}, [](double) { return true; });
  result.Seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
  if (result.Alignment.Is == align::Finding::NotFound) return result;
  if (trial.MustBeRefused) {
    result.End = TrialEnd::Wrong;
    return result;
  }
  result.FromReference = MisfitBetween(result.Alignment.Aligned, trial.Reference);
  const Misfit& off = result.FromReference;
  if (std::fabs(off.Seconds) > kMostWrongS || std::fabs(off.Columns) > kMostWrongColumns) {
    result.End = TrialEnd::Wrong;
  } else {
    result.End = result.Alignment.Is == align::Finding::Found ? TrialEnd::Found : TrialEnd::Roughly;
  }
  return result;
}

std::vector<AlignmentTrial> StartTrials(const MeasuredPicture& picture, const swath::Recording& reference,
                                        double noiseSd) {
  std::vector<AlignmentTrial> trials;
  unsigned seed = static_cast<unsigned>(noiseSd) + 1;
  ForEachPart(picture, [&](const Part& part, const AlignmentTrial& as) {
    for (const double wrongByS : {5.0, 20.0, 60.0, 90.0, 300.0}) {
      for (const int sign : {1, -1}) {
        AlignmentTrial trial = as;
        trial.Kind = QStringLiteral("start");
        trial.NoiseSd = noiseSd;
        trial.WrongByS = sign * wrongByS;
        trial.Recording.Start.Days += trial.WrongByS / orbit::kSecondsPerDay;
        trial.Reference = PartOf(reference, part);
        for (QImage& channel : trial.Channels) AddNoise(noiseSd, ++seed, channel);
        trials.push_back(std::move(trial));
      }
    }
  });
  return trials;
}

std::vector<AlignmentTrial> RefusalTrials(const MeasuredPicture& picture) {
  std::vector<AlignmentTrial> trials;
  ForEachPart(picture, [&](const Part&, const AlignmentTrial& as) {
    const auto add = [&](const QString& kind, const std::function<void(AlignmentTrial&)>& change) {
      AlignmentTrial trial = as;
      trial.Kind = kind;
      trial.MustBeRefused = true;
      change(trial);
      trials.push_back(std::move(trial));
    };
    const auto addFlipped = [&](const char* kind, bool leftRight, bool upDown) {
      add(QLatin1String(kind), [&](AlignmentTrial& trial) {
        for (QImage& channel : trial.Channels) channel = channel.mirrored(leftRight, upDown);
      });
    };
    addFlipped("mirrored", true, false);
    addFlipped("upside down", false, true);
    addFlipped("turned", true, true);
    const auto addLater = [&](const QString& kind, double days) {
      add(kind, [&](AlignmentTrial& trial) { trial.Recording.Start.Days += days; });
    };
    for (const int orbits : {-2, -1, 1, 2}) {
      addLater(QStringLiteral("orbit %1").arg(orbits), orbits * as.Recording.Elements->PeriodDays());
    }
    for (const int days : {-5, -4, -3, -2, -1, 1, 2, 3, 4, 5})
      addLater(QStringLiteral("day %1").arg(days), days);
    for (const orbit::TSatellite& other : picture.Others) {
      add(QString::fromStdString(other.Name), [&](AlignmentTrial& trial) {
        trial.Recording.Elements = std::make_shared<const orbit::TSatellite>(other);
      });
    }
  });
  return trials;
}

}  // namespace pelorin::tools
