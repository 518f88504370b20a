#pragma once

#include <QByteArray>
#include <QtEndian>

namespace pelorin::tools {

/// Adds a number as our files have it: little-endian, in as many bytes as its type.
template <typename T>
void AppendValue(QByteArray& bytes, T value) {
  const T stored = qToLittleEndian(value);
  bytes.append(reinterpret_cast<const char*>(&stored), sizeof stored);
}

}  // namespace pelorin::tools
