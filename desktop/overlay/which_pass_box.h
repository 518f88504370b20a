#pragma once

#include <QGroupBox>
#include <QImage>
#include <functional>
#include <optional>
#include <vector>

#include "align/pass_search.h"
#include "desktop/overlay/search_thread.h"
#include "orbit/observer.h"
#include "session/prompts.h"
#include "swath/scanner_table.h"

class QLabel;
class QListWidget;
class QProgressBar;
class QPushButton;
class QSpinBox;

namespace pelorin::desktop {

/// A picture whose pass is looked for.
struct PassQuestion {
  std::vector<QImage> Channels;
  std::vector<orbit::TSatellite> Satellites;  ///< that may have sent it
  std::optional<int> Sender;                  ///< its place among them, where the picture tells it
  std::function<orbit::TSatellite(const orbit::TSatellite& satellite, orbit::TDateTime moment)> SetNear;
  const swath::ScannerTable* Scanners = nullptr;
  orbit::Observer Station;
  std::optional<align::Ground> Ground;  ///< what it borrows lives as long as the program
  QString WhyNot;                       ///< for the user, why no pass can be looked for; mostly empty
};

/// A pass that the user takes for the picture's.
struct PassAnswer {
  int Satellite = 0;  ///< its place among those that were asked about
  orbit::TDateTime Start;
  swath::Stored Lies;
};

/// Looks through the passes of some days for the one that a picture is of, by its coasts, and lists those
/// that come nearest.
class TWhichPassBox : public QGroupBox {
  Q_OBJECT

 public:
  TWhichPassBox(session::Prompts& boxes, QWidget* parent);

  session::Prompts& Boxes() const { return boxes_; }

  /// A new picture; what was found of another is gone.
  void SetQuestion(PassQuestion question);
  /// The last of the days that are looked through.
  void SetDay(orbit::TDateTime day) { day_ = day; }
  /// A search that is under way ends, and its outcome is not wanted.
  void End();

 Q_SIGNALS:
  /// The user has chosen a pass, or there is one that is clear.
  void Chosen(const PassAnswer& answer);

 private:
  void ButtonWhichPassClick();
  void SearchFinished();
  void ListBoxPassesChange(int row);
  void Begin();
  void ShowRunning(bool isRunning);

  session::Prompts& boxes_;
  QSpinBox* SpinEditDays;
  QPushButton* ButtonWhichPass;
  QProgressBar* ProgressBarPasses;
  QLabel* LabelPasses;
  QListWidget* ListBoxPasses;

  PassQuestion question_;
  orbit::TDateTime day_;
  /// The search's own, until it has finished.
  struct Search {
    std::vector<align::PassCandidate> Candidates;
    std::vector<int> Satellites;  ///< of each candidate
    align::PassSearch Result;
  };
  std::shared_ptr<Search> found_;
  std::vector<PassAnswer> answers_;  ///< as listed
  SearchThread search_;
};

}  // namespace pelorin::desktop
