#pragma once

#include <QMainWindow>
#include <QUrl>
#include <memory>

class QAction;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QTabWidget;
class QTextBrowser;
class QToolBar;

namespace pelorin::desktop {

class HelpBook;

/// The help book: contents, keywords and search at the left, the page at the right. A window of its own,
/// which can be used whatever dialog waits for an answer.
class THelpWindow : public QMainWindow {
  Q_OBJECT

 public:
  explicit THelpWindow(std::unique_ptr<HelpBook> book);
  ~THelpWindow() override;

  /// Shows a topic by its number, or one of the tabs (session::kHelpContents, kHelpIndex), and comes to the
  /// front.
  void ShowTopic(int context);

 protected:
  bool event(QEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void BuildToolBar();
  void BuildFindBar();
  QWidget* BuildContents();
  QWidget* BuildIndex();
  QWidget* BuildSearch();

  void OpenPage(const QUrl& url);
  void PageChanged(const QUrl& url);
  void ComeToFront();
  void BelongToModalWindow();
  void BelongToModalWindowBeside();
  void StartFinding();
  void EndFinding();
  void FindInPage(bool backward);
  void Search();
  void OpenHit(const QListWidgetItem* item);

  std::unique_ptr<HelpBook> book_;
  QTabWidget* tabs_;
  QTextBrowser* browser_;
  QToolBar* findBar_ = nullptr;
  QLineEdit *editFind_ = nullptr, *editIndex_ = nullptr, *editSearch_ = nullptr;
  QListWidget* hits_ = nullptr;
};

}  // namespace pelorin::desktop
