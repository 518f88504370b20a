#pragma once

#include <QStringList>

#include "elements/element_download.h"
#include "elements/element_update.h"
#include "session/form.h"

class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QTreeWidget;

namespace pelorin::desktop {

/// Fetches fresh copies of the loaded element files, which are in use from then on.
class TFormUpdateKeplers : public session::TForm {
  Q_OBJECT

 public:
  TFormUpdateKeplers(session::Session& session, QWidget* parent);

  void FormShow() override;
  void ButtonUpdateClick();
  void ButtonCancelClick();
  void ButtonPublicAddressClick();
  void EditBaseUrlExit();

  /// Escape and the window's closing button do what "Cancel" does.
  void reject() override;

 private:
  QWidget* FirstControl() const override;
  void FormCreate() override;
  void Build();
  /// Lists the files of the loaded sets, all with that mark.
  void FillFiles(Qt::CheckState state);
  void SetAddress(const QString& address);
  void SetRunning(bool running);
  /// Lets the user decide about files that were asked for a short time ago.
  bool AskWhetherToInsist(const elements::ElementRequests& requests);
  elements::UpdateResult Run(const elements::ElementRequests& requests, bool insist);
  bool BeforeFile(int file);
  void AfterFile(int file, const elements::FileResult& result);

  QString baseAddress_;  ///< of the service, with a "/" at its end
  elements::ElementDownload download_;
  QStringList files_;
  QList<elements::FileOutcome> outcomes_;
  bool isRunning_ = false;
  bool isCancelled_ = false;

  QLabel* labelIntro_;
  QTreeWidget* checkListBoxFiles_;
  QLineEdit* editBaseUrl_;
  QLabel* labelProgress_;
  QProgressBar* progressBar_;
  QPushButton *buttonPublicAddress_, *buttonUpdate_, *buttonCancel_;
};

}  // namespace pelorin::desktop
