// SPDX-License-Identifier: GPL-3.0-or-later
// The application object and the program's start.
#pragma once

#include <string>
#include <vector>

#include "rb/rb.h"

class App : public Application {
 public:
  void Event_Open() override;
};

// An entry of the file type table.
struct FileType {
  std::string Name;
  std::string Extensions;
  std::string MacType;
  std::string MacCreator;
};

// pText, pPrefs, pImageGif, pImageJpeg, pImagePict.
const std::vector<FileType>& FileTypes();

// Registers every window class of the program. Idempotent.
void RegisterWindows();
// The whole start-up sequence, as when the user launches the program: the file types, App with
// MenuBar1, App.Event_Open, then the main window.
void StartProgram();
// Drops every window and global: a fresh program state for the next start.
void ResetProgram();
