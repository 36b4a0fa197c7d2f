#include "secondary/prefswindow.h"

#include "core/Module1.h"
#include "invoice/iwindow.h"
#include "secondary/design.h"

namespace win {

namespace {

// Line breaks in the design texts are Chr(13). A control inside a group box stands in the focus
// order where its group stands.
// clang-format off
const ControlDesign kDesign[] = {
    // name                   index left  top  width height font     size tab  design text
    {"mybusinessname",          -1,  20,  23, 519,  22, "times", 14,  0, "my business name"},
    {"myaddress",               -1,  20,  57, 300,  74, "times", 14,  1, "my address & phone"},
    {"myemail",                 -1,  20, 143, 300,  22, "times", 14,  2, "my e-mail"},
    {"mywebb",                  -1,  20, 177, 300,  22, "times", 14,  3, "my webb"},
    {"invoicestartnumberfield", -1, 459,  58,  80,  18, "Times", 14,  4, "0000000000"},
    {"vatamountfield",          -1, 459,  87,  80,  18, "Times", 14,  5, "17.5"},
    {"termsfield",              -1,  30, 230, 690,  60, "times", 14,  6, ""},
    {"loadlogobutt",            -1, 595, 152,  30,  20, "times", 14,  7, "+"},
    {"canvas1",                 -1, 568,  40, 150, 100, nullptr,  0,  8, nullptr},
    {"StaticText1",             -1, 346,  58, 105,  20, "Times", 12,  9, "Invoice start number:"},
    {"StaticText2",             -1, 344,  87, 105,  20, "Times", 12, 10, "Tax/Vat amount%"},
    {"GroupBox1",               -1, 555,  14, 176, 171, "Times", 12, 11, "Your logo - 150x100 max"},
    {"PushButton1",             -1, 662, 152,  30,  20, "times", 20, 11, "-"},
    {"closebutt",               -1, 363, 592,  69,  20, "Times", 14, 12, "close"},
    {"currency",                -1, 459, 117,  80,  22, "Times", 14, 13, nullptr},
    {"StaticText3",             -1, 344, 116, 105,  20, "Times", 12, 14, "Currency sign:"},
    {"GroupBox2",               -1,  20, 311, 711, 120, "Times", 12, 15,
     "Text for Reminder. 255 characters max"},
    {"reminderfield",           -1,  30, 332, 690,  90, "times", 14, 15,
     "This amount remains unpaid. Please send your remittance immediately.\r\rThank you.\r\r"
     "signed:"},
    {"GroupBox3",               -1,  20, 442, 711, 120, "Times", 12, 16,
     "Text for Receipt. 255 characters max"},
    {"receiptfield",            -1,  30, 463, 690,  90, "times", 14, 16,
     "Received with thanks\r\rThank you.\r\rsigned:"},
    {"GroupBox4",               -1,  20, 208, 711,  91, "Times", 12, 17,
     "Text for standard terms and conditions. (Prints in light gray - 255 chrs max. Leave blank "
     "if not wanted.)"},
    {"DateEditButt",            -1, 346, 145, 193,  20, "System", 0, 18, "allow date editing"},
};
// clang-format on

}  // namespace

prefswindow::prefswindow() : Window(kClassName) {
  Title = "Ledgerly preferences";
  Width = 750;
  Height = 623;
  Frame = 2;
  Placement = 1;
  OnActivate = [this] { Event_Activate(); };
}

void prefswindow::CreateControls() {
  mybusinessname = Add<TextField>("mybusinessname");
  myaddress = Add<TextArea>("myaddress");
  myemail = Add<TextField>("myemail");
  mywebb = Add<TextField>("mywebb");
  invoicestartnumberfield = Add<TextField>("invoicestartnumberfield");
  vatamountfield = Add<TextField>("vatamountfield");
  termsfield = Add<TextArea>("termsfield");
  loadlogobutt = Add<PushButton>("loadlogobutt");
  canvas1 = Add<Canvas>("canvas1");
  StaticText1 = Add<StaticText>("StaticText1");
  StaticText2 = Add<StaticText>("StaticText2");
  GroupBox1 = Add<GroupBox>("GroupBox1");
  PushButton1 = Add<PushButton>("PushButton1");
  closebutt = Add<PushButton>("closebutt");
  currency = Add<PopupMenu>("currency");
  StaticText3 = Add<StaticText>("StaticText3");
  GroupBox2 = Add<GroupBox>("GroupBox2");
  reminderfield = Add<TextArea>("reminderfield");
  GroupBox3 = Add<GroupBox>("GroupBox3");
  receiptfield = Add<TextArea>("receiptfield");
  GroupBox4 = Add<GroupBox>("GroupBox4");
  DateEditButt = Add<CheckBox>("DateEditButt");
  ApplyDesign(*this, kDesign);

  invoicestartnumberfield->LimitText = 10;
  invoicestartnumberfield->Alignment = 3;
  vatamountfield->Alignment = 3;
  termsfield->LimitText = 255;
  termsfield->Alignment = 1;
  loadlogobutt->setBold(true);
  StaticText1->TextAlign = 0;
  StaticText2->TextAlign = 2;
  PushButton1->setBold(true);
  closebutt->Default = true;
  closebutt->Cancel = true;
  closebutt->LockBottom = true;
  currency->AddRow("£");
  currency->AddRow("€");
  currency->AddRow("$");
  currency->setListIndex(0);  // before Change is wired: the design's row raises nothing
  StaticText3->TextAlign = 2;
  reminderfield->LimitText = 255;
  reminderfield->Alignment = 1;
  receiptfield->LimitText = 255;
  receiptfield->Alignment = 1;

  for (TextControl* c : std::initializer_list<TextControl*>{
           mybusinessname, myaddress, myemail, mywebb, invoicestartnumberfield, vatamountfield,
           termsfield, reminderfield, receiptfield}) {
    c->OnGotFocus = [this, c] { textfield_GotFocus(c); };
    c->OnKeyDown = [this](const String& key) { return textfield_KeyDown(key); };
  }
  invoicestartnumberfield->OnTextChange = [this] { invoicestartnumberfield_TextChange(); };
  loadlogobutt->OnAction = [this] { loadlogobutt_Action(); };
  PushButton1->OnAction = [this] { PushButton1_Action(); };
  canvas1->OnMouseDown = [this](Integer x, Integer y) { return canvas1_MouseDown(x, y); };
  currency->OnChange = [this] { currency_Change(); };
  DateEditButt->OnAction = [this] { DateEditButt_Action(); };
  closebutt->OnAction = [this] { closebutt_Action(); };
}

void prefswindow::textfield_GotFocus(TextControl* c) {
  c->setSelStart(0);
  c->setSelLength(Len(c->Text()));
}

bool prefswindow::textfield_KeyDown(const String&) {
  Module1::prefshavechanged = true;
  return false;
}

void prefswindow::invoicestartnumberfield_TextChange() {
  Module1::invoicestartnumber = static_cast<Single>(Val(invoicestartnumberfield->Text()));
}

void prefswindow::Event_Activate() {
  invoicestartnumberfield->setText(Str(Module1::invoicestartnumber));
}

void prefswindow::loadlogobutt_Action() {
  Ref<FolderItem> logo = GetOpenFolderItem("image/gif;image/jpeg;image/tiff;image/bmp;image/pict");
  if (logo == nil) return;
  Module1::path = logo->AbsolutePath();
  canvas1->setBackdrop(logo->OpenAsPicture());
  Module1::prefshavechanged = true;
}

// Removing the logo alone is not worth a save: it reaches the prefsfile with the next one.
void prefswindow::PushButton1_Action() {
  canvas1->setBackdrop(nil);
  Module1::path = "";
}

// A click hides the logo for this run only: the path stays, and the next start brings it back.
bool prefswindow::canvas1_MouseDown(Integer, Integer) {
  canvas1->setBackdrop(nil);
  return false;
}

void prefswindow::currency_Change() {
  Module1::prefshavechanged = true;
  for (Integer i = 0; i <= 14; ++i) ::iwindow->currenysign(i)->setText(currency->Text());
}

// The date setting alone does not mark the preferences; it is saved with the next invoice.
void prefswindow::DateEditButt_Action() {
  if (DateEditButt->Value()) {
    ::iwindow->datefield->setReadOnly(false);
    ::iwindow->datefield->setBackColor(0xFFFFFF);
  } else {
    ::iwindow->datefield->setReadOnly(true);
    ::iwindow->datefield->setBackColor(0xDCDCE4);
  }
}

void prefswindow::closebutt_Action() {
  if (Module1::prefshavechanged) Module1::saveprefs();
  Hide();
}

}  // namespace win
