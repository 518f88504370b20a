#pragma once

#include <QString>
#include <functional>
#include <future>
#include <optional>

#include "lines/fine_lines.h"
#include "map/backdrop.h"
#include "overlay/map_sources.h"
#include "session/session.h"
#include "swath/scanner_table.h"

/// The steps of start-up that are more than a line, in their order. What goes wrong in one is told to the
/// user and does not keep the next from being taken.
namespace pelorin::desktop {

/// Shows what is being done.
using TellStatus = std::function<void(const QString& text)>;

/// What maps and pictures are made of, found and opened at start-up for the program's life.
struct GroundData {
  QString TopographyFile;  ///< empty when there is none
  map::Backdrop Backdrop;
  overlay::MapSources Sources;
  swath::ScannerTable Scanners;
  std::optional<lines::FineLines> Lines;
  QString NoLines;  ///< for the user, why there are none
};

/// Makes the default folders for elements and results that the settings still name and that are missing.
/// Where earlier versions kept both beside an installed program, the user's own folders take their place; the
/// element files are copied there.
void PrepareFolders(session::Session& session);

/// Reads the element folder of the settings.
void LoadSatelliteData(session::Session& session, const TellStatus& tellStatus);

/// Reads what is known of the ageing of element sets.
void LoadSetAgeing(session::Session& session, const QString& programFolder);

/// Reads what scanners there are; what is wrong with a table is told.
swath::ScannerTable LoadScanners(session::Session& session, const QString& programFolder);

/// On the first start, when there is no satellite yet: offers to copy the shipped element sets into the
/// element folder, and reads them.
void OfferDemonstrationElements(session::Session& session, const QString& programFolder,
                                const TellStatus& tellStatus);

QString FindTopographyFile(const QString& programFolder);

/// Begins to load the backdrop, on a thread of its own: a large picture takes as long to decode as the
/// window's controls take to be made. Needs nothing but the folder.
std::future<map::Backdrop> LoadBackdropAhead(const QString& programFolder);

/// Waits for the backdrop, and tells what was found and what was wrong.
map::Backdrop TakeBackdrop(session::Session& session, std::future<map::Backdrop> ahead,
                           const TellStatus& tellStatus);

/// Opens the topography file, or takes the user's own bitmap for the ground; says when there is neither.
void ConnectTopography(session::Session& session, GroundData& data, const TellStatus& tellStatus);

/// Opens the fine coasts, quietly: whoever needs them tells why they cannot be had.
void OpenFineLines(GroundData& data, const QString& programFolder);

/// Opens the overlay master; makes it before if there is none that is valid, or one of other coasts.
void OpenMaster(session::Session& session, GroundData& data, const QString& programFolder,
                const TellStatus& tellStatus);

}  // namespace pelorin::desktop
