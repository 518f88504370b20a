#include <algorithm>
#include <cmath>

#include "align/pass_search.h"
#include "cli/coast_ground.h"
#include "cli/commands.h"
#include "cli/json_text.h"
#include "cli/known_scanners.h"
#include "cli/overlay_request.h"
#include "cli/overlay_sources.h"
#include "cli/progress_line.h"
#include "cli/recording_options.h"
#include "cli/table.h"
#include "orbit/julian_date.h"
#include "overlay/recording_channels.h"

namespace pelorin::cli {
namespace {

using align::PassCandidate;
using align::PassPlace;
using align::PassSearch;
using swath::Recording;

/// Rows of the text.
constexpr std::size_t kMostShown = 8;

/// The days whose passes are looked at.
struct Days {
  orbit::TDateTime From;
  int Count;
};

/// Those that were asked for; or the day that the picture tells, or the day on which its file was written and
/// the one before.
Days DaysOf(const Arguments& arguments, const overlay::OpenedPicture& opened) {
  Days days{orbit::DatePart(opened.Known.Start), 1};
  if (!opened.HasStart) days = {{days.From.Days - 1}, 2};
  const QString from = QStringLiteral("from");
  if (arguments.Has(from)) days = {ParseDate(arguments.Text(from)), 1};
  days.Count = arguments.Whole(QStringLiteral("days"), days.Count, 1, 31);
  return days;
}

/// What was looked for, where, and what was found.
struct Identified {
  const overlay::OpenedPicture& Opened;
  Days Searched;
  std::vector<PassCandidate> Candidates;
  std::size_t Channels = 0;
  PassSearch Search;
  int Milliseconds = 0;

