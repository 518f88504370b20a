#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "orbit/satellite.h"

/// Orbit mean-elements messages (CCSDS 502.0-B) as element services publish them, as CSV with a header line
/// and as JSON.
namespace pelorin::orbit {

/// The keywords that are known.
enum OmmField {
  kOmmName,
  kOmmCatalogueNumber,
  kOmmEpoch,
  kOmmMeanMotion,
  kOmmEccentricity,
  kOmmInclination,
  kOmmNode,
  kOmmPerigee,
  kOmmMeanAnomaly,
  kOmmSetNumber,  // this and what follows may be missing
  kOmmBStar,
  kOmmMeanMotionDot,
  kOmmMeanMotionDotDot,
  kOmmObjectId,  // this and what follows is kept, and not looked at
  kOmmEphemerisType,
  kOmmClassification,
  kOmmRevolution,
  kOmmFieldCount
};

/// The values of one message as they are written; empty where there is none.
using OmmRecord = std::array<std::string, kOmmFieldCount>;
using TakeOmmRecord = std::function<void(const OmmRecord&)>;

/// The field of a keyword in capitals, or kOmmFieldCount.
OmmField OmmFieldOf(std::string_view keyword);

/// Whether the record has a name, an epoch and a mean motion: without them it is something else.
bool IsOmm(const OmmRecord& record);

/// Calls `take` for every row that is a message. Columns are found by the header's
/// keywords; a table without a needed one has no messages. A row is a line, so damage does not spread.
void ReadOmmCsv(std::string_view text, const TakeOmmRecord& take);

/// Whether nothing is cut off: the needed columns are there, every row has a cell for each column, and the
/// last line has its end.
bool IsWholeOmmCsv(std::string_view text);

/// The same for the objects of an array, or a single one. After damage it goes on with the next object.
void ReadOmmJson(std::string text, const TakeOmmRecord& take);

/// Takes a message over. Raises ConvertError, which names the keyword, for a value that is missing,
/// unreadable or beyond what elements can be, and MathError as TSatellite::TakeElements does.
void TakeOmm(const OmmRecord& record, TSatellite& satellite);

/// The epoch of a message as "yyddd.dddddddd"; nothing if it is no time from 1957 to 2056.
std::optional<double> OmmEpochRaw(const OmmRecord& record);

/// The header of a CSV file with every known keyword in the order of element services, and a record as a row
/// of it; both without a line's end.
std::string OmmCsvHeader();
std::string OmmCsvRow(const OmmRecord& record);

}  // namespace pelorin::orbit
