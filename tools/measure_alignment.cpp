// Measures how well pictures are aligned by their coasts: trials.csv, residuals.csv and pictures of the
// residuals, and the figures as tables. docs/alignment.md has the last ones.

#include <sys/resource.h>

#include <QDir>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>

#include "files/atomic_file.h"
#include "orbit/julian_date.h"
#include "tools/alignment_residuals.h"
#include "tools/alignment_trials.h"
#include "tools/maker.h"

namespace pelorin::tools {
namespace {

/// Grey levels; noise grows until half of the tries are refused.
constexpr double kNoises[] = {0, 10, 20, 40, 60, 80, 100, 120, 160, 200};
constexpr double kVectorsTimes = 20;

double PeakMegabytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) / 1024;
}

const char* NameOf(TrialEnd end) {
  switch (end) {
    case TrialEnd::Found:
      return "found";
    case TrialEnd::Roughly:
      return "roughly";
    case TrialEnd::Refused:
      return "refused";
    case TrialEnd::Wrong:
      break;
  }
  return "wrong";
}

/// What came of the tries of one kind.
struct Tally {
  std::map<TrialEnd, int> Ends;
  std::vector<double> Lines, Columns, Seconds;  ///< of those that were found; of all

  int Of(TrialEnd end) const { return Ends.contains(end) ? Ends.at(end) : 0; }
  int All() const {
    return Of(TrialEnd::Found) + Of(TrialEnd::Roughly) + Of(TrialEnd::Refused) + Of(TrialEnd::Wrong);
  }
  void Add(const TrialResult& result) {
    ++Ends[result.End];
    Seconds.push_back(result.Seconds);
    if (result.End != TrialEnd::Found) return;
    Lines.push_back(result.FromReference.LinesOfNine);
    Columns.push_back(result.FromReference.ColumnsOfNine);
  }
  void Add(const Tally& other) {
    for (const auto& [end, count] : other.Ends) Ends[end] += count;
    for (auto list : {&Tally::Lines, &Tally::Columns, &Tally::Seconds}) {
      (this->*list).insert((this->*list).end(), (other.*list).begin(), (other.*list).end());
    }
  }
  void Print(const char* name) const {
    std::printf("| %s | %d | %d | %d | %d | %d | %.2f / %.2f | %.2f / %.2f | %.2f / %.2f |\n", name, All(),
                Of(TrialEnd::Found), Of(TrialEnd::Roughly), Of(TrialEnd::Refused), Of(TrialEnd::Wrong),
                MedianOf(Lines), MedianOf(Lines, 1), MedianOf(Columns), MedianOf(Columns, 1),
                MedianOf(Seconds), MedianOf(Seconds, 1));
  }
  static void PrintHead() {
    std::printf(
        "| tries | all | found | roughly | refused | wrong | lines off (median / most) | columns off | "
        "seconds "
        "it took |\n|---|---|---|---|---|---|---|---|---|\n");
  }
};

class Measuring {
 public:
  Measuring(const char* list, const char* dataFolder, const char* results)
      : results_(QFile::decodeName(results)),
        ground_(QFile::decodeName(dataFolder)),
        pictures_(ReadPictures(QFile::decodeName(list), QFile::decodeName(dataFolder))) {
    results_.mkpath(QStringLiteral("."));
    std::printf("%.0f MB before the first picture is aligned\n", PeakMegabytes());
  }

  void All() {
    for (const MeasuredPicture& picture : pictures_) Measure(picture);
    std::printf("\n");
    Tally::PrintHead();
    for (const auto& [name, tally] : kinds_) tally.Print(name.c_str());
    std::printf("\n%.0f MB at the peak\n", PeakMegabytes());
    files::ReplaceFile(results_.filePath(QStringLiteral("trials.csv")), trialTable_);
    files::ReplaceFile(results_.filePath(QStringLiteral("residuals.csv")), residualTable_);
  }

 private:
  void Measure(const MeasuredPicture& picture) {
    AlignmentTrial whole;
    whole.Of = picture.Name;
    whole.Recording = whole.Reference = picture.Recording;
    whole.Channels = picture.Channels;
    const TrialResult first = Run(whole, ground_.Ground());
    Describe(picture, first);
    if (picture.MustBeRefused || first.Alignment.Is != align::Finding::Found) return;
    const swath::Recording& reference = first.Alignment.Aligned;
    ShowResiduals(picture, reference);
    if (!picture.Truth.empty()) return;  // A made picture is measured by what is known of it.
    for (const double noise : kNoises) {
      Tally tally;
      for (const AlignmentTrial& trial : StartTrials(picture, reference, noise)) Try(trial, tally);
      kinds_[Told("wrong start, noise %3.0f", noise)].Add(tally);
      if (2 * tally.Of(TrialEnd::Refused) >= tally.All()) break;
    }
    for (const AlignmentTrial& trial : RefusalTrials(picture)) {
      Tally tally;
      Try(trial, tally);
      kinds_["must be refused: " + trial.Kind.section(u' ', 0, 0).toStdString()].Add(tally);
    }
  }

