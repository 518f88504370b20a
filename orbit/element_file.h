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
};

/// A set that was found and left out, and why. Without a name: the whole file.
struct RejectedSet {
  std::string Name, File, Reason;
};

/// Calls `take` with name (trimmed), line 1 and line 2 of every triple of the file that looks like a set: a
/// name, a "1" and a "2" at the lines' beginnings. Other triples are passed over as a whole; a missing line
/// shifts all that follow. Raises ReadError.
void ReadElementTriples(
    const std::filesystem::path& file,
    const std::function<void(std::string_view name, std::string_view line1, std::string_view line2)>& take);

/// Calls `take` with the name as it is written, trimmed, and the set for each set of a file: of the messages
/// of a "*.csv" or "*.json", of the triples of any other. A set that cannot be read, or has no orbit, goes to
/// `rejected`; a table that holds something else has no sets. Raises ReadError.
void ReadElementSets(const std::filesystem::path& file,
                     const std::function<void(std::string_view name, TSatellite&& set)>& take,
                     std::vector<RejectedSet>& rejected);

/// The element files of a folder: "*.2li", then "*.tle", "*.csv" and "*.json", case aside, each kind in the
/// order of the names. An empty or missing folder has none.
std::vector<std::filesystem::path> ElementFilesIn(const std::filesystem::path& folder);

/// ReadElementSets for a file, or for each element file of a folder. In a folder a file that cannot be read
/// goes to `rejected`. Raises ReadError for a single file that cannot be read, and for what does not exist.
void ReadElementSetsIn(const std::filesystem::path& fileOrFolder,
                       const std::function<void(std::string_view name, TSatellite&& set)>& take,
                       std::vector<RejectedSet>& rejected);

/// The same as a list, in the order read; several sets of one satellite are all kept.
std::vector<TSatellite> ReadAllElementSets(const std::filesystem::path& fileOrFolder,
                                           std::vector<RejectedSet>& rejected);

}  // namespace pelorin::orbit
