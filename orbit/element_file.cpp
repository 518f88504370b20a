#include "orbit/element_file.h"

#include <algorithm>
#include <array>
#include <fstream>

#include "orbit/element_fields.h"
#include "orbit/omm.h"
#include "orbit/propagation.h"
#include "orbit/scalar_math.h"

namespace pelorin::orbit {
namespace {

namespace fs = std::filesystem;

const char* const kNoOrbit = "its elements describe no orbit";
/// Ten times all that is catalogued: a longer file is something else that lies in the folder.
constexpr std::uintmax_t kMostElementBytes = 256 << 20;

std::string PathText(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

/// The extension in capitals.
std::string KindOf(const fs::path& file) { return UpperCased(PathText(file.extension())); }

std::string ReadWhole(const fs::path& file) {
  std::error_code error;
  // To open a pipe would be to wait for its writer.
  if (fs::exists(file, error) && !fs::is_regular_file(file, error)) {
    ReadError noFile("Cannot read the element file " + PathText(file) + ": it is no regular file");
    noFile.Reason = "it is no regular file";
    throw noFile;
  }
  std::ifstream stream(file, std::ios::binary);
  const std::uintmax_t size = fs::file_size(file, error);
  if (!stream || error) throw ReadError("Cannot read the element file " + PathText(file));
  if (size > kMostElementBytes) {
    const std::string reason = "it has " + std::to_string(size) + " bytes; at most " +
                               std::to_string(kMostElementBytes) + " can be read";
    ReadError tooLong("Cannot read the element file " + PathText(file) + ": " + reason);
    tooLong.Reason = reason;
    throw tooLong;
  }
  std::string text(size, '\0');
  stream.read(text.data(), static_cast<std::streamsize>(size));
  if (stream.bad()) throw ReadError("Cannot read the element file " + PathText(file));
  text.resize(static_cast<std::size_t>(stream.gcount()));
  return text;
}

}  // namespace

ElementForm FormOfFile(const fs::path& file) {
  const std::string kind = KindOf(file);
  return kind == ".CSV" ? ElementForm::Csv : kind == ".JSON" ? ElementForm::Json : ElementForm::TwoLine;
}

void ReadTriplesOf(std::string_view text, const TakeTriple& take) {
  std::string_view name, line1, line2;
  // Editors like to put a byte order mark before the first name.
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  while (TakeLine(text, name)) {
    TakeLine(text, line1);
    TakeLine(text, line2);
    name = Trimmed(name);
    if (!name.empty() && line1.starts_with('1') && line2.starts_with('2')) take(name, line1, line2);
  }
}

void ReadSetsOf(std::string text, ElementForm form, const std::string& fileName, const TakeSet& take,
                std::vector<RejectedSet>& rejected) {
  const auto takeFrom = [&](std::string_view name, const auto& source) {
    TSatellite set;
    set.SetIdentity(name, fileName);
    std::string reason = kNoOrbit;
    try {
      source(set);
      if (CanPropagate(set)) {
        take(name, std::move(set));
        return;
      }
    } catch (const ConvertError& error) {
      reason = error.what();
    } catch (const MathError&) {
      // The elements describe no orbit.
    }
    rejected.push_back({set.Name, fileName, reason});
  };
  const auto takeMessage = [&](const OmmRecord& record) {
    takeFrom(Trimmed(record[kOmmName]), [&](TSatellite& set) { TakeOmm(record, set); });
  };
  switch (form) {
    case ElementForm::Csv:
      ReadOmmCsv(text, takeMessage);
      return;
    case ElementForm::Json:
      ReadOmmJson(std::move(text), takeMessage);
      return;
    case ElementForm::TwoLine:
      ReadTriplesOf(text, [&](std::string_view name, std::string_view line1, std::string_view line2) {
        takeFrom(name, [&](TSatellite& set) { set.ParseElements(line1, line2); });
      });
  }
}

void ReadElementSets(const fs::path& file, const TakeSet& take, std::vector<RejectedSet>& rejected) {
  ReadSetsOf(ReadWhole(file), FormOfFile(file), PathText(file.filename()), take, rejected);
}

std::vector<fs::path> ElementFilesIn(const fs::path& folder) {
  constexpr std::array<std::string_view, 4> kinds{".2LI", ".TLE", ".CSV", ".JSON"};
  std::vector<std::pair<std::size_t, fs::path>> found;
  std::error_code error;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    const auto kind = std::find(kinds.begin(), kinds.end(), KindOf(entry->path()));
    std::error_code ignored;
    if (kind == kinds.end() || entry->is_directory(ignored)) continue;
    found.emplace_back(kind - kinds.begin(), entry->path());
  }
  std::sort(found.begin(), found.end());
  std::vector<fs::path> files;
  for (auto& [kind, file] : found) files.push_back(std::move(file));
  return files;
}

void ReadElementSetsIn(const fs::path& fileOrFolder, const TakeSet& take,
                       std::vector<RejectedSet>& rejected) {
  std::error_code error;
  if (!fs::is_directory(fileOrFolder, error)) {
    if (!fs::exists(fileOrFolder, error)) {
      throw ReadError("There is no element file or folder " + PathText(fileOrFolder));
    }
    ReadElementSets(fileOrFolder, take, rejected);
    return;
  }
  for (const fs::path& file : ElementFilesIn(fileOrFolder)) {
    try {
      ReadElementSets(file, take, rejected);
    } catch (const ReadError& failure) {
      rejected.push_back({{}, PathText(file.filename()), failure.Reason});
    }
  }
}

std::vector<TSatellite> ReadAllElementSets(const fs::path& fileOrFolder, std::vector<RejectedSet>& rejected) {
  std::vector<TSatellite> sets;
  ReadElementSetsIn(
      fileOrFolder, [&sets](std::string_view, TSatellite&& set) { sets.push_back(std::move(set)); },
      rejected);
  return sets;
}

}  // namespace pelorin::orbit
