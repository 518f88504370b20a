#include "cli/commands.h"
#include "cli/known_scanners.h"
#include "cli/options.h"
#include "cli/table.h"

namespace pelorin::cli {

void RunScanners(const QStringList& list) {
  const Arguments arguments(
      QStringLiteral("scanners"),
      QStringLiteral(
          "The scanners that are known, a row for each satellite that carries one. Angles are in degrees; "
          "roll, pitch, yaw and time (seconds) are what was fitted to received pictures; mark_second is when "
          "minute marks begin, past the full minute. Add your own "
          "in a file scanners.json beside the settings."),
      {{QStringLiteral("satellite"), QStringLiteral("NAME"),
        QStringLiteral("Only those of this satellite, by name or catalogue number.")},
       TableFormatOption()},
      list);
  const bool json = arguments.WantsJson();
  const swath::ScannerTable scanners = KnownScanners();
  std::vector<swath::ScannerTable::Flown> flown;
  if (arguments.Has(QStringLiteral("satellite"))) {
    const QString wanted = arguments.Text(QStringLiteral("satellite"));
    orbit::TSatellite satellite;
    satellite.SetIdentity(wanted.toStdString(), "");
    satellite.CatalogueNumber = wanted.toStdString();
    flown = scanners.Of(satellite);
    if (flown.empty()) throw Failure(QStringLiteral("No scanner of %1 is known").arg(wanted));
  } else {
    static const swath::Carrier none;
    for (const swath::Scanner& scanner : scanners.Scanners()) {
      if (scanner.Carriers.empty()) flown.push_back({&scanner, &none});
      for (const swath::Carrier& carrier : scanner.Carriers) flown.push_back({&scanner, &carrier});
    }
  }
  Table table(
      {QStringLiteral("scanner"), QStringLiteral("mode"), QStringLiteral("columns"),
       QStringLiteral("angle_deg"), QStringLiteral("law"), QStringLiteral("rows_per_second"),
       QStringLiteral("yaw_steering"), QStringLiteral("satellite"), QStringLiteral("catalogue_number"),
       QStringLiteral("frequencies_mhz"), QStringLiteral("roll_deg"), QStringLiteral("pitch_deg"),
       QStringLiteral("yaw_deg"), QStringLiteral("time_s"), QStringLiteral("mark_second")},
      json);
  for (const swath::ScannerTable::Flown& one : flown) {
    const swath::Scanner& scanner = *one.Instrument;
    const swath::Carrier& carrier = *one.Satellite;
    QStringList frequencies;
    for (const double frequency : carrier.FrequenciesMHz)
      frequencies.append(QString::number(frequency, 'f', 4));
    table.Add({scanner.Name, scanner.Mode, scanner.Line.Columns,
               Cell(carrier.AngleDeg.value_or(scanner.Line.AngleDeg), 2),
               std::string(swath::NameOf(carrier.Law.value_or(scanner.Line.Law))),
               Cell(scanner.RowsPerSecond, 3), Cell::Flag(scanner.YawSteering),
               carrier.Names.empty() ? std::string() : carrier.Names.front(), carrier.CatalogueNumber,
               frequencies.join(u' '), Cell(carrier.Offsets.RollDeg, 3), Cell(carrier.Offsets.PitchDeg, 3),
               Cell(carrier.Offsets.YawDeg, 3), Cell(carrier.TimeOffsetS, 2),
               carrier.MarkSecond ? Cell(*carrier.MarkSecond, 1) : Cell(std::string())});
  }
  table.Finish();
}

}  // namespace pelorin::cli
