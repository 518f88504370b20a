#include "overlay/opened_picture.h"

#include <QDateTime>
#include <QFileInfo>
#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

#include "files/file_error.h"
#include "orbit/julian_date.h"
#include "orbit/look_angles.h"
#include "orbit/propagation.h"
#include "orbit/scalar_math.h"
#include "overlay/overlay_generator.h"
#include "picture/picture_file.h"
#include "picture/whole_line.h"
#include "swath/decoder_product.h"

namespace pelorin::overlay {
namespace {

using swath::DecodedImage;
using swath::DecodedProduct;
using swath::KnownFrom;

const orbit::TDateTime kUnixZero = orbit::MakeDateTime(1970, 1, 1);

orbit::TDateTime FromUnix(double seconds) { return {kUnixZero.Days + seconds / orbit::kSecondsPerDay}; }

/// A picture of a product, by its places in the pass.
struct Place {
  std::size_t Product = 0, Image = 0;
};

bool HasOwnGeometry(const DecodedImage& image) {
  return !image.IsWarped && !image.IsCorrected && !image.IsProjected;
}

/// All pictures of a pass as channels.
std::vector<PictureChannel> ChannelsOf(const swath::DecodedPass& pass, std::vector<Place>& places) {
  std::vector<PictureChannel> channels;
  for (std::size_t p = 0; p < pass.Products.size(); ++p) {
    const DecodedProduct& product = pass.Products[p];
    for (std::size_t i = 0; i < product.Images.size(); ++i) {
      const QString name = product.Images[i].Channel;
      // Channels are called "1" or "ch4", composites by their file.
      const QString caption = product.Images[i].IsComposite ? name : QStringLiteral("Channel %1").arg(name);
      channels.push_back({pass.Products.size() > 1 && !product.Instrument.isEmpty()
                              ? product.Instrument + u' ' + caption
                              : caption,
                          product.Images[i].Path});
      places.push_back({p, i});
    }
  }
  return channels;
}

/// The one that a path means, or else the first that a map can lie on.
std::size_t ChosenPlace(const swath::DecodedPass& pass, const std::vector<Place>& places) {
  for (std::size_t i = 0; i < places.size(); ++i) {
    if (pass.Image >= 0 && places[i].Product == 0 &&
        places[i].Image == static_cast<std::size_t>(pass.Image)) {
      return i;
    }
  }
  const auto first = std::ranges::find_if(places, [&](const Place& place) {
    return HasOwnGeometry(pass.Products[place.Product].Images[place.Image]);
  });
  return first == places.end() ? 0 : static_cast<std::size_t>(first - places.begin());
}

/// Two channels of a scanner, neither stretched nor shifted against each other.
bool LieAlike(const swath::DecodedPass& pass, const Place& one, const Place& other) {
  const DecodedImage& a = pass.Products[one.Product].Images[one.Image];
  const DecodedImage& b = pass.Products[other.Product].Images[other.Image];
  return one.Product == other.Product && HasOwnGeometry(a) && HasOwnGeometry(b) && !a.IsComposite &&
         !b.IsComposite && a.FirstColumn == b.FirstColumn && a.FirstRow == b.FirstRow;
}

/// The set that a product was decoded with; nothing when it is none.
std::optional<orbit::TSatellite> SetOf(const DecodedProduct& product) {
  if (product.ElementLine1.isEmpty()) return std::nullopt;
  orbit::TSatellite set;
  set.SetIdentity(product.Satellite.toStdString(), product.File.toStdString());
  try {
    set.ParseElements(product.ElementLine1.toStdString(), product.ElementLine2.toStdString());
  } catch (const orbit::MathError&) {
    return std::nullopt;
  }
  return orbit::CanPropagate(set) ? std::optional(set) : std::nullopt;
}

/// Takes the moments of a picture's rows over.
void TakeStamps(const std::vector<double>& unixS, OpenedPicture& opened) {
  const auto first = std::ranges::find_if(unixS, [](double stamp) { return std::isfinite(stamp); });
  if (first == unixS.end()) return;
  auto times = std::make_shared<std::vector<double>>();
  for (const double stamp : unixS) times->push_back(stamp - *first);
  opened.Known.Start = FromUnix(*first);
  opened.Known.StartIsFrom = swath::StartFrom::Stamps;
  opened.Known.LineTimesS = std::move(times);
  opened.HasStart = true;
}

/// Where a picture's lines have the geometry's first column; nothing when its width is not of it.
std::optional<int> FirstColumnIn(const swath::LineShape& line, const DecodedImage& image, int columns) {
  if (line.Law != swath::ScanLaw::EvenAngles) return swath::FirstColumnOf(line, columns);
  // A channel that is shifted against the others may have been cut to what they share.
  const int shift = static_cast<int>(std::lround(image.FirstColumn));
  return std::abs(columns - line.Columns) <= 2 * std::abs(shift) ? std::optional(-shift) : std::nullopt;
}

void TakeGeometry(const DecodedProduct& product, const DecodedImage& image, OpenedPicture& opened) {
  if (!product.Geometry) return;
  const swath::DecodedGeometry& geometry = *product.Geometry;
  swath::Recording& known = opened.Known;
  const auto first = FirstColumnIn(geometry.Line, image, known.Columns);
  if (!first && opened.Problem.isEmpty()) {
    opened.Problem = QStringLiteral(
                         "%1 has %2 columns, but its product %3: it was cut or scaled, or is no picture "
                         "of the scanner, and no map can lie on it.")
                         .arg(QFileInfo(image.Path).fileName())
                         .arg(known.Columns)
                         .arg(geometry.Line.Columns);
  }
  known.SeenBy.Name = product.Instrument.toStdString();
  known.SeenBy.Line = geometry.Line;
  known.ScannerIsFrom = KnownFrom::Product;
  known.FirstColumn = first.value_or(0);
  known.Offsets = geometry.Offsets;
  known.OffsetsAreFrom = KnownFrom::Product;
  known.OffsetS = geometry.TimeOffsetS;
  known.Lies.Mirrored = geometry.InvertScan;
}

void TakeProduct(const DecodedProduct& product, std::size_t image, OpenedPicture& opened) {
  const DecodedImage& picture = product.Images[image];
  opened.Satellite = product.Satellite;
  opened.CatalogueNumber = product.CatalogueNumber;
  opened.OwnSet = SetOf(product);
  opened.Known.LiesIsFrom = KnownFrom::Product;
  TakeStamps(swath::LineStampsOf(product, static_cast<int>(image), opened.Image.height()), opened);
  if (!opened.HasStart && product.StartUnixS) {
    opened.Known.Start = FromUnix(*product.StartUnixS);
    opened.Known.StartIsFrom = swath::StartFrom::NameSecond;
    opened.HasStart = true;
  }
  if (picture.IsCorrected || picture.IsWarped) {
    opened.Problem =
        QStringLiteral(
            "%1 was stretched after it was received: it no longer has the scanner's geometry, and "
            "no map can lie on it. Please open one of the plain channels of the same folder.")
            .arg(QFileInfo(picture.Path).fileName());
  }
  if (!product.GeometryProblem.isEmpty() && !product.IsOlderForm)
    opened.Notes.append(product.GeometryProblem);
  TakeGeometry(product, picture, opened);
}

/// What the name tells, where the product has not told it.
void TakeName(const ClockOfYear& local, OpenedPicture& opened) {
  const swath::PictureName& name = opened.Name;
  const QFileInfo file(opened.Channel.Path);
  if (opened.Satellite.isEmpty()) opened.Satellite = name.Satellite;
  if (name.IsProjected) {
    opened.Notes.append(
        QStringLiteral("%1 has a map drawn in it already, by its name.").arg(file.fileName()));
  }
  if (name.IsCorrected && opened.Problem.isEmpty()) {
    opened.Problem =
        QStringLiteral(
            "%1 was stretched to equal distances on the ground, by its name: no map can lie on it. "
            "Please open the plain picture.")
            .arg(file.fileName());
  }
  if (opened.HasStart) return;
  // A proposal for who is asked.
  opened.Known.Start = FromUnix(static_cast<double>(file.lastModified().toSecsSinceEpoch()));
  if (!name.Start) return;
  std::optional<orbit::TDateTime> start = name.Start;
  if (!name.YearIsKnown) {
    const swath::YearOfFile year = swath::YearByFile(name, file.lastModified());
    // A file is not older than its picture: of New Year's Eve it is the year before.
    start = swath::InYear(*name.Start, year.IsPossible ? year.Year : year.Year - 1);
  }
  if (!start) return;
  opened.Known.Start = *start;
  opened.Known.StartIsFrom = name.SecondIsKnown ? swath::StartFrom::NameSecond : swath::StartFrom::NameMinute;
  if (name.YearIsKnown && opened.Known.LiesIsFrom == KnownFrom::Default) {
    // Decoders write pictures as they are received; who names them by month and minute turns them.
    opened.Known.LiesIsFrom = KnownFrom::Name;
  }
  opened.HasStart = true;
  if (name.IsUtc) return;
  const ClockOffsets clock = local(TakeApart(opened.Known.Start).Year);
  for (const int minutes : {clock.StandardMinutes, clock.DaylightMinutes}) {
    const orbit::TDateTime other{opened.Known.Start.Days - minutes / orbit::kMinutesPerDay};
    if (minutes != 0 && (opened.OtherStarts.empty() || opened.OtherStarts.back() != other)) {
      opened.OtherStarts.push_back(other);
    }
  }
}

/// Whether the satellite was above the station's horizon while the picture was received. What elements of
/// another month tell of that is not known: then true.
bool WasInSight(const swath::Recording& recording, const orbit::Observer& station) {
  constexpr double longestDays = 30, stepS = 30;
  const orbit::TDateTime start = recording.FirstLine();
  const orbit::TSatellite& set = *recording.Elements;
  if (std::fabs(orbit::JulianDateOfMoment(start) - set.Epoch) > longestDays) return true;
  const orbit::ElevationFrame frame(station);
  const double lengthS = recording.LengthS();
  for (double seconds = 0; seconds <= lengthS + stepS; seconds += stepS) {
    const double jd = orbit::JulianDateOfMoment({start.Days + seconds / orbit::kSecondsPerDay});
    if (frame.Elevation(orbit::SatelliteStateKm(set, jd).Position, jd) >= 0) return true;
  }
  return false;
}

/// The product says that its lines are as wide as the picture.
bool IsOfColumns(const swath::DecodedPass& pass, const Place& place, const QImage& picture) {
  const auto& geometry = pass.Products[place.Product].Geometry;
  return geometry && geometry->Line.Columns == picture.width();
}

/// Whole lines of the old format have two pictures, and each becomes a channel.
void CutInTwo(int half, OpenedPicture& opened) {
  const int side = std::clamp(half, 0, 1);
  opened.Image = picture::CutWholeLines(opened.Image)[static_cast<std::size_t>(side)];
  std::vector<PictureChannel> channels;
  for (const PictureChannel& channel : opened.Channels) {
    if (channel.Path != opened.Channel.Path) {
      channels.push_back(channel);
      continue;
    }
    const QString of = opened.Channels.size() > 1 ? u' ' + channel.Name : QString();
    channels.push_back({QStringLiteral("Left picture") + of, channel.Path, 0});
    channels.push_back({QStringLiteral("Right picture") + of, channel.Path, 1});
    opened.Channel = channels[channels.size() - 2 + static_cast<std::size_t>(side)];
  }
  opened.Channels = std::move(channels);
}

}  // namespace

OpenedPicture OpenPicture(const QString& path, const ClockOfYear& local, const swath::ScannerTable& scanners,
                          int half) {
  OpenedPicture opened;
  QString productProblem;
  const std::optional<swath::DecodedPass> pass = swath::ReadDecodedPass(path, &productProblem);
  std::vector<Place> places;
  std::size_t chosen = 0;
  if (pass) {
    opened.Channels = ChannelsOf(*pass, places);
    chosen = ChosenPlace(*pass, places);
    for (std::size_t i = 0; i < places.size(); ++i) {
      opened.Channels[i].LiesAlike = LieAlike(*pass, places[chosen], places[i]);
    }
    opened.Notes = pass->Problems;
  } else if (QFileInfo(path).isDir()) {
    throw files::FileError(
        QStringLiteral("There is no product.cbor and no dataset.json in %1, as decoders leave "
                       "them with the pictures of a pass. Please open a picture in it.")
            .arg(path));
  } else {
    opened.Channels = {{QFileInfo(path).fileName(), path, half}};
  }
  if (!productProblem.isEmpty())
    opened.Notes.append(productProblem + QStringLiteral(". The picture is taken as its name tells."));
  opened.Channel = opened.Channels[chosen];
  const picture::LoadedPicture loaded = picture::LoadRecording(opened.Channel.Path);
  opened.Image = loaded.Image;
  if (!loaded.Damage.isEmpty()) opened.Notes.append(loaded.Damage);
  if (picture::HoldsWholeLines(opened.Image.width()) &&
      !(pass && IsOfColumns(*pass, places[chosen], opened.Image))) {
    CutInTwo(half, opened);
  }
  opened.Name = swath::ReadPictureName(opened.Channel.Path);
  opened.Known.Rows = opened.Image.height();
  opened.Known.Columns = opened.Image.width();
  if (pass) TakeProduct(pass->Products[places[chosen].Product], places[chosen].Image, opened);
  TakeName(local, opened);
  if (opened.Satellite.isEmpty() && opened.Name.FrequencyMHz) {
    opened.CatalogueNumber =
        QString::fromStdString(scanners.SentOn(*opened.Name.FrequencyMHz, opened.Known.Columns));
  }
  return opened;
}

bool IsOf(const OpenedPicture& opened, const orbit::TSatellite& satellite) {
  if (!opened.CatalogueNumber.isEmpty()) {
    orbit::TSatellite numbered;
    numbered.CatalogueNumber = opened.CatalogueNumber.toStdString();
    if (numbered.CatalogueKey() == satellite.CatalogueKey()) return true;
  }
  const QString name = swath::CommonSatelliteName(opened.Satellite);
  return !name.isEmpty() && name == swath::CommonSatelliteName(QString::fromStdString(satellite.Name));
}

bool IsOfAnother(const OpenedPicture& opened, const orbit::TSatellite& satellite) {
  const bool isTold = !opened.Satellite.isEmpty() || !opened.CatalogueNumber.isEmpty();
  return isTold && !IsOf(opened, satellite);
}

void ForgetProduct(swath::Recording& recording) {
  if (recording.ScannerIsFrom == KnownFrom::Product) recording.ScannerIsFrom = KnownFrom::Default;
  if (recording.OffsetsAreFrom == KnownFrom::Product) {
    recording.OffsetsAreFrom = KnownFrom::Default;
    recording.OffsetS = 0;
  }
}

std::optional<orbit::TSatellite> NearestSet(const std::optional<orbit::TSatellite>& own,
                                            const std::optional<orbit::TSatellite>& listed,
                                            orbit::TDateTime moment) {
  if (!own || !listed) return own ? own : listed;
  const double jd = orbit::JulianDateOfMoment(moment);
  if (std::fabs(listed->Epoch - jd) <= std::fabs(own->Epoch - jd)) return listed;
  orbit::TSatellite named = *own;
  named.Name = listed->Name;
  return named;
}

QImage Restored(const QImage& picture, swath::Stored from, swath::Stored to) {
  const bool isTurned = from.Turned != to.Turned, isMirrored = from.Mirrored != to.Mirrored;
  return isTurned || isMirrored ? picture.mirrored(isTurned != isMirrored, isTurned) : picture;
}

std::optional<PlacedRecording> PlaceRecording(const OpenedPicture& opened, const SetNear& sets,
                                              const swath::ScannerTable& scanners,
                                              const orbit::Observer& station) {
  std::vector<orbit::TDateTime> starts{opened.Known.Start};
  starts.insert(starts.end(), opened.OtherStarts.begin(), opened.OtherStarts.end());
  std::optional<PlacedRecording> first;
  for (const orbit::TDateTime start : starts) {
    PlacedRecording placed{opened.Known, {}, true};
    swath::Recording& recording = placed.Recording;
    recording.Start = start;
    const auto listed = sets(start);
    const bool isOther = listed && IsOfAnother(opened, *listed);
    const auto near = isOther ? listed : NearestSet(opened.OwnSet, listed, start);
    if (!near) return std::nullopt;
    if (isOther) ForgetProduct(recording);
    placed.Match = swath::TakeElements(*near, scanners, recording);
    recording.Satellite = QString::fromStdString(near->Name);
    if (!placed.Match.Problem.isEmpty()) return placed;
    if (recording.StartIsFrom == swath::StartFrom::Stamps && recording.OffsetsAreFrom != KnownFrom::Product) {
      recording.OffsetS = placed.Match.TimeOffsetS;
    }
    const orbit::TDateTime middle{recording.FirstLine().Days +
                                  recording.LengthS() / 2 / orbit::kSecondsPerDay};
    recording.SouthBound = IsSouthBoundAt(*recording.Elements, middle);
    swath::SettleLies(recording);
    // Stamps are of the pass itself, whoever received it.
    placed.WasInSight = recording.StartIsFrom == swath::StartFrom::Stamps || WasInSight(recording, station);
    if (placed.WasInSight) return placed;
    if (!first) first = placed;
  }
  return first;
}

}  // namespace pelorin::overlay
