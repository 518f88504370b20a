#pragma once

#include <QString>

#include "orbit/observer.h"

namespace pelorin::app {

/// The station as it stands in the edit boxes and in the settings: degrees, degrees, metres, degrees.
struct StationTexts {
  QString Latitude, Longitude, Height, MinElevation;
};

/// The station as the rest of the program uses it.
struct Station {
  orbit::Observer Place;
  double MinElevationDeg = 0;  ///< 0 … 10
  StationTexts Texts;          ///< what was understood; goes back into the boxes
};

/// Reads the four texts. One that is no decimal number is replaced by 55.905, −3.2, 150 or 1.5; the minimum
/// elevation is brought into 0 … 10, the latitude between the poles.
Station EnterStation(const StationTexts& texts);

/// Whether both texts are read as one number, whatever their form.
bool IsSameNumber(const QString& a, const QString& b);

/// The height setting's default, which no user types: nothing has been saved yet.
inline constexpr char16_t kHeightNeverSaved[] = u"-12345678";

/// Puts "150" for a height that was never saved. True when it was so, which is a user's first run.
bool ReplaceUnsavedHeight(QString& height);

}  // namespace pelorin::app
