// SPDX-License-Identifier: GPL-3.0-or-later
// The invoicefiles in the folder customers: one file per invoice, named by its invoicename.
#include "core/Module1.h"
#include "invoice/iwindow.h"
#include "secondary/surewindow.h"

namespace win {

String iwindow::invoicename() const {
  return invoicenumberField->Text() + "-" + datefield->Text() + "-" + customername->Text();
}

void iwindow::saveinvoice() {
  if (!Module1::texthaschanged) {
    MsgBox("Nothing new to save!");
    return;
  }
  Module1::f = GetFolderItem("")->Child("customers")->Child(invoicename());
  // An existing file is written over from its start and not cut: a shorter invoice leaves the
  // older tail behind, where nothing reads it.
  Ref<BinaryStream> b;
  if (Module1::f->Exists()) {
    b = Module1::f->OpenAsBinaryFile(true);
  } else {
    b = Module1::f->CreateBinaryFile("prefs");
  }
  b->WritePString(datefield->Text());
  b->WritePString(invoicenumberField->Text());
  for (Integer i = 0; i <= 9; i++) {
    b->WritePString(number(i)->Text());
    b->WritePString(description(i)->Text());
    b->WritePString(price(i)->Text());
    b->WritePString(total(i)->Text());
  }
  b->WritePString(customername->Text());
  b->WritePString(customeraddress->Text());
  b->WritePString(ConvertEncoding(comments->Text(), Encodings::MacRoman));
  b->WritePString(statusfield->Text());
  b->WriteDouble(Val(discountfield->Text()));
  b->WritePString(PostageField->Text());
  b->WritePString(ordernumberfield->Text());
  b->Close();

  savenames();
  getnames();
  getcustomers();
  names->setEnabled(false);
  Module1::texthaschanged = false;
  if (statusfield->Text() != "paid") {
    saveunpaid();
  } else {
    paid();
  }
  getunpaid();
  markthem();
}

void iwindow::loadinvoice() {
  Module1::f = GetFolderItem("")->Child("customers")->Child(customers->List(Module1::cellid));
  if (Module1::f == nil || !Module1::f->Exists()) {
    MsgBox("Oops. No invoices to load!");
    return;
  }
  Ref<BinaryStream> b = Module1::f->OpenAsBinaryFile(true);
  // Each value goes straight into its field, and the field's handlers run as it lands.
  datefield->setText(b->ReadPString());
  invoicenumberField->setText(b->ReadPString());
  for (Integer i = 0; i <= 9; i++) {
    number(i)->setText(b->ReadPString());
    description(i)->setText(b->ReadPString());
    price(i)->setText(b->ReadPString());
    total(i)->setText(b->ReadPString());
  }
  customername->setText(b->ReadPString());
  customeraddress->setText(b->ReadPString());
  comments->setText(b->ReadPString());
  statusfield->setText(b->ReadPString());
  discountfield->setText(Str(b->ReadDouble()));
  PostageField->setText(b->ReadPString());
  ordernumberfield->setText(b->ReadPString());
  b->Close();
  // What the handlers marked while the fields filled is not an edit.
  Module1::texthaschanged = false;
  makeeditable();
}

bool iwindow::_filedeleteinvoice_Action() {
  ::surewindow->surefield->setText("Delete " + customers->List(Module1::cellid));
  ::surewindow->ShowModal();
  if (!Module1::sure) return false;
  Module1::f = GetFolderItem("")->Child("customers")->Child(customers->List(Module1::cellid));
  if (Module1::f->Exists()) {
    Module1::f->Delete();
    getcustomers();
  }
  // The invoice's unpaidmarker stays where it is.
  markthem();
  return false;
}

}  // namespace win
