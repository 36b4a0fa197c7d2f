// SPDX-License-Identifier: GPL-3.0-or-later
// The lists that are the folders: customers (the invoices), names (the name book) and unpaid; and
// the name book's namefiles, one per customer, holding the address.
#include <utility>

#include "core/Module1.h"
#include "invoice/iwindow.h"

namespace win {

namespace {

// One procedure for the three lists: the control becomes the folder's entries, hidden ones left
// out, in the folder's own order. A folder that is not there is made, and the list stays as it was.
template <class List>
void FillFromFolder(List* list, const String& folder) {
  Module1::f = GetFolderItem("")->Child(folder);
  if (Module1::f != nil && Module1::f->Exists()) {
    list->DeleteAllRows();
    Integer n = Module1::f->Count();
    for (Integer i = 1; i <= n; i++) {
      String name = Module1::f->Item(i)->Name();
      if (Left(name, 1) != ".") list->AddRow(std::move(name));
    }
  } else {
    Module1::f->CreateAsFolder();
  }
}

}  // namespace

void iwindow::fill(PopupMenu* popup, const String& folder) { FillFromFolder(popup, folder); }

void iwindow::fill(Listbox* list, const String& folder) { FillFromFolder(list, folder); }

void iwindow::getcustomers() { fill(customers, "customers"); }

void iwindow::getnames() { fill(names, "names"); }

void iwindow::savenames() {
  Module1::f = GetFolderItem("")->Child("names")->Child(customername->Text());
  if (Module1::f->Exists()) {
    if (addresshaschanged) {
      Ref<BinaryStream> b = Module1::f->OpenAsBinaryFile(true);
      b->WritePString(customeraddress->Text());
      b->Close();
      addresshaschanged = false;
    }
  } else {
    // A new namefile leaves the flag set, so the next saving writes the same address over it.
    Ref<BinaryStream> b = Module1::f->CreateBinaryFile("prefs");
    b->WritePString(customeraddress->Text());
    b->Close();
  }
  getnames();
}

void iwindow::getaddresses() {
  Module1::f = GetFolderItem("")->Child("names")->Child(names->List(Module1::cellid));
  if (Module1::f == nil) return;
  Ref<BinaryStream> b = Module1::f->OpenAsBinaryFile(true);
  customeraddress->setText(b->ReadPString());
  b->Close();
}

void iwindow::names_Change() {
  customername->setText(names->Text());
  Module1::cellid = names->ListIndex();
  getaddresses();
}

void iwindow::customeraddress_TextChange() { addresshaschanged = true; }

}  // namespace win
