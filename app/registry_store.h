#pragma once

#include <QString>
#include <functional>

#include "app/registry_document.h"

namespace pelorin::app {

/// Where the user's settings lie: one file, "registry.reg", which several programs may share. Nothing is kept
/// in memory.
///
/// No call fails aloud: what cannot be read is absent, what cannot be written is lost. Of a damaged file the
/// readable values count, and before it is written over it is kept as "registry.reg.damaged"
/// ("registry.reg.damaged2" and so on when there is one already).
class RegistryStore {
 public:
  /// The folder need not exist; the first write makes it.
  explicit RegistryStore(const QString& folder = DefaultFolder());

  /// Environment variable PELORIN_CONFIG_DIR, or else "Quillfen" in the user's configuration folder.
  static QString DefaultFolder();

  RegistryDocument Read() const;

  /// Gives `change` what the file holds now, and puts what it makes of it in the file's place: all of it or
  /// nothing, whenever the program should be killed. No other program that writes its settings gets in
  /// between. What changes nothing is not written.
  void Update(const std::function<void(RegistryDocument& document)>& change) const;

 private:
  QString path_;
};

}  // namespace pelorin::app
