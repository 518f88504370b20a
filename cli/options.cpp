#include "cli/options.h"

#include <QCoreApplication>
#include <cmath>
#include <cstdio>

#include "app/program_paths.h"
#include "app/registry_store.h"
#include "cli/table.h"
#include "elements/set_ageing.h"
#include "orbit/element_file.h"
#include "orbit/julian_date.h"
#include "orbit/number_text.h"
#include "orbit/pass_search.h"
#include "orbit/scalar_math.h"

namespace pelorin::cli {
namespace {

/// Where nothing was measured of orbits like a satellite's, its sets are taken to be good this long.
constexpr double kGoodDays = 14;

/// Settings are the desktop's; this program has none of its own.
const QString kDesktopName = QStringLiteral("Pelorin");

std::optional<double> NumberIn(const QString& text) { return orbit::DecimalNumber(text.toStdString()); }

/// Digits `at` … `at + length` of a text as a number. Raises UsageError.
int Digits(const QString& text, qsizetype at, qsizetype length) {
  try {
    return orbit::DigitsAt(text.mid(at, length).toStdString(), 0, static_cast<std::size_t>(length));
  } catch (const orbit::ConvertError&) {
    throw UsageError(QStringLiteral("'%1' is not a time").arg(text));
  }
}

/// Milliseconds of ".fff" at the end of a time, up to three digits.
int Milliseconds(const QString& text, const QString& fraction) {
  if (fraction.isEmpty()) return 0;
  if (fraction.front() != QLatin1Char('.') || fraction.size() < 2 || fraction.size() > 4) {
    throw UsageError(QStringLiteral("'%1' is not a time").arg(text));
  }
  return Digits(fraction.mid(1).leftJustified(3, QLatin1Char('0')), 0, 3);
}

/// Never true of NaN.
bool IsWithin(double number, double least, double most) { return number >= least && number <= most; }

template <class Make>
auto OrUsageError(Make make) {
  try {
    return make();
  } catch (const orbit::ConvertError& error) {
    throw UsageError(QString::fromUtf8(error.what()));
  }
}

}  // namespace

void Say(const QString& text) { std::fputs((text + QLatin1Char('\n')).toUtf8().constData(), stderr); }

Arguments::Arguments(const QString& command, const QString& description, const std::vector<Option>& options,
                     const QStringList& arguments)
    : settings_(app::RegistryStore(), kDesktopName, app::FoldersFor()) {
  parser_.setApplicationDescription(description);
  const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                QStringLiteral("Show this help."));
  parser_.addOption(help);
  for (const Option& option : options) {
    QCommandLineOption added(option.Name, option.Description);
    if (!option.Value.isEmpty()) added.setValueName(option.Value);
    parser_.addOption(added);
  }
  const QString called = QStringLiteral("pelorin-cli ") + command;
  if (!parser_.parse(QStringList{called} + arguments)) {
    QString text = parser_.errorText();
    while (text.endsWith(QLatin1Char('.'))) text.chop(1);
    throw UsageError(text);
  }
  if (parser_.isSet(help)) {
    QString text = parser_.helpText();
    text.replace(QCoreApplication::arguments().constFirst(), called);
    PrintOut(text);
    throw HelpShown();
  }
  if (!parser_.positionalArguments().isEmpty()) {
    throw UsageError(QStringLiteral("'%1' is not an option").arg(parser_.positionalArguments().constFirst()));
  }
}

QString Arguments::Text(const QString& name, const QString& otherwise) const {
  return Has(name) ? parser_.value(name) : otherwise;
}

QString Arguments::Required(const QString& name) const {
  if (!Has(name)) throw UsageError(QStringLiteral("--%1 is missing").arg(name));
  return parser_.value(name);
}

double Arguments::Number(const QString& name, double otherwise, double least, double most) const {
  if (!Has(name)) return otherwise;
  const std::optional<double> number = NumberIn(parser_.value(name));
  if (!number || !IsWithin(*number, least, most)) {
    throw UsageError(
        QStringLiteral("--%1 wants a number from %2 to %3, not \"%4\"")
            .arg(name, QString::number(least, 'g', 10), QString::number(most, 'g', 10), parser_.value(name)));
  }
  return *number;
}

int Arguments::Whole(const QString& name, int otherwise, int least, int most) const {
  const double number = Number(name, otherwise, least, most);
  if (number != std::floor(number)) {
    throw UsageError(QStringLiteral("--%1 wants a whole number, not \"%2\"").arg(name, parser_.value(name)));
  }
  return static_cast<int>(number);
}

