// SPDX-License-Identifier: GPL-3.0-or-later
#include "ListboxView.h"

#include <QApplication>
#include <QFontMetricsF>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>
#include <cmath>
#include <sstream>

#include "DesktopScreen.h"
#include "Fonts.h"
#include "KeyMap.h"
#include "PainterSurface.h"
#include "QtText.h"
#include "rb/Window.h"

namespace desk {

namespace {

// The selected row, as the classic list showed it: a light band that leaves the text's own colour.
const QColor kSelectedFocused(0xB5, 0xD5, 0xFF);
const QColor kSelectedIdle(0xD8, 0xD8, 0xD8);

std::vector<int> ParseWidths(const std::string& text) {
  std::vector<int> widths;
  std::stringstream in(text);
  std::string part;
  while (std::getline(in, part, ',')) {
    try {
      widths.push_back(std::stoi(part));
    } catch (...) {
      widths.push_back(-1);
    }
  }
  return widths;
}

FontState CellState(const Listbox& list) {
  FontState s;
  s.font = list.TextFont().Utf8();
  s.size = list.TextSize() > 0 ? list.TextSize() : 12;
  return s;
}

class CellDelegate : public QStyledItemDelegate {
 public:
  CellDelegate(ListboxView& view, QObject* parent) : QStyledItemDelegate(parent), view_(view) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    Listbox& list = view_.list();
    const int row = index.row(), column = index.column();
    if (!index.isValid() || row >= list.ListCount()) return;
    view_.CountPaint();
    painter->save();
    painter->setClipRect(option.rect);
    if (row == list.ListIndex()) {
      const bool focused = option.state & QStyle::State_HasFocus || (option.widget && option.widget->hasFocus());
      painter->fillRect(option.rect, focused ? kSelectedFocused : kSelectedIdle);
    }
    if (list.GridLinesHorizontal > 0) {
      painter->setPen(QPen(QColor(0xA0, 0xA0, 0xA0), 1, Qt::DotLine));
      painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
    }
    if (list.GridLinesVertical > 0) {
      painter->setPen(QPen(QColor(0xA0, 0xA0, 0xA0), 1, Qt::DotLine));
      painter->drawLine(option.rect.topRight(), option.rect.bottomRight());
    }
    const bool editing = list.Editing() && list.EditRow() == row && list.EditColumn() == column;
    if (!editing) {
      painter->translate(option.rect.topLeft());
      Graphics g(std::make_unique<PainterSurface>(painter));
      view_.screen().BeginPaint();
      RunEvent([&] {
        list.PaintCellText(g, row, column);
        if (row >= list.ListCount()) return;
        const QFontMetricsF metrics(FontFor(g.State()));
        const double baseline = (option.rect.height() - metrics.height()) / 2.0 + metrics.ascent();
        g.DrawString(list.Cell(row, column), 3, static_cast<Integer>(std::lround(baseline)));
      });
      view_.screen().EndPaint();
    }
    painter->restore();
  }

 private:
  ListboxView& view_;
};

}  // namespace

// The table: every press, drag and key goes to the platform; Qt's own selection is not used.
class ListTable : public QTableView {
 public:
  ListTable(ListboxView& view, QWidget* parent) : QTableView(parent), view_(view) {}

