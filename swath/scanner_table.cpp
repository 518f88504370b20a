#include "swath/scanner_table.h"

#include <QFileInfo>
#include <algorithm>
#include <cctype>
#include <cmath>
#include <functional>
#include <limits>
#include <stdexcept>

#include "files/file_error.h"
#include "files/read_file.h"
#include "orbit/element_fields.h"
#include "swath/located_json.h"

namespace pelorin::swath {
namespace {

using Members = LocatedJson::Members;

constexpr int kMostColumns = 20000;
constexpr double kWidestDeg = 150, kMostLateS = 10;

/// Something that a table's author should mend.
struct Fault : std::runtime_error {
  Fault(int line, const std::string& what)
      : std::runtime_error("line " + std::to_string(line) + ": " + what) {}
};

std::string Quoted(const std::string& key) { return '"' + key + '"'; }

/// Takes members out of an object by their keys.
class Fields {
 public:
  explicit Fields(const LocatedJson& object) : line_(object.Line), members_(object.As<Members>()) {
    if (members_ == nullptr) throw Fault(line_, "an object in braces is expected here");
  }

  int Line() const { return line_; }

  const LocatedJson* Find(const std::string& key) {
    taken_.push_back(key);
    const auto member = members_->find(key);
    return member == members_->end() ? nullptr : &member->second;
  }
  const LocatedJson& Needed(const std::string& key) {
    const LocatedJson* member = Find(key);
    if (member == nullptr) throw Fault(line_, Quoted(key) + " is missing");
    return *member;
  }

  std::string Text(const std::string& key) { return TextOf(key, Needed(key)); }
  double Number(const std::string& key, double least, double most) {
    return NumberOf(key, Needed(key), least, most);
  }
  double Number(const std::string& key, double least, double most, double otherwise) {
    const LocatedJson* member = Find(key);
    return member ? NumberOf(key, *member, least, most) : otherwise;
  }
  int Whole(const std::string& key, int least, int most) {
    const double value = Number(key, least, most);
    if (value != std::floor(value)) throw Fault(Needed(key).Line, Quoted(key) + " must be a whole number");
    return static_cast<int>(value);
  }
  bool Flag(const std::string& key) {
    const LocatedJson* member = Find(key);
    if (member == nullptr) return false;
    if (const bool* flag = member->As<bool>()) return *flag;
    throw Fault(member->Line, Quoted(key) + " must be true or false");
  }
  /// The items of a list; a list that is missing has none.
  const LocatedJson::List& Items(const std::string& key) {
    static const LocatedJson::List none;
    const LocatedJson* member = Find(key);
    if (member == nullptr) return none;
    if (const auto* list = member->As<LocatedJson::List>()) return *list;
    throw Fault(member->Line, Quoted(key) + " must be a list in brackets");
  }

  static std::string TextOf(const std::string& key, const LocatedJson& value) {
    const auto* text = value.As<std::string>();
    if (text == nullptr || orbit::Trimmed(*text).empty())
      throw Fault(value.Line, Quoted(key) + " must be a text");
    return std::string(orbit::Trimmed(*text));
  }
  static double NumberOf(const std::string& key, const LocatedJson& value, double least, double most) {
    const double* number = value.As<double>();
    if (number == nullptr || !(*number >= least && *number <= most)) {
      throw Fault(value.Line, Quoted(key) + " must be a number from " + Plain(least) + " to " + Plain(most));
    }
    return *number;
  }

  /// The first member that nobody asked for: most likely a slip of the pen.
  void RefuseOthers() const {
    for (const auto& [key, value] : *members_) {
      if (std::find(taken_.begin(), taken_.end(), key) == taken_.end()) {
        throw Fault(value.Line, Quoted(key) + " is no key that is known here");
      }
    }
  }

 private:
  static std::string Plain(double number) {
    std::string text = std::to_string(number);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.')) text.pop_back();
    return text;
  }