QString Arguments::Choice(const QString& name, const QStringList& choices) const {
  const QString choice = Text(name, choices.constFirst());
  if (!choices.contains(choice)) {
    throw UsageError(QStringLiteral("--%1 is one of %2").arg(name, choices.join(QStringLiteral(", "))));
  }
  return choice;
}

bool Arguments::WantsJson() const {
  const QString json = QStringLiteral("json");
  return Choice(QStringLiteral("format"), {QStringLiteral("csv"), json}) == json;
}

app::Station Arguments::Station() const {
  const QString minElevation = QStringLiteral("min-elevation");
  app::StationTexts texts = settings_.Station();
  if (Has(QStringLiteral("station"))) {
    const QStringList parts = parser_.value(QStringLiteral("station")).split(QLatin1Char(','));
    // Latitude, longitude and height.
    constexpr std::array<double, 3> most{90, 360, 10000};
    bool fits = parts.size() == 3;
    for (std::size_t i = 0; fits && i < most.size(); ++i) {
      const std::optional<double> number = NumberIn(parts[static_cast<qsizetype>(i)]);
      fits = number && IsWithin(*number, -most[i], most[i]);
    }
    if (!fits) {
      throw UsageError(
          QStringLiteral("--station wants latitude, longitude and height in metres, as in 55.905,-3.2,150"));
    }
    texts.Latitude = parts[0];
    texts.Longitude = parts[1];
    texts.Height = parts[2];
  }
  app::Station station = app::EnterStation(texts);
  if (Has(minElevation)) {
    station.MinElevationDeg = Number(minElevation, 0, 0, orbit::kHighestMinElevationDeg);
  }
  return station;
}

QString Arguments::ElementsPath() const {
  return Text(QStringLiteral("elements"), settings_.TwoLineDataPath.Value);
}

std::unique_ptr<elements::KnownSets> Arguments::ElementSets() const {
  const QString path = ElementsPath();
  // Who names a folder wants the sets of that folder.
  const QString archive = Has(QStringLiteral("elements")) ? QString() : app::ElementArchiveFolder();
  auto known = std::make_unique<elements::KnownSets>(std::filesystem::path(path.toStdU16String()), archive);
  for (const QString& text : elements::LeftOutTexts(known->LeftOut())) {
    Say(QStringLiteral("Left out: %1.").arg(text));
  }
  for (const QString& text : elements::DoubtTexts(known->Satellites())) Say(text + u'.');
  if (known->Loaded().empty()) {
    throw Failure(QStringLiteral("There are no usable element sets in %1. Name a folder with *.2li, *.tle, "
                                 "*.csv or *.json files, or one such file, with --elements.")
                      .arg(path));
  }
  return known;
}

Option StationOption() {
  return {
      QStringLiteral("station"), QStringLiteral("LAT,LON,HEIGHT_M"),
      QStringLiteral("The station: degrees north, degrees east, metres. Default: the settings' station.")};
}

Option ElementsOption() {
  return {QStringLiteral("elements"), QStringLiteral("DIR|FILE"),
          QStringLiteral(
              "Folder of element files (*.2li, *.tle; OMM as *.csv, *.json), or one file. Default: the "
              "settings' folder, and the archive of element updates.")};
}

Option SatelliteOption() {
  return {QStringLiteral("satellite"), QStringLiteral("NAME"),
          QStringLiteral("The satellite's name, as in \"NOAA 19\", or its catalogue number.")};
}

Option TableFormatOption() {
  return {QStringLiteral("format"), QStringLiteral("csv|json"), QStringLiteral("Default: csv.")};
}

Option NewestOption() {
  return {
      QStringLiteral("newest"),
      {},
      QStringLiteral("Take the satellite's newest element set; otherwise the one nearest in time is taken.")};
}

orbit::TDateTime ParseDate(const QString& text) {
  if (text.size() != 10 || text[4] != QLatin1Char('-') || text[7] != QLatin1Char('-')) {
    throw UsageError(QStringLiteral("'%1' is not a date; write it as 2022-02-23").arg(text));
  }
  return OrUsageError(
      [&] { return orbit::MakeDateTime(Digits(text, 0, 4), Digits(text, 5, 2), Digits(text, 8, 2)); });
}

