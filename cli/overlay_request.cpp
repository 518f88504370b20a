#include "cli/overlay_request.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "align/alignment_log.h"
#include "align/alignment_medians.h"
#include "app/program_paths.h"
#include "app/time_zone.h"
#include "cli/known_scanners.h"
#include "cli/options.h"
#include "cli/recording_options.h"
#include "orbit/julian_date.h"
#include "orbit/model_constants.h"
#include "orbit/scalar_math.h"
#include "overlay/minute_mark_offer.h"
#include "overlay/opened_picture.h"
#include "passes/chosen_pass.h"
#include "passes/pass_lookup.h"
#include "swath/attitude_corrections.h"
#include "swath/clock_corrections.h"
#include "swath/picture_lookup.h"
#include "swath/picture_of_pass.h"
#include "swath/recording_text.h"
#include "swath/scanner_match.h"

namespace pelorin::cli {
namespace {

constexpr int kMostMinutes = 30, kUsualMinutes = 15;

const QString kAngles[] = {QStringLiteral("roll"), QStringLiteral("pitch"), QStringLiteral("yaw")};

/// The names that a pass string is matched against: those given, else the settings' active satellites, else
/// all.
QStringList NamesForPass(const Arguments& arguments, elements::KnownSets& known) {
  QStringList names = arguments.Texts(QStringLiteral("satellite"));
  if (names.isEmpty()) {
    // An active satellite may have left the element files since.
    for (const QString& name : app::FromCommaText(arguments.Settings().SatelliteList.Value)) {
      if (known.Find(name.toStdString()) != nullptr) names.append(name);
    }
  }
  if (names.isEmpty()) {
    const elements::TSatelliteList& list = known.Satellites();
    for (int index = 0; index < list.Count(); ++index) names.append(QString::fromStdString(list.Name(index)));
  }
  return names;
}

/// What finds a satellite's sets again: names may be those of several.
QString NumberOf(const orbit::TSatellite& set) {
  return QString::fromStdString(set.CatalogueNumber.empty() ? set.Name : set.CatalogueNumber);
}

/// A pass, and what its satellite is known by.
struct FoundPass {
  passes::ChosenPass Pass;
  QString SatelliteNumber;
};

/// Finds the pass as the desktop does for its pass string.
FoundPass FindPass(const Arguments& arguments, elements::KnownSets& known, const app::Station& station) {
  const QString passString = arguments.Text(QStringLiteral("pass"));
  const orbit::TDateTime time = [&] {
    try {
      return orbit::ParseTimeString(passString.toStdString());
    } catch (const orbit::ConvertError& error) {
      throw UsageError(QStringLiteral("--pass wants [YYYY]MMDDHHMM[SS]: ") + QString::fromUtf8(error.what()));
    }
  }();
  std::vector<orbit::TSatellite> satellites;
  for (const QString& name : NamesForPass(arguments, known)) {
    satellites.push_back(FindSet(known, name, orbit::JulianDateOfDateTime(time), arguments));
  }
  const passes::PassMatch match =
      passes::FindPassByString(passString, satellites, station.Place, station.MinElevationDeg, time);
  if (match.Entry.isEmpty()) {
    throw Failure(
        passes::NoMatchText(passString, match.Key) +
        QStringLiteral(". Searched: passes of %1 satellites that rise on %2; a year goes before the month")
            .arg(satellites.size())
            .arg(QString::fromStdString(orbit::FormatDateTime("yyyy-mm-dd", time))));
  }
  Say(QStringLiteral("Pass: %1").arg(match.Entry));
  const auto found =
      std::ranges::find(satellites, match.Pass.SatelliteName.toStdString(), &orbit::TSatellite::Name);
  return {match.Pass, found == satellites.end() ? match.Pass.SatelliteName : NumberOf(*found)};
}

/// The station's clock in a year.
overlay::ClockOffsets LocalClock(int year) {
  const app::YearOffsets local = app::LocalTimeZone().OffsetsIn(year);
  return {local.StandardMinutes, local.DaylightMinutes};
}

/// The recording of a pass: its first line is of the time that the picture tells, where that is of the pass,
/// or else of the minute in which the pass rises.
swath::Recording RecordingOfPass(const Arguments& arguments, const passes::ChosenPass& pass,
                                 const std::optional<overlay::OpenedPicture>& opened) {
  swath::PictureOfPass picture(arguments.Settings().ClockCorrections.Value);
  picture.SetSatellite(pass.SatelliteName);
  picture.SetPass(pass.PassStart);
  if (opened) {
    const QString path = opened->Channel.Path;
    const overlay::ClockOffsets local = LocalClock(TakeApart(pass.PassStart).Year);
    if (const auto found =
            swath::PictureNamedFor(path, picture.Pass(), local.StandardMinutes, local.DaylightMinutes)) {
      picture.Seek(*found);
    } else {
      Say(QStringLiteral("%1 is not named by a time of this pass").arg(path));
    }
    picture.Show(opened->Image.width(), opened->Image.height());
  }
  const swath::Recording recording = picture.ForMap(pass.SouthBound);
  if (recording.StartIsFrom == swath::StartFrom::Pass ||
      recording.StartIsFrom == swath::StartFrom::NameMinute) {
    Say(QStringLiteral(
        "The map begins at a whole minute; when the second is known, --start lays it exactly"));
  }
  return recording;
}

/// The satellite that was named, or that the picture tells.
QString SatelliteOf(const Arguments& arguments, const std::optional<overlay::OpenedPicture>& opened,
                    elements::KnownSets& known) {
  const QString option = QStringLiteral("satellite");
  if (arguments.Has(option) || !opened) return arguments.Required(option);
  const elements::TSatelliteList& list = known.Satellites();
  for (int index = 0; index < list.Count(); ++index) {
    if (overlay::IsOf(*opened, list.Satellite(index))) return NumberOf(list.Satellite(index));
  }
  if (opened->OwnSet) return NumberOf(*opened->OwnSet);
  if (opened->Satellite.isEmpty()) {
    throw UsageError(
        QStringLiteral("%1 does not tell its satellite; name it with --satellite").arg(opened->Channel.Path));
  }
  throw Failure(QStringLiteral("There are no elements of %1, which %2 is of, in %3")
                    .arg(opened->Satellite, opened->Channel.Path, arguments.ElementsPath()));
}

/// The picture whose first line was received at --start or when its name or product tells, or as many lines
/// without a picture.
overlay::OpenedPicture Opened(const Arguments& arguments, const std::optional<overlay::OpenedPicture>& opened,
                              int rows) {
  overlay::OpenedPicture picture = opened.value_or(overlay::OpenedPicture());
  if (!opened) picture.Known.Rows = rows;
  if (arguments.Has(QStringLiteral("start"))) {
    picture.Known.Start = ParseStart(arguments.Text(QStringLiteral("start")));
    picture.Known.StartIsFrom = swath::StartFrom::NameSecond;
    picture.OtherStarts.clear();
  } else if (!picture.HasStart) {
    throw UsageError(QStringLiteral("%1 does not tell when it was received; give --start, the time of its "
                                    "first line in UTC")
                         .arg(picture.Channel.Path));
  }
  return picture;
}

/// Sets the seconds to add to the start: those asked for, or else what the window would begin with.
void CorrectClock(const Arguments& arguments, swath::Recording& recording) {
  const QString option = QStringLiteral("time-correction");
  if (arguments.Has(option)) {
    recording.OffsetS = arguments.Number(option, 0, -swath::kOffsetLimitS, swath::kOffsetLimitS);
    return;
  }
  const auto learnt =
      swath::ClockCorrections(arguments.Settings().ClockCorrections.Value).OffsetOf(recording);
  recording.OffsetS = learnt.value_or(recording.OffsetS);
  if (recording.OffsetS == 0) return;
  Say(QStringLiteral("Time correction: %1 s, %2")
          .arg(swath::OffsetText(recording.OffsetS))
          .arg(learnt ? QStringLiteral("the settings' clock of ") + recording.Satellite
               : recording.OffsetsAreFrom == swath::KnownFrom::Product
                   ? QStringLiteral("from the product file")
                   : QStringLiteral("from the table of scanners")));
}

/// Lets a picture that was aligned before lie so, if the options do not tell otherwise; true when it does.
bool TakeAlignment(const Arguments& arguments, const std::optional<overlay::OpenedPicture>& opened,
                   swath::Recording& recording) {
  const bool isTold =
      arguments.Has(QStringLiteral("time-correction")) || arguments.Has(QStringLiteral("minute-marks")) ||
      std::ranges::any_of(kAngles, [&](const QString& angle) { return arguments.Has(angle); });
  if (!opened || isTold) return false;
  const align::AlignmentLog log(app::AlignmentLogFile());
  const align::LoggedAlignment* before = log.Find(align::Logged(recording, opened->Channel.Path, {}, {}, {}));
  if (!log.Note().isEmpty()) Say(log.Note());
  if (before == nullptr) return false;
  Say(align::TextOf(*before));
  recording = align::Aligned(recording, *before);
  return true;
}

/// Sets the attitude that was asked for, or else the one that the window would begin with.
void TurnAttitude(const Arguments& arguments, swath::Recording& recording) {
  swath::AttitudeCorrections(arguments.Settings().AttitudeCorrections.Value).TakeOwn(recording);
  double* const values[] = {&recording.Offsets.RollDeg, &recording.Offsets.PitchDeg,
                            &recording.Offsets.YawDeg};
  for (std::size_t i = 0; i < std::size(kAngles); ++i) {
    if (!arguments.Has(kAngles[i])) continue;
    *values[i] = arguments.Number(kAngles[i], 0, -swath::kMostTurnedDeg, swath::kMostTurnedDeg);
    recording.OffsetsAreFrom = swath::KnownFrom::User;
  }
}

/// How the file was stored, when that is told.
void TellStored(const Arguments& arguments, swath::Recording& recording) {
  const auto told = StoredAsTold(arguments);
  if (!told) return;
  recording.Lies = *told;
  recording.LiesIsFrom = swath::KnownFrom::User;
}

/// Says what the picture's minute marks tell of its begin, and takes it where that was asked for.
void HeedMinuteMarks(const Arguments& arguments, const std::optional<overlay::OpenedPicture>& opened,
                     swath::Recording& recording) {
  const QString option = QStringLiteral("minute-marks");
  const std::vector<int> lines =
      opened ? overlay::FindMinuteMarkLines(opened->Image, recording) : std::vector<int>();
  const auto offer = overlay::OfferByMarks(lines, recording);
  if (lines.empty() && arguments.Has(option)) Say(QStringLiteral("No minute marks were found"));
  if (!offer) return;
  Say(overlay::TextOf(*offer, recording.Satellite) +
      (arguments.Has(option) ? QString() : QStringLiteral("; --minute-marks does that")));
  if (arguments.Has(option)) recording.OffsetS = offer->OffsetS;
}

/// Says what is known of a picture's recording, and from where.
void SayWhatItIs(const Arguments& arguments, const swath::Recording& recording) {
  // The settings remember an attitude alone; what else the user tells is an option.
  const bool isTold =
      arguments.Has(QStringLiteral("stored")) ||
      std::ranges::any_of(kAngles, [&](const QString& angle) { return arguments.Has(angle); });
  for (const QString& line : swath::DescribeRecording(
           recording, isTold ? QStringLiteral("the options") : QStringLiteral("the settings"))) {
    Say(line);
  }
}

/// What is asked of the map of a recording.
overlay::OverlayRequest RequestFor(const Arguments& arguments, const app::Station& station,
                                   const std::optional<overlay::OpenedPicture>& opened,
                                   swath::Recording recording, double minutes) {
  if (!TakeAlignment(arguments, opened, recording)) {
    TurnAttitude(arguments, recording);
    CorrectClock(arguments, recording);
  }
  TellStored(arguments, recording);
  const QString direction =
      arguments.Choice(QStringLiteral("direction"),
                       {QStringLiteral("auto"), QStringLiteral("north"), QStringLiteral("south")});
  if (direction != QStringLiteral("auto")) recording.SouthBound = direction == QStringLiteral("south");
  swath::SettleLies(recording);
  HeedMinuteMarks(arguments, opened, recording);
  SayWhatItIs(arguments, recording);
  overlay::OverlayRequest request;
  request.Picture = recording;
  request.Station = station.Place;
  request.DurationMinutes = minutes;
  return request;
}

/// The picture tells a date, and it is that of the pass.
bool TellsPass(const overlay::OpenedPicture& opened, const passes::ChosenPass& pass) {
  constexpr double farDays = 20 / orbit::kMinutesPerDay;
  const bool isDated = opened.HasStart && (opened.Name.YearIsKnown || opened.Known.LineTimesS);
  return isDated && std::fabs(opened.Known.Start.Days - pass.PassStart.Days) < farDays;
}

/// The map of a picture of a satellite, or of so many rows from a start.
overlay::OverlayRequest DescribeFor(const Arguments& arguments, const app::Station& station,
                                    const std::optional<overlay::OpenedPicture>& opened, int rows,
                                    const QString& satellite) {
  const auto known = arguments.ElementSets();
  const overlay::OpenedPicture picture = Opened(arguments, opened, rows);
  if (!picture.Problem.isEmpty()) throw Failure(picture.Problem);
  if (opened && !picture.Name.YearIsKnown && picture.Known.StartIsFrom == swath::StartFrom::NameMinute) {
    Say(QStringLiteral("The year %1 is that of the file's date").arg(TakeApart(picture.Known.Start).Year));
  }
  const auto sets = [&](orbit::TDateTime moment) -> std::optional<orbit::TSatellite> {
    const double jd = orbit::JulianDateOfDateTime(moment);
    if (picture.OwnSet && !known->FindNearest(satellite.toStdString(), jd)) return std::nullopt;
    return FindSet(*known, satellite, jd, arguments);
  };
  const auto placed = overlay::PlaceRecording(picture, sets, KnownScanners(), station.Place);
  if (!placed) throw Failure(QStringLiteral("There are no elements of %1").arg(satellite));
  if (!placed->Match.Problem.isEmpty()) throw Failure(placed->Match.Problem);
  if (!placed->Match.Note.isEmpty()) Say(placed->Match.Note);
  swath::Recording recording = placed->Recording;
  if (opened && !placed->WasInSight) {
    Say(QStringLiteral("Warning: %1 was out of sight of the station at %2 UTC. Is the time right? --start "
                       "gives another.")
            .arg(recording.Satellite, QString::fromStdString(orbit::FormatDateTime("yyyy-mm-dd hh:nn:ss",
                                                                                   recording.FirstLine()))));
  }
  SayWhichSet(arguments, *recording.Elements, orbit::JulianDateOfDateTime(recording.FirstLine()));
  const double rowMinutes = std::ceil(recording.LengthS() / orbit::kSecondsPerMinute);
  const int minutes = arguments.Whole(
      QStringLiteral("minutes"),
      recording.Rows > 0 ? std::clamp(static_cast<int>(rowMinutes), 1, kMostMinutes) : kUsualMinutes, 1,
      kMostMinutes);
  if (recording.Rows == 0) {
    recording.SouthBound = overlay::IsSouthBoundAt(
        *recording.Elements, {recording.FirstLine().Days + minutes / 2.0 / orbit::kMinutesPerDay});
  }
  const bool isWhole = recording.Rows > 0 && !arguments.Has(QStringLiteral("minutes"));
  return RequestFor(arguments, station, opened, recording, isWhole ? 0 : minutes);
}

/// The map of a pass that is found in the day's list.
overlay::OverlayRequest DescribePass(const Arguments& arguments, const app::Station& station,
                                     const std::optional<overlay::OpenedPicture>& opened, int rows) {
  const auto known = arguments.ElementSets();
  const FoundPass found = FindPass(arguments, *known, station);
  if (opened && TellsPass(*opened, found.Pass)) {
    return DescribeFor(arguments, station, opened, rows, found.SatelliteNumber);
  }
  if (opened && !opened->Problem.isEmpty()) throw Failure(opened->Problem);
  swath::Recording recording = RecordingOfPass(arguments, found.Pass, opened);
  if (!opened) recording.Rows = rows;
  const int minutes = arguments.Whole(
      QStringLiteral("minutes"), std::min(found.Pass.PassDurationMinutes, kMostMinutes), 1, kMostMinutes);
  const orbit::TDateTime middle{recording.FirstLine().Days + minutes / 2.0 / orbit::kMinutesPerDay};
  const swath::ScannerMatch match = swath::TakeElements(
      ChooseSet(*known, found.SatelliteNumber, orbit::JulianDateOfDateTime(middle), arguments),
      KnownScanners(), recording);
  if (!match.Problem.isEmpty()) throw Failure(match.Problem);
  if (!match.Note.isEmpty()) Say(match.Note);
  return RequestFor(arguments, station, opened, recording, minutes);
}

}  // namespace

std::optional<overlay::OpenedPicture> OpenReceived(const Arguments& arguments) {
  const QString option = QStringLiteral("picture");
  if (!arguments.Has(option)) return std::nullopt;
  const QString path = arguments.Text(option);
  overlay::OpenedPicture opened = overlay::OpenPicture(path, LocalClock, KnownScanners());
  for (const QString& note : opened.Notes) Say(note);
  return opened;
}

overlay::OverlayRequest DescribeMap(const Arguments& arguments,
                                    const std::optional<overlay::OpenedPicture>& opened, int rows) {
  const app::Station station = arguments.Station();
  if (arguments.Has(QStringLiteral("pass"))) return DescribePass(arguments, station, opened, rows);
  return DescribeFor(arguments, station, opened, rows,
                     SatelliteOf(arguments, opened, *arguments.ElementSets()));
}

}  // namespace pelorin::cli