 protected:
  bool event(QEvent* e) override {
    if (!IsTabKey(e)) return QTableView::event(e);
    keyPressEvent(static_cast<QKeyEvent*>(e));
    return true;
  }
  void mousePressEvent(QMouseEvent* e) override { Press(e); }
  void mouseDoubleClickEvent(QMouseEvent* e) override { Press(e); }
  void mouseMoveEvent(QMouseEvent* e) override {
    Listbox& list = view_.list();
    if (!(e->buttons() & Qt::LeftButton) || pressRow_ < 0 || !list.EnableDragReorder || list.Editing()) return;
    const QPoint p = e->position().toPoint();
    if (!dragging_ && (p - pressPos_).manhattanLength() < QApplication::startDragDistance()) return;
    dragging_ = true;
    dropRow_ = DropRow(p);
    viewport()->update();
  }
  void mouseReleaseEvent(QMouseEvent* e) override {
    if (!dragging_) return;
    dragging_ = false;
    const int from = pressRow_, to = DropRow(e->position().toPoint());
    pressRow_ = -1;
    RunEvent([&] { view_.list().UserDrag(from, to); });
    viewport()->update();
  }
  void keyPressEvent(QKeyEvent* e) override {
    Window* w = view_.list().ParentWindow();
    if (!w || IsCommandKey(*e)) return;
    if (e->key() == Qt::Key_Backtab) {
      RunEvent([&] { w->FocusNext(true); });
      return;
    }
    if (w->Focus() != &view_.list()) RunEvent([&] { w->SetFocus(&view_.list()); });
    for (const String& key : PlatformKeys(*e)) RunEvent([&] { w->UserKey(key); });
  }
  void focusInEvent(QFocusEvent* e) override {
    QTableView::focusInEvent(e);
    viewport()->update();
  }
  void focusOutEvent(QFocusEvent* e) override {
    QTableView::focusOutEvent(e);
    viewport()->update();
  }
  void paintEvent(QPaintEvent* e) override {
    QTableView::paintEvent(e);
    if (!dragging_) return;
    QPainter p(viewport());
    p.setPen(QPen(Qt::black, 2));
    const int count = view_.list().ListCount();
    const int row = std::clamp(dropRow_, 0, std::max(0, count - 1));
    const int y = dropRow_ > pressRow_ ? rowViewportPosition(row) + rowHeight(row) - 1 : rowViewportPosition(row);
    p.drawLine(0, y, viewport()->width(), y);
  }
  void scrollContentsBy(int dx, int dy) override {
    QTableView::scrollContentsBy(dx, dy);
    view_.SyncEdit();
  }

 private:
  void Press(QMouseEvent* e) {
    if (e->button() != Qt::LeftButton && e->button() != Qt::RightButton) return;
    view_.FlushRows();
    Listbox& list = view_.list();
    const QPoint p = e->position().toPoint();
    int row = rowAt(p.y());
    const int column = std::max(0, columnAt(p.x()));
    if (row >= list.ListCount()) row = -1;
    pressRow_ = row;
    pressPos_ = p;
    dragging_ = false;
    const QRect cell = row >= 0 ? visualRect(model()->index(row, column)) : QRect();
    RunEvent([&] { list.UserCellClick(row, column, p.x() - cell.x(), p.y() - cell.y()); });
  }
  int DropRow(const QPoint& p) const {
    const int count = view_.list().ListCount();
    const int row = rowAt(p.y());
    if (row < 0 || row >= count) return p.y() < 0 ? 0 : count - 1;
    return row;
  }

  ListboxView& view_;
  int pressRow_ = -1;
  int dropRow_ = -1;
  QPoint pressPos_;
  bool dragging_ = false;
};

// ---- ListModel ---------------------------------------------------------------------------

int ListModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : list_.ListCount(); }

int ListModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : std::max(1, list_.ColumnCount);
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
  if (role != Qt::DisplayRole || !index.isValid() || index.row() >= list_.ListCount()) return {};
  String cell;
  RunEvent([&] { cell = list_.Cell(index.row(), index.column()); });
  return ToWidgetText(cell);
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole || orientation != Qt::Horizontal) return {};
  if (section < 0 || section >= static_cast<int>(list_.Headings.size())) return QString();
  return ToWidgetText(list_.Headings[section]);
}

// ---- ListboxView -------------------------------------------------------------------------

