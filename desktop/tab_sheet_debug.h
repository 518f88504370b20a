#pragma once

#include "session/tab_sheet.h"

namespace pelorin::session {
class TListBox;
}

namespace pelorin::desktop {

/// Diagnostics, on a page that has no tab: what the search for a picture looked for, and a known satellite
/// propagated over an hour.
class TTabSheetDebug : public session::TTabSheet {
  Q_OBJECT

 public:
  TTabSheetDebug(session::Session& session, QWidget* parent);

  void TabSheetDebugShow();
  /// Forgets the picture names of an earlier search.
  void ClearSearched();
  /// Notes the base name of a picture that is searched for.
  void AddSearched(const QString& baseName);

 private:
  session::TListBox* searched_;
  session::TListBox* propagated_;
};

}  // namespace pelorin::desktop
