#include "session/unattended_prompts.h"

#include <utility>

namespace pelorin::session {

UnattendedPrompts::UnattendedPrompts(Prompts& attended, std::function<void(const QString&)> tell)
    : attended_(attended), tell_(std::move(tell)) {}

void UnattendedPrompts::Attend() {
  isAttended_ = true;
  for (const auto& show : std::exchange(kept_, {})) {
    if (isAttended_) show();
  }
}

void UnattendedPrompts::Say(const QString& text, std::function<void()> show) {
  if (isAttended_) return show();
  tell_(text);
  kept_.push_back(std::move(show));
}

void UnattendedPrompts::Message(const QString& text) {
  Say(text, [this, text] { attended_.Message(text); });
}

void UnattendedPrompts::Error(const QString& text) {
  Say(text, [this, text] { attended_.Error(text); });
}

void UnattendedPrompts::Warning(const QString& text, int helpContext) {
  Say(text, [this, text, helpContext] { attended_.Warning(text, helpContext); });
}

bool UnattendedPrompts::RetryOrIgnore(const QString& text, int helpContext) {
  return isAttended_ && attended_.RetryOrIgnore(text, helpContext);
}

bool UnattendedPrompts::OkOrCancel(const QString& text, int helpContext) {
  // A slow way to a result is better than none.
  return !isAttended_ || attended_.OkOrCancel(text, helpContext);
}

bool UnattendedPrompts::Confirm(const QString& text, int helpContext, Answer preselected) {
  return isAttended_ && attended_.Confirm(text, helpContext, preselected);
}

std::optional<QString> UnattendedPrompts::ChooseFolder(const QString& title, const QString& startFolder) {
  if (!isAttended_) return std::nullopt;
  return attended_.ChooseFolder(title, startFolder);
}

std::optional<QString> UnattendedPrompts::OpenFile(const QString& title, const QString& startFolder,
                                                   const QStringList& filters, int filter) {
  if (!isAttended_) return std::nullopt;
  return attended_.OpenFile(title, startFolder, filters, filter);
}

std::optional<QString> UnattendedPrompts::SaveFile(const QString& title, const QString& startPath,
                                                   const QStringList& filters) {
  if (!isAttended_) return std::nullopt;
  return attended_.SaveFile(title, startPath, filters);
}

void UnattendedPrompts::Help(int context) { attended_.Help(context); }

}  // namespace pelorin::session
