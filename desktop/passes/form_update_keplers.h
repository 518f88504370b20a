#pragma once

#include <QStringList>

#include "elements/element_download.h"
#include "session/form.h"

class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QTreeWidget;

namespace pelorin::desktop {

/// Fetches fresh copies of the loaded element files. They take effect when the program starts the next time.
class TFormUpdateKeplers : public session::TForm {
  Q_OBJECT

 public:
  /// `baseAddress` is the service's, with a "/" at its end; earlier sets, and when the service was asked, are
  /// kept in `userDataFolder`.
  TFormUpdateKeplers(session::Session& session, const QString& baseAddress, const QString& userDataFolder,
                     QWidget* parent);

  void FormShow() override;
  void ButtonUpdateClick();
  void ButtonCancelClick();

  /// Escape and the window's closing button do what "Cancel" does.
  void reject() override;

 private:
  QWidget* FirstControl() const override;
  void FormCreate() override;
  void Build();
  void SetRunning(bool running);
  /// Lets the user decide about files that were asked for a short time ago.
  bool AskWhetherToInsist(const elements::ElementRequests& requests);
  elements::UpdateResult Run(const elements::ElementRequests& requests, bool insist);
  bool BeforeFile(int file);
  void AfterFile(int file, elements::FileOutcome outcome);

  const QString baseAddress_, userDataFolder_;
  elements::ElementDownload download_;
  QString folder_;
  QStringList files_;
  QList<elements::FileOutcome> outcomes_;
  bool isRunning_ = false;
  bool isCancelled_ = false;

  QLabel* labelIntro_;
  QTreeWidget* checkListBoxFiles_;
  QLineEdit* editBaseUrl_;
  QLabel* labelProgress_;
  QProgressBar* progressBar_;
  QPushButton *buttonUpdate_, *buttonCancel_;
};

}  // namespace pelorin::desktop
