#pragma once

#include <QString>
#include <cstdint>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

#include "app/registry_store.h"

namespace pelorin::app {

class TRegistryVariable;

/// The owner of settings, which are members of a class derived from this one. The store is read once for all
/// of them.
class RegistryVariables {
 public:
  RegistryVariables(const RegistryVariables&) = delete;
  RegistryVariables& operator=(const RegistryVariables&) = delete;

  /// Writes what has changed since it was read, and what the store does not hold yet, in one write. What
  /// another program has changed meanwhile and this one has not stays as the other left it.
  void Save() const;

 protected:
  RegistryVariables(const RegistryStore& store, const QString& keyPath)
      : store_(store), keyPath_(keyPath), read_(store.Read()) {}
  ~RegistryVariables() = default;

 private:
  friend class TRegistryVariable;

  const RegistryStore store_;
  const QString keyPath_;
  const RegistryDocument read_;
  std::vector<const TRegistryVariable*> variables_;
};

/// A setting, read when it is made. In between `Value` is the owner's to read and to assign.
class TRegistryVariable {
 public:
  /// Who writes it: the owner's Save, or only the user, with an editor.
  enum class WrittenBy { Program, User };

  TRegistryVariable(const TRegistryVariable&) = delete;
  TRegistryVariable& operator=(const TRegistryVariable&) = delete;

  /// Puts the value into the document, if it has to be written.
  virtual void StoreIn(RegistryDocument& document) const = 0;

 protected:
  /// The name may begin with subkeys, as in "Window\\Place".
  TRegistryVariable(RegistryVariables& owner, const char* name, WrittenBy writer);
  ~TRegistryVariable() = default;

  template <class Kind>
  std::optional<Kind> FindIn(const RegistryDocument& document) const {
    return document.Find<Kind>(keyPath_, name_);
  }
  static const RegistryDocument& ReadBy(const RegistryVariables& owner) { return owner.read_; }

  QString keyPath_, name_;
};

/// Keeps its default when the store has no such value, or one of another kind. Truth values are stored as 0
/// and 1.
template <class Kind>
class TRegistryValue final : public TRegistryVariable {
 public:
  TRegistryValue(RegistryVariables& owner, const char* name, Kind byDefault,
                 WrittenBy writer = WrittenBy::Program)
      : TRegistryVariable(owner, name, writer),
        Value(FindIn<Stored>(ReadBy(owner)).value_or(std::move(byDefault))),
        read_(Value) {}

  Kind Value;

  void StoreIn(RegistryDocument& document) const override {
    if (Value != read_ || !FindIn<Stored>(document)) document.Set(keyPath_, name_, Stored(Value));
  }

 private:
  using Stored = std::conditional_t<std::is_same_v<Kind, bool>, std::int32_t, Kind>;

  const Kind read_;
};

using TRegistryString = TRegistryValue<QString>;
using TRegistryBoolean = TRegistryValue<bool>;
using TRegistryInteger = TRegistryValue<std::int32_t>;

}  // namespace pelorin::app