  const Recording& RecordingOf(const PassPlace& place) const { return Candidates[place.Candidate].Recording; }
  orbit::TDateTime StartOf(const PassPlace& place) const {
    return {RecordingOf(place).Start.Days + place.TimeS / orbit::kSecondsPerDay};
  }
};

ordered_json ToJson(const Identified& identified, const PassPlace& place) {
  const Recording& recording = identified.RecordingOf(place);
  return {{"satellite", recording.Satellite.toStdString()},
          {"catalogue_number", recording.Elements->CatalogueNumber},
          {"rise_utc", JsonUtc(recording.Start)},
          {"start_utc", JsonUtc(identified.StartOf(place))},
          {"direction", recording.SouthBound ? "south" : "north"},
          {"stored", StoredWord(place.Lies).toStdString()},
          {"score", JsonRounded(place.Score)}};
}

/// The pass that the picture is of; null when it is not clear.
ordered_json WinnerOf(const Identified& identified) {
  const PassSearch& search = identified.Search;
  if (!search.IsClear()) return nullptr;
  const Recording& aligned = search.Best->Aligned;
  ordered_json winner = ToJson(identified, search.Places.front());
  winner["start_utc"] = JsonUtc(aligned.FirstLine());
  winner["result"] = search.Best->Is == align::Finding::Found ? "found" : "roughly";
  winner["chance_peaks"] = search.Best->ChancePeaks;
  winner["gate"] = JsonRounded(search.Best->Gate);
  return winner;
}

ordered_json ToJson(const Identified& identified) {
  ordered_json places = ordered_json::array();
  for (const PassPlace& place : identified.Search.Places) places.push_back(ToJson(identified, place));
  return {{"picture", identified.Opened.Channel.Path.toStdString()},
          {"channels", identified.Channels},
          {"from", orbit::FormatDateTime("yyyy-mm-dd", identified.Searched.From)},
          {"days", identified.Searched.Count},
          {"passes", identified.Candidates.size()},
          {"winner", WinnerOf(identified)},
          {"margin", JsonRounded(identified.Search.Margin)},
          {"places", places},
          {"milliseconds", identified.Milliseconds}};
}

QString UtcText(orbit::TDateTime moment) {
  return QString::fromStdString(orbit::FormatDateTime("yyyy-mm-dd hh:nn:ss", moment));
}

/// "NOAA 19, north-bound, from 2019-05-21 15:25:37 UTC, stored turned".
QString TextOf(const Identified& identified, const PassPlace& place, orbit::TDateTime start) {
  const Recording& recording = identified.RecordingOf(place);
  return QStringLiteral("%1, %2-bound, from %3 UTC, stored %4")
      .arg(recording.Satellite, recording.SouthBound ? QStringLiteral("south") : QStringLiteral("north"),
           UtcText(start), StoredWord(place.Lies));
}

QString ToText(const Identified& identified) {
  const PassSearch& search = identified.Search;
  QString text;
  if (search.IsClear()) {
    text = QStringLiteral("found: %1; %2 times as clear as any other\n")
               .arg(TextOf(identified, search.Places.front(), search.Best->Aligned.FirstLine()))
               .arg(search.Margin, 0, 'f', 1);
  } else {
    text = QStringLiteral("not clear; the best of %1 passes:\n").arg(identified.Candidates.size());
  }
  const std::size_t shown = std::min(search.Places.size(), kMostShown);
  for (std::size_t i = 0; i < shown; ++i) {
    const PassPlace& place = search.Places[i];
    text += QStringLiteral("%1  %2\n")
                .arg(place.Score, 6, 'f', 1)
                .arg(TextOf(identified, place, identified.StartOf(place)));
  }
  return text;
}

/// The options that make the picture's map.
void SayHowToGoOn(const PassSearch& search) {
  const Recording& aligned = search.Best->Aligned;
  Say(QStringLiteral("For its map: --satellite %1 --start %2 --stored %3 --align")
          .arg(QString::fromStdString(aligned.Elements->CatalogueNumber),
               QString::fromStdString(orbit::FormatDateTime("yyyymmddhhnnss.zzz", aligned.FirstLine())),
               StoredWord(aligned.Lies)));
}

/// Those that were asked for; or the one that the picture tells; or those that the table of scanners knows,
/// and all where it knows none.
std::vector<orbit::TSatellite> SendersOf(const Arguments& arguments, const overlay::OpenedPicture& opened,
                                         const swath::ScannerTable& scanners, double jd) {
  const std::vector<orbit::TSatellite> chosen = ChosenSatellites(arguments, jd);
  if (arguments.Has(QStringLiteral("satellite"))) return chosen;
  std::vector<orbit::TSatellite> told, known;
  for (const orbit::TSatellite& satellite : chosen) {
    if (overlay::IsOf(opened, satellite)) told.push_back(satellite);
    if (!scanners.Of(satellite).empty()) known.push_back(satellite);
  }
  if (told.empty() && !opened.Satellite.isEmpty()) {
    throw Failure(QStringLiteral("There are no elements of %1, which %2 is of, in %3; name other satellites "
                                 "with --satellite")
                      .arg(opened.Satellite, opened.Channel.Path, arguments.ElementsPath()));
  }
  if (!told.empty()) return told;
  return known.empty() ? chosen : known;
}

std::vector<PassCandidate> CandidatesFor(const Arguments& arguments, const overlay::OpenedPicture& opened,
                                         const Days& days) {
  const swath::ScannerTable scanners = KnownScanners();
  const double middle = orbit::JulianDateOfDateTime(days.From) + days.Count / 2.0;
  std::vector<PassCandidate> candidates =
      align::CandidatesOf(opened.Image.size(), SendersOf(arguments, opened, scanners, middle), scanners,
                          arguments.Station().Place, days.From, days.Count);
  if (candidates.empty()) {
    throw Failure(
        QStringLiteral("No satellite that sends pictures of %1 columns passes over the station from "
                       "%2 on for %3 days; name other days with --from and --days, or elements "
                       "with --elements")
            .arg(opened.Image.width())
            .arg(QString::fromStdString(orbit::FormatDateTime("yyyy-mm-dd", days.From)))
            .arg(days.Count));
  }
  const auto age = [middle](const PassCandidate& candidate) {
    return std::fabs(middle - candidate.Recording.Elements->Epoch);
  };
  WarnOfAge(arguments, *std::ranges::max_element(candidates, {}, age)->Recording.Elements, middle);
  return candidates;
}

}  // namespace

void RunIdentify(const QStringList& list) {
  const Arguments arguments(
      QStringLiteral("identify"),
      QStringLiteral(
          "Finds the pass that a picture is of, by its coasts: looks at every pass over the "
          "station of the satellites that send pictures of its width, and at all ways in which it "
          "may be stored. The winner is told when it is clear; otherwise there is a list, the best "
          "first."),
      {{QStringLiteral("picture"), QStringLiteral("FILE|FOLDER"),
        QStringLiteral("The received picture, or a decoder's folder.")},
       {QStringLiteral("from"), QStringLiteral("YYYY-MM-DD"),
        QStringLiteral("First day (UTC). Default: the day in the picture's name; where that tells none, the "
                       "day before its file was written.")},
       {QStringLiteral("days"), QStringLiteral("N"),
        QStringLiteral("Days from then on, 1 to 31. Default: 1; 2 where the file's date counts.")},
       {QStringLiteral("satellite"), QStringLiteral("NAME"),
        QStringLiteral(
            "Only this satellite; may be given several times. Default: the one that the picture tells, or "
            "else those that \"pelorin-cli scanners\" lists.")},
       {StoredOption().Name, StoredOption().Value,
        QStringLiteral(
            "How the picture lies in its file. Default: auto, as received and turned, and where none "
            "is clear also mirrored.")},
       ElementsOption(),
       StationOption(),
       MasterOption(),
       NewestOption(),
       {QStringLiteral("format"), QStringLiteral("json|text"), QStringLiteral("Default: json.")}},
      list);
  arguments.Required(QStringLiteral("picture"));
  const bool isJson =
      arguments.Choice(QStringLiteral("format"), {QStringLiteral("json"), QStringLiteral("text")}) ==
      QStringLiteral("json");
  const std::optional<swath::Stored> told = StoredAsTold(arguments);
  const auto opened = OpenReceived(arguments);
  if (!opened->Problem.isEmpty()) throw Failure(opened->Problem);
  Identified identified{*opened, DaysOf(arguments, *opened), {}, 0, {}, 0};
  identified.Candidates = CandidatesFor(arguments, *opened, identified.Searched);
  const overlay::MapSources sources = OpenMasterAlone(arguments);
  const CoastGround ground(sources);
  const std::vector<QImage> channels = overlay::ChannelsOfRecording(*opened, Say);
  identified.Channels = channels.size();
  {
    ProgressLine progress(QStringLiteral("Comparing passes"));
    const align::AfterStep afterStep = [&progress](double share) {
      progress.Show(share);
      return true;
    };
    identified.Search =
        told ? align::FindPass(identified.Candidates, std::span(&*told, 1), channels, ground.Borrowed(),
                               afterStep)
             : align::FindPassAndWay(identified.Candidates, channels, ground.Borrowed(), afterStep);
    identified.Milliseconds = progress.Milliseconds();
  }
  PrintOut(isJson ? JsonText(ToJson(identified)) : ToText(identified));
  if (identified.Search.IsClear()) SayHowToGoOn(identified.Search);
}

}  // namespace pelorin::cli
