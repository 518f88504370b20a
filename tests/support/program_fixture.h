#pragma once

#include <QApplication>
#include <QColor>
#include <QDate>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <functional>
#include <memory>

#include "app/registry_store.h"
#include "app/time_zone.h"
#include "desktop/form_main.h"
#include "orbit/date_time.h"
#include "tests/support/recording_prompts.h"

class QAbstractSpinBox;

namespace pelorin::tests {

/// The whole program over a temporary folder: "bin" for the portable executable, the built map data beside it
/// as after an installation, settings and a data folder, "user", of its own, a clock that stands still, and
/// boxes that are recorded. The working folder is "elsewhere" while it lives. Several runs may follow each
/// other.
class ProgramFixture {
 public:
  /// Ordinary settings when there are active satellites, separated by commas; or else those of a first start.
  explicit ProgramFixture(const QString& activeSatellites = {});
  ~ProgramFixture();

  QString Path(const QString& name) const { return folder_.filePath(name); }
  QString ProgramPath() const { return Path(QStringLiteral("bin/pelorin")); }

  /// A setting of the program, as an earlier run would have left it; without them a start is the first one.
  void Set(const QString& name, const app::RegistryDocument::Value& value);
  QString SavedText(const QString& name) const;
  std::optional<int> SavedNumber(const QString& name) const;
  /// A station, a list of active satellites and the demonstration's elements, 45 sets of February 2022: an
  /// ordinary start.
  void GiveOrdinarySettings(const QString& activeSatellites);
  /// A received picture of 300 lines and one colour in the user's folder of pictures, written on that day.
  QString GivePicture(const QString& name, const QColor& colour = Qt::gray,
                      const QDate& written = QDate(2022, 2, 23)) const;

  /// Starts the program, shows its window and waits until that has settled.
  void Start(const QString& passString = {});
  void StartOn(session::Page page);
  /// Closes the window and ends the program.
  void Close();

  /// A control of the running program by its name: of the dialog in front, or else of the window.
  template <class Control = QWidget>
  Control* Find(const char* name) const {
    const QLatin1StringView wanted(name);
    const QWidget* dialog = QApplication::activeModalWidget();
    auto* control = dialog != nullptr ? dialog->findChild<Control*>(wanted) : nullptr;
    if (control == nullptr) control = Form->findChild<Control*>(wanted);
    if (control == nullptr) throw std::runtime_error(std::string("there is no ") + name);
    return control;
  }
  void Click(const char* button) const;
  /// What a chooser, a picker, a label or a button shows.
  QString Text(const char* name) const;
  /// Selects the one pass of that list whose entry begins and ends so, and returns the entry.
  QString ChoosePass(const QString& start, const QString& satellite) const;
  /// Opens a dialog by a button or a menu's item, and works in it; it is closed afterwards if it still shows.
  void InDialog(const char* opener, const std::function<void(QDialog& dialog)>& work) const;
  /// Fires a timer at once.
  void Fire(const char* timer) const;

  RecordingPrompts Boxes;
  session::Prompts* UserBoxes = &Boxes;  ///< of the next start
  orbit::TDateTime Now;
  app::TimeZone TimeZone{QTimeZone("Europe/London")};
  QStringList SplashTexts, CallerTexts;
  std::unique_ptr<session::UnattendedRun> Unattended;  ///< of a program started with a pass
  std::unique_ptr<desktop::TFormMain> Form;

 private:
  QTemporaryDir folder_;
  QString before_;
  std::unique_ptr<app::RegistryStore> store_;
};

/// Clicks once into a picker, behind so many characters of its text, and types.
void ClickAndType(QAbstractSpinBox* picker, int position, const QString& typed);

}  // namespace pelorin::tests
