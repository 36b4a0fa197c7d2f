// SPDX-License-Identifier: GPL-3.0-or-later
// The prefsfile ledgerlyprefs: twelve values poured into prefswindow at start and written back from
// it; and the logo, found again by its stored path.
#include "core/Module1.h"
#include "invoice/iwindow.h"
#include "secondary/prefswindow.h"

namespace Module1 {

void loadprefs() {
  f = GetFolderItem("")->Child("ledgerlyprefs");
  if (!f->Exists()) {
    MsgBox("Please fill out the prefs.");
    prefswindow->ShowModal();
    return;
  }
  Ref<BinaryStream> b = f->OpenAsBinaryFile(false);
  prefswindow->mybusinessname->setText(b->ReadPString());
  prefswindow->myaddress->setText(b->ReadPString());
  // The field's own handler stores Val of the text back into the global, so the number ends as
  // what passed through Str and Val.
  invoicestartnumber = static_cast<Single>(b->ReadSingle());
  prefswindow->invoicestartnumberfield->setText(Str(invoicestartnumber));
  prefswindow->vatamountfield->setText(b->ReadPString());
  path = b->ReadPString();
  // Any row but the first runs currency_Change, which counts as a change of the preferences.
  prefswindow->currency->setListIndex(CInt(b->ReadSingle()));
  prefswindow->myemail->setText(b->ReadPString());
  prefswindow->mywebb->setText(b->ReadPString());
  prefswindow->termsfield->setText(b->ReadPString());
  prefswindow->reminderfield->setText(b->ReadPString());
  prefswindow->receiptfield->setText(b->ReadPString());
  if (b->ReadBoolean()) {
    prefswindow->DateEditButt->setValue(true);
    iwindow->datefield->setBackColor(0xFFFFFF);
  } else {
    prefswindow->DateEditButt->setValue(false);
    iwindow->datefield->setBackColor(0xDCDCE4);
  }
  b->Close();
  // Filling the window built it, and a window built by a touch shows itself.
  prefswindow->Hide();
}

void saveprefs() {
  Ref<FolderItem> prefs = GetFolderItem("")->Child("ledgerlyprefs");
  // Written over from its start and not cut: a shorter text leaves the old tail behind value 12.
  Ref<BinaryStream> b;
  if (prefs->Exists()) {
    b = prefs->OpenAsBinaryFile(true);
  } else {
    b = prefs->CreateBinaryFile("prefs");
  }
  b->WritePString(prefswindow->mybusinessname->Text());
  b->WritePString(prefswindow->myaddress->Text());
  b->WriteSingle(invoicestartnumber);
  b->WritePString(prefswindow->vatamountfield->Text());
  b->WritePString(path);
  b->WriteSingle(prefswindow->currency->ListIndex());
  b->WritePString(prefswindow->myemail->Text());
  b->WritePString(prefswindow->mywebb->Text());
  b->WritePString(prefswindow->termsfield->Text());
  b->WritePString(prefswindow->reminderfield->Text());
  b->WritePString(prefswindow->receiptfield->Text());
  b->WriteBoolean(prefswindow->DateEditButt->Value());
  prefshavechanged = false;
  b->Close();
}

void loadlogo() {
  f = GetFolderItem(path, 0);
  if (f != nil && f->Exists()) {
    // With no logo set the path is empty and names the program's folder, which is no picture.
    prefswindow->canvas1->setBackdrop(f->OpenAsPicture());
  } else {
    Beep();
    MsgBox("Can't find the logo!");
    path = "";
  }
}

}  // namespace Module1
