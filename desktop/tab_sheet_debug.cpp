#include "desktop/tab_sheet_debug.h"

#include <QFontDatabase>
#include <QGridLayout>
#include <QLabel>

#include "app/propagator_check.h"
#include "session/controls.h"
#include "session/list_box.h"

namespace pelorin::desktop {

TTabSheetDebug::TTabSheetDebug(session::Session& session, QWidget* parent)
    : TTabSheet(session, parent),
      searched_(session::Named(new session::TListBox(this), "ListBoxDebug")),
      propagated_(session::Named(new session::TListBox(this), "ListBoxPropagator")) {
  setObjectName(QStringLiteral("TabSheetDebug"));
  searched_->SetEmptyText(QStringLiteral("No picture has been searched for."));
  const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  searched_->setFont(fixed);
  propagated_->setFont(fixed);
  auto* rows = new QGridLayout(this);
  rows->addWidget(session::LabelFor(QStringLiteral("&Pictures searched for"), searched_, this), 0, 0);
  rows->addWidget(session::LabelFor(QStringLiteral("P&ropagator self-check"), propagated_, this), 0, 1);
  rows->addWidget(searched_, 1, 0);
  rows->addWidget(propagated_, 1, 1);
  rows->setColumnStretch(0, 1);
  rows->setColumnStretch(1, 3);
  Handle(this, &TTabSheet::Shown, this, &TTabSheetDebug::TabSheetDebugShow);
  Handle(&session, &session::Session::PictureSearchBegun, this, &TTabSheetDebug::ClearSearched);
  Handle(&session, &session::Session::PictureSearched, this, &TTabSheetDebug::AddSearched);
}

void TTabSheetDebug::ClearSearched() { searched_->clear(); }

void TTabSheetDebug::AddSearched(const QString& baseName) { searched_->addItem(baseName); }

void TTabSheetDebug::TabSheetDebugShow() { propagated_->SetItems(app::PropagatorCheckLines()); }

}  // namespace pelorin::desktop
