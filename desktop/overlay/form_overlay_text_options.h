#pragma once

#include <array>
#include <cstdint>

#include "session/form.h"

class QLabel;
class QListWidget;

namespace pelorin::desktop {

/// The dialog in which the user chooses what each of the overlay's text lines holds.
class TFormOverlayTextOptions : public session::TForm {
  Q_OBJECT

 public:
  TFormOverlayTextOptions(session::Session& session, QWidget* parent);

  /// Asks, starting from the settings; they change only when the user confirms.
  void Run();

 private:
  static constexpr std::size_t kLines = 3;

  void FormCreate() override;
  void FormShow() override;
  QWidget* FirstControl() const override;
  void CheckListBoxLinesClickCheck(std::size_t line);
  void ShowPreview();

  std::array<std::uint8_t, kLines> items_{};  ///< TextItem bits
  std::array<QListWidget*, kLines> lists_{};
  std::array<QLabel*, kLines> previews_{};
};

}  // namespace pelorin::desktop
