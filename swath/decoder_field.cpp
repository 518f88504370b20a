#include "swath/decoder_field.h"

#include <QCborArray>
#include <QCborMap>
#include <QCborStreamReader>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cmath>
#include <limits>
#include <utility>

#include "files/file_error.h"
#include "files/read_file.h"

namespace pelorin::swath {
namespace {

/// A product of the longest pass has a hundredth of each.
constexpr qint64 kMostBytes = 64 << 20;
constexpr int kMostValues = 2'000'000, kDeepest = 64;

[[noreturn]] void FailFile(const QString& path, const QString& problem) {
  throw files::FileError(QStringLiteral("%1: %2").arg(path, problem));
}

/// Goes over the whole of it before anything is built.
void CheckShape(const QByteArray& content, const QString& path) {
  QCborStreamReader reader(content);
  for (int values = 0; reader.lastError() == QCborError::NoError;) {
    if (!reader.hasNext()) {
      if (reader.containerDepth() == 0) return;
      reader.leaveContainer();
      continue;
    }
    if (++values > kMostValues) FailFile(path, QStringLiteral("it has more values than any pass"));
    if (!reader.isContainer()) {
      reader.next();
    } else if (reader.containerDepth() >= kDeepest) {
      FailFile(path, QStringLiteral("it is nested deeper than %1 lists").arg(kDeepest));
    } else {
      reader.enterContainer();
    }
  }
  FailFile(path, QStringLiteral("it is damaged from byte %1 on (%2)")
                     .arg(reader.currentOffset())
                     .arg(reader.lastError().toString()));
}

QCborValue ParseCbor(const QByteArray& content, const QString& path) {
  CheckShape(content, path);
  QCborParserError error;
  QCborValue value = QCborValue::fromCbor(content, &error);
  if (error.error != QCborError::NoError) {
    FailFile(path,
             QStringLiteral("it is damaged from byte %1 on (%2)").arg(error.offset).arg(error.errorString()));
  }
  return value;
}

QCborValue ParseJson(const QByteArray& content, const QString& path) {
  QJsonParseError error;
  const QJsonDocument document = QJsonDocument::fromJson(content, &error);
  if (error.error != QJsonParseError::NoError) {
    FailFile(path,
             QStringLiteral("from byte %1 on it is no JSON (%2)").arg(error.offset).arg(error.errorString()));
  }
  return document.isArray() ? QCborValue(QCborArray::fromJsonArray(document.array()))
                            : QCborValue(QCborMap::fromJsonObject(document.object()));
}

bool IsNumber(const QCborValue& value) { return value.isDouble() || value.isInteger(); }

}  // namespace

DecoderField DecoderField::ReadFile(const QString& path) {
  if (!QFileInfo(path).isFile()) FailFile(path, QStringLiteral("there is no such file"));
  const bool isJson = path.endsWith(QLatin1StringView(".json"), Qt::CaseInsensitive);
  const QByteArray content = files::ReadFile(path, isJson ? kMostBytes / 64 : kMostBytes);
  DecoderField root(path, QString(), isJson ? ParseJson(content, path) : ParseCbor(content, path));
  if (!root.value_.isMap()) FailFile(path, QStringLiteral("it is not what a decoder writes"));
  return root;
}

DecoderField DecoderField::operator[](const char* key) const {
  const QString name = QString::fromLatin1(key);
  const QString path = key_.isEmpty() ? name : QStringLiteral("%1.%2").arg(key_, name);
  if (IsMissing()) return {file_, path, QCborValue()};
  if (!value_.isMap()) Fail(QStringLiteral("must be an object"));
  return {file_, path, value_.toMap().value(name)};
}

std::vector<QString> DecoderField::Keys() const {
  std::vector<QString> keys;
  if (IsMissing()) return keys;
  if (!value_.isMap()) Fail(QStringLiteral("must be an object"));
  for (const auto& [key, value] : value_.toMap()) keys.push_back(key.toString());
  return keys;
}

QCborArray DecoderField::List(qsizetype most) const {
  if (!IsMissing() && !value_.isArray()) Fail(QStringLiteral("must be a list"));
  const QCborArray list = value_.toArray();
  if (list.size() > most) Fail(QStringLiteral("must have at most %1 items").arg(most));
  return list;
}

DecoderField DecoderField::Item(qsizetype index, const QCborValue& value) const {
  return {file_, QStringLiteral("%1[%2]").arg(key_).arg(index), value};
}

std::vector<DecoderField> DecoderField::Items(qsizetype most) const {
  std::vector<DecoderField> items;
  qsizetype index = 0;
  for (const QCborValue& value : List(most)) items.push_back(Item(index++, value));
  return items;
}

std::vector<double> DecoderField::Numbers(qsizetype most) const {
  std::vector<double> numbers;
  qsizetype index = 0;
  for (const QCborValue& value : List(most)) {
    const bool isMissing = value.isNull() || value.isUndefined();
    if (!isMissing && !IsNumber(value)) Item(index, value).Fail(QStringLiteral("must be a number"));
    numbers.push_back(value.toDouble(std::numeric_limits<double>::quiet_NaN()));
    ++index;
  }
  return numbers;
}

std::optional<double> DecoderField::Number(double least, double most) const {
  if (IsMissing()) return std::nullopt;
  const double number = value_.toDouble();
  if (!IsNumber(value_) || !(number >= least && number <= most)) {
    Fail(QStringLiteral("must be a number from %1 to %2").arg(least).arg(most));
  }
  return number;
}

std::optional<int> DecoderField::Whole(int least, int most) const {
  const std::optional<double> number = Number(least, most);
  if (number && *number != std::floor(*number)) Fail(QStringLiteral("must be a whole number"));
  return number ? std::optional(static_cast<int>(*number)) : std::nullopt;
}

std::optional<QString> DecoderField::Text() const {
  if (IsMissing()) return std::nullopt;
  if (!value_.isString()) Fail(QStringLiteral("must be a text"));
  return value_.toString();
}

bool DecoderField::Flag() const {
  if (!IsMissing() && !value_.isBool()) Fail(QStringLiteral("must be true or false"));
  return value_.toBool();
}

void DecoderField::Fail(const QString& problem) const {
  FailFile(file_, QStringLiteral("\"%1\" %2").arg(key_, problem));
}

}  // namespace pelorin::swath
