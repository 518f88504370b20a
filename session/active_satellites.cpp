#include "session/active_satellites.h"

#include <algorithm>

#include "app/settings.h"

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

void ActiveSatellites::Restore(const QString& commaText) {
  for (const QString& name : app::FromCommaText(commaText)) {
    if (!Activate(name) && IndexOf(name) < 0 && !IsMissing(name)) missing_.append(name);
  }
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
