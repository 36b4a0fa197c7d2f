// Listbox, PopupMenu and ContextualMenu: rows as a store, the selection, the edit in place, and
// their events.
#include <gtest/gtest.h>

#include "TestScreen.h"
#include "rb/rb.h"

namespace {

class ListForm : public Window {
 public:
  static constexpr const char* kClassName = "ListForm";
  ListForm() : Window(kClassName) {}

  Listbox* stock = nullptr;
  TextField* field = nullptr;
  PushButton* addbutt = nullptr;
  PushButton* keep = nullptr;
  PopupMenu* currency = nullptr;
  PopupMenu* empty = nullptr;
  ContextualMenu* cm = nullptr;
  std::vector<std::string> log;
  std::string savedAtKeep;

 protected:
  void CreateControls() override {
    stock = Add<Listbox>("stock");
    stock->ColumnCount = 2;
    stock->EnableDragReorder = true;
    stock->TabIndex = 0;
    field = Add<TextField>("field");
    field->TabIndex = 1;
    addbutt = Add<PushButton>("addbutt");
    addbutt->Default = true;
    addbutt->OnAction = [this] {
      log.push_back("add");
      stock->AddRow(">");
    };
    keep = Add<PushButton>("keep");
    keep->Cancel = true;
    keep->OnAction = [this] {
      log.push_back("keep");
      savedAtKeep.clear();
      for (Integer i = 0; i < stock->ListCount(); ++i) savedAtKeep += stock->Cell(i, 0).Utf8() + ";";
    };
    currency = Add<PopupMenu>("currency");
    currency->OnChange = [this] { log.push_back("Change " + currency->Text().Utf8()); };
    empty = Add<PopupMenu>("empty");
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
  // Rows with CellType 3 in both columns, as the stock window makes them.
  static void Fill(Listbox* list, const std::vector<std::string>& descriptions) {
    for (const auto& d : descriptions) {
      list->AddRow(d);
      list->setCell(list->ListCount() - 1, 1, "1.00");
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

TEST_F(Lists, RowsHoldTheirCellsAndAddingLeavesTheSelectionAlone) {
  Listbox* list = form->stock;
  list->AddRow("nails");
  list->AddRow(std::vector<String>{"screws", "2.50"});
  list->setListIndex(0);
  list->AddRow("bolts");
  EXPECT_EQ(list->ListCount(), 3);
  EXPECT_EQ(list->ListIndex(), 0);
  EXPECT_EQ(list->List(1).Utf8(), "screws");
  EXPECT_EQ(list->Cell(1, 1).Utf8(), "2.50");
  // A column the row has not filled reads empty; setting it fills the row out.
  EXPECT_EQ(list->Cell(0, 1).Utf8(), "");
  list->setCell(0, 3, "x");
  EXPECT_EQ(list->Cell(0, 3).Utf8(), "x");
  EXPECT_EQ(list->Cell(0, 2).Utf8(), "");

  list->setCellBold(2, 0, true);
  EXPECT_TRUE(list->CellBold(2, 0));
  EXPECT_FALSE(list->CellBold(1, 0));
  EXPECT_EQ(list->CellType(0, 0), 0);
}

TEST_F(Lists, ARowTheListDoesNotHaveIsOutOfBounds) {
  Listbox* list = form->stock;
  list->AddRow("only");
  EXPECT_THROW(list->List(1), OutOfBoundsException);
  EXPECT_THROW(list->List(-1), OutOfBoundsException);
  EXPECT_THROW(list->Cell(5, 0), OutOfBoundsException);
  EXPECT_THROW(list->CellBold(1, 0), OutOfBoundsException);
  EXPECT_THROW(list->setCell(1, 0, "x"), OutOfBoundsException);
  EXPECT_THROW(list->RemoveRow(1), OutOfBoundsException);
  EXPECT_THROW(list->setListIndex(1), OutOfBoundsException);
  EXPECT_EQ(list->ListCount(), 1);

  // Unhandled in a handler, it stops the handler and is reported once.
  bool after = false;
  RunHandler([&] {
    list->List(7);
    after = true;
  });
  EXPECT_FALSE(after);
  EXPECT_EQ(screen.errors, (std::vector<std::string>{"OutOfBoundsException"}));
}

TEST_F(Lists, RemovingRowsMovesTheSelectionWithThem) {
  Listbox* list = form->stock;
  Fill(list, {"a", "b", "c", "d"});
  list->setListIndex(2);
  list->RemoveRow(0);
  EXPECT_EQ(list->ListIndex(), 1);
  EXPECT_EQ(list->List(list->ListIndex()).Utf8(), "c");
  list->RemoveRow(2);
  EXPECT_EQ(list->ListIndex(), 1);
  list->RemoveRow(1);
  EXPECT_EQ(list->ListIndex(), -1);
  EXPECT_EQ(Column0(list), (std::vector<std::string>{"b"}));

  list->setListIndex(0);
  list->DeleteAllRows();
  EXPECT_EQ(list->ListCount(), 0);
  EXPECT_EQ(list->ListIndex(), -1);
}

TEST_F(Lists, ACellClickSelectsTheRowUnlessCellClickAnswersTrue) {
  ListForm& f = *form;
  Fill(f.stock, {"a", "b", "c"});
  bool answer = false;
  f.stock->OnCellClick = [&](Integer row, Integer column, Integer, Integer) {
    f.log.push_back("CellClick " + std::to_string(row) + "," + std::to_string(column));
    return answer;
  };
  f.stock->OnGotFocus = [&] { f.log.push_back("GotFocus stock"); };
  f.SetFocus(f.field);

  f.stock->UserCellClick(1, 0);
  EXPECT_EQ(f.Focus(), f.stock);
  EXPECT_EQ(f.stock->ListIndex(), 1);
  EXPECT_EQ(f.log, (std::vector<std::string>{"GotFocus stock", "CellClick 1,0"}));

  answer = true;
  f.stock->UserCellClick(2, 1);
  EXPECT_EQ(f.stock->ListIndex(), 1);

  // Below the last row: no CellClick, and nothing is selected.
  f.log.clear();
  f.stock->UserCellClick(3, 0);
  EXPECT_EQ(f.stock->ListIndex(), -1);
  EXPECT_TRUE(f.log.empty());
}

TEST_F(Lists, AnEditableCellOfTheSelectedRowIsEditedInPlaceAndReturnEndsIt) {
  ListForm& f = *form;
  Fill(f.stock, {">", "bolts"});
  f.stock->UserCellClick(0, 0);
  EXPECT_FALSE(f.stock->Editing());
  f.stock->UserCellClick(0, 0);
  ASSERT_TRUE(f.stock->Editing());
  EXPECT_EQ(f.stock->EditText().Utf8(), ">");

  Type(f, "Hammer");
  EXPECT_EQ(f.stock->Cell(0, 0).Utf8(), ">");
  f.UserKey(Keys::Return);
  EXPECT_FALSE(f.stock->Editing());
  EXPECT_EQ(f.stock->Cell(0, 0).Utf8(), "Hammer");
  // The open edit took Return: the Default button did not see it. The next Return reaches it.
  EXPECT_TRUE(f.log.empty());
  f.UserKey(Keys::Return);
  EXPECT_EQ(f.log, (std::vector<std::string>{"add"}));

  // Escape gives the edit up.
  f.stock->UserCellClick(0, 1);
  Type(f, "9.99");
  f.UserKey(Keys::Escape);
  EXPECT_EQ(f.stock->Cell(0, 1).Utf8(), "1.00");
  EXPECT_EQ(f.log, (std::vector<std::string>{"add"}));

  // A cell that is not editable is only selected.
  f.stock->UserCellClick(2, 0);
  f.stock->UserCellClick(2, 0);
  EXPECT_FALSE(f.stock->Editing());
  EXPECT_EQ(f.stock->ListIndex(), 2);
}

TEST_F(Lists, AnOpenEditKeepsWhatTheUserTypedWhenTheListIsLeftOrAButtonClicked) {
  ListForm& f = *form;
  Fill(f.stock, {"a", "b"});
  f.stock->UserCellClick(1, 0);
  f.stock->UserCellClick(1, 0);
  Type(f, "Saw");
  f.UserKey(Keys::Backspace);
  f.SetFocus(f.field);
  EXPECT_FALSE(f.stock->Editing());
  EXPECT_EQ(f.stock->Cell(1, 0).Utf8(), "Sa");

  f.stock->UserCellClick(0, 0);
  f.stock->UserCellClick(0, 0);
  Type(f, "Drill");
  f.keep->UserClick();
  EXPECT_EQ(f.savedAtKeep, "Drill;Sa;");
  EXPECT_EQ(f.Focus(), f.stock);
}

TEST_F(Lists, AnEditOpenedByCodeHasTheKeyboard) {
  ListForm& f = *form;
  Fill(f.stock, {"a"});
  f.SetFocus(f.field);
  f.stock->BeginEdit(0, 1);
  EXPECT_EQ(f.Focus(), f.stock);
  Type(f, "3");
  f.UserKey(Keys::Enter);
  EXPECT_EQ(f.stock->Cell(0, 1).Utf8(), "3");
  EXPECT_EQ(f.field->Text().Utf8(), "");
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

  f.stock->setListIndex(1);  // "c"
  f.stock->UserDrag(3, 0);
  EXPECT_EQ(Column0(f.stock), (std::vector<std::string>{"d", "b", "c", "a"}));
  EXPECT_EQ(f.stock->List(f.stock->ListIndex()).Utf8(), "c");

  f.stock->EnableDragReorder = false;
  f.stock->UserDrag(0, 3);
  EXPECT_EQ(Column0(f.stock), (std::vector<std::string>{"d", "b", "c", "a"}));
}

TEST_F(Lists, UpAndDownWalkTheRowsOfTheFocusedList) {
  ListForm& f = *form;
  Fill(f.stock, {"a", "b"});
  f.SetFocus(f.stock);
  f.UserKey(Keys::Down);
  EXPECT_EQ(f.stock->ListIndex(), 0);
  f.UserKey(Keys::Down);
  f.UserKey(Keys::Down);
  EXPECT_EQ(f.stock->ListIndex(), 1);
  f.UserKey(Keys::Up);
  EXPECT_EQ(f.stock->ListIndex(), 0);
}

TEST_F(Lists, CellTextPaintSetsTheColourTheTextIsPaintedIn) {
  ListForm& f = *form;
  f.stock->AddRow("00001-16-11-2026-Brown");
  f.stock->AddRow("00002-16-11-2026-Green");
  Graphics g(std::make_unique<RecordingSurface>());
  EXPECT_EQ(f.stock->PaintCellText(g, 0, 0), Color(0x000000));

  f.stock->setCellBold(0, 0, true);
  f.stock->OnCellTextPaint = [&](Graphics& gr, Integer row, Integer column, Integer, Integer) {
    gr.ForeColor = f.stock->CellBold(row, column) ? Color(0xFF0000) : Color(0x000C00);
    return false;
  };
  EXPECT_EQ(f.stock->PaintCellText(g, 0, 0), Color(0xFF0000));
  EXPECT_EQ(f.stock->PaintCellText(g, 1, 0), Color(0x000C00));
}

TEST_F(Lists, APopupWithNoRowsHasNoSelection) {
  PopupMenu* p = form->empty;
  EXPECT_EQ(p->ListCount(), 0);
  EXPECT_EQ(p->ListIndex(), -1);
  EXPECT_EQ(p->Text().Utf8(), "");
  EXPECT_THROW(p->List(0), OutOfBoundsException);
  EXPECT_THROW(p->setListIndex(0), OutOfBoundsException);
}

TEST_F(Lists, APopupRaisesChangeOnlyWhenItsIndexChanges) {
  ListForm& f = *form;
  for (const char* sign : {"\xC2\xA3", "\xE2\x82\xAC", "$"}) f.currency->AddRow(sign);
  f.currency->setListIndex(0);
  f.currency->setListIndex(0);
  f.currency->UserSelect(2);
  EXPECT_EQ(f.log, (std::vector<std::string>{"Change \xC2\xA3", "Change $"}));
  EXPECT_EQ(f.currency->Text().Utf8(), "$");
  EXPECT_EQ(f.currency->List(1).Utf8(), "\xE2\x82\xAC");

  f.currency->DeleteAllRows();
  EXPECT_EQ(f.currency->ListIndex(), -1);
  EXPECT_EQ(f.log.size(), 2u);

  f.currency->AddRow("x");
  f.currency->setEnabled(false);
  f.currency->UserSelect(0);
  EXPECT_EQ(f.currency->ListIndex(), -1);
}

TEST_F(Lists, AContextualMenuRaisesActionForAChoiceAndNothingWhenDismissed) {
  ListForm& f = *form;
  f.cm->AddRow("0-Hammer");
  f.cm->AddRow("1-Saw");
  screen.menuAnswers.push_back(1);
  screen.menuAnswers.push_back(std::nullopt);
  f.cm->Open();
  f.cm->Open();
  EXPECT_EQ(f.log, (std::vector<std::string>{"Action 1-Saw"}));
  ASSERT_EQ(screen.menusShown.size(), 2u);
  EXPECT_EQ(screen.menusShown[0], (std::vector<std::string>{"0-Hammer", "1-Saw"}));

  f.cm->DeleteAllRows();
  EXPECT_EQ(f.cm->ListCount(), 0);
}

}  // namespace
