#include "overlay/overlay_outputs.h"

#include <QDir>

#include "files/text_file.h"
#include "picture/jpeg_image.h"

namespace pelorin::overlay {

QStringList WriteOverlayOutputs(const OverlayResult& result, bool passDetails, const QString& folder) {
  constexpr int jpegQuality = 33;
  const QDir results(folder);
  QStringList written;
  const auto next = [&](const QString& name) {
    written.append(results.filePath(name));
    return written.back();
  };
  picture::SaveJpeg(result.Map, next(QStringLiteral("Result.jpg")), jpegQuality);
  if (result.Index.Height > 1) {
    picture::SaveIndexedBitmap(result.Index, result.IndexColours, next(QStringLiteral("ovl.bmp")));
  }
  if (passDetails) {
    files::WriteLines(next(QStringLiteral("pass.dat")), result.PassData);
    files::WriteLines(next(QStringLiteral("ovl.txt")), result.TextLines);
  }
  return written;
}

}  // namespace pelorin::overlay
