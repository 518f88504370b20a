#pragma once

#include <QStringList>
#include <string>
#include <string_view>
#include <vector>

#include "orbit/satellite.h"
#include "swath/scanner.h"

namespace pelorin::swath {

/// The scanners that are known: those that come with the program, and a user's own.
///
/// A table is a file in JSON, described in docs/formats.md. What is wrong in it is told with its line and
/// key, and the rest is used.
class ScannerTable {
 public:
  /// Takes over the scanners of a table. One whose name is known already takes the other's place; satellites
  /// that it does not list keep their entries. Answers what was wrong, a line each: "scanners.json, line 12:
  /// \"columns\" must be …".
  std::vector<std::string> Add(const std::string& json, const std::string& fileName);

  /// In the order in which they came.
  const std::vector<Scanner>& Scanners() const { return scanners_; }

  /// By its name, case aside; null when there is none.
  const Scanner* Find(std::string_view name) const;

  /// A scanner, and the satellite's entry in it.
  struct Flown {
    const Scanner* Instrument;
    const Carrier* Satellite;

    LineShape Line() const;
  };
  /// The scanners that a satellite carries: entries of later tables first, those of one in its order. Its
  /// catalogue number counts; a number without an entry is known by the longest beginning of its name.
  /// Borrowed from the table.
  std::vector<Flown> Of(const orbit::TSatellite& satellite) const;

  /// The catalogue number of the one satellite that sends pictures of that width on a frequency (Doppler
  /// aside); empty for none, and for several.
  std::string SentOn(double frequencyMHz, int columns) const;

 private:
  std::vector<Scanner> scanners_;
  int tables_ = 0;  ///< that were added
};

/// The scanners of several files, the later ones adding to the earlier or replacing what is in them; a file
/// that is not there is passed over. `problems` takes what Add tells, and what cannot be read.
ScannerTable LoadScannerTables(const QStringList& paths, std::vector<std::string>& problems);

}  // namespace pelorin::swath
