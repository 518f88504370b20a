#pragma once

#include <QStringList>
#include <optional>

#include "session/form.h"
#include "swath/recording.h"

class QComboBox;
class QDateEdit;
class QLabel;
class QTimeEdit;

namespace pelorin::desktop {

/// What a picture is of, as the user may know better than its name.
struct PictureDetails {
  QString Reason;  ///< why it is asked
  QStringList Satellites;
  int Satellite = -1;      ///< its place in the list
  orbit::TDateTime Start;  ///< UTC of the first line
  QStringList Scanners;
  int Scanner = -1;                   ///< −1: as satellite and width tell
  std::optional<swath::Stored> Lies;  ///< nothing: as pictures of its kind mostly are

  bool operator==(const PictureDetails&) const = default;
};

/// Asks for it.
class TFormPictureDetails : public session::TForm {
  Q_OBJECT

 public:
  TFormPictureDetails(session::Session& session, QWidget* parent);

  /// True when the user has confirmed; `details` is then what was entered.
  bool Ask(PictureDetails& details);

 private:
  void FormCreate() override;
  void FormShow() override;
  QWidget* FirstControl() const override;
  void ButtonOKClick();

  PictureDetails details_;
  QLabel* LabelReason = nullptr;
  QComboBox *ComboBoxSatellite = nullptr, *ComboBoxScanner = nullptr, *ComboBoxStored = nullptr;
  QDateEdit* StartDate = nullptr;
  QTimeEdit* StartTime = nullptr;
};

}  // namespace pelorin::desktop
