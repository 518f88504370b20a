#include "session/active_satellites.h"

#include <algorithm>

#include "app/settings.h"
#include "elements/satellite_names.h"

namespace pelorin::session {
namespace {

using Names = std::vector<NamedSatellite>;

bool SortsBefore(const NamedSatellite& a, const NamedSatellite& b) {
  return QString::compare(a.Name, b.Name, Qt::CaseInsensitive) < 0;
}

bool Move(Names& from, Names& to, const QString& name) {
  const auto found = std::find_if(from.begin(), from.end(),
                                  [&name](const NamedSatellite& entry) { return entry.Name == name; });
  if (found == from.end()) return false;
  to.insert(std::upper_bound(to.begin(), to.end(), *found, SortsBefore), *found);
  from.erase(found);
  return true;
}

}  // namespace

QStringList NamesOf(const std::vector<NamedSatellite>& satellites) {
  QStringList names;
  for (const NamedSatellite& entry : satellites) names.append(entry.Name);
  return names;
}

ActiveSatellites::ActiveSatellites(const elements::TSatelliteList& satellites) {
  for (int index = 0; index < satellites.Count(); ++index) {
    available_.push_back({QString::fromStdString(satellites.Name(index)), &satellites.Satellite(index)});
  }
  std::stable_sort(available_.begin(), available_.end(), SortsBefore);
}

void ActiveSatellites::Restore(const QString& commaText, const QString& numbers) {
  for (const QString& entry : app::FromCommaText(numbers)) {
    numbers_.insert(entry.section(u' ', 1), entry.section(u' ', 0, 0));
  }
  for (const QString& name : app::FromCommaText(commaText)) {
    const QString now = Identify(name);
    if (!now.isNull() && now != name) renamed_.insert(name, now);
    if (!now.isNull() && Activate(now)) continue;
    if (IndexOf(now) < 0 && !IsMissing(name)) missing_.append(name);
  }
}

QString ActiveSatellites::Identify(const QString& savedName) const {
  const std::string number = numbers_.value(savedName).toStdString();
  const std::string plain = elements::PlainName(savedName.toStdString());
  QString alike;
  int count = 0;
  for (const std::vector<NamedSatellite>* list : {&available_, &active_}) {
    for (const NamedSatellite& entry : *list) {
      const bool isSame =
          number.empty() ? entry.Name == savedName : entry.Satellite->CatalogueKey() == number;
      if (isSame) return entry.Name;
      if (elements::PlainName(entry.Name.toStdString()) != plain) continue;
      alike = entry.Name;
      ++count;
    }
  }
  return number.empty() && count == 1 ? alike : QString();
}

QString ActiveSatellites::Numbers() const {
  QStringList entries;
  for (const NamedSatellite& entry : active_) {
    const std::string number = entry.Satellite->CatalogueKey();
    if (!number.empty()) entries.append(QString::fromStdString(number) + u' ' + entry.Name);
  }
  for (const QString& name : missing_) {
    if (numbers_.contains(name)) entries.append(numbers_.value(name) + u' ' + name);
  }
  return app::ToCommaText(entries);
}

QStringList ActiveSatellites::Followed() const {
  QStringList names = missing_ + NamesOf(active_);
  names.sort(Qt::CaseInsensitive);
  return names;
}

QString ActiveSatellites::CommaText() const { return app::ToCommaText(Followed()); }

bool ActiveSatellites::Activate(const QString& name) { return Move(available_, active_, name); }

bool ActiveSatellites::Deactivate(const QString& name) {
  return missing_.removeOne(name) || Move(active_, available_, name);
}

int ActiveSatellites::IndexOf(const QString& name) const {
  for (std::size_t index = 0; index < active_.size(); ++index) {
    if (active_[index].Name == name) return static_cast<int>(index);
  }
  return -1;
}

}  // namespace pelorin::session
