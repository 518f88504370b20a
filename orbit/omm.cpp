#include "orbit/omm.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "orbit/date_time.h"
#include "orbit/element_fields.h"
#include "orbit/julian_date.h"
#include "orbit/number_text.h"
#include "orbit/scalar_math.h"

namespace pelorin::orbit {
namespace {

/// In the order of OmmField. Values beyond the bounds are damage: they would not fit into a two-line set.
struct OmmKeyword {
  std::string_view Text;
  double Least, Most;
};
constexpr std::array<OmmKeyword, kOmmFieldCount> kKeywords{{{"OBJECT_NAME", 0, 0},
                                                            {"NORAD_CAT_ID", 0, 0},
                                                            {"EPOCH", 0, 0},
                                                            {"MEAN_MOTION", 0, 100},
                                                            {"ECCENTRICITY", 0, 1},
                                                            {"INCLINATION", 0, 180},
                                                            {"RA_OF_ASC_NODE", -360, 360},
                                                            {"ARG_OF_PERICENTER", -360, 360},
                                                            {"MEAN_ANOMALY", -360, 360},
                                                            {"ELEMENT_SET_NO", 0, 1e6},
                                                            {"BSTAR", -1e9, 1e9},
                                                            {"MEAN_MOTION_DOT", -1e3, 1e3},
                                                            {"MEAN_MOTION_DDOT", -1e9, 1e9},
                                                            {"OBJECT_ID", 0, 0},
                                                            {"EPHEMERIS_TYPE", 0, 0},
                                                            {"CLASSIFICATION_TYPE", 0, 0},
                                                            {"REV_AT_EPOCH", 0, 0}}};

/// The order in which element services publish them.
constexpr std::array<OmmField, kOmmFieldCount> kCsvOrder{
    kOmmName,          kOmmObjectId,        kOmmEpoch,
    kOmmMeanMotion,    kOmmEccentricity,    kOmmInclination,
    kOmmNode,          kOmmPerigee,         kOmmMeanAnomaly,
    kOmmEphemerisType, kOmmClassification,  kOmmCatalogueNumber,
    kOmmSetNumber,     kOmmRevolution,      kOmmBStar,
    kOmmMeanMotionDot, kOmmMeanMotionDotDot};

ConvertError Unreadable(OmmField field) {
  return ConvertError("its " + std::string(kKeywords[field].Text) + " is missing or unreadable");
}

double NumberOf(const OmmRecord& record, OmmField field) {
  if (record[field].empty() && field >= kOmmSetNumber) return 0;
  const std::optional<double> value = DecimalNumber(record[field]);
  if (!value || *value < kKeywords[field].Least || *value > kKeywords[field].Most) throw Unreadable(field);
  return *value;
}

/// Whether the text begins as the shape does, in which 9 stands for any digit.
bool HasShape(std::string_view text, std::string_view shape) {
  if (text.size() < shape.size()) return false;
  for (std::size_t i = 0; i < shape.size(); ++i) {
    if (shape[i] == '9' ? text[i] < '0' || text[i] > '9' : text[i] != shape[i]) return false;
  }
  return true;
}

/// The epoch "yyddd.dddddddd" of an ISO 8601 time, its day given by month and day or by the day of the year.
std::optional<double> EpochOfIsoTime(std::string_view text) {
  const bool ordinal = HasShape(text, "9999-999T99:99:99");
  if (!ordinal && !HasShape(text, "9999-99-99T99:99:99")) return std::nullopt;
  const int year = IntegerField(text, 1, 4);
  // The years that two digits stand for.
  if (year < 1957 || year > 2056) return std::nullopt;
  int day = IntegerField(text, 6, 3);
  if (!ordinal) {
    const int month = IntegerField(text, 6, 2), dayOfMonth = IntegerField(text, 9, 2);
    if (month < 1 || month > 12 || dayOfMonth < 1 || dayOfMonth > DaysInMonth(year, month)) {
      return std::nullopt;
    }
    day = DayOfYear(year, month, dayOfMonth);
  }
  std::string_view time = text.substr(ordinal ? 9 : 11);
  if (time.ends_with('Z')) time.remove_suffix(1);
  const int hour = IntegerField(time, 1, 2), minute = IntegerField(time, 4, 2);
  const std::optional<double> second = DecimalNumber(time.substr(6));
  // 60 is a leap second.
  if (day < 1 || day > 366 || hour > 23 || minute > 59 || !second || *second >= 61) return std::nullopt;

  // A two-line set's 0.00000001 day is 864 µs, so a time to the microsecond is as old as the set it is from.
  return year % 100 * 1000 + day + ((hour * 60 + minute) * 60 + *second) / kSecondsPerDay;
}

/// 1 … 9 digits, filled up to the 5 of two-line sets; empty if the text is none.
std::string CatalogueNumberOf(std::string_view text) {
  text = Trimmed(text);
  text.remove_prefix(std::min(text.find_first_not_of('0'), text.size()));
  if (text.empty() || text.size() > 9 || text.find_first_not_of("0123456789") != std::string_view::npos) {
    return {};
  }
  return std::string(text.size() < 5 ? 5 - text.size() : 0, '0').append(text);
}

/// Takes what stands before a character, and the character, off a text; all of it where there is none.
std::string_view TakeUntil(std::string_view& text, char end) {
  const std::size_t at = std::min(text.find(end), text.size());
  const std::string_view taken = text.substr(0, at);
  text.remove_prefix(std::min(at + 1, text.size()));
  return taken;
}

/// Takes the first cell and its comma off a row; whether there was a comma, and so is another cell. Quotes
/// inside quotes are doubled.
bool TakeCell(std::string_view& row, std::string& cell) {
  row.remove_prefix(std::min(row.find_first_not_of(" \t"), row.size()));
  if (!row.starts_with('"')) {
    const bool isMore = row.find(',') != std::string_view::npos;
    cell = Trimmed(TakeUntil(row, ','));
    return isMore;
  }
  for (cell.clear(); row.starts_with('"');) {
    row.remove_prefix(1);
    cell += TakeUntil(row, '"');
    if (row.starts_with('"')) cell += '"';
  }
  const bool isMore = row.find(',') != std::string_view::npos;
  TakeUntil(row, ',');
  return isMore;
}

std::string CsvCell(const std::string& text) {
  if (text.find_first_of(",\"") == std::string::npos) return text;
  std::string cell = "\"";
  for (const char character : text) cell.append(character == '"' ? 2 : 1, character);
  return cell + '"';
}

/// Takes the header off a table: its columns, kOmmFieldCount for unknown ones; none if a needed one is
/// missing.
std::vector<OmmField> TakeHeader(std::string_view& text) {
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  std::string_view row;
  std::string cell;
  std::vector<OmmField> columns;
  std::array<bool, kOmmFieldCount> found{};
  for (TakeLine(text, row); !row.empty();) {
    TakeCell(row, cell);
    columns.push_back(OmmFieldOf(UpperCased(cell)));
    if (columns.back() != kOmmFieldCount) found[columns.back()] = true;
  }
  for (int field = 0; field < kOmmSetNumber; ++field) {
    if (!found[static_cast<std::size_t>(field)]) return {};
  }
  return columns;
}

}  // namespace

OmmField OmmFieldOf(std::string_view keyword) {
  std::size_t field = 0;
  while (field < kOmmFieldCount && kKeywords[field].Text != keyword) ++field;
  return static_cast<OmmField>(field);
}

bool IsOmm(const OmmRecord& record) {
  return !Trimmed(record[kOmmName]).empty() && !record[kOmmEpoch].empty() && !record[kOmmMeanMotion].empty();
}

void ReadOmmCsv(std::string_view text, const TakeOmmRecord& take) {
  const std::vector<OmmField> columns = TakeHeader(text);
  if (columns.empty()) return;
  std::string_view row;
  std::string cell;
  OmmRecord record;
  while (TakeLine(text, row)) {
    for (const OmmField column : columns) TakeCell(row, column == kOmmFieldCount ? cell : record[column]);
    if (IsOmm(record)) take(record);
  }
}

bool IsWholeOmmCsv(std::string_view text) {
  if (!text.ends_with('\n')) return false;
  const std::vector<OmmField> columns = TakeHeader(text);
  if (columns.empty()) return false;
  std::string_view row;
  std::string cell;
  while (TakeLine(text, row)) {
    if (Trimmed(row).empty()) continue;
    std::size_t cells = 0;
    // A comma at the end has an empty cell behind it.
    for (bool isMore = true; isMore; ++cells) isMore = TakeCell(row, cell);
    if (cells != columns.size()) return false;
  }
  return true;
}

std::optional<double> OmmEpochRaw(const OmmRecord& record) {
  return EpochOfIsoTime(Trimmed(record[kOmmEpoch]));
}

std::string OmmCsvHeader() {
  std::string header;
  for (const OmmField field : kCsvOrder)
    header.append(header.empty() ? "" : ",").append(kKeywords[field].Text);
  return header;
}

std::string OmmCsvRow(const OmmRecord& record) {
  std::string row;
  for (const OmmField field : kCsvOrder) {
    if (field != kCsvOrder.front()) row += ',';
    row += CsvCell(record[field]);
  }
  return row;
}

void TakeOmm(const OmmRecord& record, TSatellite& satellite) {
  PublishedElements elements;
  elements.CatalogueNumber = CatalogueNumberOf(record[kOmmCatalogueNumber]);
  if (elements.CatalogueNumber.empty()) throw Unreadable(kOmmCatalogueNumber);
  const std::optional<double> epoch = OmmEpochRaw(record);
  if (!epoch) throw Unreadable(kOmmEpoch);
  elements.EpochRaw = *epoch;
  elements.ElementSetNumber = static_cast<int>(NumberOf(record, kOmmSetNumber)) % 1000;
  elements.MeanMotion = NumberOf(record, kOmmMeanMotion);
  elements.MeanMotionDot = NumberOf(record, kOmmMeanMotionDot);
  elements.MeanMotionDotDot = NumberOf(record, kOmmMeanMotionDotDot);
  elements.BStar = NumberOf(record, kOmmBStar);
  elements.Eccentricity = NumberOf(record, kOmmEccentricity);
  elements.Inclination = NumberOf(record, kOmmInclination);
  elements.RightAscensionOfNode = NumberOf(record, kOmmNode);
  elements.ArgumentOfPerigee = NumberOf(record, kOmmPerigee);
  elements.MeanAnomaly = NumberOf(record, kOmmMeanAnomaly);
  satellite.TakeElements(elements);
}

}  // namespace pelorin::orbit
