#pragma once

#include "desktop/tab_sheet_setup_layout.h"
#include "session/tab_sheet.h"

namespace pelorin::desktop {

class TGroupBoxPasses;

/// The page of what is set before anything else: which satellites are followed, where the station is, the
/// folders. The pass list is made on it, too.
class TTabSheetSetup : public session::TTabSheet {
  Q_OBJECT

 public:
  TTabSheetSetup(session::Session& session, QWidget* parent);

  TGroupBoxPasses& Passes() { return *passes_; }

  /// Copies the settings into the boxes and applies them.
  void Restore();
  /// Copies what the boxes show into the settings; numbers as they were typed.
  void Store();

  /// Makes the station of the four boxes the session's, and shows in them how they were understood.
  void UpdateObserverDetails();

  void ListBoxActiveDragDrop(session::TListBox* source);
  void ListBoxAvailableDragDrop(session::TListBox* source);
  void ButtonActivateClick();
  void ButtonDeactivateClick();
  void ButtonBrowseSatDataPathClick();
  void ButtonBrowseResultsPathClick();
  void EditResultsPathExit();
  void ButtonAddPathClick();
  void ButtonRemovePathClick();
  void ListBoxImagePathClick();
  void TabSheetSetupShow();

 private:
  void ShowSatellites();
  void ComboBoxRenewalChange(int renewal);
  void SpinEditRenewalDaysChange(int days);
  /// The picture folders as other pages search them.
  void StoreImagePaths();
  void EnableArrows();
  void ExplainEmptyLists();
  void TakeFolder(const QString& folder, QLineEdit* box, app::TRegistryString& setting);

  TGroupBoxPasses* passes_;
  TabSheetSetupLayout ui_;
};

}  // namespace pelorin::desktop
