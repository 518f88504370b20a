#pragma once

#include <QStringList>
#include <optional>

#include "desktop/overlay/which_pass_box.h"
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
  int Satellite = -1;            ///< its place in the list
  orbit::TDateTime Start;        ///< UTC of the first line
  bool IsStartByCoasts = false;  ///< it was found by the picture's coasts
  QStringList Scanners;
  int Scanner = -1;                   ///< −1: as satellite and width tell
  std::optional<swath::Stored> Lies;  ///< nothing: as pictures of its kind mostly are

  bool operator==(const PictureDetails&) const = default;
};

/// Asks for it, and finds it out if the picture shows coasts.
class TFormPictureDetails : public session::TForm {
  Q_OBJECT

 public:
  TFormPictureDetails(session::Session& session, QWidget* parent);

  /// True when the user has confirmed; `details` is then what was entered. The question's satellites are
  /// those of the details.
  bool Ask(PictureDetails& details, PassQuestion question);

 private:
  void FormCreate() override;
  void FormShow() override;
  QWidget* FirstControl() const override;
  void ButtonOKClick();
  void StartDateChange();
  void ChooseWay(const std::optional<swath::Stored>& lies);
  void PassChosen(const PassAnswer& answer);

  PictureDetails details_;
  PassQuestion question_;
  std::optional<orbit::TDateTime> startByCoasts_;  ///< as the pickers show it
  QLabel* LabelReason = nullptr;
  QComboBox *ComboBoxSatellite = nullptr, *ComboBoxScanner = nullptr, *ComboBoxStored = nullptr;
  QDateEdit* StartDate = nullptr;
  QTimeEdit* StartTime = nullptr;
  TWhichPassBox* GroupBoxWhichPass = nullptr;
};

}  // namespace pelorin::desktop
