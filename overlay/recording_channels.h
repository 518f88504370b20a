#pragma once

#include <QImage>
#include <QString>
#include <functional>
#include <vector>

#include "overlay/opened_picture.h"

namespace pelorin::overlay {

/// The pictures that were received together with an opened one and lie on it pixel for pixel, itself the
/// first: the plain channels of its product, or both halves of whole lines. More than two tell little that is
/// new. One that cannot be read, or is of another size, is left out; `tell` gets why.
inline constexpr std::size_t kMostChannels = 2;
std::vector<QImage> ChannelsOfRecording(const OpenedPicture& opened,
                                        const std::function<void(const QString&)>& tell);

}  // namespace pelorin::overlay
