#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <memory>

#include "app/settings.h"
#include "app/station_entry.h"
#include "app/time_zone.h"
#include "elements/element_notes.h"
#include "elements/element_update.h"
#include "elements/known_sets.h"
#include "elements/set_ageing.h"
#include "orbit/date_time.h"
#include "session/active_satellites.h"
#include "session/doubt_label.h"
#include "session/prompts.h"
#include "session/shell.h"
#include "session/unattended_run.h"

namespace pelorin::session {

/// The pass that map, picture and flight are about.
struct PassChoice {
  orbit::TDateTime
      PassListDate;              ///< start of the pass list; its year is that of every pass read back from it
  int DaysAhead = 1;             ///< days that the list covers, 1 … 28
  orbit::TDateTime PassStart;    ///< UTC, to the minute
  int PassDurationMinutes = 15;  ///< 1 … 30
  bool SouthBound = false;       ///< moving south
  double FlightTimeOffset = 0;   ///< days from the clock to the flight's time
};

/// The moment that the world map shows.
struct MapMoment {
  orbit::TDateTime CurrentTime;  ///< UTC
  Timeframe Mode = Timeframe::RealTime;
  Timeframe ModeToRestore = Timeframe::RealTime;  ///< selected again when the map is shown again
  bool PacificCentred = false;                    ///< drawn with 180° in the middle
};

struct RunFlags {
  bool PassListMade = false;    ///< there has been a pass list
  bool Closing = false;         ///< the window goes; long loops end
  bool AbortRequested = false;  ///< Escape was pressed in the main window
  bool Reloading = false;       ///< the same files are read again; what is chosen stays chosen
  bool MakingMap = false;       ///< the ground path makes a map; flights wait
};

/// What the pages share: one for the main window's life, made by it. Records are read and written freely;
/// what others must hear of goes through the functions, which emit a signal. Connections are direct: when a
/// function returns, every page has followed.
class Session : public QObject {
  Q_OBJECT

 public:
  /// The clock, in UTC.
  using Clock = std::function<orbit::TDateTime()>;

  /// `unattended` is the run that the program was started for, null when a user has started it.
  Session(app::Settings& settings, Prompts& boxes, Shell& window, Clock now, UnattendedRun* unattended);

  app::Settings& Settings;
  Prompts& Boxes;
  Shell& Window;
  const Clock Now;
  UnattendedRun* const Unattended;  ///< borrowed, or null

  app::Station Station;
  app::TimeZone TimeZone;
  PassChoice Pass;
  MapMoment Map;
  RunFlags Run;
  elements::SetAgeing Ageing;

  /// The clock on the wall, as a moment; element ages are counted by it.
  orbit::TDateTime LocalNow() const;

  /// Never null; empty until LoadSatellites.
  const elements::TSatelliteList& Satellites() const { return known_->Satellites(); }
  /// The lists of Available and Active.
  const session::ActiveSatellites& Following() const { return *following_; }
  const std::vector<NamedSatellite>& Active() const { return following_->Active(); }
  /// Or null.
  const orbit::TSatellite* SelectedSatellite() const { return selected_; }
  /// Place of the selected satellite in Active(), or −1.
  int SelectedIndex() const;

  /// Reads the folder's element files; what cannot be used is in LeftOut().
  void LoadSatellites(const QString& folder);
  /// Reads the same folder again, because its files have changed: what is active stays so, and everybody
  /// follows.
  void ReloadSatellites();
  /// What to update the loaded folder's files with, from that address.
  elements::ElementUpdate UpdateOf(const QStringList& files, const QString& address) const;
  /// What the user ought to know of the elements and the satellites that are followed.
  elements::ElementNotes NotesOnElements() const;
  /// The active satellites with their newest sets.
  std::vector<const orbit::TSatellite*> SatellitesInUse() const;
  /// Files and sets that LoadSatellites could not use, and why.
  const std::vector<orbit::RejectedSet>& LeftOut() const { return known_->LeftOut(); }

  /// Of all sets known of that satellite, those of the archive too, the one nearest a moment: what maps and
  /// flights are made with.
  orbit::TSatellite SetNear(const orbit::TSatellite& satellite, orbit::TDateTime moment) const;
  /// What the age of a set may cost a map of some moment.
  elements::SetDoubt DoubtOf(const orbit::TSatellite& set, orbit::TDateTime moment) const {
    return elements::DoubtOf(set, moment, Ageing);
  }
  void ShowDoubt(TDoubtLabel* label, const orbit::TSatellite& set, orbit::TDateTime moment) const;
  /// The active satellites' sets for the passes of some days, in the order of Active(): those nearest to days
  /// gone by, the newest for all others.
  std::vector<orbit::TSatellite> ActiveSetsFor(orbit::TDateTime firstDay, int days) const;

  /// Makes active what the settings name. What no file holds waits for its file.
  void RestoreActive();

  /// Moves a satellite between Available and Active, or forgets one that waits, and lets every chooser
  /// follow.
  void Activate(const QString& name);
  void Deactivate(const QString& name);
  /// Saves the active names, fills the choosers and chooses the primary satellite, if it is active.
  void RefreshActiveSatellites();

  /// Selects the satellite at a place of Active(), −1 for none, as the primary one.
  void ChooseSatellite(int index);

  /// The map in hand is the one that the program was started for.
  bool MakesMapUnattended() const { return Unattended != nullptr && Unattended->IsMaking(); }
  /// True, and the user is told so, while a map is being made: what it is made for stays as it is.
  bool RefusesWhileMakingMap() const;

  enum class Unasked { PassList, Map };
  /// Writes into the results folder what nobody asked for by name. What keeps that from being written is told
  /// in a box once, also over several runs, and from then on in the status bar: the program goes on without.
  void SaveUnasked(Unasked what, const std::function<void()>& write);

  void SetPassDirection(bool southBound);
  void SetPassDuration(int minutes);

 Q_SIGNALS:
  void ActiveSatellitesChanged();
  void SatelliteChosen();
  /// ReloadSatellites has read other elements.
  void SatellitesReloaded();
  void PassDirectionChanged();
  void PassDurationChanged();
  /// A picture is looked for, under these names one after the other.
  void PictureSearchBegun();
  void PictureSearched(const QString& baseName);

 private:
  std::unique_ptr<elements::KnownSets> known_;
  std::unique_ptr<session::ActiveSatellites> following_;
  const orbit::TSatellite* selected_ = nullptr;
};

}  // namespace pelorin::session
