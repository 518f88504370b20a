#pragma once

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "orbit/element_file.h"

namespace pelorin::tests {

/// A row of a CSV table by column name.
class Row {
 public:
  explicit Row(std::map<std::string, std::string> cells) : cells_(std::move(cells)) {}
  const std::string& Text(const std::string& column) const { return cells_.at(column); }
  double Number(const std::string& column) const { return std::stod(cells_.at(column)); }

 private:
  std::map<std::string, std::string> cells_;
};

inline std::vector<Row> ReadTable(const std::string& name) {
  std::ifstream file(std::filesystem::path(PELORIN_TEST_DATA) / name);
  std::string line, cell;
  std::vector<std::string> header;
  std::vector<Row> rows;
  while (std::getline(file, line)) {
    if (line.ends_with('\r')) line.pop_back();
    std::vector<std::string> cells;
    for (std::istringstream stream(line); std::getline(stream, cell, ',');) cells.push_back(cell);
    if (header.empty()) {
      header = cells;
      continue;
    }
    std::map<std::string, std::string> row;
    for (std::size_t i = 0; i < header.size(); ++i) row[header[i]] = i < cells.size() ? cells[i] : "";
    rows.emplace_back(std::move(row));
  }
  if (rows.empty()) throw std::runtime_error("no rows in " + name);
  return rows;
}

/// The reference set of that name, out of "elements.2li" or another file of test data.
inline orbit::TSatellite ReferenceSatellite(const std::string& name,
                                            const std::string& file = "elements.2li") {
  static std::map<std::string, std::vector<orbit::TSatellite>> files;
  std::vector<orbit::RejectedSet> rejected;
  if (!files.contains(file)) {
    files[file] = orbit::ReadAllElementSets(std::filesystem::path(PELORIN_TEST_DATA) / file, rejected);
  }
  for (const orbit::TSatellite& set : files[file]) {
    if (set.Name == name) return set;
  }
  throw std::runtime_error("no reference set " + name);
}

/// One of the 45 satellites of February 2022 that come with the program.
inline orbit::TSatellite DemonstrationSatellite(const std::string& name) {
  return ReferenceSatellite(name, PELORIN_ELEMENTS);
}

}  // namespace pelorin::tests
