// SPDX-License-Identifier: GPL-3.0-or-later
#include "secondary/help.h"

#include <string>
#include <vector>


namespace win {

namespace {

using namespace design;

const WindowDesign kWindow = {
    .Title = "Ledgerly help", .Width = 570, .Height = 610, .Frame = 1, .Placement = 0};

// The help text, group by group: the lines of a group follow each other, and an empty line stands
// between groups.
const std::vector<std::vector<std::string>> kHelpGroups = {
    {"Note: On Windows systems for Command read Control."},
    {"New invoice:",
     "Use Command N to create a new invoice. Fill in the name and address of the cutomer, or use "
     "the drop down menu. Add data to the fields as needed. Use the order number field for any "
     "customer supplied order number."},
    {"Adding stock short cuts:",
     "Open the Stock window, (Command E). Click add item and then double click on the \">\" that "
     "appears. Enter your description then click in the price column and enter the price. Press "
     "enter to confirm data entry. Repeat as many times as you need. The list is saved when you "
     "exit the window and loaded automatically when Ledgerly is run."},
    {"Entering shortcuts into the invoice:",
     "Enter a number in the left column as normal, then Control (right on Windows) click the "
     "description field to open the drop down menu of stock items. Let go on the one you want."},
    {"Save:",
     "Command S will save your invoice. It will appear in the customers list on the right."},
    {"Loading an invoice:", "Click on the one you want in the customers list on the right."},
    {"Deleting an invoice:",
     "Click on the one you want in the customers list on the right and use Command D."},
    {"Printing an invoice:",
     "Click on the one you want in the customers list on the right and use Command P. Comments "
     "will print below the totals."},
    {"Type paid into the status field when clients pay up."},
    {"Printing Labels:",
     "Command L will open the label window. This is set for standard 4 per sheet labels. Just "
     "click on the label you want to print on and click print."},
    {"Shift Command L allows you to print on small labels, the kind that come on a roll, or the "
     "tractor feeder type. Good for envelopes etc."},
    {"Shift Command E allows you to print on A5 size envelopes. This also prints the return "
     "address in the top left corner."},
    {"Prefs window:", "Enter your name and address etc. in the fileds.",
     "Set the start number for your invoices. Will be 1 more on the next invoice.",
     "Set the amount of tax.", "Select the currency symbol."},
    {"Terms Text:",
     "Type anything you need in the field, it will print on your invoice in light gray. Leave it "
     "blank if not needed."},
    {"Reminder Text.", "Type the text you want to appear on the reminder."},
    {"Receipt Text:", "Type the text you want to appear on the receipt."},
    {"Logo:",
     "If you have a logo you'd like printed on your invoice, click the + button and navigate to "
     "it. 100x150 max. Click the - button to delete the logo."},
};

// Line breaks are Chr(13), and none follows the last line.
std::string helptext() {
  std::string text;
  for (const auto& group : kHelpGroups) {
    if (!text.empty()) text += "\r\r";
    for (std::size_t i = 0; i < group.size(); ++i) {
      if (i > 0) text += "\r";
      text += group[i];
    }
  }
  return text;
}

const std::string kHelpText = helptext();

// The text grows with the window, and Close keeps its distance to the bottom.
// clang-format off
const Row kControls[] = {
    // control                                    left  top  width  height  tab  design text        font     size  style  align      limit  back   flags
    {Bind<&help::PushButton1>, "PushButton1", -1, 223,  572, 69,    20,     0,   "Close",           "Times", 14,   plain, unaligned, 0,     blank, Default | Cancel | LockBottom},
    {Bind<&help::EditField1>,  "EditField1",  -1, 20,   14,  530,   540,    1,   kHelpText.c_str(), "Times", 14,   plain, unaligned, 0,     blank, ReadOnly | ScrollBar | Locked},
};
// clang-format on

}  // namespace

help::help() : Window(kClassName, kWindow) {}

void help::CreateControls() {
  design::Build(*this, kControls);
  PushButton1->OnAction = [this] { PushButton1_Action(); };
}

void help::PushButton1_Action() { Hide(); }

}  // namespace win
