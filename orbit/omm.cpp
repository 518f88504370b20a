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
                                                            {"MEAN_MOTION_DDOT", -1e9, 1e9}}};

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

/// Takes the first cell and its comma off a row. Quotes inside quotes are doubled.
void TakeCell(std::string_view& row, std::string& cell) {
  row.remove_prefix(std::min(row.find_first_not_of(" \t"), row.size()));
  if (!row.starts_with('"')) {
    cell = Trimmed(TakeUntil(row, ','));
    return;
  }
  for (cell.clear(); row.starts_with('"');) {
    row.remove_prefix(1);
    cell += TakeUntil(row, '"');
    if (row.starts_with('"')) cell += '"';
  }
  TakeUntil(row, ',');
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
    if (!found[static_cast<std::size_t>(field)]) return;
  }
  OmmRecord record;
  while (TakeLine(text, row)) {
    for (const OmmField column : columns) TakeCell(row, column == kOmmFieldCount ? cell : record[column]);
    if (IsOmm(record)) take(record);
  }
}

void TakeOmm(const OmmRecord& record, TSatellite& satellite) {
  PublishedElements elements;
  elements.CatalogueNumber = CatalogueNumberOf(record[kOmmCatalogueNumber]);
  if (elements.CatalogueNumber.empty()) throw Unreadable(kOmmCatalogueNumber);
  const std::optional<double> epoch = EpochOfIsoTime(Trimmed(record[kOmmEpoch]));
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
