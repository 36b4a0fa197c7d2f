// SPDX-License-Identifier: GPL-3.0-or-later
// The preferences: who the business is, what it charges, which number comes next. Its controls are
// the preferences; the rest of the program reads them from here, shown or hidden.
#pragma once

#include "rb/rb.h"

namespace win {

class prefswindow : public Window {
 public:
  static constexpr const char* kClassName = "prefswindow";
  prefswindow();

  TextField* mybusinessname = nullptr;
  TextArea* myaddress = nullptr;
  TextField* myemail = nullptr;
  TextField* mywebb = nullptr;
  TextField* invoicestartnumberfield = nullptr;
  TextField* vatamountfield = nullptr;
  TextArea* termsfield = nullptr;
  PushButton* loadlogobutt = nullptr;
  Canvas* canvas1 = nullptr;
  StaticText* StaticText1 = nullptr;
  StaticText* StaticText2 = nullptr;
  GroupBox* GroupBox1 = nullptr;
  PushButton* PushButton1 = nullptr;
  PushButton* closebutt = nullptr;
  PopupMenu* currency = nullptr;
  StaticText* StaticText3 = nullptr;
  GroupBox* GroupBox2 = nullptr;
  TextArea* reminderfield = nullptr;
  GroupBox* GroupBox3 = nullptr;
  TextArea* receiptfield = nullptr;
  GroupBox* GroupBox4 = nullptr;
  CheckBox* DateEditButt = nullptr;

  void Event_Activate();

 protected:
  void CreateControls() override;

 private:
  // The nine text controls share these two.
  void textfield_GotFocus(TextControl* c);
  bool textfield_KeyDown(const String& key);

  void invoicestartnumberfield_TextChange();
  void loadlogobutt_Action();
  void PushButton1_Action();
  bool canvas1_MouseDown(Integer x, Integer y);
  void currency_Change();
  void DateEditButt_Action();
  void closebutt_Action();
};

}  // namespace win

inline Implicit<win::prefswindow> prefswindow;
