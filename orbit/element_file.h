#pragma once

#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "orbit/satellite.h"

/// Element files: three lines a satellite — name, line 1, line 2 —, lines ended by CR LF or LF, or orbit
/// mean-elements messages as CSV or JSON.
namespace pelorin::orbit {

/// A file or folder that cannot be read; what() names it.
class ReadError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;

  std::string Reason = "it cannot be read";  ///< why the file that somebody has named already is left out
};

/// The forms of element files: three lines a set, or messages as CSV or JSON.
enum class ElementForm { TwoLine, Csv, Json };

/// By the extension of a file's name; any other than ".csv" and ".json" stands for lines.
ElementForm FormOfFile(const std::filesystem::path& file);

/// A set that was found and left out, and why. Without a name: the whole file.
struct RejectedSet {
  std::string Name, File, Reason;
};

using TakeTriple = std::function<void(std::string_view name, std::string_view line1, std::string_view line2)>;
/// Name as it is written, trimmed.
using TakeSet = std::function<void(std::string_view name, TSatellite&& set)>;

/// Calls `take` with name (trimmed), line 1 and line 2 of every triple of a text that looks like a set: a
/// name, a "1" and a "2" at the lines' beginnings. Other triples are passed over as a whole; a missing line
/// shifts all that follow.
void ReadTriplesOf(std::string_view text, const TakeTriple& take);

/// Calls `take` for each set of a text. A set that cannot be read, or has no orbit, goes to `rejected`, as
/// one of the file of that name; a table that holds something else has no sets.
void ReadSetsOf(std::string text, ElementForm form, const std::string& fileName, const TakeSet& take,
                std::vector<RejectedSet>& rejected);

/// The same for a file. Raises ReadError.
void ReadElementSets(const std::filesystem::path& file, const TakeSet& take,
                     std::vector<RejectedSet>& rejected);

/// The element files of a folder: "*.2li", then "*.tle", "*.csv" and "*.json", case aside, each kind in the
/// order of the names. An empty or missing folder has none.
std::vector<std::filesystem::path> ElementFilesIn(const std::filesystem::path& folder);

/// ReadElementSets for a file, or for each element file of a folder. In a folder a file that cannot be read
/// goes to `rejected`. Raises ReadError for a single file that cannot be read, and for what does not exist.
void ReadElementSetsIn(const std::filesystem::path& fileOrFolder, const TakeSet& take,
                       std::vector<RejectedSet>& rejected);

/// The same as a list, in the order read; several sets of one satellite are all kept.
std::vector<TSatellite> ReadAllElementSets(const std::filesystem::path& fileOrFolder,
                                           std::vector<RejectedSet>& rejected);

}  // namespace pelorin::orbit
