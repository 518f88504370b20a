#include "overlay/master_view.h"

#include "overlay/overlay_master.h"
#include "picture/bitmap_header.h"

namespace pelorin::overlay {

std::optional<MasterView> MasterView::Open(const QString& path) {
  if (!MasterIsValid(path)) return std::nullopt;
  auto file = files::MappedFile::Open(path);
  if (!file || file->Size() != kMasterFileSize) return std::nullopt;
  return MasterView(std::move(*file));
}

MasterView::MasterView(files::MappedFile file) : file_(std::move(file)) {
  const QByteArrayView head(file_.Data(), kMasterPixelOffset);
  if (const auto header = picture::ReadBitmapHeader(head)) tag_ = header->Reserved;
  constexpr int tableOffset = 54;
  for (std::size_t i = 0; i < colours_.size(); ++i) {
    const std::uint8_t* quad = file_.Data() + tableOffset + 4 * i;  // blue, green, red, nothing
    colours_[i] =
        static_cast<std::uint32_t>(quad[2]) << 16 | static_cast<std::uint32_t>(quad[1]) << 8 | quad[0];
  }
}

const std::uint8_t* MasterView::Row(int row) const {
  return file_.Data() + kMasterPixelOffset + std::ptrdiff_t{kMasterHeight - 1 - row} * kMasterWidth;
}

}  // namespace pelorin::overlay
