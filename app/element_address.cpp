#include "app/element_address.h"

namespace pelorin::app {

QString ElementAddress(const Settings& settings) {
  for (const QString& candidate :
       {qEnvironmentVariable("PELORIN_ELEMENTS_URL"), settings.ElementsAddress.Value}) {
    const QString address = candidate.trimmed();
    if (!address.isEmpty()) return address.endsWith(u'/') ? address : address + u'/';
  }
  return QStringLiteral("http://celestrak.org/NORAD/elements/");
}

}  // namespace pelorin::app
