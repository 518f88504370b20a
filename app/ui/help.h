#pragma once

#include <QString>
#include <functional>

namespace pelorin::ui {

/// Help topics that the menu opens.
inline constexpr int kHelpIntroduction = 10;
inline constexpr int kHelpFaqs = 200;

/// The help collection of an executable: "../Help/Pelorin.qhc" seen from its folder if there is one, or that
/// of the installed data, or else the file beside the executable with its name, which need not exist.
QString HelpFile(const QString& programPath);

/// What the user reads when the collection is not there.
QString NoHelpText(const QString& helpFile);

}  // namespace pelorin::ui
