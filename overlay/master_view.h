#pragma once

#include <QString>
#include <algorithm>
#include <cstdint>
#include <optional>

#include "files/mapped_file.h"
#include "overlay/overlay_master.h"
#include "picture/indexed_bitmap.h"
#include "swath/ground_line.h"

namespace pelorin::overlay {

/// The overlay master seen in memory: 3960 rows of 7920 bytes, north first, one byte per pixel, column 0 at
/// 180° W. The file is mapped read-only for this object's life and never read as a whole.
class MasterView {
 public:
  /// Nothing when there is no valid master.
  static std::optional<MasterView> Open(const QString& path);

  /// 0 is the northmost row; 0 … 3959.
  const std::uint8_t* Row(int row) const;
  /// The pixel at a ground point; those stand for the points at their middle: the nearest one counts.
  std::uint8_t IndexAt(int southMin, int eastMin) const {
    const int row = std::min(MasterPixels(southMin), kMasterHeight - 1);
    const int column = MasterPixels(swath::MinutesFromDateLine(eastMin));
    return Row(row)[column < kMasterWidth ? column : 0];
  }
  /// Colour of each index as the file has it, 0x00RRGGBB.
  const picture::ColourTable& Colours() const { return colours_; }
  /// The tag of the `Countries.dat` that it was drawn from; 0 when it was not drawn by this program.
  std::uint32_t Tag() const { return tag_; }

 private:
  explicit MasterView(files::MappedFile file);

  files::MappedFile file_;
  picture::ColourTable colours_{};
  std::uint32_t tag_ = 0;
};

}  // namespace pelorin::overlay
