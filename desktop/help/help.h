#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <memory>

namespace pelorin::desktop {

class THelpWindow;

/// Help topics that the menu opens.
inline constexpr int kHelpIntroduction = 10;
inline constexpr int kHelpFaqs = 200;
/// The topic of boxes that have none of their own.
inline constexpr int kHelpMessages = 290;

/// The help topic of a page or dialog by its object's name; 0 when it has none.
int HelpTopicOf(const QString& objectName);

/// The help collection of an executable: "../Help/Pelorin.qhc" seen from its folder if there is one, or that
/// of the installed data, or else the file beside the executable with its name, which need not exist.
QString HelpFile(const QString& programPath);

/// What the user reads when the collection is not there, or is no collection.
QString NoHelpText(const QString& helpFile);
QString BadHelpText(const QString& helpFile, const QString& reason);

/// The help as the whole program has it: one window, made when it is first asked for. Installed as the
/// application's event filter it opens the topic of a dialog in which F1 is pressed: its own, that of the
/// window below for a file or print dialog, and all messages for a box without a topic.
class Help : public QObject {
 public:
  /// `say` tells the user why there is no help.
  Help(const QString& helpFile, std::function<void(const QString& text)> say);
  ~Help() override;

  /// A topic by its number, or session::kHelpContents, session::kHelpIndex. A number without a topic shows
  /// the contents.
  void Show(int context);

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QString helpFile_;
  std::function<void(const QString& text)> say_;
  std::unique_ptr<THelpWindow> window_;
};

}  // namespace pelorin::desktop
