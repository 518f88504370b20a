#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QString>
#include <string>
#include <vector>

#include "files/read_file.h"
#include "orbit/element_file.h"
#include "orbit/omm.h"

/// Sets as element services publish them: made for a test, or the demonstration's satellites.
namespace pelorin::tests {

/// A set of that number and epoch, its checksums right unless an error is added.
inline std::string SetOf(const std::string& name, const std::string& number, const std::string& epoch,
                         const std::string& lineEnd = "\r\n", const std::string& eccentricity = "0013250",
                         int checksumError = 0) {
  const auto checked = [&](const std::string& line) {
    int sum = checksumError;
    for (const char c : line) sum += c == '-' ? 1 : c >= '0' && c <= '9' ? c - '0' : 0;
    return line + std::to_string(sum % 10) + lineEnd;
  };
  return name + lineEnd +
         checked("1 " + number + "U 91032A   " + epoch + "  .00000272  00000-0  13981-3 0  148") +
         checked("2 " + number + "  98.5313  39.9325 " + eccentricity +
                 "   4.9627 355.1680 14.2295046240111");
}

inline const QString kDemoFile = QStringLiteral(PELORIN_ELEMENTS "/weather-2022-02-22.2li");

/// Sets of 165 bytes each, a line ending in LF.
inline QByteArray DemoSets(int first, int count) {
  return files::ReadFile(kDemoFile).replace("\r", "").mid(165 * first, 165 * count);
}

/// Messages of the same satellites, ten days later.
inline std::vector<orbit::OmmRecord> DemoMessages(int first, int count) {
  std::vector<orbit::OmmRecord> messages;
  orbit::ReadTriplesOf(DemoSets(first, count).toStdString(), [&](auto name, auto line1, auto) {
    orbit::OmmRecord message;
    message[orbit::kOmmName] = name;
    message[orbit::kOmmCatalogueNumber] = line1.substr(2, 5);
    message[orbit::kOmmEpoch] = "2022-03-04T12:00:00.000000";
    message[orbit::kOmmMeanMotion] = "14.2";
    message[orbit::kOmmEccentricity] = ".001";
    for (const auto angle :
         {orbit::kOmmInclination, orbit::kOmmNode, orbit::kOmmPerigee, orbit::kOmmMeanAnomaly}) {
      message[angle] = "98.5";
    }
    messages.push_back(message);
  });
  return messages;
}

inline QByteArray CsvOf(const std::vector<orbit::OmmRecord>& messages) {
  std::string text = orbit::OmmCsvHeader() + "\r\n";
  for (const orbit::OmmRecord& message : messages) text += orbit::OmmCsvRow(message) + "\r\n";
  return QByteArray::fromStdString(text);
}

inline QByteArray JsonOf(const std::vector<orbit::OmmRecord>& messages) {
  QByteArrayList objects;
  for (const orbit::OmmRecord& message : messages) {
    objects.append(
        QStringLiteral(
            R"({"OBJECT_NAME":"%1","NORAD_CAT_ID":%2,"EPOCH":"%3","MEAN_MOTION":14.2,"ECCENTRICITY":0.001,
                           "INCLINATION":98.5,"RA_OF_ASC_NODE":1,"ARG_OF_PERICENTER":2,"MEAN_ANOMALY":3})")
            .arg(QString::fromStdString(message[orbit::kOmmName]),
                 QString::number(std::stoi(message[orbit::kOmmCatalogueNumber])),
                 QString::fromStdString(message[orbit::kOmmEpoch]))
            .toUtf8());
  }
  return '[' + objects.join(',') + ']';
}

inline QByteArray DemoCsv(int first, int count) { return CsvOf(DemoMessages(first, count)); }
inline QByteArray DemoJson(int first, int count) { return JsonOf(DemoMessages(first, count)); }

}  // namespace pelorin::tests
