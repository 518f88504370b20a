#include "desktop/dropped_pictures.h"

#include <QFileInfo>
#include <QMimeData>
#include <QUrl>

#include "picture/picture_file.h"
#include "swath/decoder_product.h"

namespace pelorin::desktop {

QString PictureAmong(const QMimeData& dragged) {
  for (const QUrl& url : dragged.urls()) {
    if (!url.isLocalFile()) continue;
    const QString path = url.toLocalFile();
    if (swath::IsProductPath(path) || (QFileInfo(path).isFile() && picture::IsPictureName(path))) return path;
  }
  return QString();
}

}  // namespace pelorin::desktop
