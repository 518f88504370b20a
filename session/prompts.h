#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace pelorin::session {

/// What stands for the number of a topic to see the help's table of contents, or its keywords.
inline constexpr int kHelpContents = -3;
inline constexpr int kHelpIndex = -2;

enum class Answer { Yes, No };

/// Everything that the program asks or tells its user in a box of its own. One interface, so that what is
/// said can be recorded where nobody sits before the screen. Texts may hold line ends of any kind.
///
/// `helpContext` is the number of the help topic behind a box's Help button; the box stays open while help is
/// shown.
class Prompts {
 public:
  virtual ~Prompts() = default;

  /// Something to know, with OK.
  virtual void Message(const QString& text) = 0;
  /// Something went wrong, with OK.
  virtual void Error(const QString& text) = 0;
  /// A warning with OK and Help.
  virtual void Warning(const QString& text, int helpContext) = 0;
  /// A warning with Retry, Ignore and Help; true for Retry. Closing the box means Ignore.
  virtual bool RetryOrIgnore(const QString& text, int helpContext) = 0;
  /// A warning with OK, Cancel and Help; true for OK. Closing the box means Cancel.
  virtual bool OkOrCancel(const QString& text, int helpContext) = 0;
  /// A question with Yes and No, and Help if there is a topic; closing the box means No, the Enter key means
  /// `preselected`.
  virtual bool Confirm(const QString& text, int helpContext = 0, Answer preselected = Answer::Yes) = 0;

  /// A folder that exists, as the chooser returns it; nothing when the user cancels.
  virtual std::optional<QString> ChooseFolder(const QString& title, const QString& startFolder) = 0;
  /// An existing file. `filters` are of the form "Picture files (*.bmp *.jpg)"; the one at `filter` is
  /// selected.
  virtual std::optional<QString> OpenFile(const QString& title, const QString& startFolder,
                                          const QStringList& filters, int filter) = 0;
  /// A file to write; the user was asked already whether an existing one may be replaced.
  virtual std::optional<QString> SaveFile(const QString& title, const QString& startPath,
                                          const QStringList& filters) = 0;

  /// Shows a help topic, or one of the help's tabs.
  virtual void Help(int context) = 0;
};

}  // namespace pelorin::session
