// The main window as designed: its properties, its controls at their fixed places, and the wiring
// of every handler onto them. What the handlers do lives in the files named after it.
#include "invoice/iwindow.h"

#include <cstdlib>
#include <string>

#include "invoice/MenuBar1.h"

namespace win {

namespace {

enum class Cls { TextField, TextArea, StaticText, Listbox, PopupMenu };

// A blank cell of the tables: the property does not apply or keeps its empty default.
enum Flag { blank, no, yes };
enum Align { unaligned, left, centre, right };
enum Style { plain = 0, bold = 1, italic = 2, underline = 4 };
constexpr std::uint32_t kNoBack = 0xFFFFFFFF;

// The ten lineitem rows stand this far apart; row 0 is at the table's Top.
constexpr Integer kRowPitch = 28;

struct ArraySpec {
  const char* control;
  Cls cls;
  Integer left, top, width, height;
  Integer tabIndex, tabStep;  // TabIndex of row i: tabIndex + tabStep * i
  Integer textSize;
  Align alignment;
  Integer limitText;
  std::uint32_t background;
  Flag readOnly, focusRing;
  const char* designText;
};

// For i from 0 to 9.
const ArraySpec kRowArrays[] = {
    // clang-format off
    //control        class            left  top  width  height  tab  step  size  alignment  limit  background  readOnly  focusRing  design text
    {"number",      Cls::TextField,  15,   181, 40,    22,     5,   3,    14,   right,     5,     0xFFFFFF,   no,       yes,       ""},
    {"description", Cls::TextField,  62,   181, 310,   22,     6,   3,    14,   left,      50,    0xFFFFFF,   no,       yes,       ""},
    {"currenysign", Cls::StaticText, 379,  182, 20,    20,     61,  1,    14,   right,     0,     kNoBack,    blank,    blank,     "?"},
    {"price",       Cls::TextField,  407,  181, 60,    22,     7,   3,    14,   right,     7,     0xFFFFFF,   no,       yes,       ""},
    {"total",       Cls::TextField,  474,  181, 80,    22,     43,  1,    14,   right,     0,     0xDCDCE4,   yes,      yes,       ""},
    // clang-format on
};

struct ControlSpec {
  const char* control;  // "name", or "name(index)" for an element of an array
  Cls cls;
  Integer left, top, width, height;
  Integer tabIndex;
  const char* designText;
  Integer textSize;
  int style;
  Align alignment;
  Integer limitText;
  std::uint32_t background;
  Flag readOnly, focusRing;
};

// All other controls, in the order of their creation, which is also their stacking order.
const ControlSpec kOtherControls[] = {
    // clang-format off
    //control               class            left  top  width  height  tab  design text          size  style               alignment  limit  background  readOnly  focusRing
    {"StaticText1",        Cls::StaticText, 62,   156, 310,   21,     0,   " item description", 12,   plain,              centre,    0,     kNoBack,    blank,    blank},
    {"StaticText2",        Cls::StaticText, 15,   157, 40,    20,     1,   "number",            12,   plain,              centre,    0,     kNoBack,    blank,    blank},
    {"StaticText3",        Cls::StaticText, 419,  157, 45,    20,     2,   "cost each",         12,   plain,              centre,    0,     kNoBack,    blank,    blank},
    {"customername",       Cls::TextField,  44,   14,  510,   23,     3,   "customer name",     14,   plain,              left,      0,     0xFFFFFF,   no,       yes},
    {"customeraddress",    Cls::TextArea,   15,   48,  356,   96,     4,   "customer address",  14,   plain,              left,      0,     0xFFFFFF,   no,       yes},
    {"comments",           Cls::TextArea,   15,   467, 357,   115,    35,  "comments",          14,   plain,              left,      255,   0xFFFFFF,   no,       yes},
    {"customers",          Cls::Listbox,    568,  84,  253,   498,    36,  "",                  14,   plain,              unaligned, 0,     kNoBack,    blank,    yes},
    {"grandtotal",         Cls::TextField,  474,  467, 80,    22,     37,  "",                  14,   plain,              right,     0,     0xDCDCE4,   yes,      no},
    {"datelabel",          Cls::StaticText, 397,  87,  71,    18,     38,  "invoice date:",     12,   plain,              right,     0,     kNoBack,    blank,    blank},
    {"showinvoicenumber",  Cls::StaticText, 383,  124, 85,    18,     39,  "invoice number:",   12,   plain,              right,     0,     kNoBack,    blank,    blank},
    {"datefield",          Cls::TextField,  474,  86,  80,    22,     40,  "",                  14,   plain,              left,      0,     0xDCDCE4,   yes,      no},
    {"invoicenumberField", Cls::TextField,  474,  123, 80,    22,     41,  "",                  14,   plain,              right,     0,     0xFFFFFF,   no,       no},
    {"StaticText4",        Cls::StaticText, 418,  469, 34,    20,     42,  "Total:",            12,   plain,              right,     0,     kNoBack,    blank,    blank},
    {"StaticText5",        Cls::StaticText, 474,  157, 80,    20,     53,  "totals",            12,   plain,              centre,    0,     kNoBack,    blank,    blank},
    {"vatfield",           Cls::TextField,  474,  498, 80,    22,     54,  "",                  14,   plain,              right,     0,     0xDCDCE4,   yes,      no},
    {"StaticText6",        Cls::StaticText, 412,  499, 40,    20,     55,  "Tax/Vat:",          12,   plain,              right,     0,     kNoBack,    blank,    blank},
    {"duefield",           Cls::TextField,  474,  592, 80,    22,     56,  "",                  14,   bold,               right,     0,     0xDCDCE4,   yes,      no},
    {"StaticText7",        Cls::StaticText, 397,  593, 55,    20,     57,  "Total due:",        12,   bold,               right,     0,     kNoBack,    blank,    blank},
    {"title2",             Cls::StaticText, 590,  6,   200,   80,     58,  "Ledgerly",          50,   italic | underline, centre,    0,     kNoBack,    blank,    blank},
    {"title1",             Cls::StaticText, 590,  20,  200,   50,     0,   "Ledgerly",          50,   italic | underline, centre,    0,     kNoBack,    blank,    blank},
    {"statusfield",        Cls::TextField,  655,  593, 55,    22,     59,  "unpaid",            14,   plain,              centre,    0,     0xFFB0B3,   no,       no},
    {"StaticText8",        Cls::StaticText, 566,  594, 80,    20,     60,  "This invoice is:",  12,   plain,              right,     0,     kNoBack,    blank,    blank},
    {"currenysign(10)",    Cls::StaticText, 451,  469, 20,    20,     71,  "?",                 14,   plain,              right,     0,     kNoBack,    blank,    blank},
    {"currenysign(11)",    Cls::StaticText, 451,  499, 20,    20,     72,  "?",                 14,   plain,              right,     0,     kNoBack,    blank,    blank},
    {"currenysign(12)",    Cls::StaticText, 451,  593, 20,    20,     73,  "?",                 14,   plain,              right,     0,     kNoBack,    blank,    blank},
    {"names",              Cls::PopupMenu,  15,   17,  20,    20,     74,  "",                  12,   plain,              unaligned, 0,     kNoBack,    blank,    blank},
    {"discountfield",      Cls::TextField,  474,  529, 80,    22,     75,  "00.00",             14,   plain,              right,     0,     0xFFFFFF,   yes,      no},
    {"currenysign(13)",    Cls::StaticText, 451,  530, 20,    20,     76,  "?",                 14,   plain,              right,     0,     kNoBack,    blank,    blank},
    {"StaticText9",        Cls::StaticText, 373,  531, 79,    20,     77,  "Dcount/Depos:",     12,   plain,              right,     0,     kNoBack,    blank,    blank},
    {"unpaid",             Cls::PopupMenu,  752,  593, 20,    20,     78,  "",                  12,   plain,              unaligned, 0,     kNoBack,    blank,    blank},
    {"PostageField",       Cls::TextField,  474,  560, 80,    22,     79,  "00.00",             14,   plain,              right,     0,     0xFFFFFF,   no,       no},
    {"currenysign(14)",    Cls::StaticText, 451,  561, 20,    20,     80,  "?",                 14,   plain,              right,     0,     kNoBack,    blank,    blank},
    {"StaticText10",       Cls::StaticText, 385,  562, 67,    20,     81,  "Postage:",          12,   plain,              right,     0,     kNoBack,    blank,    blank},
    {"StaticText11",       Cls::StaticText, 397,  50,  71,    18,     82,  "order number:",     12,   plain,              right,     0,     kNoBack,    blank,    blank},
    {"ordernumberfield",   Cls::TextField,  474,  49,  80,    22,     83,  "",                  14,   plain,              left,      0,     0xF8F7FF,   no,       no},
    // clang-format on
};

// Every control's type face, and the colours of the texts that are not black.
const char* const kFont = "Times";
constexpr std::uint32_t kTitle2Colour = 0x043001;  // dark green, behind
constexpr std::uint32_t kTitle1Colour = 0xE7E7E7;  // light grey, in front

// "currenysign(10)" gives "currenysign" and 10; a plain name gives index -1.
void SplitName(const std::string& control, std::string& name, Integer& index) {
  auto open = control.find('(');
  if (open == std::string::npos) {
    name = control;
    index = -1;
    return;
  }
  name = control.substr(0, open);
  index = static_cast<Integer>(std::atoi(control.c_str() + open + 1));
}

// TextField and TextArea count alignment 1 left, 2 centre, 3 right; StaticText 0, 1, 2.
void ApplyAlignment(Control* c, Cls cls, Align a) {
  if (a == unaligned) return;
  if (cls == Cls::StaticText) {
    c->TextAlign = a == left ? 0 : a == centre ? 1 : 2;
  } else {
    c->Alignment = a == left ? 1 : a == centre ? 2 : 3;
  }
}

// The properties that every row of both tables has.
void ApplyDesign(Control* c, Cls cls, Integer l, Integer t, Integer w, Integer h, Integer tabIndex,
                 const char* designText, Integer textSize, int style, Align alignment,
                 Integer limitText, std::uint32_t background, Flag readOnly, Flag focusRing) {
  c->Left = l;
  c->Top = t;
  c->Width = w;
  c->Height = h;
  c->TabIndex = tabIndex;
  c->setTextFont(kFont);
  c->setTextSize(textSize);
  c->setBold((style & bold) != 0);
  c->setItalic((style & italic) != 0);
  c->setUnderline((style & underline) != 0);
  c->setTextColor(0x000000);
  ApplyAlignment(c, cls, alignment);
  if (background != kNoBack) {
    c->HasBackColor = true;
    c->setBackColor(background);
  }
  if (focusRing != blank) c->UseFocusRing = focusRing == yes;
  if (auto* field = dynamic_cast<TextControl*>(c)) {
    field->LimitText = limitText;
    field->setText(designText);
    if (readOnly != blank) field->setReadOnly(readOnly == yes);
  } else if (auto* s = dynamic_cast<StaticText*>(c)) {
    s->setText(designText);
  }
}

template <class C>
void Bind(const Window* w, C*& member, const char* name) {
  member = dynamic_cast<C*>(w->FindControl(name));
}

}  // namespace

iwindow::iwindow() : Window(kClassName) {
  Layout();
  AddMenuHandlers();
  OnOpen = [this] { Event_Open(); };
  OnClose = [this] { Event_Close(); };
}

// The window's own properties.
void iwindow::Layout() {
  Menus = MenuBar1();
  Title = "Ledgerly - by Tobin Arle";
  Width = 840;
  Height = 631;
  MinWidth = 64;
  MinHeight = 64;
  MaxWidth = 32000;
  MaxHeight = 32000;
  Placement = 2;
  Frame = 0;
  Resizeable = true;
  CloseButton = true;
  MaximizeButton = true;
  MinimizeButton = true;
  VisibleByDesign = true;
  HasBackColor = false;
  BackColor = 0xFFFFFF;
}

void iwindow::CreateControls() {
  CreateRowArrays();
  CreateOtherControls();
  FurtherProperties();
  WireHandlers();
}

void iwindow::CreateRowArrays() {
  for (Integer i = 0; i <= 9; i++) {
    for (const ArraySpec& s : kRowArrays) {
      Control* c = nullptr;
      if (s.cls == Cls::TextField) {
        c = Add<TextField>(s.control, i);
      } else {
        c = Add<StaticText>(s.control, i);
      }
      ApplyDesign(c, s.cls, s.left, s.top + kRowPitch * i, s.width, s.height,
                  s.tabIndex + s.tabStep * i, s.designText, s.textSize, plain, s.alignment,
                  s.limitText, s.background, s.readOnly, s.focusRing);
    }
    number_[i] = dynamic_cast<TextField*>(FindControl("number", i));
    description_[i] = dynamic_cast<TextField*>(FindControl("description", i));
    currenysign_[i] = dynamic_cast<StaticText*>(FindControl("currenysign", i));
    price_[i] = dynamic_cast<TextField*>(FindControl("price", i));
    total_[i] = dynamic_cast<TextField*>(FindControl("total", i));
  }
}

void iwindow::CreateOtherControls() {
  for (const ControlSpec& s : kOtherControls) {
    std::string name;
    Integer index;
    SplitName(s.control, name, index);
    Control* c = nullptr;
    switch (s.cls) {
      case Cls::TextField:
        c = Add<TextField>(name, index);
        break;
      case Cls::TextArea:
        c = Add<TextArea>(name, index);
        break;
      case Cls::StaticText:
        c = Add<StaticText>(name, index);
        break;
      case Cls::Listbox:
        c = Add<Listbox>(name, index);
        break;
      case Cls::PopupMenu:
        c = Add<PopupMenu>(name, index);
        break;
    }
    ApplyDesign(c, s.cls, s.left, s.top, s.width, s.height, s.tabIndex, s.designText, s.textSize,
                s.style, s.alignment, s.limitText, s.background, s.readOnly, s.focusRing);
  }
  for (Integer i = 10; i <= 14; i++)
    currenysign_[i] = dynamic_cast<StaticText*>(FindControl("currenysign", i));

  Bind(this, StaticText1, "StaticText1");
  Bind(this, StaticText2, "StaticText2");
  Bind(this, StaticText3, "StaticText3");
  Bind(this, customername, "customername");
  Bind(this, customeraddress, "customeraddress");
  Bind(this, comments, "comments");
  Bind(this, customers, "customers");
  Bind(this, grandtotal, "grandtotal");
  Bind(this, datelabel, "datelabel");
  Bind(this, showinvoicenumber, "showinvoicenumber");
  Bind(this, datefield, "datefield");
  Bind(this, invoicenumberField, "invoicenumberField");
  Bind(this, StaticText4, "StaticText4");
  Bind(this, StaticText5, "StaticText5");
  Bind(this, vatfield, "vatfield");
  Bind(this, StaticText6, "StaticText6");
  Bind(this, duefield, "duefield");
  Bind(this, StaticText7, "StaticText7");
  Bind(this, title2, "title2");
  Bind(this, title1, "title1");
  Bind(this, statusfield, "statusfield");
  Bind(this, StaticText8, "StaticText8");
  Bind(this, names, "names");
  Bind(this, discountfield, "discountfield");
  Bind(this, StaticText9, "StaticText9");
  Bind(this, unpaid, "unpaid");
  Bind(this, PostageField, "PostageField");
  Bind(this, StaticText10, "StaticText10");
  Bind(this, StaticText11, "StaticText11");
  Bind(this, ordernumberfield, "ordernumberfield");

  // The stock menu has no place on the window; it opens at the mouse.
  cm = Add<ContextualMenu>("cm");
}

void iwindow::FurtherProperties() {
  title2->setTextColor(kTitle2Colour);
  title1->setTextColor(kTitle1Colour);

  // The name book can be used on a new invoice only; the unpaid list is a store, never seen.
  names->setEnabled(false);
  unpaid->setVisible(false);

  // Multi-line, without scroll bars.
  customeraddress->ScrollBarVertical = false;
  comments->ScrollBarVertical = false;

  customers->ColumnCount = 1;
  customers->ColumnWidths = "";
  customers->HasHeading = true;
  customers->Headings = {String("customers")};
  customers->UseFocusRing = true;
  customers->ScrollBarVertical = true;
  customers->GridLinesHorizontal = 0;
  customers->GridLinesVertical = 0;
  customers->EnableDragReorder = false;
  customers->setBold(false);
}

void iwindow::WireHandlers() {
  // One handler for each array; it learns its row from the control's Index.
  for (Integer i = 0; i <= 9; i++) {
    TextField* n = number_[i];
    n->OnOpen = [this, n] { lock(n); };
    n->OnKeyDown = [this, n](const String& key) { return number_KeyDown(n->Index(), key); };
    n->OnTextChange = [this, n] { number_TextChange(n->Index()); };

    TextField* d = description_[i];
    d->OnOpen = [this, d] { lock(d); };
    d->OnTextChange = [this, d] { description_TextChange(d->Index()); };
    d->OnMouseDown = [this, d](Integer x, Integer y) {
      return description_MouseDown(d->Index(), x, y);
    };

    TextField* p = price_[i];
    p->OnOpen = [this, p] { lock(p); };
    p->OnTextChange = [this, p] { price_TextChange(p->Index()); };
    p->OnLostFocus = [this, p] { price_LostFocus(p->Index()); };

    TextField* t = total_[i];
    t->OnTextChange = [this, t] { total_TextChange(t->Index()); };
  }
  for (StaticText* s : currenysign_) {
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

TextField* iwindow::number(Integer i) const {
  if (i < 0 || i > 9) throw OutOfBoundsException();
  return number_[i];
}

TextField* iwindow::description(Integer i) const {
  if (i < 0 || i > 9) throw OutOfBoundsException();
  return description_[i];
}

TextField* iwindow::price(Integer i) const {
  if (i < 0 || i > 9) throw OutOfBoundsException();
  return price_[i];
}

TextField* iwindow::total(Integer i) const {
  if (i < 0 || i > 9) throw OutOfBoundsException();
  return total_[i];
}

StaticText* iwindow::currenysign(Integer i) const {
  if (i < 0 || i > 14) throw OutOfBoundsException();
  return currenysign_[i];
}

bool iwindow::OwnProperty(const std::string& name, std::string& value) const {
  if (name == "addresshaschanged") {
    value = addresshaschanged ? "true" : "false";
    return true;
  }
  if (name == "id") {
    value = std::to_string(id);
    return true;
  }
  return Window::OwnProperty(name, value);
}

}  // namespace win
