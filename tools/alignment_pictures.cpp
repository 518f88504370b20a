#include "tools/alignment_pictures.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

#include "elements/known_sets.h"
#include "files/file_error.h"
#include "orbit/julian_date.h"
#include "overlay/master_surface.h"
#include "overlay/opened_picture.h"
#include "overlay/overlay_master.h"
#include "overlay/recording_channels.h"

namespace pelorin::tools {
namespace {

using nlohmann::json;

QByteArray ContentOf(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    throw files::FileError(QStringLiteral("Cannot read %1: %2").arg(path, file.errorString()));
  }
  return file.readAll();
}

QString TextOf(const json& object, const char* key) {
  return QString::fromStdString(object.value(key, std::string()));
}

orbit::TDateTime MomentOf(const QString& text) {
  const QDateTime moment = QDateTime::fromString(text, Qt::ISODate);
  if (!moment.isValid()) throw files::FileError(QStringLiteral("\"%1\" is no moment").arg(text));
  return {orbit::MakeDateTime(1970, 1, 1).Days +
          static_cast<double>(moment.toMSecsSinceEpoch()) / 1000 / orbit::kSecondsPerDay};
}

std::vector<KnownPixel> ReadTruth(const QString& path) {
  std::vector<KnownPixel> truth;
  const QList<QByteArray> lines = ContentOf(path).split('\n');
  for (const QByteArray& line : lines.mid(1)) {
    const QList<QByteArray> cells = line.split(',');
    if (cells.size() != 4) continue;
    truth.push_back({{cells[0].toDouble(), cells[1].toDouble()}, {cells[2].toDouble(), cells[3].toDouble()}});
  }
  return truth;
}

overlay::ClockOffsets Utc(int) { return {}; }

overlay::OpenedPicture Open(const QString& path, const json& entry, const swath::ScannerTable& scanners) {
  overlay::OpenedPicture opened = overlay::OpenPicture(path, Utc, scanners);
  if (const QString satellite = TextOf(entry, "satellite"); !satellite.isEmpty()) {
    opened.Satellite = satellite;
  }
  if (const QString start = TextOf(entry, "start"); !start.isEmpty()) {
    opened.Known.Start = MomentOf(start);
    opened.Known.StartIsFrom = swath::StartFrom::NameSecond;
    opened.OtherStarts.clear();
  }
  return opened;
}

/// Those of the other channels that are of the same recording.
void AddChannels(const overlay::OpenedPicture& opened, const swath::ScannerTable& scanners,
                 MeasuredPicture& picture) {
  picture.Channels.push_back(opened.Image);
  for (const overlay::PictureChannel& channel : opened.Channels) {
    if (picture.Channels.size() == overlay::kMostChannels) return;
    if (channel.Path == opened.Channel.Path && channel.Half == opened.Channel.Half) continue;
    const overlay::OpenedPicture other = overlay::OpenPicture(channel.Path, Utc, scanners, channel.Half);
    if (other.Image.size() == opened.Image.size()) picture.Channels.push_back(other.Image);
  }
}

MeasuredPicture ReadPicture(const json& entry, const QDir& folder, const swath::ScannerTable& scanners) {
  MeasuredPicture picture;
  const QString path = folder.absoluteFilePath(TextOf(entry, "picture"));
  picture.Name = TextOf(entry, "name");
  picture.MustBeRefused = entry.value("refused", false);
  const overlay::OpenedPicture opened = Open(path, entry, scanners);
  const QString elementFile = TextOf(entry, "elements");
  elements::KnownSets sets(elementFile.isEmpty()
                               ? std::filesystem::path()
                               : std::filesystem::path(folder.absoluteFilePath(elementFile).toStdString()),
                           {});
  const std::string satellite = opened.Satellite.toStdString();
  const auto near = [&](orbit::TDateTime moment) {
    return sets.FindNearest(satellite, orbit::JulianDateOfDateTime(moment));
  };
  const auto placed = overlay::PlaceRecording(opened, near, scanners, orbit::Observer());
  if (!placed || !placed->Match.Problem.isEmpty()) {
    throw files::FileError(QStringLiteral("%1: %2").arg(
        path, placed ? placed->Match.Problem : QStringLiteral("there is no element set for it")));
  }
  picture.Recording = placed->Recording;
  AddChannels(opened, scanners, picture);
  if (const QString truth = TextOf(entry, "truth"); !truth.isEmpty()) {
    picture.Truth = ReadTruth(folder.absoluteFilePath(truth));
  }
  for (const orbit::TSatellite& set : sets.AllNearest(orbit::JulianDateOfDateTime(picture.Recording.Start))) {
    if (set.CatalogueKey() != picture.Recording.Elements->CatalogueKey()) picture.Others.push_back(set);
  }
  return picture;
}

lines::FineLines OpenShores(const QString& path) {
  auto shores = lines::FineLines::Open(path);
  if (!shores) throw files::FileError(QStringLiteral("Cannot read %1").arg(path));
  return std::move(*shores);
}

}  // namespace

