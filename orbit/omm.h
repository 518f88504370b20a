#pragma once

#include <array>
#include <functional>
#include <string>
#include <string_view>

#include "orbit/satellite.h"

/// Orbit mean-elements messages (CCSDS 502.0-B) as element services publish them, as CSV with a header line
/// and as JSON.
namespace pelorin::orbit {

/// The keywords that are read.
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

/// The same for the objects of an array, or a single one. After damage it goes on with the next object.
void ReadOmmJson(std::string text, const TakeOmmRecord& take);

/// Takes a message over. Raises ConvertError, which names the keyword, for a value that is missing,
/// unreadable or beyond what elements can be, and MathError as TSatellite::TakeElements does.
void TakeOmm(const OmmRecord& record, TSatellite& satellite);

}  // namespace pelorin::orbit