double ParseMoment(const QString& text) {
  if (const std::optional<double> jd = NumberIn(text)) {
    if (*jd < 2415020.5 || *jd >= 2524593.5)
      throw UsageError(QStringLiteral("'%1' is not a Julian date from 1900 to 2199").arg(text));
    return *jd;
  }
  QString plain = text;
  if (plain.endsWith(QLatin1Char('Z'))) plain.chop(1);
  if (plain.size() < 19 || plain[10] != QLatin1Char('T') || plain[13] != QLatin1Char(':') ||
      plain[16] != QLatin1Char(':')) {
    throw UsageError(QStringLiteral("'%1' is not a time; write it as 2022-02-23T10:15:00").arg(text));
  }
  const double day = orbit::JulianDateOfDateTime(ParseDate(plain.left(10)));
  const orbit::TDateTime ofDay = OrUsageError([&] {
    return orbit::MakeDateTime(2000, 1, 1, Digits(plain, 11, 2), Digits(plain, 14, 2), Digits(plain, 17, 2),
                               Milliseconds(text, plain.mid(19)));
  });
  return day + (ofDay.Days - orbit::DatePart(ofDay).Days);
}

orbit::TDateTime ParseStart(const QString& text) {
  if (text.size() < 14) {
    throw UsageError(QStringLiteral("'%1' is not a start; write it as 20220223101500").arg(text));
  }
  return OrUsageError([&] {
    return orbit::MakeDateTime(Digits(text, 0, 4), Digits(text, 4, 2), Digits(text, 6, 2), Digits(text, 8, 2),
                               Digits(text, 10, 2), Digits(text, 12, 2), Milliseconds(text, text.mid(14)));
  });
}

orbit::TSatellite SetFor(const orbit::TSatellite& satellite, double jd, elements::KnownSets& known,
                         const Arguments& arguments) {
  return arguments.WantsNewest() ? satellite : known.Nearest(satellite, jd);
}

orbit::TSatellite FindSet(elements::KnownSets& known, const QString& name, double jd,
                          const Arguments& arguments) {
  const std::string wanted = name.toStdString();
  if (arguments.WantsNewest()) {
    if (const orbit::TSatellite* newest = known.Find(wanted)) return *newest;
  } else if (const auto nearest = known.FindNearest(wanted, jd)) {
    return *nearest;
  }
  throw Failure(
      QStringLiteral("There is no satellite \"%1\" in %2; \"pelorin-cli elements\" lists what is there")
          .arg(name, arguments.ElementsPath()));
}

std::vector<orbit::TSatellite> ChosenSatellites(const Arguments& arguments, double jd) {
  const auto known = arguments.ElementSets();
  std::vector<orbit::TSatellite> chosen;
  for (const QString& name : arguments.Texts(QStringLiteral("satellite"))) {
    chosen.push_back(FindSet(*known, name, jd, arguments));
  }
  if (!chosen.empty()) return chosen;
  const elements::TSatelliteList& list = known->Satellites();
  for (int index = 0; index < list.Count(); ++index) {
    chosen.push_back(SetFor(list.Satellite(index), jd, *known, arguments));
  }
  return chosen;
}

void WarnOfAge(const Arguments& arguments, const orbit::TSatellite& set, double jd) {
  const elements::SetDoubt doubt =
      elements::DoubtOf(set, orbit::DateTimeOfJulianDate(jd),
                        elements::LoadSetAgeing(app::FindDataFile(QStringLiteral("set-ageing.json"))));
  const app::Settings& settings = arguments.Settings();
  const bool isKnown = doubt.Lines >= 0;
  if (isKnown ? LevelOf(doubt, settings.NotableLines.Value, settings.GraveLines.Value) ==
                    elements::DoubtLevel::None
              : std::fabs(doubt.Days) <= kGoodDays) {
    return;
  }
  Say(QStringLiteral("Warning: %1: %2. Take sets of those days.")
          .arg(QString::fromStdString(set.Name), elements::DoubtText(doubt)));
}

void SayWhichSet(const Arguments& arguments, const orbit::TSatellite& set, double jd) {
  const double age = jd - set.Epoch;
  Say(QStringLiteral("Elements: %1, number %2, set %3 from %4, epoch %5, %6 days %7 the time asked for.")
          .arg(QString::fromStdString(set.Name), QString::fromStdString(set.CatalogueNumber),
               QString::fromStdString(set.ElementSetNumber), QString::fromStdString(set.SourceFile),
               QString::fromStdString(
                   orbit::FormatDateTime("yyyy-mm-dd hh:nn", orbit::DateTimeOfJulianDate(set.Epoch))))
          .arg(std::fabs(age), 0, 'f', 1)
          .arg(age < 0 ? QStringLiteral("after") : QStringLiteral("before")));
  WarnOfAge(arguments, set, jd);
}

orbit::TSatellite ChooseSet(elements::KnownSets& known, const QString& name, double jd,
                            const Arguments& arguments) {
  const orbit::TSatellite set = FindSet(known, name, jd, arguments);
  SayWhichSet(arguments, set, jd);
  return set;
}

}  // namespace pelorin::cli
