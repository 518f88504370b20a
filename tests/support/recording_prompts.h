#pragma once

#include <QStringList>
#include <optional>

#include "session/prompts.h"

namespace pelorin::tests {

/// Boxes that nobody sees: what they say is kept, and they are answered at once.
class RecordingPrompts : public session::Prompts {
 public:
  QStringList Said;   ///< every text in order, with its kind: "Message: …"
  QStringList Asked;  ///< titles of folder and file choosers
  QList<int> HelpShown;

  bool AnswerRetry = false, AnswerConfirm = false;
  std::optional<QString> ChosenFolder, ChosenFile;

  /// Texts said since the last call.
  QStringList Take() { return std::exchange(Said, {}); }

  void Message(const QString& text) override { Said.append(QStringLiteral("Message: ") + text); }
  void Error(const QString& text) override { Said.append(QStringLiteral("Error: ") + text); }
  void Warning(const QString& text, int helpContext) override {
    Said.append(QStringLiteral("Warning %1: %2").arg(helpContext).arg(text));
  }
  bool RetryOrIgnore(const QString& text, int helpContext) override {
    Said.append(QStringLiteral("Retry? %1: %2").arg(helpContext).arg(text));
    return AnswerRetry;
  }
  bool OkOrCancel(const QString& text, int helpContext) override {
    Said.append(QStringLiteral("OK? %1: %2").arg(helpContext).arg(text));
    return AnswerConfirm;
  }
  bool Confirm(const QString& text, int, session::Answer preselected) override {
    Said.append((preselected == session::Answer::Yes ? QStringLiteral("Yes? ") : QStringLiteral("No? ")) +
                text);
    return AnswerConfirm;
  }
  std::optional<QString> ChooseFolder(const QString& title, const QString&) override {
    Asked.append(title);
    return ChosenFolder;
  }
  std::optional<QString> OpenFile(const QString& title, const QString&, const QStringList&, int) override {
    Asked.append(title);
    return ChosenFile;
  }
  std::optional<QString> SaveFile(const QString& title, const QString&, const QStringList&) override {
    Asked.append(title);
    return ChosenFile;
  }
  void Help(int context) override { HelpShown.append(context); }
};

}  // namespace pelorin::tests
