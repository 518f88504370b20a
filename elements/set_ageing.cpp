#include "elements/set_ageing.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>

#include "files/read_file.h"
#include "orbit/julian_date.h"
#include "orbit/model_constants.h"
#include "orbit/scalar_math.h"

namespace pelorin::elements {
namespace {

using namespace Qt::StringLiterals;

/// Earth radii by the mean motion in radians a minute; J2's share of a few kilometres does not part classes.
double MeanHeightKm(const orbit::TSatellite& set) {
  return (std::pow(orbit::XKE / set.MeanMotion, 2 / 3.0) - 1) * orbit::XKMPER;
}

/// Members of a law in the file.
struct Member {
  QLatin1StringView Key;
  double AgeingLaw::*Number;
};
constexpr std::array<Member, 3> kNumbers{{{"kmPerDay"_L1, &AgeingLaw::KmPerDay},
                                          {"kmPerDay2"_L1, &AgeingLaw::KmPerDay2},
                                          {"longestDays"_L1, &AgeingLaw::LongestDays}}};

int Count(const QJsonObject& law, QLatin1StringView key) {
  const int count = law.value(key).toInt(-1);
  if (count < 1) throw std::runtime_error("a law of ageing without its count of " + std::string(key.data()));
  return count;
}

}  // namespace

std::string AgeingClassOf(const orbit::TSatellite& set) {
  if (set.IsDeepSpace) return "deep space";
  const double height = MeanHeightKm(set), inclination = orbit::Degrees(set.Inclination);
  if (height >= 800 && height <= 870 && inclination >= 98 && inclination <= 99.7) {
    return "sun-synchronous at 800 to 870 km";
  }
  const double drag = std::fabs(set.BStar);
  if (drag < 1e-4) return "drag term below 0.0001";
  return drag < 1e-3 ? "drag term of 0.0001 to 0.001" : "drag term above 0.001";
}

SetAgeing::SetAgeing(const QByteArray& json) {
  const QJsonDocument document = QJsonDocument::fromJson(json);
  if (!document.object().value("classes"_L1).isArray()) throw std::runtime_error("no table of ageing");
  for (const QJsonValue& value : document.object().value("classes"_L1).toArray()) {
    const QJsonObject entry = value.toObject();
    AgeingLaw law;
    for (const Member& member : kNumbers) {
      law.*member.Number = entry.value(member.Key).toDouble(-1);
      if (!(law.*member.Number >= 0)) {
        throw std::runtime_error("a law of ageing without its number " + std::string(member.Key.data()));
      }
    }
    law.Sets = Count(entry, "sets"_L1);
    law.Satellites = Count(entry, "satellites"_L1);
    Laws[entry.value("class"_L1).toString().toStdString()] = law;
  }
}

QByteArray SetAgeing::ToJson() const {
  QJsonArray classes;
  for (const auto& [name, law] : Laws) {
    QJsonObject entry{
        {"class"_L1, QString::fromStdString(name)}, {"sets"_L1, law.Sets}, {"satellites"_L1, law.Satellites}};
    for (const Member& member : kNumbers) entry.insert(member.Key, law.*member.Number);
    classes.append(entry);
  }
  return QJsonDocument(QJsonObject{{"classes"_L1, classes}}).toJson();
}

const AgeingLaw* SetAgeing::LawOf(const orbit::TSatellite& set) const {
  const auto law = Laws.find(AgeingClassOf(set));
  return law == Laws.end() ? nullptr : &law->second;
}

SetAgeing LoadSetAgeing(const QString& path) {
  if (path.isEmpty()) return {};
  const QByteArray json = files::ReadFile(path);
  try {
    return SetAgeing(json);
  } catch (const std::runtime_error& error) {
    throw std::runtime_error(path.toStdString() + ": " + error.what());
  }
}

SetDoubt DoubtOf(const orbit::TSatellite& set, orbit::TDateTime moment, const SetAgeing& ageing) {
  SetDoubt doubt;
  doubt.Days = orbit::JulianDateOfDateTime(moment) - set.Epoch;
  const AgeingLaw* law = ageing.LawOf(set);
  if (law == nullptr) return doubt;
  const double age = std::fabs(doubt.Days);
  doubt.IsMore = age > law->LongestDays;
  // The speed on a circle of that mean motion; a line is as long as the satellite flies in its time.
  const double kmPerMinute = set.MeanMotion * (MeanHeightKm(set) + orbit::XKMPER);
  doubt.Lines = law->BoundKm(std::min(age, law->LongestDays)) / kmPerMinute * set.LinesPerMinute;
  doubt.Source =
      QStringLiteral(
          "Measured from %1 sets of %2 satellites (%3): of maps made with sets of that age nine in "
          "ten are off by no more.")
          .arg(law->Sets)
          .arg(law->Satellites)
          .arg(QString::fromStdString(AgeingClassOf(set)));
  return doubt;
}

QString DoubtText(const SetDoubt& doubt) {
  const QString days = QString::number(std::fabs(doubt.Days), 'f', 1);
  QString text = doubt.Days < 0 ? QStringLiteral("elements of %1 days later").arg(days)
                                : QStringLiteral("elements %1 days old").arg(days);
  if (doubt.Lines < 0) return text;
  const int lines = std::max(1, static_cast<int>(std::ceil(doubt.Lines)));
  text += QStringLiteral(", the map may be off by %1%2 line")
              .arg(QLatin1StringView(doubt.IsMore ? "more than " : ""))
              .arg(lines);
  return lines == 1 ? text : text + u's';
}

DoubtLevel LevelOf(const SetDoubt& doubt, int notableLines, int graveLines) {
  if (doubt.Lines >= graveLines) return DoubtLevel::Grave;
  return doubt.Lines >= notableLines ? DoubtLevel::Notable : DoubtLevel::None;
}

}  // namespace pelorin::elements
