#include "swath/decoder_product_fields.h"

#include <algorithm>
#include <cmath>

namespace pelorin::swath {
namespace {

constexpr int kMostColumns = 20000, kMostStamps = 100000, kMostRowsPerStamp = 1000;
constexpr double kWholeTurnDeg = 360, kWidestDeg = 150, kMostLateS = 86400;
/// Between the centres of the outermost of 2,048 samples: the handbook's step of 0.0541°.
constexpr double kZonesDeg = 110.74;

/// METEOR-M's low-rate pictures come in rows of packets, 8 lines each, at the instrument's own period.
constexpr int kPacketRows = 8;
constexpr double kPacketS = 1.231141;
constexpr QLatin1StringView kPacketInstrument("msu_mr");

bool HasPacketRows(const DecoderField& root, int rowsPerStamp) {
  return rowsPerStamp == kPacketRows && root["instrument"].Text() == kPacketInstrument;
}

/// Finishes stamps for so many rows each; null when there are none.
std::shared_ptr<const LineStamps> StampsOf(const DecoderField& root, LineStamps stamps) {
  if (stamps.UnixS.empty()) return nullptr;
  if (HasPacketRows(root, stamps.RowsPerStamp)) {
    stamps.RowS = kPacketS / kPacketRows;
    stamps.RowIsExact = true;
  }
  return std::make_shared<const LineStamps>(std::move(stamps));
}

/// The newer form, which keeps them with the geometry.
std::shared_ptr<const LineStamps> StampsOfGeometry(const DecoderField& root) {
  const DecoderField geometry = root["projection_cfg"], filter = geometry["timefilter"];
  LineStamps stamps;
  stamps.UnixS = geometry["timestamps"].Numbers(kMostStamps);
  stamps.RowsPerStamp =
      std::max(geometry["interpolate_timestamps"].Whole(-1, kMostRowsPerStamp).value_or(1), 1);
  stamps.RowS = geometry["interpolate_timestamps_scantime"].Number(0, kMostLateS).value_or(0);
  if (filter["type"].Text() == QStringLiteral("simple")) {
    if (stamps.RowS == 0) {
      stamps.RowS = filter["scan_time"].Number(0, kMostLateS).value_or(0) / stamps.RowsPerStamp;
    }
    const auto mostJump = filter["max_diff"].Number(0, kMostLateS);
    if (mostJump) stamps.MostJumpS = *mostJump;
  }
  return StampsOf(root, std::move(stamps));
}

/// The older forms: `owner` is the product or one of its pictures.
std::shared_ptr<const LineStamps> OlderStamps(const DecoderField& root, const DecoderField& owner) {
  if (!root["has_timestamps"].IsMissing() && !root["has_timestamps"].Flag()) return nullptr;
  constexpr int perRow = 0, perGroup = 1;
  LineStamps stamps;
  stamps.UnixS = owner["timestamps"].Numbers(kMostStamps);
  if (stamps.UnixS.empty()) return nullptr;
  const auto kindOf = [](const DecoderField& field) {
    return field["timestamps_type"].Whole(-1, kMostStamps);
  };
  const auto groupOf = [](const DecoderField& field) {
    return field["ifov_y"].Whole(-1, kMostRowsPerStamp).value_or(-1);
  };
  int perStamp = std::max(groupOf(owner), groupOf(root));
  if (perStamp < 1 && root["instrument"].Text() == kPacketInstrument) perStamp = kPacketRows;
  const auto kind = kindOf(owner) ? kindOf(owner) : kindOf(root);
  const int meant = kind.value_or(groupOf(owner) > 1 ? perGroup : perRow);
  if (meant == perGroup && perStamp >= 1) {
    stamps.RowsPerStamp = perStamp;
  } else if (meant != perRow) {
    return nullptr;
  }
  return StampsOf(root, std::move(stamps));
}

void ReadElements(const DecoderField& elements, DecodedProduct& product) {
  const auto line = [&](const char* key) { return elements[key].Text().value_or(QString()).trimmed(); };
  const QString line1 = line("line1"), line2 = line("line2");
  if (line1.startsWith(QStringLiteral("1 ")) && line2.startsWith(QStringLiteral("2 "))) {
    product.ElementLine1 = line1;
    product.ElementLine2 = line2;
    product.CatalogueNumber = line1.mid(2, 5).trimmed();
  }
  const auto number = elements["norad"].Whole(-1, 999999999);
  if (number && *number > 0) product.CatalogueNumber = QString::number(*number);
  product.Satellite = line("name");
}

bool IsOlder(const DecoderField& root) {
  for (const char* key : {"tle", "timestamps", "has_timestamps", "timestamps_type"}) {
    if (!root[key].IsMissing()) return true;
  }
  const auto images = root["images"].Items(kMostImages);
  return std::any_of(images.begin(), images.end(),
                     [](const DecoderField& image) { return !image["timestamps"].IsMissing(); });
}

/// What keeps us from taking over the geometry; empty when nothing does.
QString ProblemOf(const DecoderField& geometry, const QString& type, bool isOlder) {
  if (geometry.IsMissing()) return QStringLiteral("its decoder wrote no geometry");
  if (isOlder) return QStringLiteral("it has an older form, whose angles are counted in another way");
  for (const char* key : {"rotate_yaw", "normal_per_ifov"}) {
    if (!geometry[key].IsMissing()) {
      return QStringLiteral("its geometry has \"%1\", which is not supported").arg(QLatin1StringView(key));
    }
  }
  if (type == QStringLiteral("normal_single_line") || type == QStringLiteral("noaa_apt_single_line"))
    return {};
  return QStringLiteral("its geometry is of the type \"%1\", which is not supported").arg(type);
}

DecodedGeometry GeometryOf(const DecoderField& field, const QString& type) {
  DecodedGeometry geometry;
  const auto columns = field["image_width"].Whole(2, kMostColumns);
  const auto angle = field["scan_angle"].Number(1, kWidestDeg);
  if (type == QStringLiteral("noaa_apt_single_line")) {
    if (columns.value_or(kZoneColumns) != kZoneColumns) {
      field["image_width"].Fail(QStringLiteral("must be %1 for zones").arg(kZoneColumns));
    }
    geometry.Line = {kZoneColumns, angle.value_or(kZonesDeg), ScanLaw::Zones};
  } else {
    if (!columns) field["image_width"].Fail(QStringLiteral("is missing"));
    if (!angle) field["scan_angle"].Fail(QStringLiteral("is missing"));
    geometry.Line = {*columns, *angle, ScanLaw::EvenAngles};
  }
  const auto degrees = [&](const char* key) {
    return field[key].Number(-kWholeTurnDeg, kWholeTurnDeg).value_or(0);
  };
  geometry.Offsets = {degrees("roll_offset"), degrees("pitch_offset"), degrees("yaw_offset")};
  geometry.TimeOffsetS = field["timestamp_offset"].Number(-kMostLateS, kMostLateS).value_or(0);
  geometry.InvertScan = field["invert_scan"].Flag();
  return geometry;
}

/// Other decoders' conventions, or instruments that look to a side.
bool IsTurnedTooFar(const Attitude& offsets) {
  return std::max({std::abs(offsets.RollDeg), std::abs(offsets.PitchDeg), std::abs(offsets.YawDeg)}) >
         kMostTurnedDeg;
}

}  // namespace

DecodedProduct ReadProductFields(const DecoderField& root, const QString& path) {
  DecodedProduct product;
  product.File = path;
  product.Instrument = root["instrument"].Text().value_or(QString());
  product.StartUnixS = root["product_timestamp"].Number(-1e12, 1e12);
  if (product.StartUnixS.value_or(0) <= 0) product.StartUnixS.reset();

  const DecoderField field = root["projection_cfg"];
  product.IsOlderForm = IsOlder(root);
  ReadElements(field["tle"].IsMissing() ? root["tle"] : field["tle"], product);
  if (product.Satellite.isEmpty()) product.Satellite = root["product_source"].Text().value_or(QString());

  const QString type = field["type"].Text().value_or(QString());
  QString problem = ProblemOf(field, type, product.IsOlderForm);
  if (problem.isEmpty()) {
    product.Geometry = GeometryOf(field, type);
    if (!IsTurnedTooFar(product.Geometry->Offsets)) return product;
    product.Geometry.reset();
    problem =
        QStringLiteral("its scanner is turned by more than %1°, which is not supported").arg(kMostTurnedDeg);
  }
  product.GeometryProblem =
      QStringLiteral("%1: %2. The angles of the table of scanners are used instead.").arg(path, problem);
  return product;
}

std::shared_ptr<const LineStamps> ReadProductStamps(const DecoderField& root) {
  auto stamps = StampsOfGeometry(root);
  return stamps ? stamps : OlderStamps(root, root);
}

std::shared_ptr<const LineStamps> ReadImageStamps(const DecoderField& root, const DecoderField& image) {
  return OlderStamps(root, image);
}

void ReadTransform(const DecoderField& transform, DecodedImage& image) {
  constexpr double most = 1e6;
  if (transform.IsMissing()) return;
  if (!transform.IsObject()) {
    image.IsWarped = true;
    return;
  }
  const auto number = [&](const char* key) { return transform[key].Number(-most, most); };
  for (const QString& key : transform.Keys()) {
    static const QStringList known = QStringLiteral("type ax ay bx by").split(u' ');
    if (!known.contains(key)) image.IsWarped = true;
  }
  if (image.IsWarped || number("ax").value_or(1) != 1 || number("ay").value_or(1) != 1) {
    image.IsWarped = true;
    return;
  }
  image.FirstColumn = number("bx").value_or(0);
  image.FirstRow = number("by").value_or(0);
}

}  // namespace pelorin::swath
