// SPDX-License-Identifier: GPL-3.0-or-later
// The main window: one fixed invoice form of ten lines, the list of invoices at the right.
#pragma once

#include "rb/rb.h"

namespace win {

class iwindow : public Window {
 public:
  static constexpr const char* kClassName = "iwindow";
  iwindow();

  // The control arrays; an index out of range throws OutOfBoundsException.
  ControlArray<TextField, 10> number, description, price, total;
  ControlArray<StaticText, 15> currenysign;

  StaticText* StaticText1 = nullptr;
  StaticText* StaticText2 = nullptr;
  StaticText* StaticText3 = nullptr;
  TextField* customername = nullptr;
  TextArea* customeraddress = nullptr;
  TextArea* comments = nullptr;
  Listbox* customers = nullptr;
  TextField* grandtotal = nullptr;
  StaticText* datelabel = nullptr;
  StaticText* showinvoicenumber = nullptr;
  TextField* datefield = nullptr;
  TextField* invoicenumberField = nullptr;
  StaticText* StaticText4 = nullptr;
  StaticText* StaticText5 = nullptr;
  TextField* vatfield = nullptr;
  StaticText* StaticText6 = nullptr;
  TextField* duefield = nullptr;
  StaticText* StaticText7 = nullptr;
  StaticText* title2 = nullptr;
  StaticText* title1 = nullptr;
  TextField* statusfield = nullptr;
  StaticText* StaticText8 = nullptr;
  PopupMenu* names = nullptr;
  TextField* discountfield = nullptr;
  StaticText* StaticText9 = nullptr;
  PopupMenu* unpaid = nullptr;
  TextField* PostageField = nullptr;
  StaticText* StaticText10 = nullptr;
  StaticText* StaticText11 = nullptr;
  TextField* ordernumberfield = nullptr;
  ContextualMenu* cm = nullptr;

  bool OwnProperty(const std::string& name, std::string& value) const override;

  // Routines.
  void Calculate();
  void clearform();
  void makeeditable();
  void saveinvoice();
  void loadinvoice();
  void getcustomers();
  void getnames();
  void savenames();
  void getaddresses();
  void getunpaid();
  void saveunpaid();
  void paid();
  void markthem();
  void AddMenuHandlers();
  // The invoice's name: number, date and customer, joined by "-".
  String invoicename() const;

  // Window events.
  void Event_Open();
  void Event_Close();

  // Menu handlers.
  bool _filenew_Action();
  bool _filesave_Action();
  bool _filedeleteinvoice_Action();
  bool _fileprint_Action();
  bool _Pagesetup_Action();
  bool _printreceipt_Action();
  bool _printreminder_Action();
  bool _printlabel_Action();
  bool _PrintLabelLep_Action();
  bool _PrintA5envelope_Action();
  bool _PrintPrintsmalllabel_Action();
  bool _Editstock_Action();
  bool _appleprefs_Action();
  bool _appleabout_Action();
  bool _ledgerlyhelp_Action();

 protected:
  void CreateControls() override;

  // The window's own properties, each once with its type and its value at start; their
  // declaration and OwnProperty's lookup by name follow from this list. addresshaschanged: the
  // address changed since it last went to the name book; id: the line the stock menu fills.
#define IWINDOW_PROPERTIES(PROPERTY)           \
  PROPERTY(bool, addresshaschanged, false) \
  PROPERTY(Integer, id, 0)
#define IWINDOW_DECLARE(type, name, start) type name = start;
  IWINDOW_PROPERTIES(IWINDOW_DECLARE)
#undef IWINDOW_DECLARE

 private:
  void WireHandlers();
  // Shows a window the menu opens, modally, and gives the menu handler's answer when it is hidden.
  static bool modal(Window& window, bool answer);

  // What several fields share: the lock at opening, the whole text selected on entering, and any
  // key counting as an edit.
  void lock(TextControl* c);
  void select(TextControl* c);
  bool mark();

  // Field behaviour (fields.cpp).
  bool customername_KeyDown(const String& key);
  bool customeraddress_KeyDown(const String& key);
  bool comments_KeyDown(const String& key);
  bool statusfield_KeyDown(const String& key);
  void ordernumberfield_TextChange();
  void currenysign_Open(Integer index);
  bool customers_CellTextPaint(Graphics& g, Integer row, Integer column, Integer x, Integer y);

  // Arithmetic (arithmetic.cpp).
  void number_TextChange(Integer index);
  bool number_KeyDown(Integer index, const String& key);
  void price_TextChange(Integer index);
  void price_LostFocus(Integer index);
  void description_TextChange(Integer index);
  void total_TextChange(Integer index);
  void grandtotal_TextChange();
  void discountfield_TextChange();
  void discountfield_LostFocus();
  bool discountfield_KeyDown(const String& key);
  bool discountfield_MouseDown(Integer x, Integer y);
  void PostageField_TextChange();
  void PostageField_LostFocus();
  bool PostageField_KeyDown(const String& key);
  bool PostageField_MouseDown(Integer x, Integer y);
  void rowtotal(Integer index);
  void reformat(TextField* field);
  bool zero(TextField* field);

  // Life cycle (lifecycle.cpp).
  bool customers_CellClick(Integer row, Integer column, Integer x, Integer y);

  // The lists, the name book, the ledger and the stock menu.
  void customeraddress_TextChange();
  void statusfield_TextChange();
  bool description_MouseDown(Integer index, Integer x, Integer y);
  void names_Change();
  void unpaid_Change();
  void cm_Action(const String& item);
  void fill(PopupMenu* popup, const String& folder);
  void fill(Listbox* list, const String& folder);
};

}  // namespace win

inline Implicit<win::iwindow> iwindow;
