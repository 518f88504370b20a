#include "swath/decoder_product.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <utility>

#include "files/file_error.h"
#include "swath/decoder_field.h"
#include "swath/decoder_product_fields.h"
#include "swath/picture_name.h"

namespace pelorin::swath {
namespace {

constexpr int kMostProducts = 100;
const auto kProductFile = QStringLiteral("product.cbor"), kDatasetFile = QStringLiteral("dataset.json");

/// Where a name in a decoder's file leads to, absolute and without links; empty when nothing is there. What
/// leads out of the folder is refused: such files come from strangers.
QString Inside(const QString& folder, const DecoderField& field) {
  const auto name = field.Text();
  if (!name || name->isEmpty() || name->contains(QChar(0)))
    field.Fail(QStringLiteral("must be the name of a file"));
  const bool climbs = QDir::fromNativeSeparators(*name).split(u'/').contains(QStringLiteral(".."));
  const QString home = QFileInfo(folder).canonicalFilePath();
  const QString path = QFileInfo(QDir(home).filePath(*name)).canonicalFilePath();
  if (QDir::isAbsolutePath(*name) || climbs ||
      !(path.isEmpty() || path == home || path.startsWith(home + u'/'))) {
    field.Fail(QStringLiteral("is \"%1\", which leads out of its folder").arg(*name));
  }
  return path;
}

void TellByName(DecodedImage& image) {
  const PictureName name = ReadPictureName(QFileInfo(image.Path).fileName());
  image.IsProjected = name.IsProjected;
  image.IsCorrected = name.IsCorrected;
}

int IndexOf(const DecodedProduct& product, const QString& path) {
  const auto found = std::find_if(product.Images.begin(), product.Images.end(),
                                  [&](const DecodedImage& image) { return image.Path == path; });
  return found == product.Images.end() ? -1 : static_cast<int>(found - product.Images.begin());
}

/// Stamps that all channels share: those of a picture that is made of several.
std::shared_ptr<const LineStamps> SharedStamps(const DecodedProduct& product) {
  if (product.Images.empty()) return nullptr;
  const auto& first = product.Images.front().Stamps;
  const bool areAlike =
      std::all_of(product.Images.begin(), product.Images.end(), [&](const DecodedImage& image) {
        const auto& other = image.Stamps;
        return first == other || (first && other && first->UnixS == other->UnixS);
      });
  return areAlike ? first : nullptr;
}

void AddComposite(const QString& path, const std::shared_ptr<const LineStamps>& stamps,
                  DecodedProduct& product) {
  DecodedImage image;
  image.Path = path;
  image.Channel = QFileInfo(path).completeBaseName();
  image.IsComposite = true;
  image.Stamps = stamps;
  TellByName(image);
  product.Images.push_back(std::move(image));
}

void ReadChannels(const DecoderField& root, const QString& folder, DecodedProduct& product) {
  const auto shared = ReadProductStamps(root);
  for (const DecoderField& field : root["images"].Items(kMostImages)) {
    DecodedImage image;
    image.Path = Inside(folder, field["file"]);
    image.Channel = field["name"].Text().value_or(QString());
    image.BitDepth = field["bit_depth"].Whole(0, 64).value_or(0);
    ReadTransform(field["transform"], image);
    const auto own = ReadImageStamps(root, field);
    image.Stamps = own ? own : shared;
    if (own) image.FirstRow = 0;
    if (!QFileInfo(image.Path).isFile()) continue;  // Users delete what they do not want.
    TellByName(image);
    product.Images.push_back(std::move(image));
  }
}

void AddComposites(const QString& folder, DecodedProduct& product) {
  const auto stamps = SharedStamps(product);
  const QString home = QFileInfo(folder).canonicalFilePath();
  for (const QFileInfo& file :
       QDir(home).entryInfoList({QStringLiteral("*rgb_*")}, QDir::Files, QDir::Name)) {
    const QString path = file.canonicalFilePath();
    const bool isInside = path.startsWith(home + u'/');
    if (isInside && HasPictureSuffix(path) && IndexOf(product, path) < 0 &&
        product.Images.size() < kMostImages) {
      AddComposite(path, stamps, product);
    }
  }
}

DecodedProduct ReadProduct(const QString& path) {
  const DecoderField root = DecoderField::ReadFile(path);
  const QString type = root["type"].Text().value_or(QStringLiteral("image"));
  if (type != QStringLiteral("image"))
    root["type"].Fail(QStringLiteral("is \"%1\": there are no pictures").arg(type));
  DecodedProduct product = ReadProductFields(root, path);
  const QString folder = QFileInfo(path).absolutePath();
  ReadChannels(root, folder, product);
  AddComposites(folder, product);
  if (product.Images.empty()) root["images"].Fail(QStringLiteral("names no picture that is there"));
  return product;
}

DecodedPass ReadDataset(const QString& path) {
  const DecoderField root = DecoderField::ReadFile(path);
  DecodedPass pass;
  const QString satellite = root["satellite"].Text().value_or(QString());
  for (const DecoderField& field : root["products"].Items(kMostProducts)) {
    try {
      const QString folder = Inside(QFileInfo(path).absolutePath(), field);
      if (folder.isEmpty()) field.Fail(QStringLiteral("names a folder that is not there"));
      DecodedProduct product = ReadProduct(QDir(folder).filePath(kProductFile));
      if (product.Satellite.isEmpty()) product.Satellite = satellite;
      pass.Products.push_back(std::move(product));
    } catch (const files::FileError& error) {
      pass.Problems.append(error.Text());
    }
  }
  if (pass.Products.empty()) {
    if (pass.Problems.isEmpty()) root["products"].Fail(QStringLiteral("names no product"));
    throw files::FileError(pass.Problems.first());
  }
  return pass;
}

DecodedPass ReadAlone(const QString& path) {
  DecodedPass pass;
  pass.Products.push_back(ReadProduct(path));
  return pass;
}

/// The product in a folder, and which of its pictures this is: −1 for none.
std::optional<DecodedPass> ReadBeside(const QDir& folder, const QString& picture) {
  if (!folder.exists(kProductFile)) return std::nullopt;
  DecodedPass pass = ReadAlone(folder.filePath(kProductFile));
  pass.Image = IndexOf(pass.Products.front(), picture);
  return pass;
}

/// The product whose picture this is, in its folder or in one therein. A picture that it does not list is of
/// it only when it lies right beside it.
std::optional<DecodedPass> ReadOfPicture(const QFileInfo& file) {
  const QString picture = file.canonicalFilePath();
  const QDir folder(file.absolutePath());
  if (auto pass = ReadBeside(folder, picture)) {
    DecodedProduct& product = pass->Products.front();
    if (pass->Image < 0) {
      AddComposite(picture, SharedStamps(product), product);
      pass->Image = static_cast<int>(product.Images.size()) - 1;
    }
    return pass;
  }
  auto pass = ReadBeside(QDir(QDir::cleanPath(folder.filePath(QStringLiteral("..")))), picture);
  return pass && pass->Image >= 0 ? pass : std::nullopt;
}

}  // namespace

bool IsProductPath(const QString& path) {
  const QFileInfo file(path);
  if (!file.isDir()) return file.fileName() == kDatasetFile || file.fileName() == kProductFile;
  const QDir folder(path);
  return folder.exists(kDatasetFile) || folder.exists(kProductFile);
}

std::optional<DecodedPass> ReadDecodedPass(const QString& path, QString* problem) {
  const QFileInfo file(QDir::cleanPath(QFileInfo(path).absoluteFilePath()));
  if (file.isDir()) {
    const QDir folder(file.absoluteFilePath());
    if (folder.exists(kDatasetFile)) return ReadDataset(folder.filePath(kDatasetFile));
    if (folder.exists(kProductFile)) return ReadAlone(folder.filePath(kProductFile));
    return std::nullopt;
  }
  if (file.fileName() == kDatasetFile) return ReadDataset(file.filePath());
  if (file.fileName() == kProductFile) return ReadAlone(file.filePath());
  if (!file.isFile() || !HasPictureSuffix(path)) return std::nullopt;
  try {
    return ReadOfPicture(file);
  } catch (const files::FileError& error) {
    if (problem != nullptr) *problem = error.Text();
    return std::nullopt;
  }
}

std::vector<double> LineStampsOf(const DecodedProduct& product, int image, int rows) {
  const DecodedImage& picture = product.Images.at(static_cast<std::size_t>(image));
  return MomentsOfRows(picture.Stamps ? *picture.Stamps : LineStamps(), picture.FirstRow, rows);
}

}  // namespace pelorin::swath
