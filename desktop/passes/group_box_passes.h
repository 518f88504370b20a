#pragma once

#include <QGroupBox>
#include <QTimer>

#include "desktop/passes/group_box_passes_layout.h"
#include "passes/chosen_pass.h"
#include "passes/pass_lookup.h"
#include "session/session.h"

namespace pelorin::desktop {

/// The pass list of the set-up page, and the ways from one of its passes to map, picture and flight.
class TGroupBoxPasses : public QGroupBox {
  Q_OBJECT

 public:
  TGroupBoxPasses(session::Session& session, QWidget* parent);

  session::Prompts& Boxes() const { return session_.Boxes; }

  /// "Make pass list", its days and "Print ephemeris...", to be placed among the station's controls.
  QWidget* MakePassListRow() const { return ui_.MakePassListRow; }

  /// Turns the date picker to a moment's day. The list stays.
  void SetPassDate(orbit::TDateTime moment);

  /// Makes the first list as soon as the window has appeared.
  void StartFirstList();

  /// No list is about to be made.
  bool IsSettled() const;

  /// The active satellites' pass that a pass string means; it may culminate after the day's end, and so be
  /// in no list of that day. Raises ConvertError.
  passes::PassMatch FindPass(const QString& passString) const;
  /// Does with a pass that was found what "Picture from pass" does with the selected one, and selects it if
  /// it is in the list. Raises ConvertError.
  void MakePictureOf(const passes::PassMatch& match);

  // What each does needs a selected pass; without one they do nothing.
  void ButtonMapFromPassClick();
  void ButtonPicFromPassClick();
  void ButtonFlightFromPassClick();

  void ButtonRegenPassesClick();
  void ButtonNextPassClick();
  void ButtonEphemerisClick();
  void UpDownDaysAheadClick(int days);
  /// A list of other elements than those in use would be a list of other passes.
  void SatellitesReloaded();
  void DateTimePickerPassesChange();
  void TimerPassDateChangingTimer();
  void ListBoxPassesClick();
  void ListBoxPassesDblClick();

 private:
  /// False, and the old list stays, when there is no satellite to make a list for; the user was told.
  bool BuildPassList();
  int FindPassAfter(orbit::TDateTime now, orbit::TDateTime day);
  /// Each pass's tip says how old the elements are that it was found with.
  void TellAges(const std::vector<orbit::TSatellite>& sets);
  bool IsPassSelected() const;
  void EnablePassButtons(bool enabled);

  QStringList Entries() const;
  /// Selects an entry and enables what can be done with it.
  void SelectPass(int index);
  /// Raises ConvertError.
  passes::ChosenPass ParseSelectedPass() const;
  /// The place of a satellite among the active ones. Raises ConvertError when it is not among them.
  int ActiveIndex(const QString& satelliteName) const;
  void ShowOnMap(const passes::ChosenPass& pass);
  /// Sets start, map, direction and duration to the pass.
  void TakeOver(const passes::ChosenPass& pass);

  session::Session& session_;
  GroupBoxPassesLayout ui_;
  QTimer* timerPassDateChanging_;
};

}  // namespace pelorin::desktop
