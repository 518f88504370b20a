#include "app/element_address.h"

#include "app/registry_values.h"

namespace pelorin::app {

QString ElementAddress(const RegistryStore& store, const QString& programName) {
  const QString keyPath = SettingsKeyPath(programName) + QStringLiteral("\\Network");
  const QString builtIn = QStringLiteral("http://celestrak.org/NORAD/elements/");
  for (const QString& candidate :
       {qEnvironmentVariable("PELORIN_ELEMENTS_URL"),
        store.ReadString(keyPath, QStringLiteral("ElementsAddress")).value_or(QString())}) {
    const QString address = candidate.trimmed();
    if (!address.isEmpty()) return address.endsWith(u'/') ? address : address + u'/';
  }
  return builtIn;
}

}  // namespace pelorin::app
