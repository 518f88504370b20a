#include "orbit/element_file.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <unordered_map>

#include "orbit/element_fields.h"
#include "orbit/propagation.h"
#include "orbit/scalar_math.h"

namespace pelorin::orbit {
namespace {

namespace fs = std::filesystem;

std::string PathText(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

std::string ReadWhole(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::error_code error;
  const std::uintmax_t size = fs::file_size(file, error);
  if (!stream || error) throw ReadError("Cannot read the element file " + PathText(file));
  std::string text(size, '\0');
  stream.read(text.data(), static_cast<std::streamsize>(size));
  if (stream.bad()) throw ReadError("Cannot read the element file " + PathText(file));
  text.resize(static_cast<std::size_t>(stream.gcount()));
  return text;
}

/// The next line without its end, or nothing at the end of the text.
bool TakeLine(std::string_view& text, std::string_view& line) {
  line = {};
  if (text.empty()) return false;
  const std::size_t end = text.find('\n');
  line = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return true;
}

bool IsNewer(const TSatellite& a, const TSatellite& b) { return a.Epoch > b.Epoch; }

auto NearerTo(double jd) {
  return [jd](const TSatellite& a, const TSatellite& b) {
    return std::fabs(a.Epoch - jd) < std::fabs(b.Epoch - jd);
  };
}

template <class Better>
std::vector<TSatellite> BestOfEach(const std::vector<TSatellite>& sets, Better better) {
  std::vector<TSatellite> best;
  std::unordered_map<std::string, std::size_t> byNumber;
  for (const TSatellite& set : sets) {
    const bool numbered = set.CatalogueNumber.size() == 5;
    const auto [known, isNew] = byNumber.emplace(numbered ? set.CatalogueNumber : std::string(), best.size());
    if (isNew || !numbered) {
      best.push_back(set);
    } else if (better(set, best[known->second])) {
      best[known->second] = set;
    }
  }
  return best;
}

template <class Better>
const TSatellite* BestSet(const std::vector<TSatellite>& sets, std::string_view name, Better better) {
  const std::string wanted = UpperCased(Trimmed(name));
  const TSatellite* best = nullptr;
  for (const TSatellite& set : sets) {
    if (set.Name == wanted && (!best || better(set, *best))) best = &set;
  }
  return best;
}

}  // namespace

void ReadElementTriples(
    const fs::path& file,
    const std::function<void(std::string_view, std::string_view, std::string_view)>& take) {
  const std::string whole = ReadWhole(file);
  std::string_view rest = whole, name, line1, line2;
  // Editors like to put a byte order mark before the first name.
  if (rest.starts_with("\xEF\xBB\xBF")) rest.remove_prefix(3);
  while (TakeLine(rest, name)) {
    TakeLine(rest, line1);
    TakeLine(rest, line2);
    name = Trimmed(name);
    if (!name.empty() && line1.starts_with('1') && line2.starts_with('2')) take(name, line1, line2);
  }
}

std::vector<fs::path> ElementFilesIn(const fs::path& folder) {
  std::vector<fs::path> plain, tle;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    const std::string extension = UpperCased(PathText(entry->path().extension()));
    std::error_code ignored;
    if (entry->is_directory(ignored)) continue;
    if (extension == ".2LI") plain.push_back(entry->path());
    if (extension == ".TLE") tle.push_back(entry->path());
  }
  std::sort(plain.begin(), plain.end());
  std::sort(tle.begin(), tle.end());
  plain.insert(plain.end(), tle.begin(), tle.end());
  return plain;
}

std::vector<TSatellite> ReadAllElementSets(const fs::path& fileOrFolder, std::vector<RejectedSet>& rejected) {
  std::error_code error;
  const bool folder = fs::is_directory(fileOrFolder, error);
  if (!folder && !fs::exists(fileOrFolder, error)) {
    throw ReadError("There is no element file or folder " + PathText(fileOrFolder));
  }
  std::vector<TSatellite> sets;
  for (const fs::path& file : folder ? ElementFilesIn(fileOrFolder) : std::vector<fs::path>{fileOrFolder}) {
    const std::string fileName = PathText(file.filename());
    ReadElementTriples(file, [&](std::string_view name, std::string_view line1, std::string_view line2) {
      TSatellite satellite;
      satellite.SetIdentity(name, fileName);
      try {
        satellite.ParseElements(line1, line2);
      } catch (const MathError&) {
        satellite.Valid = false;
      }
      if (satellite.Valid && CanPropagate(satellite)) {
        sets.push_back(std::move(satellite));
      } else {
        rejected.push_back({satellite.Name, fileName, "its elements describe no orbit"});
      }
    });
  }
  return sets;
}

const TSatellite* NearestElementSet(const std::vector<TSatellite>& sets, std::string_view name, double jd) {
  return BestSet(sets, name, NearerTo(jd));
}

const TSatellite* NewestElementSet(const std::vector<TSatellite>& sets, std::string_view name) {
  return BestSet(sets, name, IsNewer);
}

std::vector<TSatellite> NewestOfEach(const std::vector<TSatellite>& sets) {
  return BestOfEach(sets, IsNewer);
}

std::vector<TSatellite> NearestOfEach(const std::vector<TSatellite>& sets, double jd) {
  return BestOfEach(sets, NearerTo(jd));
}

}  // namespace pelorin::orbit
