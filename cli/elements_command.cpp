#include "cli/commands.h"
#include "cli/options.h"
#include "cli/table.h"
#include "orbit/julian_date.h"

namespace pelorin::cli {

void RunElements(const QStringList& list) {
  const Arguments arguments(
      QStringLiteral("elements"),
      QStringLiteral(
          "Lists every element set of a folder or file, with its age now in days; or, with --near, the set "
          "of each satellite that would be used for a picture of that time, with its age then."),
      {ElementsOption(),
       {QStringLiteral("near"), QStringLiteral("YYYYMMDD[HHMMSS]"),
        QStringLiteral("A time (UTC); a day stands for its noon.")},
       TableFormatOption()},
      list);
  const bool json = arguments.WantsJson();
  const auto known = arguments.ElementSets();
  std::vector<orbit::TSatellite> sets;
  double now = orbit::JulianDateOfDateTime(orbit::NowUTC());
  if (arguments.Has(QStringLiteral("near"))) {
    const QString near = arguments.Text(QStringLiteral("near"));
    now = orbit::JulianDateOfDateTime(ParseStart(near.size() == 8 ? near + QStringLiteral("120000") : near));
    sets = known->AllNearest(now);
  } else {
    for (const elements::NamedSet& named : known->Loaded()) sets.push_back(named.Set);
  }
  Table table({QStringLiteral("satellite"), QStringLiteral("catalogue_number"), QStringLiteral("set_number"),
               QStringLiteral("epoch_utc"), QStringLiteral("age_days"), QStringLiteral("file")},
              json);
  for (const orbit::TSatellite& set : sets) {
    table.Add({set.Name, set.CatalogueNumber, set.ElementSetNumber,
               orbit::FormatDateTime("yyyy-mm-ddThh:nn:ssZ", orbit::DateTimeOfJulianDate(set.Epoch)),
               Cell(now - set.Epoch, 1), set.SourceFile});
  }
  table.Finish();
}

}  // namespace pelorin::cli
