// SPDX-License-Identifier: GPL-3.0-or-later
// The menu bar as designed. Every item enables itself while the front window has a handler for
// it; no code enables, disables, checks or renames an item.
#include "invoice/MenuBar1.h"

namespace {

enum Row { Menu, Item };
constexpr MenuItem::Kind MenuItemClass = MenuItem::Kind::Normal;
constexpr MenuItem::Kind AppleMenuItem = MenuItem::Kind::AppleMenu;
constexpr MenuItem::Kind QuitMenuItem = MenuItem::Kind::Quit;

struct MenuRow {
  Row row;
  const char* name;
  MenuItem::Kind cls;
  const char* text;
  const char* key;
};

// The menus in the order they are added, each followed by its items. The four items that have no
// handler (filebackup, filedeletecustomers, fileimportbackup, editprefs) stay, dimmed, with their
// keys.
const MenuRow kMenuBar1[] = {
    // clang-format off
    //row  name                    class          text                    key
    {Menu, "FileMenu",             MenuItemClass, "&File",                ""},
    {Item, "filenew",              MenuItemClass, "New invoice",          "Cmd+N"},
    {Item, "filesave",             MenuItemClass, "Save invoice",         "Cmd+S"},
    {Item, "filedeleteinvoice",    MenuItemClass, "Delete invoice",       "Cmd+D"},
    {Item, "UntitledMenu4",        MenuItemClass, "-",                    ""},
    {Item, "filebackup",           MenuItemClass, "Backup customer file", "Cmd+B"},
    {Item, "filedeletecustomers",  MenuItemClass, "Delete customer file", "Cmd+Shift+D"},
    {Item, "fileimportbackup",     MenuItemClass, "Import backup file",   "Cmd+I"},
    {Item, "UntitledMenu3",        MenuItemClass, "-",                    ""},
    {Item, "fileprint",            MenuItemClass, "Print invoice",        "Cmd+P"},
    {Item, "Pagesetup",            MenuItemClass, "Page set up",          "Cmd+Shift+p"},
    {Item, "UntitledMenu2",        MenuItemClass, "-",                    ""},
    {Item, "FileQuit",             QuitMenuItem,  "Quit ledgerly",        "Cmd+Q"},
    {Menu, "EditMenu",             MenuItemClass, "&Edit",                ""},
    {Item, "UntitledMenu1",        MenuItemClass, "-",                    ""},
    {Item, "EditCut",              MenuItemClass, "Cut",                  "Cmd+X"},
    {Item, "EditCopy",             MenuItemClass, "Copy",                 "Cmd+C"},
    {Item, "EditPaste",            MenuItemClass, "Paste",                "Cmd+V"},
    {Item, "EditClear",            MenuItemClass, "Clear",                ""},
    {Item, "UntitledMenu0",        MenuItemClass, "-",                    ""},
    {Item, "editprefs",            MenuItemClass, "Ledgerly preferences", "Cmd+,"},
    {Item, "editstock",            MenuItemClass, "Stock",                "Cmd+E"},
    {Menu, "Printmenu",            MenuItemClass, "Print",                ""},
    {Item, "PrintReminder",        MenuItemClass, "Print reminder",       "Cmd+R"},
    {Item, "PrintReceipt",         MenuItemClass, "Print receipt",        "Cmd+Shift+R"},
    {Item, "printlabel",           MenuItemClass, "Print label Tiger",    "Cmd+L"},
    {Item, "PrintLabelLep",        MenuItemClass, "Print label Leopard",  "Cmd+Option+L"},
    {Item, "PrintPrintsmalllabel", MenuItemClass, "Print small label",    "Cmd+Shift+l"},
    {Item, "PrintA5Envelope",      MenuItemClass, "Print a5 envelope",    "Cmd+Shift+e"},
    {Menu, "Helpmenu",             MenuItemClass, "Help",                 ""},
    {Item, "ledgerlyhelp",         MenuItemClass, "Ledgerly help",        "Cmd+H"},
    {Item, "appleabout",           AppleMenuItem, "About Ledgerly",       "Cmd+A"},
    {Item, "appleprefs",           AppleMenuItem, "Ledgerly prefs",       "Cmd+,"},
    {Item, "UntitledMenu6",        AppleMenuItem, "-",                    ""},
    // clang-format on
};

}  // namespace

std::unique_ptr<MenuBar> BuildMenuBar1() {
  auto bar = std::make_unique<MenuBar>();
  MenuItem* menu = nullptr;
  for (const MenuRow& r : kMenuBar1) {
    auto item = std::make_unique<MenuItem>(r.name, String(r.text), r.key, r.cls);
    item->AutoEnable = true;
    if (r.row == Menu) {
      menu = bar->Append(std::move(item));
    } else {
      menu->Append(std::move(item));
    }
  }
  return bar;
}

MenuBar* MenuBar1() {
  static const std::unique_ptr<MenuBar> bar = BuildMenuBar1();
  return bar.get();
}
