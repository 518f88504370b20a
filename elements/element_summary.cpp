#include "elements/element_summary.h"

#include "elements/element_age.h"

namespace pelorin::elements {

std::vector<ElementSummaryRow> ElementSummary(const TSatelliteList& satellites, double localNowJd) {
  std::vector<ElementSummaryRow> rows;
  rows.reserve(static_cast<std::size_t>(satellites.Count()));
  for (int index = 0; index < satellites.Count(); ++index) {
    const orbit::TSatellite& satellite = satellites.Satellite(index);
    rows.push_back(
        {QString::fromStdString(satellites.Name(index)), QString::fromStdString(satellite.CatalogueNumber),
         QString::asprintf("%14.8f", satellite.EpochRaw), ElementAgeDays(localNowJd, satellite.Epoch),
         QString::fromStdString(satellite.SourceFile)});
  }
  return rows;
}

}  // namespace pelorin::elements
