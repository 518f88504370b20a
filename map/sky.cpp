#include "map/sky.h"

#include <optional>
#include <thread>

#include "orbit/julian_date.h"
#include "orbit/observer.h"
#include "orbit/scalar_math.h"
#include "orbit/sun.h"

namespace pelorin::map {
namespace {

/// A long list shall not starve the program that records the picture. On a busy machine, though, each yield
/// costs a millisecond or more, which is what this many satellites take: after each of them it would make the
/// map stutter.
constexpr int kSatellitesBetweenYields = 250;
constexpr qsizetype kNamesInTip = 12;

/// Where the satellite is at `jd`, if anywhere; `state` goes with it.
std::optional<PlaceBelow> Locate(const orbit::TSatellite& satellite, double jd,
                                 orbit::SatelliteState& state) {
  state = orbit::SatelliteStateKm(satellite, jd);
  orbit::Geodetic below;
  orbit::SatLatLonAlt(state.Position, jd, below);
  if (!orbit::IsAboveTheEarth(state, below)) return std::nullopt;
  return PlaceBelow{orbit::Degrees(below.Latitude), orbit::Degrees(orbit::SignedAngle(below.Longitude)),
                    below.Altitude};
}

PlaceBelow SubSolarPlace(double jd) {
  orbit::Vector sun;
  orbit::SunPosition(jd, sun);
  double latitude = 0, longitude = 0;
  orbit::SatGeocentricLatLon(sun, jd, latitude, longitude);
  return {orbit::Degrees(latitude), orbit::Degrees(orbit::SignedAngle(longitude)), 0};
}

}  // namespace

const TrackedSatellite* Sky::Find(const orbit::TSatellite* satellite) const {
  for (const TrackedSatellite& tracked : Satellites) {
    if (tracked.Satellite == satellite) return &tracked;
  }
  return nullptr;
}

Sky SkyAt(const std::vector<const orbit::TSatellite*>& satellites, orbit::TDateTime time, int trailMinutes) {
  Sky sky;
  sky.Jd = orbit::JulianDateOfDateTime(time);
  sky.Sun = SubSolarPlace(sky.Jd);
  sky.Satellites.reserve(satellites.size());
  int done = 0;
  for (const orbit::TSatellite* satellite : satellites) {
    TrackedSatellite tracked;
    tracked.Satellite = satellite;
    if (const auto now = Locate(*satellite, sky.Jd, tracked.State)) {
      tracked.Now = *now;
      tracked.Trail.reserve(static_cast<std::size_t>(trailMinutes));
      orbit::SatelliteState before;
      for (int minute = trailMinutes; minute > 0; --minute) {
        const auto place = Locate(*satellite, sky.Jd - minute / orbit::kMinutesPerDay, before);
        if (place) tracked.Trail.push_back(*place);
      }
      sky.Satellites.push_back(std::move(tracked));
    } else {
      sky.NotDrawable.append(QString::fromStdString(satellite->Name));
    }
    if (++done % kSatellitesBetweenYields == 0) std::this_thread::yield();
  }
  return sky;
}

const Sky& SkyKeeper::At(const std::vector<const orbit::TSatellite*>& satellites, orbit::TDateTime time,
                         int trailMinutes) {
  if (time != time_ || trailMinutes > trailMinutes_ || satellites != satellites_) {
    sky_ = SkyAt(satellites, time, trailMinutes);
    satellites_ = satellites;
    time_ = time;
    trailMinutes_ = trailMinutes;
  }
  return sky_;
}

QString NotDrawableTip(const QStringList& names) {
  if (names.isEmpty()) return QString();
  const QString tip = QStringLiteral("Not drawable: ") +
                      names.first(qMin(names.size(), kNamesInTip)).join(QStringLiteral(", "));
  return names.size() > kNamesInTip ? tip + QStringLiteral(" and %1 more").arg(names.size() - kNamesInTip)
                                    : tip;
}

}  // namespace pelorin::map
