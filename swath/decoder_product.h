#pragma once

#include <QString>
#include <QStringList>
#include <memory>
#include <optional>
#include <vector>

#include "swath/line_stamps.h"
#include "swath/scanner.h"

/// What a decoder left behind when it had decoded a pass: folders with pictures and with what it knew of
/// them. docs/formats.md says what of their files is read.
namespace pelorin::swath {

/// A picture of a product.
struct DecodedImage {
  QString Path;              ///< absolute, without links; the file was there, inside of the product's folder
  QString Channel;           ///< its name; that of the file for pictures that the product does not list
  int BitDepth = 0;          ///< of a sample; 0 when it is not told
  double FirstColumn = 0;    ///< its column 0 among the geometry's columns
  double FirstRow = 0;       ///< its row 0 among those that Stamps are of
  bool IsWarped = false;     ///< lies otherwise on the others than by a shift: the geometry is not its own
  bool IsComposite = false;  ///< made of several channels, or of something that is not told
  bool IsProjected = false;  ///< by its name: a map is drawn in it already
  bool IsCorrected = false;  ///< by its name: stretched to equal distances on the ground
  std::shared_ptr<const LineStamps> Stamps;  ///< shared with others; null when there are none
};

/// How a decoder says that its pictures look. Degrees and seconds as in Scanner.
struct DecodedGeometry {
  LineShape Line;
  Attitude Offsets;
  double TimeOffsetS = 0;
  bool InvertScan = false;  ///< the columns were received in the other direction
};

/// The pictures of one instrument.
struct DecodedProduct {
  QString File;                        ///< its product.cbor, absolute
  QString Instrument;                  ///< "msu_mr", "avhrr_3", "avhrr_apt"; empty when it is not told
  QString Satellite;                   ///< name, as its element set has it, or the decoder; may be empty
  QString CatalogueNumber;             ///< may be empty
  QString ElementLine1, ElementLine2;  ///< of the element set it was decoded with; both or none
  std::optional<double> StartUnixS;    ///< when it says that it was received
  bool IsOlderForm = false;  ///< whose attitude is counted in another way than ours: nothing is taken of it
  std::optional<DecodedGeometry> Geometry;
  QString GeometryProblem;           ///< why there is none, for the user; else empty
  std::vector<DecodedImage> Images;  ///< channels as listed, then composites by name; at least one
};

/// What a path leads to. Indices count from 0.
struct DecodedPass {
  std::vector<DecodedProduct> Products;  ///< at least one
  int Image = -1;                        ///< of the first product, when the path is a picture; else −1
  QStringList Problems;                  ///< products that could not be read, and why, for the user
};

/// Whether a path is that of a product: a product.cbor or a dataset.json, or a folder with one of them.
bool IsProductPath(const QString& path);

/// The pass that a decoder left at a path: a folder with a dataset.json or a product.cbor, one of these two,
/// or a picture in the folder of a product, or one that it lists. Nothing when the path is none of these, as
/// ordinary pictures and folders are. Raises files::FileError, `/…/product.cbor: "images[2].file" must …`,
/// when there is something that cannot be read or that leads out of its folder, and when no picture is there.
/// A picture can do without its product: there is nothing then, and `problem`, if any, takes that text.
std::optional<DecodedPass> ReadDecodedPass(const QString& path, QString* problem = nullptr);

/// When each of the first rows of a picture was seen, as MomentsOfRows tells it. `image` counts from 0.
std::vector<double> LineStampsOf(const DecodedProduct& product, int image, int rows);

}  // namespace pelorin::swath
