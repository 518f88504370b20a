#pragma once

class QApplication;

/// Colours and fonts of the program's windows, the same on every desktop.
namespace pelorin::desktop {

enum class Look { AsDesktop = 0, Light = 1, Dark = 2 };

/// Style and fonts; once, before the first window. True when the desktop's own colours are dark.
bool SetUpStyle(QApplication& application);

/// Takes effect at once in every window.
void ApplyLook(QApplication& application, Look look, bool desktopIsDark);

}  // namespace pelorin::desktop
