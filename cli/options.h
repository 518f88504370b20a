#pragma once

#include <QCommandLineParser>
#include <QStringList>
#include <memory>
#include <stdexcept>
#include <vector>

#include "app/settings.h"
#include "app/station_entry.h"
#include "elements/known_sets.h"
#include "orbit/date_time.h"
#include "orbit/satellite.h"

/// What the subcommands of pelorin-cli share: their arguments, and how these become stations, times and
/// satellites.
namespace pelorin::cli {

/// Called wrongly: exit status 2.
class UsageError : public std::runtime_error {
 public:
  explicit UsageError(const QString& text) : std::runtime_error(text.toStdString()) {}
};

/// Called rightly and failed: exit status 1.
class Failure : public std::runtime_error {
 public:
  explicit Failure(const QString& text) : std::runtime_error(text.toStdString()) {}
};

/// What came was refused because it cannot be right: exit status 3.
class Implausible : public std::runtime_error {
 public:
  explicit Implausible(const QString& text) : std::runtime_error(text.toStdString()) {}
};

/// The picture was not recognised by its coasts, and had to be: exit status 4.
class NotAligned : public std::runtime_error {
 public:
  explicit NotAligned(const QString& text) : std::runtime_error(text.toStdString()) {}
};

/// --help was asked for and has been printed.
struct HelpShown {};

/// One line on standard error.
void Say(const QString& text);

/// An option with a value (`value` names it in the help) or, with an empty `value`, a switch.
struct Option {
  QString Name, Value, Description;
};

/// A subcommand's arguments, with the user's settings behind them as defaults.
class Arguments {
 public:
  /// Raises UsageError for what is not among `options`, and HelpShown.
  Arguments(const QString& command, const QString& description, const std::vector<Option>& options,
            const QStringList& arguments);

  const app::Settings& Settings() const { return settings_; }
  /// Never of an option that the command has not got.
  bool Has(const QString& name) const { return parser_.optionNames().contains(name); }
  QString Text(const QString& name, const QString& otherwise = {}) const;
  QStringList Texts(const QString& name) const { return parser_.values(name); }
  /// Raises UsageError when the option is missing.
  QString Required(const QString& name) const;
  /// Raise UsageError for what is no number, or one outside `least` … `most`.
  int Whole(const QString& name, int otherwise, int least, int most) const;
  double Number(const QString& name, double otherwise, double least, double most) const;
  /// One of `choices`, the first when the option is missing.
  QString Choice(const QString& name, const QStringList& choices) const;

  /// --format json; CSV is the default.
  bool WantsJson() const;

  /// --station LAT,LON,HEIGHT_M and --min-elevation, or the settings' station.
  app::Station Station() const;
  /// --newest, on commands that have it.
  bool WantsNewest() const { return Has(QStringLiteral("newest")); }
  /// --elements, or the settings' folder.
  QString ElementsPath() const;
  /// The sets of ElementsPath, behind those of the settings' folder the archive's; says which are left out.
  /// Raises Failure when there is none.
  std::unique_ptr<elements::KnownSets> ElementSets() const;

 private:
  QCommandLineParser parser_;
  const app::Settings settings_;
};

/// The options that Station, ElementSets and the choice of a set read.
Option StationOption();
Option ElementsOption();
Option SatelliteOption();
Option NewestOption();
Option TableFormatOption();

/// A date "YYYY-MM-DD". Raises UsageError, as the next do.
orbit::TDateTime ParseDate(const QString& text);
/// "YYYY-MM-DDTHH:MM:SS[.fff]", with or without "Z", or a Julian date; as a Julian date.
double ParseMoment(const QString& text);
/// "YYYYMMDDHHMMSS[.fff]".
orbit::TDateTime ParseStart(const QString& text);

/// A satellite's set: nearest in time to a Julian date, or with --newest the one of the list.
orbit::TSatellite SetFor(const orbit::TSatellite& satellite, double jd, elements::KnownSets& known,
                         const Arguments& arguments);
/// The set of the satellite of that name or catalogue number: nearest in time to a Julian date, or with
/// --newest the latest. Raises Failure when there is none.
orbit::TSatellite FindSet(elements::KnownSets& known, const QString& name, double jd,
                          const Arguments& arguments);
/// The satellites that --satellite names, or all, with their sets for a Julian date.
std::vector<orbit::TSatellite> ChosenSatellites(const Arguments& arguments, double jd);
/// A word of warning when a set is used so far from its epoch that a map would show it.
void WarnOfAge(const Arguments& arguments, const orbit::TSatellite& set, double jd);
/// Says which set is used for a Julian date, and how old it is.
void SayWhichSet(const Arguments& arguments, const orbit::TSatellite& set, double jd);
/// FindSet, and says which set it is and how old.
orbit::TSatellite ChooseSet(elements::KnownSets& known, const QString& name, double jd,
                            const Arguments& arguments);

}  // namespace pelorin::cli
