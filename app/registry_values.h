#pragma once

#include <QString>
#include <cstdint>

#include "app/registry_store.h"

namespace pelorin::app {

/// Where a program keeps its settings: "\Software\Quillfen\" and the program's name. A copy of the program
/// under another name has settings of its own.
QString SettingsKeyPath(const QString& programName);

/// A setting that lives as long as its object: read from the store when it is made, written back when it is
/// destroyed. In between `Value` is the owner's to read and to assign. The store must outlive it.
///
/// `Release` writes it back before its time, for owners to whom the order matters; what is assigned
/// afterwards is lost.
class TRegistryVariable {
 public:
  TRegistryVariable(const TRegistryVariable&) = delete;
  TRegistryVariable& operator=(const TRegistryVariable&) = delete;

 protected:
  TRegistryVariable(const RegistryStore& store, const QString& keyPath, const QString& valueName);
  ~TRegistryVariable() = default;

  const RegistryStore& store_;
  const QString keyPath_;
  const QString valueName_;
  bool isReleased_ = false;
};

/// Each keeps its default when the store has no such value, or one of another kind.
class TRegistryBoolean : public TRegistryVariable {
 public:
  TRegistryBoolean(const RegistryStore& store, const QString& keyPath, const QString& valueName,
                   bool defaultValue);
  ~TRegistryBoolean() { Release(); }
  void Release();

  bool Value;
};

class TRegistryInteger : public TRegistryVariable {
 public:
  TRegistryInteger(const RegistryStore& store, const QString& keyPath, const QString& valueName,
                   std::int32_t defaultValue);
  ~TRegistryInteger() { Release(); }
  void Release();

  std::int32_t Value;
};

class TRegistryString : public TRegistryVariable {
 public:
  TRegistryString(const RegistryStore& store, const QString& keyPath, const QString& valueName,
                  const QString& defaultValue);
  ~TRegistryString() { Release(); }
  void Release();

  QString Value;
};

}  // namespace pelorin::app
