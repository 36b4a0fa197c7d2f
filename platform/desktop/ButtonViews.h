// SPDX-License-Identifier: GPL-3.0-or-later
// StaticText as a QLabel, PopupMenu as a QComboBox, PushButton and CheckBox. None of them takes
// the keyboard focus: a click on a button leaves it where it was.
#pragma once

#include <QAbstractListModel>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>

#include "ControlView.h"

namespace desk {

class LabelView : public WidgetView<StaticText, QLabel> {
 public:
  LabelView(StaticText& c, QWidget* form, DesktopScreen& screen);
  void Sync(Prop what) override;

 private:
  void Fit();
};

// The rows of a popup as the combo box sees them: read from the control itself, no copy. The
// count is the one of the last reset, so that Qt's view of the rows only changes at a reset.
class PopupModel : public QAbstractListModel {
 public:
  PopupModel(PopupMenu& popup, QObject* parent) : QAbstractListModel(parent), popup_(popup) {}
  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  void Reset();

 private:
  PopupMenu& popup_;
  int rows_ = 0;
};

// On Linux Qt names a combo box by its current row and leaves the label to a relation; the
// program's popups are named like its fields (the label beside them), their row being the value.
// A class of its own lets an accessible interface of ours stand for them.
class PopupCombo : public QComboBox {
  Q_OBJECT

 public:
  using QComboBox::QComboBox;
};

class PopupView : public WidgetView<PopupMenu, PopupCombo> {
 public:
  PopupView(PopupMenu& c, QWidget* form, DesktopScreen& screen);
  void Sync(Prop what) override;

 private:
  void SyncRows();
  void SyncIndex();
  PopupModel* model_;
  bool rowsPending_ = false;
};

class ButtonView : public WidgetView<PushButton, QPushButton> {
 public:
  ButtonView(PushButton& c, QWidget* form, DesktopScreen& screen);
  void Sync(Prop what) override;
};

class CheckView : public WidgetView<CheckBox, QCheckBox> {
 public:
  CheckView(CheckBox& c, QWidget* form, DesktopScreen& screen);
  void Sync(Prop what) override;
};

// "&" is a plain character in the program's captions.
QString Caption(const String& text);

}  // namespace desk
