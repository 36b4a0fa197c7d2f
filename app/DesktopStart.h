// SPDX-License-Identifier: GPL-3.0-or-later
// The desktop program's start, shared by the program and by the benchmark of its start, so that
// the one measured is the one people run.
#pragma once

#include "DesktopScreen.h"

namespace app {

// Names the application for the desktop and gives it the Fusion look; after the QApplication.
void DressApplication();

// The program's start on the desktop screen, which must already be the current one. Windows that
// show and hide again during the start get their widgets only when they are shown afterwards.
void StartOn(desk::DesktopScreen& screen);

// The event loop, unless a quit was asked during the start; the code to end with.
int RunLoop(desk::DesktopScreen& screen);

}  // namespace app