  void Describe(const MeasuredPicture& picture, const TrialResult& result) const {
    const align::PictureAlignment& found = result.Alignment;
    const swath::Recording &from = picture.Recording, &to = found.Aligned;
    std::printf("\n%s, %d x %d: %s, gate %.0f, chance %.1e, halves %s, %.2f s, %.0f MB\n",
                qPrintable(picture.Name), from.Columns, from.Rows,
                found.Is == align::Finding::NotFound
                    ? qPrintable(align::TextOf(found.Reason))
                    : (found.Is == align::Finding::Found ? "found" : "roughly"),
                found.Gate, found.ChancePeaks, found.HalvesAgree ? "agree" : "do not agree", result.Seconds,
                PeakMegabytes());
    std::printf("  time %+.2f s, shift %+.2f columns, roll %+.2f, yaw %+.2f\n", to.OffsetS - from.OffsetS,
                to.ShiftColumns - from.ShiftColumns, to.Offsets.RollDeg - from.Offsets.RollDeg,
                to.Offsets.YawDeg - from.Offsets.YawDeg);
    if (picture.Truth.empty()) return;
    for (const auto& [when, recording] : {std::pair{"before", &from}, {"after", &to}}) {
      const Misfit off = MisfitToTruth(*recording, picture.Truth);
      std::printf(
          "  from the truth %s: %+.2f lines, %+.2f columns; nine of ten places within %.2f and %.2f\n", when,
          off.Lines, off.Columns, off.LinesOfNine, off.ColumnsOfNine);
    }
  }

  void ShowResiduals(const MeasuredPicture& picture, const swath::Recording& reference) {
    const auto residuals = ResidualsOf(reference, picture.Channels, ground_.Ground());
    std::printf("  %zu windows that tell their place; fifths from left to right (windows: columns, lines):",
                residuals.size());
    for (const FifthOfLine& fifth : FifthsOf(reference, residuals)) {
      std::printf("  %d: %+.2f, %+.2f", fifth.Windows, fifth.Columns, fifth.Rows);
    }
    const auto beyond = std::ranges::count_if(residuals, [](const CoastResidual& residual) {
      return std::fabs(residual.Columns) > 1 || std::fabs(residual.Rows) > 1;
    });
    std::printf("\n  beyond a column or a line: %ld\n", static_cast<long>(beyond));
    for (const CoastResidual& residual : residuals) {
      residualTable_ += QStringLiteral("%1,%2,%3,%4,%5,%6,%7\n")
                            .arg(picture.Name)
                            .arg(residual.Middle.Column)
                            .arg(residual.Middle.Row)
                            .arg(residual.Position, 0, 'f', 1)
                            .arg(residual.Columns, 0, 'f', 2)
                            .arg(residual.Rows, 0, 'f', 2)
                            .arg(residual.Votes, 0, 'f', 2)
                            .toUtf8();
    }
    DrawResiduals(reference, residuals, *ground_.Ground().Shores, kVectorsTimes)
        .save(results_.filePath(picture.Name + QStringLiteral(".png")));
  }

  void Try(const AlignmentTrial& trial, Tally& tally) {
    const TrialResult result = Run(trial, ground_.Ground());
    tally.Add(result);
    const Misfit& off = result.FromReference;
    trialTable_ += QStringLiteral("%1,%2,%3,%4,%5,%6,%7,%8,%9,%10,%11,%12\n")
                       .arg(trial.Of, trial.Part, trial.Kind)
                       .arg(trial.IsInverted)
                       .arg(trial.NoiseSd)
                       .arg(trial.WrongByS)
                       .arg(QLatin1String(NameOf(result.End)))
                       .arg(off.Lines, 0, 'f', 3)
                       .arg(off.Columns, 0, 'f', 3)
                       .arg(result.Alignment.ChancePeaks, 0, 'e', 2)
                       .arg(result.Alignment.Gate, 0, 'f', 1)
                       .arg(result.Seconds, 0, 'f', 3)
                       .toUtf8();
  }

  static std::string Told(const char* pattern, double value) {
    char text[64];
    std::snprintf(text, sizeof text, pattern, value);
    return text;
  }

  QDir results_;
  MeasuringGround ground_;
  std::vector<MeasuredPicture> pictures_;
  std::map<std::string, Tally> kinds_;
  QByteArray trialTable_ =
      "picture,part,kind,inverted,noise,wrong_by_s,end,lines_off,columns_off,chance,gate,seconds\n";
  QByteArray residualTable_ = "picture,column,row,position,columns_off,lines_off,votes\n";
};

}  // namespace
}  // namespace pelorin::tools

int main(int argc, char** argv) {
  std::setvbuf(stdout, nullptr, _IOLBF, 0);  // It takes a while: each line is told at once, in files, too.
  return pelorin::tools::RunMaker(argc, argv, 3,
                                  "<pictures.json> <folder of map data and scanners> <folder for results>",
                                  [&] { pelorin::tools::Measuring(argv[1], argv[2], argv[3]).All(); });
}
