#pragma once

#include <QString>

#include "orbit/date_time.h"

class QPrinter;

namespace pelorin::session {

/// Where the map's time comes from.
enum class Timeframe { RealTime = 0, FromFile = 1, Manual = 2 };

/// The pages of the main window, in their order.
enum class Page { Setup, WorldMap, Debug, GroundPath, Flight };

/// What a page may ask of the main window, and through it of the other pages, which it does not know.
class Shell {
 public:
  virtual ~Shell() = default;

  virtual void ShowPage(Page page) = 0;
  virtual Page CurrentPage() const = 0;

  /// The application's title, which stands for the window where it is shown by its name only. The window's
  /// caption stays.
  virtual void SetTitle(const QString& title) = 0;

  virtual void SetStatus(const QString& text) = 0;
  virtual QString Status() const = 0;

  /// Reads the station's boxes into Session::Station.
  virtual void UpdateObserverDetails() = 0;

  /// Sets the world map to a moment, as if its pickers had been turned to it.
  virtual void SetMapTime(orbit::TDateTime moment) = 0;
  /// Gives the keyboard to "Make picture..." of the world map, and presses it.
  virtual void FocusMakePicture() = 0;
  virtual void MakePictureFromMap() = 0;

  /// Shows the ground-path page for a moment and a satellite (its place among the active ones, or −1), and
  /// has it look for the picture.
  virtual void ShowGroundPath(orbit::TDateTime moment, int satellite) = 0;
  /// Selects the map's timeframe, so that it does not move by itself or goes on.
  virtual void SetTimeframe(Timeframe mode) = 0;

  /// Ends a running flight and returns when it has ended.
  virtual void StopFlight() = 0;
  /// Gives the keyboard to the flight's start button.
  virtual void FocusRunFlight() = 0;

  /// Opens the dialog of the printable pass list.
  virtual void PrintPassList() = 0;

  /// One for the program's life, so that what was set up for one print applies to the next.
  virtual QPrinter& Printer() = 0;

  /// Ends the program as if the user had closed the window.
  virtual void CloseWindow() = 0;

  /// Lets the user choose when a flight starts; false when cancelled. `start` is in UTC.
  virtual bool AskFlightStart(orbit::TDateTime& start) = 0;
};

}  // namespace pelorin::session
