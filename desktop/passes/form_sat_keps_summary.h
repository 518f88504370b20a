#pragma once

#include <QDialog>

#include "session/session.h"

class QLabel;
class QTreeWidget;

namespace pelorin::desktop {

/// Every loaded element set with its age, and below them what could not be used.
class TFormSatKepsSummary : public QDialog {
  Q_OBJECT

 public:
  TFormSatKepsSummary(session::Session& session, QWidget* parent);

  session::Prompts& Boxes() const { return session_.Boxes; }

  void FormShow();

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void FillList();
  void ShowLeftOut();
  /// Returns the width of all columns.
  int SizeColumns();
  /// Opens the window for all columns, and as many rows as look well.
  void SizeToList(int columnsWidth);

  session::Session& session_;
  QLabel* labelSource_;
  QTreeWidget* listViewKeps_;
  QLabel* labelEmpty_;
  QLabel* labelLeftOut_;
};

}  // namespace pelorin::desktop