  int line_;
  const Members* members_;
  std::vector<std::string> taken_;
};

ScanLaw LawOf(Fields& fields) {
  if (const auto law = ScanLawNamed(fields.Text("law"))) return *law;
  throw Fault(fields.Needed("law").Line, "\"law\" must be \"even\", \"zones\" or \"zones-sphere\"");
}

/// `line` of the file names them.
void CheckColumns(ScanLaw law, int columns, int line) {
  if (law != ScanLaw::EvenAngles && columns != kZoneColumns) {
    throw Fault(line, "\"columns\" must be " + std::to_string(kZoneColumns) + " for a law of zones");
  }
}

Carrier ReadCarrier(const LocatedJson& object) {
  Fields fields(object);
  Carrier carrier;
  carrier.CatalogueNumber = std::to_string(fields.Whole("number", 1, 999999999));
  for (const LocatedJson& name : fields.Items("names")) {
    carrier.Names.push_back(orbit::UpperCased(Fields::TextOf("names", name)));
  }
  for (const LocatedJson& frequency : fields.Items("frequencies_mhz")) {
    carrier.FrequenciesMHz.push_back(Fields::NumberOf("frequencies_mhz", frequency, 1, 1e5));
  }
  carrier.Offsets = {fields.Number("roll", -kMostTurnedDeg, kMostTurnedDeg, 0),
                     fields.Number("pitch", -kMostTurnedDeg, kMostTurnedDeg, 0),
                     fields.Number("yaw", -kMostTurnedDeg, kMostTurnedDeg, 0)};
  carrier.TimeOffsetS = fields.Number("time", -kMostLateS, kMostLateS, 0);
  if (fields.Find("mark_second") != nullptr) carrier.MarkSecond = fields.Number("mark_second", 0, 59.9);
  if (fields.Find("law") != nullptr) carrier.Law = LawOf(fields);
  if (fields.Find("angle") != nullptr) carrier.AngleDeg = fields.Number("angle", 1, kWidestDeg);
  fields.RefuseOthers();
  return carrier;
}

Scanner ReadScanner(const LocatedJson& object, const std::function<void(const Fault&)>& tell) {
  Fields fields(object);
  Scanner scanner;
  scanner.Name = fields.Text("name");
  scanner.Mode = fields.Text("mode");
  scanner.Line.Law = LawOf(fields);
  scanner.Line.Columns = fields.Whole("columns", 2, kMostColumns);
  scanner.Line.AngleDeg = fields.Number("angle", 1, kWidestDeg);
  scanner.RowsPerSecond = fields.Number("rows_per_second", 0.01, 1000);
  scanner.YawSteering = fields.Flag("yaw_steering");
  CheckColumns(scanner.Line.Law, scanner.Line.Columns, fields.Needed("columns").Line);
  for (const LocatedJson& satellite : fields.Items("satellites")) {
    try {
      const Carrier carrier = ReadCarrier(satellite);
      if (carrier.Law) CheckColumns(*carrier.Law, scanner.Line.Columns, satellite.Line);
      scanner.Carriers.push_back(carrier);
    } catch (const Fault& fault) {
      tell(fault);
    }
  }
  fields.RefuseOthers();
  return scanner;
}

/// Gives a scanner the entries of the one whose place it takes, for satellites that it does not list.
void KeepOthers(const Scanner& before, Scanner& scanner) {
  const std::vector<Carrier> own = scanner.Carriers;
  for (Carrier carrier : before.Carriers) {
    if (std::ranges::find(own, carrier.CatalogueNumber, &Carrier::CatalogueNumber) != own.end()) continue;
    if (scanner.Line.Columns != kZoneColumns) carrier.Law.reset();
    scanner.Carriers.push_back(std::move(carrier));
  }
}

/// Letters of a name that an entry accounts for: those of its longest beginning that ends with a word.
std::size_t Accounted(const std::string& name, const Carrier& carrier) {
  std::size_t most = 0;
  for (const std::string& beginning : carrier.Names) {
    const bool fits =
        name.starts_with(beginning) && (name.size() == beginning.size() ||
                                        !std::isalnum(static_cast<unsigned char>(name[beginning.size()])));
    if (fits) most = std::max(most, beginning.size());
  }
  return most;
}

}  // namespace

std::vector<std::string> ScannerTable::Add(const std::string& json, const std::string& fileName) {
  std::vector<std::string> problems;
  ++tables_;
  const auto tell = [&](const std::exception& fault) { problems.push_back(fileName + ", " + fault.what()); };
  try {
    const LocatedJson root = ParseLocatedJson(json);
    Fields file(root);
    for (const LocatedJson& object : file.Items("scanners")) {
      try {
        Scanner scanner = ReadScanner(object, tell);
        const auto same = std::find_if(scanners_.begin(), scanners_.end(), [&](const Scanner& known) {
          return orbit::UpperCased(known.Name) == orbit::UpperCased(scanner.Name);
        });
        for (Carrier& carrier : scanner.Carriers) carrier.Table = tables_;
        if (same != scanners_.end()) {
          KeepOthers(*same, scanner);
          *same = std::move(scanner);
        } else {
          scanners_.push_back(std::move(scanner));
        }
      } catch (const Fault& fault) {
        tell(fault);
      }
    }
    file.RefuseOthers();
  } catch (const std::runtime_error& fault) {
    tell(fault);
  }
  return problems;
}

const Scanner* ScannerTable::Find(std::string_view name) const {
  const std::string wanted = orbit::UpperCased(name);
  const auto found = std::find_if(scanners_.begin(), scanners_.end(), [&](const Scanner& scanner) {
    return orbit::UpperCased(scanner.Name) == wanted;
  });
  return found == scanners_.end() ? nullptr : &*found;
}

LineShape ScannerTable::Flown::Line() const {
  LineShape line = Instrument->Line;
  if (Satellite->AngleDeg) line.AngleDeg = *Satellite->AngleDeg;
  if (Satellite->Law) line.Law = *Satellite->Law;
  return line;
}

std::vector<ScannerTable::Flown> ScannerTable::Of(const orbit::TSatellite& satellite) const {
  // Entries with a number alone are of a name, too, that another entry of that number tells.
  std::vector<std::string> numbers;
  std::size_t most = 1;
  std::vector<Flown> flown;
  for (const Scanner& scanner : scanners_) {
    for (const Carrier& carrier : scanner.Carriers) {
      flown.push_back({&scanner, &carrier});
      const bool isNumbered = carrier.CatalogueNumber == satellite.CatalogueKey();
      const std::size_t letters =
          isNumbered ? std::numeric_limits<std::size_t>::max() : Accounted(satellite.Name, carrier);
      if (letters < most) continue;
      if (letters > most) numbers.clear();
      most = letters;
      numbers.push_back(carrier.CatalogueNumber);
    }
  }
  std::erase_if(flown, [&](const Flown& one) {
    return std::ranges::find(numbers, one.Satellite->CatalogueNumber) == numbers.end();
  });
  std::ranges::stable_sort(flown, std::greater(), [](const Flown& one) { return one.Satellite->Table; });
  return flown;
}

std::string ScannerTable::SentOn(double frequencyMHz, int columns) const {
  constexpr double dopplerMHz = 0.005;
  std::string number;
  for (const Scanner& scanner : scanners_) {
    if (!FirstColumnOf(scanner.Line, columns)) continue;
    for (const Carrier& carrier : scanner.Carriers) {
      const bool sends = std::ranges::any_of(carrier.FrequenciesMHz, [&](double frequency) {
        return std::fabs(frequency - frequencyMHz) <= dopplerMHz;
      });
      if (!sends || number == carrier.CatalogueNumber) continue;
      if (!number.empty()) return {};
      number = carrier.CatalogueNumber;
    }
  }
  return number;
}

ScannerTable LoadScannerTables(const QStringList& paths, std::vector<std::string>& problems) {
  ScannerTable table;
  for (const QString& path : paths) {
    if (!QFileInfo::exists(path)) continue;
    try {
      // A pipe would be waited for, and the program would not start.
      if (!QFileInfo(path).isFile())
        throw files::FileError(QStringLiteral("Cannot read %1: it is not a regular file").arg(path));
      for (std::string& problem : table.Add(files::ReadFile(path).toStdString(), path.toStdString())) {
        problems.push_back(std::move(problem));
      }
    } catch (const files::FileError& error) {
      problems.emplace_back(error.what());
    }
  }
  return table;
}

}  // namespace pelorin::swath
