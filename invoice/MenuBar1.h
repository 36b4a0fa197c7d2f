// SPDX-License-Identifier: GPL-3.0-or-later
// The menu bar of the main window and of the application: File, Edit, Print and Help.
#pragma once

#include <memory>

#include "rb/rb.h"

// Builds the menu bar as designed.
std::unique_ptr<MenuBar> BuildMenuBar1();

// The program's one menu bar, built on first use.
MenuBar* MenuBar1();
