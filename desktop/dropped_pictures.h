#pragma once

#include <QString>

class QMimeData;

namespace pelorin::desktop {

/// The first picture among what is dragged: a file of a known extension, a product file, or a folder that a
/// decoder left. Empty for none.
QString PictureAmong(const QMimeData& dragged);

}  // namespace pelorin::desktop
