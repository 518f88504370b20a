#pragma once

#include <vector>

#include "align/alignment_log.h"
#include "session/form.h"

class QComboBox;
class QLabel;
class QPushButton;
class QTreeWidget;

namespace pelorin::desktop {

class TAlignmentPlotView;

/// The log of alignments: a table, and beside it a plot over time.
class TFormAlignments : public session::TForm {
  Q_OBJECT

 public:
  TFormAlignments(session::Session& session, QWidget* parent);

  void FormCreate() override;
  void FormShow() override;
  void done(int result) override;

 private:
  QWidget* FirstControl() const override;
  void Build();
  void FillSatellites();
  void FillTable();
  void ShowMedians();
  void ComboBoxSatelliteChange();
  void SelectionChanged();
  void PointChosen(std::size_t row);
  void ButtonDeleteClick();
  void ButtonCopyClick();
  /// The rows that are selected, from the top down; in shown_.
  std::vector<std::size_t> Selected() const;

  align::AlignmentLog log_;
  std::vector<align::LoggedAlignment> shown_;
  QComboBox* comboBoxSatellite_ = nullptr;
  QTreeWidget* listViewAlignments_ = nullptr;
  TAlignmentPlotView* plot_ = nullptr;
  QLabel *labelEmpty_ = nullptr, *labelMedians_ = nullptr, *labelNote_ = nullptr;
  QPushButton *buttonDelete_ = nullptr, *buttonCopy_ = nullptr;
};

}  // namespace pelorin::desktop
