#include "app/registry_values.h"

namespace pelorin::app {

void RegistryVariables::Save() const {
  store_.Update([this](RegistryDocument& document) {
    for (const TRegistryVariable* variable : variables_) variable->StoreIn(document);
  });
}

TRegistryVariable::TRegistryVariable(RegistryVariables& owner, const char* name, WrittenBy writer) {
  const QString path = owner.keyPath_ + QLatin1Char('\\') + QString::fromLatin1(name);
  const qsizetype end = path.lastIndexOf(QLatin1Char('\\'));
  keyPath_ = path.left(end);
  name_ = path.mid(end + 1);
  if (writer == WrittenBy::Program) owner.variables_.push_back(this);
}

}  // namespace pelorin::app
