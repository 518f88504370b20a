#pragma once

#include <QString>
#include <vector>

#include "elements/satellite_list.h"

namespace pelorin::elements {

/// One element set of the summary.
struct ElementSummaryRow {
  QString Satellite;
  QString CatalogueNumber;
  QString Epoch;    ///< "yyddd.dddddddd", blanks in front where the year has one digit
  int DaysAge = 0;  ///< whole days, cut towards zero
  QString File;     ///< without its folder
};

/// Every loaded set in the list's order; ages are counted to a Julian date by the clock on the wall.
std::vector<ElementSummaryRow> ElementSummary(const TSatelliteList& satellites, double localNowJd);

}  // namespace pelorin::elements
