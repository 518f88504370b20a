#pragma once

#include <QString>
#include <optional>

#include "files/mapped_file.h"

namespace pelorin::overlay {

/// Elevations of the whole Earth on a grid of 5 minutes, mapped read-only for this object's life. Two layouts
/// of 2160 rows from the north pole on are told apart by the file's size: 4321 little-endian values a row
/// from Greenwich eastward, and 4320 big-endian ones from 180° W.
class Topography {
 public:
  /// Nothing when the file cannot be mapped.
  static std::optional<Topography> Open(const QString& path);

  /// False for a file of neither size: it has no elevations.
  bool KnownLayout() const { return layout_ != Layout::Unknown; }

  /// Metres at a point `southMin` minutes south of the north pole, 0 … 10800, and `eastMin` minutes east of
  /// Greenwich, 0 … 21599.
  int ElevationAt(int southMin, int eastMin) const;

 private:
  enum class Layout { Unknown, LittleEndianFromGreenwich, BigEndianFromDateLine };

  explicit Topography(files::MappedFile file);

  files::MappedFile file_;
  Layout layout_;
};

}  // namespace pelorin::overlay
