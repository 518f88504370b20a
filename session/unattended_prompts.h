#pragma once

#include <functional>
#include <vector>

#include "session/prompts.h"

namespace pelorin::session {

/// The boxes of a run that nobody may be watching, as when a recording program has started it: nothing waits
/// for a click. What there is to say goes to `tell`; questions are answered so that the run can go on without
/// changing what is the user's.
///
/// Once it is known that somebody has to look, `Attend` hands over to the real boxes: they show what was said
/// until then, and everything that follows, unless `Leave` comes first.
class UnattendedPrompts : public Prompts {
 public:
  /// `attended` must outlive this object.
  UnattendedPrompts(Prompts& attended, std::function<void(const QString&)> tell);

  /// Returns when what was said has been read.
  void Attend();
  /// Nobody is there after all.
  void Leave() { isAttended_ = false; }
  bool IsAttended() const { return isAttended_; }

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
  /// Shows at once, or tells and keeps for later.
  void Say(const QString& text, std::function<void()> show);

  Prompts& attended_;
  std::function<void(const QString&)> tell_;
  std::vector<std::function<void()>> kept_;
  bool isAttended_ = false;
};

}  // namespace pelorin::session
