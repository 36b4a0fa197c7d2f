// SPDX-License-Identifier: GPL-3.0-or-later
#include "secondary/prefswindow.h"

#include "core/Module1.h"
#include "invoice/iwindow.h"

namespace win {

namespace {

using namespace design;

const WindowDesign kWindow = {
    .Title = "Ledgerly preferences", .Width = 750, .Height = 623, .Frame = 2, .Placement = 1};

// The design texts with line breaks, which are Chr(13); they are the defaults the program works
// with until a prefsfile has been saved.
const char* const kReminderText =
    "This amount remains unpaid. Please send your remittance immediately.\r\rThank you.\r\rsigned:";
const char* const kReceiptText = "Received with thanks\r\rThank you.\r\rsigned:";
const char* const kTermsCaption =
    "Text for standard terms and conditions. (Prints in light gray - 255 chrs max. Leave blank if "
    "not wanted.)";

// A control inside a group box stands in the focus order where its group stands.
// clang-format off
const Row kControls[] = {
    // control                                                                   left  top  width  height  tab  design text                              font       size  style  align      limit  back   flags
    {Bind<&prefswindow::mybusinessname>,          "mybusinessname",          -1, 20,   23,  519,   22,     0,   "my business name",                      "times",   14},
    {Bind<&prefswindow::myaddress>,               "myaddress",               -1, 20,   57,  300,   74,     1,   "my address & phone",                    "times",   14},
    {Bind<&prefswindow::myemail>,                 "myemail",                 -1, 20,   143, 300,   22,     2,   "my e-mail",                             "times",   14},
    {Bind<&prefswindow::mywebb>,                  "mywebb",                  -1, 20,   177, 300,   22,     3,   "my webb",                               "times",   14},
    {Bind<&prefswindow::invoicestartnumberfield>, "invoicestartnumberfield", -1, 459,  58,  80,    18,     4,   "0000000000",                            "Times",   14,   plain, right,     10},
    {Bind<&prefswindow::vatamountfield>,          "vatamountfield",          -1, 459,  87,  80,    18,     5,   "17.5",                                  "Times",   14,   plain, right},
    {Bind<&prefswindow::termsfield>,              "termsfield",              -1, 30,   230, 690,   60,     6,   "",                                      "times",   14,   plain, left,      255},
    {Bind<&prefswindow::loadlogobutt>,            "loadlogobutt",            -1, 595,  152, 30,    20,     7,   "+",                                     "times",   14,   bold},
    {Bind<&prefswindow::canvas1>,                 "canvas1",                 -1, 568,  40,  150,   100,    8},
    {Bind<&prefswindow::StaticText1>,             "StaticText1",             -1, 346,  58,  105,   20,     9,   "Invoice start number:",                 "Times",   12,   plain, left},
    {Bind<&prefswindow::StaticText2>,             "StaticText2",             -1, 344,  87,  105,   20,     10,  "Tax/Vat amount%",                       "Times",   12,   plain, right},
    {Bind<&prefswindow::GroupBox1>,               "GroupBox1",               -1, 555,  14,  176,   171,    11,  "Your logo - 150x100 max",               "Times",   12},
    {Bind<&prefswindow::PushButton1>,             "PushButton1",             -1, 662,  152, 30,    20,     11,  "-",                                     "times",   20,   bold},
    {Bind<&prefswindow::closebutt>,               "closebutt",               -1, 363,  592, 69,    20,     12,  "close",                                 "Times",   14,   plain, unaligned, 0,     blank, Default | Cancel | LockBottom},
    {Bind<&prefswindow::currency>,                "currency",                -1, 459,  117, 80,    22,     13,  nullptr,                                 "Times",   14},
    {Bind<&prefswindow::StaticText3>,             "StaticText3",             -1, 344,  116, 105,   20,     14,  "Currency sign:",                        "Times",   12,   plain, right},
    {Bind<&prefswindow::GroupBox2>,               "GroupBox2",               -1, 20,   311, 711,   120,    15,  "Text for Reminder. 255 characters max", "Times",   12},
    {Bind<&prefswindow::reminderfield>,           "reminderfield",           -1, 30,   332, 690,   90,     15,  kReminderText,                           "times",   14,   plain, left,      255},
    {Bind<&prefswindow::GroupBox3>,               "GroupBox3",               -1, 20,   442, 711,   120,    16,  "Text for Receipt. 255 characters max",  "Times",   12},
    {Bind<&prefswindow::receiptfield>,            "receiptfield",            -1, 30,   463, 690,   90,     16,  kReceiptText,                            "times",   14,   plain, left,      255},
    {Bind<&prefswindow::GroupBox4>,               "GroupBox4",               -1, 20,   208, 711,   91,     17,  kTermsCaption,                           "Times",   12},
    {Bind<&prefswindow::DateEditButt>,            "DateEditButt",            -1, 346,  145, 193,   20,     18,  "allow date editing",                    "System"},
};
// clang-format on

}  // namespace

prefswindow::prefswindow() : Window(kClassName, kWindow) {
  OnActivate = [this] { Event_Activate(); };
}

void prefswindow::CreateControls() {
  design::Build(*this, kControls);
  // The currency signs; the first is chosen before Change is wired, so the design raises nothing.
  for (const char* sign : {"£", "€", "$"}) currency->AddRow(sign);
  currency->setListIndex(0);

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
