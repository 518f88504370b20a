#pragma once

#include <QString>

#include "swath/decoder_field.h"
#include "swath/decoder_product.h"

namespace pelorin::swath {

inline constexpr int kMostImages = 10000;

/// Everything that a product.cbor tells of its product but the pictures' files: satellite, elements and
/// geometry. `product.Images` stays empty. Raises files::FileError.
DecodedProduct ReadProductFields(const DecoderField& root, const QString& path);

/// The stamps of all pictures of a product alike; null when there are none.
std::shared_ptr<const LineStamps> ReadProductStamps(const DecoderField& root);

/// The stamps that a picture has of its own; null when there are none.
std::shared_ptr<const LineStamps> ReadImageStamps(const DecoderField& root, const DecoderField& image);

/// Takes over where the picture lies among the product's columns and rows.
void ReadTransform(const DecoderField& transform, DecodedImage& image);

}  // namespace pelorin::swath
