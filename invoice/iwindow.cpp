// SPDX-License-Identifier: GPL-3.0-or-later
// The main window as designed: its own properties, its controls at their fixed places, and the
// wiring of every handler onto them. What the handlers do lives in the files named after it.
#include "invoice/iwindow.h"

#include <string>

#include "invoice/MenuBar1.h"

namespace win {

namespace {

using namespace design;

// The window itself; the menu bar is MenuBar1.
const WindowDesign kWindow = {
    .Title = "Ledgerly - by Tobin Arle", .Width = 840, .Height = 631, .MinWidth = 64,
    .MinHeight = 64, .MaxWidth = 32000, .MaxHeight = 32000, .Frame = 0, .Placement = 2,
    .Resizeable = true, .CloseButton = true, .MaximizeButton = true, .MinimizeButton = true,
    .VisibleByDesign = true, .HasBackColor = false, .BackColor = 0xFFFFFF};

// Every control's face.
const char* const kTimes = "Times";

// The ten lineitem rows, for i from 0 to 9, 28 pixels apart: the signs stand one pixel lower than
// the fields. Row by row, the Tab key walks across number, description and price, and then to the
// next row; the totals come much later in the order.
// clang-format off
const Row kLineitems[] = {
    // control                                      left  top        width  height  tab      text  font    size  style  align  limit  back      flags
    {Bind<&iwindow::number>,      "number",      0, 15,   {181, 28}, 40,    22,     {5, 3},  "",   kTimes, 14,   plain, right, 5,     0xFFFFFF, 0},
    {Bind<&iwindow::description>, "description", 0, 62,   {181, 28}, 310,   22,     {6, 3},  "",   kTimes, 14,   plain, left,  50,    0xFFFFFF, 0},
    {Bind<&iwindow::currenysign>, "currenysign", 0, 379,  {182, 28}, 20,    20,     {61, 1}, "?",  kTimes, 14,   plain, right, 0,     blank,    0},
    {Bind<&iwindow::price>,       "price",       0, 407,  {181, 28}, 60,    22,     {7, 3},  "",   kTimes, 14,   plain, right, 7,     0xFFFFFF, 0},
    {Bind<&iwindow::total>,       "total",       0, 474,  {181, 28}, 80,    22,     {43, 1}, "",   kTimes, 14,   plain, right, 0,     0xDCDCE4, ReadOnly},
};

// All other controls, in the order of their creation, which is also their stacking order. The name
// book can be used on a new invoice only; the unpaid list is a store, never seen. The program's
// name stands twice at the top right, dark green behind light grey. The stock menu has no place on
// the window: it opens at the mouse.
const Row kControls[] = {
    // control                                                     left  top  width  height  tab  design text          font    size  style               align      limit  back      flags                    text colour
    {Bind<&iwindow::StaticText1>,        "StaticText1",        -1, 62,   156, 310,   21,     0,   " item description", kTimes, 12,   plain,              centre,    0,     blank,    0},
    {Bind<&iwindow::StaticText2>,        "StaticText2",        -1, 15,   157, 40,    20,     1,   "number",            kTimes, 12,   plain,              centre,    0,     blank,    0},
    {Bind<&iwindow::StaticText3>,        "StaticText3",        -1, 419,  157, 45,    20,     2,   "cost each",         kTimes, 12,   plain,              centre,    0,     blank,    0},
    {Bind<&iwindow::customername>,       "customername",       -1, 44,   14,  510,   23,     3,   "customer name",     kTimes, 14,   plain,              left,      0,     0xFFFFFF, 0},
    {Bind<&iwindow::customeraddress>,    "customeraddress",    -1, 15,   48,  356,   96,     4,   "customer address",  kTimes, 14,   plain,              left,      0,     0xFFFFFF, 0},
    {Bind<&iwindow::comments>,           "comments",           -1, 15,   467, 357,   115,    35,  "comments",          kTimes, 14,   plain,              left,      255,   0xFFFFFF, 0},
    {Bind<&iwindow::customers>,          "customers",          -1, 568,  84,  253,   498,    36,  "",                  kTimes, 14,   plain,              unaligned, 0,     blank,    0},
    {Bind<&iwindow::grandtotal>,         "grandtotal",         -1, 474,  467, 80,    22,     37,  "",                  kTimes, 14,   plain,              right,     0,     0xDCDCE4, ReadOnly | NoFocusRing},
    {Bind<&iwindow::datelabel>,          "datelabel",          -1, 397,  87,  71,    18,     38,  "invoice date:",     kTimes, 12,   plain,              right,     0,     blank,    0},
    {Bind<&iwindow::showinvoicenumber>,  "showinvoicenumber",  -1, 383,  124, 85,    18,     39,  "invoice number:",   kTimes, 12,   plain,              right,     0,     blank,    0},
    {Bind<&iwindow::datefield>,          "datefield",          -1, 474,  86,  80,    22,     40,  "",                  kTimes, 14,   plain,              left,      0,     0xDCDCE4, ReadOnly | NoFocusRing},
    {Bind<&iwindow::invoicenumberField>, "invoicenumberField", -1, 474,  123, 80,    22,     41,  "",                  kTimes, 14,   plain,              right,     0,     0xFFFFFF, NoFocusRing},
    {Bind<&iwindow::StaticText4>,        "StaticText4",        -1, 418,  469, 34,    20,     42,  "Total:",            kTimes, 12,   plain,              right,     0,     blank,    0},
    {Bind<&iwindow::StaticText5>,        "StaticText5",        -1, 474,  157, 80,    20,     53,  "totals",            kTimes, 12,   plain,              centre,    0,     blank,    0},
    {Bind<&iwindow::vatfield>,           "vatfield",           -1, 474,  498, 80,    22,     54,  "",                  kTimes, 14,   plain,              right,     0,     0xDCDCE4, ReadOnly | NoFocusRing},
    {Bind<&iwindow::StaticText6>,        "StaticText6",        -1, 412,  499, 40,    20,     55,  "Tax/Vat:",          kTimes, 12,   plain,              right,     0,     blank,    0},
    {Bind<&iwindow::duefield>,           "duefield",           -1, 474,  592, 80,    22,     56,  "",                  kTimes, 14,   bold,               right,     0,     0xDCDCE4, ReadOnly | NoFocusRing},
    {Bind<&iwindow::StaticText7>,        "StaticText7",        -1, 397,  593, 55,    20,     57,  "Total due:",        kTimes, 12,   bold,               right,     0,     blank,    0},
    {Bind<&iwindow::title2>,             "title2",             -1, 590,  6,   200,   80,     58,  "Ledgerly",          kTimes, 50,   italic | underline, centre,    0,     blank,    0,                       0x043001},
    {Bind<&iwindow::title1>,             "title1",             -1, 590,  20,  200,   50,     0,   "Ledgerly",          kTimes, 50,   italic | underline, centre,    0,     blank,    0,                       0xE7E7E7},
    {Bind<&iwindow::statusfield>,        "statusfield",        -1, 655,  593, 55,    22,     59,  "unpaid",            kTimes, 14,   plain,              centre,    0,     0xFFB0B3, NoFocusRing},
    {Bind<&iwindow::StaticText8>,        "StaticText8",        -1, 566,  594, 80,    20,     60,  "This invoice is:",  kTimes, 12,   plain,              right,     0,     blank,    0},
    {Bind<&iwindow::currenysign>,        "currenysign",        10, 451,  469, 20,    20,     71,  "?",                 kTimes, 14,   plain,              right,     0,     blank,    0},
    {Bind<&iwindow::currenysign>,        "currenysign",        11, 451,  499, 20,    20,     72,  "?",                 kTimes, 14,   plain,              right,     0,     blank,    0},
    {Bind<&iwindow::currenysign>,        "currenysign",        12, 451,  593, 20,    20,     73,  "?",                 kTimes, 14,   plain,              right,     0,     blank,    0},
    {Bind<&iwindow::names>,              "names",              -1, 15,   17,  20,    20,     74,  "",                  kTimes, 12,   plain,              unaligned, 0,     blank,    Disabled},
    {Bind<&iwindow::discountfield>,      "discountfield",      -1, 474,  529, 80,    22,     75,  "00.00",             kTimes, 14,   plain,              right,     0,     0xFFFFFF, ReadOnly | NoFocusRing},
    {Bind<&iwindow::currenysign>,        "currenysign",        13, 451,  530, 20,    20,     76,  "?",                 kTimes, 14,   plain,              right,     0,     blank,    0},
    {Bind<&iwindow::StaticText9>,        "StaticText9",        -1, 373,  531, 79,    20,     77,  "Dcount/Depos:",     kTimes, 12,   plain,              right,     0,     blank,    0},
    {Bind<&iwindow::unpaid>,             "unpaid",             -1, 752,  593, 20,    20,     78,  "",                  kTimes, 12,   plain,              unaligned, 0,     blank,    Hidden},
    {Bind<&iwindow::PostageField>,       "PostageField",       -1, 474,  560, 80,    22,     79,  "00.00",             kTimes, 14,   plain,              right,     0,     0xFFFFFF, NoFocusRing},
    {Bind<&iwindow::currenysign>,        "currenysign",        14, 451,  561, 20,    20,     80,  "?",                 kTimes, 14,   plain,              right,     0,     blank,    0},
    {Bind<&iwindow::StaticText10>,       "StaticText10",       -1, 385,  562, 67,    20,     81,  "Postage:",          kTimes, 12,   plain,              right,     0,     blank,    0},
    {Bind<&iwindow::StaticText11>,       "StaticText11",       -1, 397,  50,  71,    18,     82,  "order number:",     kTimes, 12,   plain,              right,     0,     blank,    0},
    {Bind<&iwindow::ordernumberfield>,   "ordernumberfield",   -1, 474,  49,  80,    22,     83,  "",                  kTimes, 14,   plain,              left,      0,     0xF8F7FF, NoFocusRing},
    {Bind<&iwindow::cm>,                 "cm",                 -1, 0,    0,   0,     0,      0},
};
// clang-format on

}  // namespace

iwindow::iwindow() : Window(kClassName, kWindow) {
  Menus = MenuBar1();
  AddMenuHandlers();
  OnOpen = [this] { Event_Open(); };
  OnClose = [this] { Event_Close(); };
}

void iwindow::CreateControls() {
  design::Build(*this, kLineitems, 10);
  design::Build(*this, kControls);

  // One column, headed "customers".
  customers->ColumnCount = 1;
  customers->ColumnWidths = "";
  customers->HasHeading = true;
  customers->Headings = {String("customers")};

  WireHandlers();
}

void iwindow::WireHandlers() {
  // One handler for each array; it learns its row from the control's Index.
  for (Integer i = 0; i <= 9; i++) {
    TextField* n = number(i);
    n->OnOpen = [this, n] { lock(n); };
    n->OnKeyDown = [this, n](const String& key) { return number_KeyDown(n->Index(), key); };
    n->OnTextChange = [this, n] { number_TextChange(n->Index()); };

    TextField* d = description(i);
    d->OnOpen = [this, d] { lock(d); };
    d->OnTextChange = [this, d] { description_TextChange(d->Index()); };
    d->OnMouseDown = [this, d](Integer x, Integer y) {
      return description_MouseDown(d->Index(), x, y);
    };

    TextField* p = price(i);
    p->OnOpen = [this, p] { lock(p); };
    p->OnTextChange = [this, p] { price_TextChange(p->Index()); };
    p->OnLostFocus = [this, p] { price_LostFocus(p->Index()); };

    TextField* t = total(i);
    t->OnTextChange = [this, t] { total_TextChange(t->Index()); };
  }
  for (StaticText* s : currenysign) {
    s->OnOpen = [this, s] { currenysign_Open(s->Index()); };
  }

  customername->OnOpen = [this] { lock(customername); };
  customername->OnGotFocus = [this] { select(customername); };
  customername->OnKeyDown = [this](const String& key) { return customername_KeyDown(key); };

  customeraddress->OnOpen = [this] { lock(customeraddress); };
  customeraddress->OnGotFocus = [this] { select(customeraddress); };
  customeraddress->OnKeyDown = [this](const String& key) { return customeraddress_KeyDown(key); };
  customeraddress->OnTextChange = [this] { customeraddress_TextChange(); };

  comments->OnOpen = [this] { lock(comments); };
  comments->OnGotFocus = [this] { select(comments); };
  comments->OnKeyDown = [this](const String& key) { return comments_KeyDown(key); };

  statusfield->OnOpen = [this] { lock(statusfield); };
  statusfield->OnKeyDown = [this](const String& key) { return statusfield_KeyDown(key); };
  statusfield->OnTextChange = [this] { statusfield_TextChange(); };

  ordernumberfield->OnTextChange = [this] { ordernumberfield_TextChange(); };

  grandtotal->OnTextChange = [this] { grandtotal_TextChange(); };

  discountfield->OnKeyDown = [this](const String& key) { return discountfield_KeyDown(key); };
  discountfield->OnTextChange = [this] { discountfield_TextChange(); };
  discountfield->OnMouseDown = [this](Integer x, Integer y) {
    return discountfield_MouseDown(x, y);
  };
  discountfield->OnLostFocus = [this] { discountfield_LostFocus(); };

  PostageField->OnKeyDown = [this](const String& key) { return PostageField_KeyDown(key); };
  PostageField->OnTextChange = [this] { PostageField_TextChange(); };
  PostageField->OnMouseDown = [this](Integer x, Integer y) { return PostageField_MouseDown(x, y); };
  PostageField->OnLostFocus = [this] { PostageField_LostFocus(); };

  customers->OnCellClick = [this](Integer row, Integer column, Integer x, Integer y) {
    return customers_CellClick(row, column, x, y);
  };
  customers->OnCellTextPaint = [this](Graphics& g, Integer row, Integer column, Integer x,
                                      Integer y) {
    return customers_CellTextPaint(g, row, column, x, y);
  };

  names->OnChange = [this] { names_Change(); };
  unpaid->OnChange = [this] { unpaid_Change(); };

  cm->OnAction = [this](const String& item) { cm_Action(item); };
}

bool iwindow::OwnProperty(const std::string& name, std::string& value) const {
  IWINDOW_PROPERTIES(NAMED_VALUE_LOOKUP)
  return Window::OwnProperty(name, value);
}

}  // namespace win
