#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <vector>

#include "overlay/countries.h"
#include "overlay/physical_memory.h"
#include "picture/indexed_bitmap.h"

/// Making the overlay master: the whole Earth in plate carrée with grid, land, lakes and boundaries.
namespace pelorin::overlay {

inline constexpr int kMasterPixelsPerDegree = 22;
inline constexpr int kMasterWidth = 360 * kMasterPixelsPerDegree;
inline constexpr int kMasterHeight = 180 * kMasterPixelsPerDegree;
/// Headers and colours before the pixels of the file.
inline constexpr int kMasterPixelOffset = 14 + 40 + 1024;
inline constexpr qint64 kMasterFileSize = kMasterPixelOffset + qint64{kMasterWidth} * kMasterHeight;

/// Below this much free memory (megabytes) the user is asked before a master is made.
inline constexpr int kMasterMemoryMb = 6;

/// Help topic of the question.
inline constexpr int kMasterMemoryHelp = 115;

/// The question to ask when only `foundMb` megabytes are free.
QString LowMemoryQuestion(int foundMb);

/// Minutes of arc, from 0 on, in pixels of the master; to the nearest.
constexpr int MasterPixels(int minutes) { return (minutes * kMasterPixelsPerDegree + 30) / 60; }
/// Pixel column of a longitude in minutes of arc, 0 … 7920; beyond 10800 a turn is taken off first.
int MasterColumn(int longitudeMin);
/// Pixel row of a latitude in minutes of arc, 0 … 3960.
int MasterRow(int latitudeMin);

/// Told what is being done, in the words for the start-up window.
using MasterStatus = std::function<void(const QString&)>;

/// The master in memory: grid first, then the polygons in their order.
picture::IndexedImage DrawMaster(const std::vector<TPolyObject>& polygons, const MasterStatus& status);

/// Asked whether to go on although memory is short; false ends the making.
using ConfirmLowMemory = std::function<bool(const QString& question)>;

/// Draws the master from a `Countries.dat` and saves it write-protected and with that file's tag
/// (CountriesTag) in its reserved bytes, replacing what was there. With less than 6 megabytes free
/// (`availableMb`; nothing where the system does not tell) `confirm` is asked first. Without consent or
/// without polygons nothing is written and the result is false. Raises FileError.
bool GenerateMaster(const QString& countriesPath, const QString& masterPath, const MasterStatus& status,
                    const ConfirmLowMemory& confirm,
                    std::optional<int> availableMb = AvailablePhysicalMemoryMb());

/// True exactly when the file can be read and has the size of a master.
bool MasterIsValid(const QString& path);

}  // namespace pelorin::overlay
