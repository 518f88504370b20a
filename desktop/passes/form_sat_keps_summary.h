#pragma once

#include "session/form.h"

class QLabel;
class QTreeWidget;

namespace pelorin::desktop {

/// Every loaded element set with its age, and below them what could not be used.
class TFormSatKepsSummary : public session::TForm {
  Q_OBJECT

 public:
  TFormSatKepsSummary(session::Session& session, QWidget* parent);

  void FormCreate() override;
  void FormShow() override;

 private:
  QWidget* FirstControl() const override;
  void FillList();
  void ShowLeftOut();
  /// Returns the width of all columns.
  int SizeColumns();
  /// Opens the window for all columns, and as many rows as look well.
  void SizeToList(int columnsWidth);

  QLabel* labelSource_ = nullptr;
  QTreeWidget* listViewKeps_ = nullptr;
  QLabel* labelEmpty_ = nullptr;
  QLabel* labelLeftOut_ = nullptr;
  bool wasSized_ = false;
};

}  // namespace pelorin::desktop
