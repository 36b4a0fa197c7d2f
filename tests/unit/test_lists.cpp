// Listbox, PopupMenu and ContextualMenu: rows as a store, the selection, the edit in place, and
// their events.
#include "ScreenTest.h"

namespace {

class ListForm : public Window {
 public:
  static constexpr const char* kClassName = "ListForm";
  ListForm() : Window(kClassName) {}

  Listbox* stock = nullptr;
  TextField* field = nullptr;
  PopupMenu* currency = nullptr;
  ContextualMenu* cm = nullptr;
  std::vector<std::string> log;

 protected:
  void CreateControls() override {
    stock = Add<Listbox>("stock");
    stock->ColumnCount = 2;
    stock->EnableDragReorder = true;
    field = Add<TextField>("field");
    field->TabIndex = 1;
    PushButton* add = Add<PushButton>("add");
    add->Default = true;
    add->OnAction = [this] { log.push_back("add"); };
    currency = Add<PopupMenu>("currency");
    currency->OnChange = [this] { log.push_back("Change " + currency->Text().Utf8()); };
    cm = Add<ContextualMenu>("cm");
    cm->OnAction = [this](const String& item) { log.push_back("Action " + item.Utf8()); };
  }
};

Implicit<ListForm> form;

class Lists : public ScreenTest {
 protected:
  void SetUp() override {
    ScreenTest::SetUp();
    RegisterWindowClass<ListForm>();
  }
  // Rows editable in place in both columns, as the stock window makes them.
  static void Fill(Listbox* list, const std::vector<std::string>& descriptions) {
    for (const auto& d : descriptions) {
      list->AddRow(std::vector<String>{String(d), "1.00"});
      list->setCellType(list->ListCount() - 1, 0, 3);
      list->setCellType(list->ListCount() - 1, 1, 3);
    }
  }
  static std::vector<std::string> Column0(const Listbox* list) {
    std::vector<std::string> out;
    for (Integer i = 0; i < list->ListCount(); ++i) out.push_back(list->List(i).Utf8());
    return out;
  }
};

// A column that a row has not filled reads empty, and setting it fills the row out. A row the list
// does not have is out of bounds, however it is asked for; unhandled in a handler, it stops it.
TEST_F(Lists, RowsHoldTheirCellsAndARowThatIsNotThereIsOutOfBounds) {
  Listbox* list = form->stock;
  list->AddRow("nails");
  list->setCell(0, 3, "x");
  EXPECT_EQ(list->Cell(0, 3).Utf8(), "x");
  EXPECT_EQ(list->Cell(0, 2).Utf8(), "");
  list->setCellBold(0, 0, true);
  EXPECT_TRUE(list->CellBold(0, 0));
  EXPECT_FALSE(list->CellBold(0, 1));
  list->setCellType(0, 2, 3);
  EXPECT_EQ(list->CellType(0, 1), 0);
  EXPECT_THROW(list->List(1), OutOfBoundsException);
  EXPECT_THROW(list->List(-1), OutOfBoundsException);
  EXPECT_THROW(list->Cell(5, 0), OutOfBoundsException);
  EXPECT_THROW(list->CellBold(1, 0), OutOfBoundsException);
  EXPECT_THROW(list->setCell(1, 0, "x"), OutOfBoundsException);
  EXPECT_THROW(list->RemoveRow(1), OutOfBoundsException);
  EXPECT_THROW(list->setListIndex(1), OutOfBoundsException);
  EXPECT_EQ(list->ListCount(), 1);
  RunHandler([&] { list->List(7); });
  EXPECT_EQ(Errors(), (std::vector<std::string>{"OutOfBoundsException"}));
}

TEST_F(Lists, AddingLeavesTheSelectionAloneAndRemovingMovesItWithItsRow) {
  Listbox* list = form->stock;
  Fill(list, {"a", "b", "c", "d"});
  list->setListIndex(2);
  list->AddRow("e");
  list->RemoveRow(0);
  EXPECT_EQ(list->List(list->ListIndex()).Utf8(), "c");
  list->RemoveRow(2);
  EXPECT_EQ(list->ListIndex(), 1);
  list->RemoveRow(1);
  EXPECT_EQ(list->ListIndex(), -1);
  EXPECT_EQ(Column0(list), (std::vector<std::string>{"b", "e"}));
  list->setListIndex(0);
  list->DeleteAllRows();
  EXPECT_EQ(list->ListIndex(), -1);
}

// A click selects its row unless CellClick answers True; below the last row it selects nothing.
// A second click on an editable cell of the selected row opens the edit, which has the keys:
// Return ends it and goes no further, Escape gives it up.
TEST_F(Lists, ACellClickSelectsAndASecondOneEditsInPlace) {
  ListForm& f = *form;
  Fill(f.stock, {">", "b", "c"});
  bool answer = false;
  f.stock->OnCellClick = [&](Integer row, Integer column, Integer, Integer) {
    f.log.push_back("CellClick " + std::to_string(row) + "," + std::to_string(column));
    return answer;
  };
  f.SetFocus(f.field);
  answer = true;
  f.stock->UserCellClick(1, 1);
  EXPECT_EQ(f.Focus(), f.stock);
  EXPECT_EQ(f.stock->ListIndex(), -1);
  answer = false;
  f.stock->UserCellClick(3, 0);
  EXPECT_EQ(f.log, (std::vector<std::string>{"CellClick 1,1"}));
  f.stock->UserCellClick(0, 0);
  EXPECT_FALSE(f.stock->Editing());
  f.stock->UserCellClick(0, 0);
  ASSERT_TRUE(f.stock->Editing());
  Type(f, "Hammer");
  EXPECT_EQ(f.stock->Cell(0, 0).Utf8(), ">");
  f.UserKey(Keys::Return);
  EXPECT_EQ(f.stock->Cell(0, 0).Utf8(), "Hammer");
  f.stock->UserCellClick(0, 1);
  Type(f, "9.99");
  f.UserKey(Keys::Escape);
  EXPECT_EQ(f.stock->Cell(0, 1).Utf8(), "1.00");
  EXPECT_EQ(f.log.back(), "CellClick 0,1");
  f.UserKey(Keys::Return);
  EXPECT_EQ(f.log.back(), "add");
  // An edit opened by code has the keyboard; one left open, for another cell or another control,
  // keeps what was typed.
  f.SetFocus(f.field);
  f.stock->BeginEdit(1, 1);
  Type(f, "3");
  f.stock->BeginEdit(1, 0);
  Type(f, "4");
  f.SetFocus(f.field);
  EXPECT_EQ(f.stock->Cell(1, 1).Utf8(), "3");
  EXPECT_EQ(f.stock->Cell(1, 0).Utf8(), "4");
  EXPECT_EQ(f.field->Text().Utf8(), "");
  // Up and Down walk the rows of the focused list.
  f.SetFocus(f.stock);
  f.stock->setListIndex(-1);
  f.UserKey(Keys::Down);
  f.UserKey(Keys::Down);
  f.UserKey(Keys::Up);
  EXPECT_EQ(f.stock->ListIndex(), 0);
}

TEST_F(Lists, DraggingARowTakesItsCellsAndTheSelectionAlong) {
  ListForm& f = *form;
  Fill(f.stock, {"a", "b", "c", "d"});
  f.stock->setCellBold(0, 0, true);
  f.stock->setListIndex(0);
  f.stock->UserDrag(0, 2);
  EXPECT_EQ(Column0(f.stock), (std::vector<std::string>{"b", "c", "a", "d"}));
  EXPECT_TRUE(f.stock->CellBold(2, 0));
  EXPECT_EQ(f.stock->CellType(2, 1), 3);
  EXPECT_EQ(f.stock->ListIndex(), 2);
  f.stock->setListIndex(1);
  f.stock->UserDrag(3, 0);
  EXPECT_EQ(Column0(f.stock), (std::vector<std::string>{"d", "b", "c", "a"}));
  EXPECT_EQ(f.stock->ListIndex(), 2);
  f.stock->EnableDragReorder = false;
  f.stock->UserDrag(0, 3);
  EXPECT_EQ(Column0(f.stock), (std::vector<std::string>{"d", "b", "c", "a"}));
}

TEST_F(Lists, APopupRaisesChangeOnlyWhenItsIndexChanges) {
  ListForm& f = *form;
  EXPECT_EQ(f.currency->ListIndex(), -1);
  EXPECT_EQ(f.currency->Text().Utf8(), "");
  EXPECT_THROW(f.currency->setListIndex(0), OutOfBoundsException);
  for (const char* sign : {"\xC2\xA3", "\xE2\x82\xAC", "$"}) f.currency->AddRow(sign);
  f.currency->setListIndex(0);
  f.currency->setListIndex(0);
  f.currency->UserSelect(2);
  f.currency->DeleteAllRows();
  EXPECT_EQ(f.currency->ListIndex(), -1);
  f.currency->AddRow("x");
  f.currency->setEnabled(false);
  f.currency->UserSelect(0);
  EXPECT_EQ(f.currency->ListIndex(), -1);
  EXPECT_EQ(f.log, (std::vector<std::string>{"Change \xC2\xA3", "Change $"}));
}

TEST_F(Lists, AContextualMenuRaisesActionForAChoiceAndNothingWhenDismissed) {
  ListForm& f = *form;
  f.cm->AddRow("0-Hammer");
  f.cm->AddRow("1-Saw");
  scn::Answer saw, dismiss;
  saw.kind = dismiss.kind = scn::Answer::Menu;
  saw.text = "1-Saw";
  dismiss.accept = false;
  screen.Queue(saw);
  screen.Queue(dismiss);
  f.cm->Open();
  f.cm->Open();
  EXPECT_EQ(f.log, (std::vector<std::string>{"Action 1-Saw"}));
  EXPECT_EQ(screen.menusShown.at(1), (std::vector<std::string>{"0-Hammer", "1-Saw"}));
}

}  // namespace