ListboxView::ListboxView(Listbox& c, QWidget* form, DesktopScreen& screen)
    : ControlView(c, screen), list_(c), model_(std::make_unique<ListModel>(c)) {
  table_ = new ListTable(*this, form);
  table_->setModel(model_.get());
  table_->setItemDelegate(new CellDelegate(*this, table_));
  table_->setSelectionMode(QAbstractItemView::NoSelection);
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->setFocusPolicy(Qt::ClickFocus);
  table_->setShowGrid(false);
  table_->setWordWrap(false);
  table_->setCornerButtonEnabled(false);
  table_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  table_->setVerticalScrollBarPolicy(c.ScrollBarVertical ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
  table_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  table_->setFont(ControlFont(c));

  rowHeight_ = static_cast<int>(std::ceil(LineHeight(CellState(c)))) + 4;
  QHeaderView* rows = table_->verticalHeader();
  rows->hide();
  rows->setSectionResizeMode(QHeaderView::Fixed);
  rows->setMinimumSectionSize(1);
  rows->setDefaultSectionSize(rowHeight_);

  QHeaderView* head = table_->horizontalHeader();
  head->setVisible(c.HasHeading);
  head->setSectionsClickable(false);
  head->setSectionsMovable(false);
  head->setHighlightSections(false);
  head->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  head->setSectionResizeMode(QHeaderView::Fixed);
  head->setStretchLastSection(true);
  const std::vector<int> widths = ParseWidths(c.ColumnWidths);
  for (int i = 0; i < static_cast<int>(widths.size()) && i < model_->columnCount(); ++i)
    if (widths[i] > 0) table_->setColumnWidth(i, widths[i]);

  editor_ = new QLineEdit(table_->viewport());
  editor_->setFocusPolicy(Qt::NoFocus);
  editor_->setAttribute(Qt::WA_TransparentForMouseEvents, true);
  editor_->setContextMenuPolicy(Qt::NoContextMenu);
  editor_->hide();

  SyncAll();
  SyncSelection();
  SyncEdit();
}

ListboxView::~ListboxView() = default;

QWidget* ListboxView::widget() const { return table_; }

void ListboxView::Sync(Prop what) {
  switch (what) {
    case Prop::Rows:
      // A refill sends one notice a row: the first asks for the flush, which repaints.
      if (RunOnceLater(table_, rowsPending_, [this] { FlushRows(); })) table_->viewport()->update();
      break;
    case Prop::Cell:
    case Prop::TextColor:
      if (!rowsPending_) table_->viewport()->update();
      break;
    case Prop::ListIndex: SyncSelection(); break;
    case Prop::Edit: SyncEdit(); break;
    case Prop::Font:
      ControlView::Sync(what);
      table_->viewport()->update();
      break;
    default: ControlView::Sync(what); break;
  }
}

void ListboxView::FlushRows() {
  if (!rowsPending_) return;
  rowsPending_ = false;
  ++resets_;
  model_->Reset();
  SyncSelection();
  SyncEdit();
}

void ListboxView::SyncSelection() {
  table_->viewport()->update();
  if (rowsPending_) return;
  const Integer row = list_.ListIndex();
  if (row >= 0 && row < model_->rowCount()) table_->scrollTo(model_->index(row, 0));
}

void ListboxView::SyncEdit() {
  if (!list_.Editing() || rowsPending_) {
    if (!list_.Editing()) {
      editor_->hide();
      editorOpen_ = false;
    }
    table_->viewport()->update();
    return;
  }
  const QModelIndex at = model_->index(list_.EditRow(), list_.EditColumn());
  editor_->setGeometry(table_->visualRect(at));
  editor_->setFont(ControlFont(list_));
  const QSignalBlocker block(editor_);
  editor_->setText(ToWidgetText(list_.EditText()));
  // The edit opens with its whole text selected; once typed into, the caret stands at the end.
  if (!editorOpen_) {
    editor_->selectAll();
  } else {
    editor_->deselect();
    editor_->end(false);
  }
  editorOpen_ = true;
  editor_->show();
  table_->viewport()->update();
}

}  // namespace desk
