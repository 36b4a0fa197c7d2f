// SPDX-License-Identifier: GPL-3.0-or-later
// The system's print, page setup and file-open dialogs. A printer is set to 72 units to the inch,
// the full page and no margins of its own, so that a layout's points land on the paper where
// they are written.
#pragma once

#include <QString>
#include <functional>
#include <memory>

#include "rb/Files.h"
#include "rb/Graphics.h"

class QPrinter;
class QWidget;

namespace desk {

std::unique_ptr<PageSurface> RunPrintDialog(const PrinterSetup* setup, QWidget* parent);
bool RunPageSetupDialog(PrinterSetup& setup, QWidget* parent);
Ref<FolderItem> RunOpenFileDialog(const String& filter, QWidget* parent);

// "image/gif;image/jpeg" as the dialog's name filter: "Pictures (*.gif *.jpg ...)".
QString NameFilterFor(const String& filter);

// Takes the place of the file-open dialog: given the filter, the chosen path or "" for cancel.
void SetOpenFileHook(std::function<QString(const QString& nameFilter)> hook);

// Where a new PrinterSetup's page comes from: the default printer's paper, when there is one.
void TakeDefaultPaperFromPrinter();

}  // namespace desk
