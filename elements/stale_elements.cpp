#include "elements/stale_elements.h"

#include <algorithm>

#include "elements/element_age.h"

namespace pelorin::elements {

int LargestElementAge(const TSatelliteList& satellites, double localNowJd) {
  int largest = 0;
  for (int index = 0; index < satellites.Count(); ++index) {
    largest = std::max(largest, ElementAgeDays(localNowJd, satellites.Satellite(index).Epoch));
  }
  return largest;
}

QString StaleElementsText() {
  return QStringLiteral(
             "Warning: Satellite Data is Stale.  Your data contains some entries that are more than %1 days "
             "old.  Use the View, Satellite data... menu for details of the actual satellite data.\r\r"
             "Click Retry to update from the Internet\rClick Ignore to use the stale data\r"
             "Click Help for more information.")
      .arg(kStaleAfterDays);
}

}  // namespace pelorin::elements
