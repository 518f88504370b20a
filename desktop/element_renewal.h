#pragma once

#include <QLabel>
#include <QObject>
#include <QThread>
#include <QTimer>
#include <memory>

#include "elements/element_renewal.h"
#include "session/session.h"

namespace pelorin::desktop {

/// Renews the elements of satellites in use, or offers to, in a line of the status bar; soon after the start
/// and once a day from then on. The work is done beside the window. What it brings, ElementWatch sees.
class ElementRenewal : public QObject {
  Q_OBJECT

 public:
  /// The label is borrowed; it is hidden while there is nothing to say.
  ElementRenewal(session::Session& session, QLabel* line, QObject* parent);
  /// Ends what is under way.
  ~ElementRenewal() override;

  session::Prompts& Boxes() const { return session_.Boxes; }

 private:
  void TimerRenewalTimer();
  /// Somebody else may have renewed what is offered.
  void SatellitesReloaded();
  void LinkActivated(const QString& link);
  /// Those of satellites in use that are due.
  QStringList FilesOfOldSets() const;
  /// Asks, or takes back the question where there is nothing to renew.
  void Offer(const QStringList& files);
  void Start(const QStringList& files);
  void ThreadFinished();
  /// `text` may have links; `tip` is plain.
  void Show(const QString& text, const QString& tip = {});

  session::Session& session_;
  QLabel* line_;
  QTimer* timerRenewal_;
  bool isOffered_ = false;           ///< the line asks
  std::unique_ptr<QThread> thread_;  ///< null while nothing is under way
  elements::RenewalReport report_;   ///< the thread's, until it has finished
};

}  // namespace pelorin::desktop
