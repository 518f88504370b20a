#pragma once

#include <functional>

#include "session/prompts.h"

class QMessageBox;

namespace pelorin::session {

/// The boxes as Qt's dialogs, over whichever window is in front.
class QtPrompts : public Prompts {
 public:
  /// `title` is that of the boxes; `showHelp` shows a help topic by its number.
  QtPrompts(const QString& title, std::function<void(int)> showHelp);

  void Message(const QString& text) override;
  void Error(const QString& text) override;
  void Warning(const QString& text, int helpContext) override;
  bool RetryOrIgnore(const QString& text, int helpContext) override;
  bool OkOrCancel(const QString& text, int helpContext) override;
  bool Confirm(const QString& text, int helpContext, Answer preselected) override;
  std::optional<QString> ChooseFolder(const QString& title, const QString& startFolder) override;
  std::optional<QString> OpenFile(const QString& title, const QString& startFolder,
                                  const QStringList& filters, int filter) override;
  std::optional<QString> SaveFile(const QString& title, const QString& startPath,
                                  const QStringList& filters) override;
  void Help(int context) override;

 private:
  /// Runs the box; its Help button, if it has one, leaves it open.
  int Ask(QMessageBox& box, int helpContext);

  QString title_;
  std::function<void(int)> showHelp_;
};

}  // namespace pelorin::session
