// SPDX-License-Identifier: GPL-3.0-or-later
#include "ControlView.h"

#include <QEvent>
#include <algorithm>

#include "AccessibleName.h"
#include "ButtonViews.h"
#include "DesktopScreen.h"
#include "Fonts.h"
#include "ListboxView.h"
#include "ShapeViews.h"
#include "TextViews.h"
#include "rb/Window.h"

namespace desk {

namespace {

class HoverWatch : public QObject {
 public:
  explicit HoverWatch(Control& c) : control_(c) {}

 protected:
  bool eventFilter(QObject*, QEvent* e) override {
    if (e->type() == QEvent::Enter) RunEvent([&] { control_.UserMouseEnter(); });
    if (e->type() == QEvent::Leave) RunEvent([&] { control_.UserMouseExit(); });
    return false;
  }

 private:
  Control& control_;
};

}  // namespace

QFont ControlFont(const Control& c) {
  FontState state;
  state.font = c.TextFont().Utf8();
  state.size = c.TextSize() > 0 ? c.TextSize() : 12;
  state.bold = c.Bold();
  state.italic = c.Italic();
  state.underline = c.Underline();
  return FontFor(state);
}

void ControlView::SyncCommon(Prop what) {
  QWidget* w = widget();
  switch (what) {
    case Prop::Enabled: w->setEnabled(control_.Enabled()); break;
    case Prop::Visible: w->setVisible(control_.Visible()); break;
    case Prop::Font: w->setFont(ControlFont(control_)); break;
    default: break;
  }
}

void ControlView::Sync(Prop what) {
  SyncCommon(what);
  widget()->update();
}

void ControlView::SyncAll() {
  QWidget* w = widget();
  w->setGeometry(control_.Left, control_.Top, control_.Width, control_.Height);
  SyncCommon(Prop::Font);
  SyncCommon(Prop::Enabled);
  SyncCommon(Prop::Visible);
  if (!dynamic_cast<const StaticText*>(&control_)) w->setAccessibleName(AccessibleName(control_));
  WatchHover();
}

void ControlView::FollowWindow(int dx, int dy) {
  const Control& c = control_;
  if (!c.LockRight && !c.LockBottom) return;
  QRect r(c.Left, c.Top, c.Width, c.Height);
  if (c.LockRight) {
    if (c.LockLeft) r.setWidth(std::max(0, c.Width + dx));
    else r.moveLeft(c.Left + dx);
  }
  if (c.LockBottom) {
    if (c.LockTop) r.setHeight(std::max(0, c.Height + dy));
    else r.moveTop(c.Top + dy);
  }
  widget()->setGeometry(r);
}

void ControlView::TakeFocus() {
  QWidget* w = widget();
  if (w->focusPolicy() != Qt::NoFocus) w->setFocus(Qt::OtherFocusReason);
}

void ControlView::WatchHover() {
  if (hover_) return;
  hover_ = std::make_unique<HoverWatch>(control_);
  widget()->installEventFilter(hover_.get());
}

bool RunOnceLater(QObject* context, bool& pending, std::function<void()> run) {
  if (pending) return false;
  pending = true;
  QMetaObject::invokeMethod(context, std::move(run), Qt::QueuedConnection);
  return true;
}

std::unique_ptr<ControlView> MakeControlView(Control& c, QWidget* form, DesktopScreen& screen) {
  if (auto* x = dynamic_cast<TextArea*>(&c)) return std::make_unique<AreaView>(*x, form, screen);
  if (auto* x = dynamic_cast<TextField*>(&c)) return std::make_unique<FieldView>(*x, form, screen);
  if (auto* x = dynamic_cast<StaticText*>(&c)) return std::make_unique<LabelView>(*x, form, screen);
  if (auto* x = dynamic_cast<Listbox*>(&c)) return std::make_unique<ListboxView>(*x, form, screen);
  if (auto* x = dynamic_cast<PopupMenu*>(&c)) return std::make_unique<PopupView>(*x, form, screen);
  if (auto* x = dynamic_cast<PushButton*>(&c)) return std::make_unique<ButtonView>(*x, form, screen);
  if (auto* x = dynamic_cast<CheckBox*>(&c)) return std::make_unique<CheckView>(*x, form, screen);
  if (auto* x = dynamic_cast<Canvas*>(&c)) return std::make_unique<CanvasView>(*x, form, screen);
  if (dynamic_cast<ContextualMenu*>(&c)) return nullptr;
  return std::make_unique<ShapeView>(c, form, screen);
}

}  // namespace desk
