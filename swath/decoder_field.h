#pragma once

#include <QCborArray>
#include <QCborValue>
#include <QString>
#include <optional>
#include <utility>
#include <vector>

namespace pelorin::swath {

/// A value in a file that a decoder wrote, which knows where it stands: what it is not fit for is told as
/// `/…/product.cbor: "projection_cfg.scan_angle" must be a number from 1 to 150`, by files::FileError.
/// A key that is not there, null and undefined are all missing; what a missing object has is missing.
class DecoderField {
 public:
  /// The whole of a file: CBOR (RFC 8949), or JSON when its name ends so. Raises FileError when it cannot be
  /// read, is not a regular file, is damaged, nested deeper or larger than any that a decoder writes.
  static DecoderField ReadFile(const QString& path);

  bool IsMissing() const { return value_.isNull() || value_.isUndefined() || value_.isInvalid(); }

  bool IsObject() const { return value_.isMap(); }

  /// A member of this object.
  DecoderField operator[](const char* key) const;
  std::vector<QString> Keys() const;
  /// Of this list; a missing one has none.
  std::vector<DecoderField> Items(qsizetype most) const;
  /// The same, numbers alone; NaN for missing ones.
  std::vector<double> Numbers(qsizetype most) const;

  std::optional<double> Number(double least, double most) const;
  std::optional<int> Whole(int least, int most) const;
  std::optional<QString> Text() const;
  bool Flag() const;  ///< missing means false

  /// To be raised: `/…/product.cbor: "key" …`.
  [[noreturn]] void Fail(const QString& problem) const;

 private:
  DecoderField(QString file, QString key, QCborValue value)
      : file_(std::move(file)), key_(std::move(key)), value_(std::move(value)) {}

  QCborArray List(qsizetype most) const;
  DecoderField Item(qsizetype index, const QCborValue& value) const;

  QString file_, key_;
  QCborValue value_;
};

}  // namespace pelorin::swath
