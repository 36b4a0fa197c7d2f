// SPDX-License-Identifier: GPL-3.0-or-later
// Listbox as a QTableView over a model that reads the control itself: no copy of the rows, one
// row height for all, so that a list of many thousand rows fills and scrolls at the cost of the
// rows on screen. The rows are drawn through the platform's Graphics so that CellTextPaint gives
// them their colour.
#pragma once

#include <QAbstractTableModel>
#include <QLineEdit>
#include <QTableView>
#include <memory>

#include "ControlView.h"

namespace desk {

class ListTable;

class ListModel : public QAbstractTableModel {
 public:
  explicit ListModel(Listbox& list) : list_(list) {}
  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  int columnCount(const QModelIndex& parent = QModelIndex()) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  void Reset() {
    beginResetModel();
    endResetModel();
  }

 private:
  Listbox& list_;
};

class ListboxView : public ControlView {
 public:
  ListboxView(Listbox& c, QWidget* form, DesktopScreen& screen);
  ~ListboxView() override;
  QWidget* widget() const override;
  void Sync(Prop what) override;

  Listbox& list() const { return list_; }
  int RowHeight() const { return rowHeight_; }

  // What the list has cost, for the tests that keep it cheap: model resets, and cells painted.
  int Resets() const { return resets_; }
  int PaintedCells() const { return painted_; }
  void CountPaint() { ++painted_; }
  // Rows changed since the last reset: they are taken in once, when the event loop comes round.
  void FlushRows();
  void SyncEdit();

 private:
  void SyncSelection();
  Listbox& list_;
  std::unique_ptr<ListModel> model_;
  ListTable* table_;
  QLineEdit* editor_;
  int rowHeight_ = 18;
  int resets_ = 0;
  int painted_ = 0;
  bool rowsPending_ = false;
  bool editorOpen_ = false;
};

}  // namespace desk
