// StaticText as a QLabel, PopupMenu as a QComboBox, PushButton and CheckBox. None of them takes
// the keyboard focus: a click on a button leaves it where it was.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>

#include "ControlView.h"

namespace desk {

class LabelView : public ControlView {
 public:
  LabelView(StaticText& c, QWidget* form, DesktopScreen& screen);
  QWidget* widget() const override { return label_; }
  void Sync(Prop what) override;

 private:
  void Fit();
  StaticText& text_;
  QLabel* label_;
};

class PopupView : public ControlView {
 public:
  PopupView(PopupMenu& c, QWidget* form, DesktopScreen& screen);
  QWidget* widget() const override { return combo_; }
  void Sync(Prop what) override;

 private:
  void SyncRows();
  void SyncIndex();
  PopupMenu& popup_;
  QComboBox* combo_;
};

class ButtonView : public ControlView {
 public:
  ButtonView(PushButton& c, QWidget* form, DesktopScreen& screen);
  QWidget* widget() const override { return button_; }
  void Sync(Prop what) override;

 private:
  PushButton& push_;
  QPushButton* button_;
};

class CheckView : public ControlView {
 public:
  CheckView(CheckBox& c, QWidget* form, DesktopScreen& screen);
  QWidget* widget() const override { return box_; }
  void Sync(Prop what) override;

 private:
  CheckBox& check_;
  QCheckBox* box_;
};

// "&" is a plain character in the program's captions.
QString Caption(const String& text);

}  // namespace desk
