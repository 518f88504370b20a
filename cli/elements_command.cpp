#include "cli/commands.h"
#include "cli/options.h"
#include "cli/table.h"
#include "orbit/julian_date.h"

namespace pelorin::cli {

void RunElements(const QStringList& list) {
  const Arguments arguments(
      QStringLiteral("elements"),
      QStringLiteral("Lists every element set of a folder or file, with its age now in days."),
      {ElementsOption(),
       {QStringLiteral("format"), QStringLiteral("csv|json"), QStringLiteral("Default: csv.")}},
      list);
  const bool json =
      arguments.Choice(QStringLiteral("format"), {QStringLiteral("csv"), QStringLiteral("json")}) ==
      QStringLiteral("json");
  const auto known = arguments.ElementSets();
  const double now = orbit::JulianDateOfDateTime(orbit::NowUTC());
  Table table({QStringLiteral("satellite"), QStringLiteral("catalogue_number"), QStringLiteral("set_number"),
               QStringLiteral("epoch_utc"), QStringLiteral("age_days"), QStringLiteral("file")},
              json);
  for (const elements::NamedSet& named : known->Loaded()) {
    const orbit::TSatellite& set = named.Set;
    table.Add({set.Name, set.CatalogueNumber, set.ElementSetNumber,
               orbit::FormatDateTime("yyyy-mm-ddThh:nn:ssZ", orbit::DateTimeOfJulianDate(set.Epoch)),
               Cell(now - set.Epoch, 1), set.SourceFile});
  }
  table.Finish();
}

}  // namespace pelorin::cli