std::vector<MeasuredPicture> ReadPictures(const QString& listPath, const QString& dataFolder) {
  std::vector<std::string> problems;
  const swath::ScannerTable scanners =
      swath::LoadScannerTables({QDir(dataFolder).filePath(QStringLiteral("scanners.json"))}, problems);
  if (!problems.empty()) throw files::FileError(QString::fromStdString(problems.front()));
  std::vector<MeasuredPicture> pictures;
  try {
    for (const json& entry : json::parse(ContentOf(listPath))) {
      pictures.push_back(ReadPicture(entry, QFileInfo(listPath).absoluteDir(), scanners));
    }
  } catch (const json::exception& error) {
    throw files::FileError(QStringLiteral("%1: %2").arg(listPath, QLatin1String(error.what())));
  }
  return pictures;
}

MeasuringGround::MeasuringGround(const QString& dataFolder)
    : shores_(OpenShores(QDir(dataFolder).filePath(QStringLiteral("Coastlines.dat")))) {
  const QString master = folder_.filePath(QStringLiteral("Overlay.bmp"));
  overlay::GenerateMaster(
      QDir(dataFolder).filePath(QStringLiteral("Countries.dat")), master, [](const QString&) {},
      [](const QString&) { return true; });
  master_ = overlay::MasterView::Open(master);
  if (!master_) throw files::FileError(QStringLiteral("There is no map in %1").arg(dataFolder));
}

double MedianOf(std::vector<double> values, double share) {
  if (values.empty()) return std::nan("");
  const auto middle =
      values.begin() + static_cast<std::ptrdiff_t>(share * static_cast<double>(values.size() - 1));
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

align::Ground MeasuringGround::Ground() const { return {overlay::SurfacesIn(*master_), &shores_}; }

Misfit MisfitToTruth(const swath::Recording& is, const std::vector<KnownPixel>& truth) {
  const swath::PixelGeometry geometry(is);
  std::vector<double> rows, columns, rowSizes, columnSizes;
  for (const KnownPixel& known : truth) {
    const auto pixel = geometry.PixelOf(known.Ground);
    if (!pixel) continue;
    rows.push_back(pixel->Row - known.Pixel.Row);
    columns.push_back(pixel->Column - known.Pixel.Column);
    rowSizes.push_back(std::fabs(rows.back()));
    columnSizes.push_back(std::fabs(columns.back()));
  }
  Misfit misfit{MedianOf(rows), MedianOf(columns), MedianOf(rowSizes, 0.9), MedianOf(columnSizes, 0.9), 0};
  // Ground that is not seen at all is as far off as can be.
  if (rows.size() * 2 < truth.size()) misfit.Lines = misfit.Columns = is.Rows;
  misfit.Seconds = misfit.Lines / is.SeenBy.RowsPerSecond;
  return misfit;
}

Misfit MisfitBetween(const swath::Recording& is, const swath::Recording& shouldBe) {
  const swath::PixelGeometry geometry(shouldBe);
  std::vector<KnownPixel> known;
  constexpr int parts = 20;
  for (int i = 0; i <= parts; ++i) {
    for (int j = 0; j <= parts; ++j) {
      const swath::PixelPoint pixel{j * (shouldBe.Columns - 1.0) / parts, i * (shouldBe.Rows - 1.0) / parts};
      if (const auto ground = geometry.GroundOf(pixel)) known.push_back({pixel, *ground});
    }
  }
  return MisfitToTruth(is, known);
}

}  // namespace pelorin::tools
