#pragma once

#include <QString>
#include <optional>

#include "overlay/master_view.h"
#include "overlay/overlay_master.h"

/// Where overlay masters lie, and which of them is used.
namespace pelorin::overlay {

/// The folders of "Overlay.bmp" in the order of the search.
struct MasterFolders {
  QString Users;            ///< the user's data: a master there is the user's own
  QString Program;          ///< the program's: the user's own, unless it has a tag
  QString Cache;            ///< what lies there was drawn by the program
  bool IsPortable = false;  ///< masters are written into the program's folder
};

/// Where a new master is written.
QString NewMasterFile(const MasterFolders& folders);

/// Opens the first valid master of the search. One that the program has drawn from another `Countries.dat`
/// does not count, and when there is no better one, a new one is drawn. The user's own masters are used as
/// they are. Without a `Countries.dat` (an empty path) the first valid one is taken, whoever drew it.
///
/// When nothing can be drawn, `tell` gets the reason and a master of other coasts is better than none.
/// Nothing when there is none at all. `status` and `confirm` as for GenerateMaster.
std::optional<MasterView> FindMaster(const MasterFolders& folders, const QString& countriesPath,
                                     const MasterStatus& status, const ConfirmLowMemory& confirm,
                                     const std::function<void(const QString&)>& tell);

}  // namespace pelorin::overlay
