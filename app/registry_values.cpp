#include "app/registry_values.h"

#include <utility>

namespace pelorin::app {

QString SettingsKeyPath(const QString& programName) {
  return QStringLiteral("\\Software\\Quillfen\\") + programName;
}

TRegistryVariable::TRegistryVariable(const RegistryStore& store, const QString& keyPath,
                                     const QString& valueName)
    : store_(store), keyPath_(keyPath), valueName_(valueName) {}

TRegistryBoolean::TRegistryBoolean(const RegistryStore& store, const QString& keyPath,
                                   const QString& valueName, bool defaultValue)
    : TRegistryVariable(store, keyPath, valueName),
      Value(store.ReadInteger(keyPath, valueName).value_or(defaultValue ? 1 : 0) != 0) {}

void TRegistryBoolean::Release() {
  if (!std::exchange(isReleased_, true)) store_.WriteInteger(keyPath_, valueName_, Value ? 1 : 0);
}

TRegistryInteger::TRegistryInteger(const RegistryStore& store, const QString& keyPath,
                                   const QString& valueName, std::int32_t defaultValue)
    : TRegistryVariable(store, keyPath, valueName),
      Value(store.ReadInteger(keyPath, valueName).value_or(defaultValue)) {}

void TRegistryInteger::Release() {
  if (!std::exchange(isReleased_, true)) store_.WriteInteger(keyPath_, valueName_, Value);
}

TRegistryString::TRegistryString(const RegistryStore& store, const QString& keyPath, const QString& valueName,
                                 const QString& defaultValue)
    : TRegistryVariable(store, keyPath, valueName),
      Value(store.ReadString(keyPath, valueName).value_or(defaultValue)) {}

void TRegistryString::Release() {
  if (!std::exchange(isReleased_, true)) store_.WriteString(keyPath_, valueName_, Value);
}

}  // namespace pelorin::app
