// SPDX-License-Identifier: GPL-3.0-or-later
#include "WindowView.h"

#include <QCloseEvent>
#include <QPainter>
#include <QResizeEvent>
#include <QTimer>
#include <functional>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenuBar>
#include <QPalette>
#include <QScreen>
#include <QVBoxLayout>

#include "DesktopScreen.h"
#include "KeyMap.h"
#include "MenuBarView.h"
#include "QtText.h"
#include "rb/Menu.h"
#include "rb/Window.h"

namespace desk {

bool IsModalFrame(Integer frame) { return frame == 1 || frame == 2 || frame == 8; }

// A modal window asks for neither minimise nor maximise: either could take it out of sight while
// it holds the program. The close hint also tells which actions there are; with none, all would
// be allowed. A Frame 2 window has no title bar and no frame of the window manager's, so no
// buttons at all. (Some window managers, openbox among them, offer minimise on every dialog
// whatever it asks: WindowView brings a minimised one back.)
Qt::WindowFlags ModalFlags(bool titleBar) {
  if (!titleBar) return Qt::Dialog | Qt::FramelessWindowHint;
  return Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
         Qt::WindowCloseButtonHint;
}

void MakeModal(QWidget& dialog) {
  dialog.setWindowFlags(ModalFlags(true));
  dialog.setWindowModality(Qt::ApplicationModal);
}

namespace {

Qt::WindowFlags FlagsFor(const Window& w) {
  if (!IsModalFrame(w.Frame)) {
    Qt::WindowFlags f = Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::CustomizeWindowHint;
    if (w.CloseButton) f |= Qt::WindowCloseButtonHint;
    if (w.MinimizeButton) f |= Qt::WindowMinimizeButtonHint;
    if (w.MaximizeButton && w.Resizeable) f |= Qt::WindowMaximizeButtonHint;
    return f;
  }
  return ModalFlags(w.Frame != 2);
}

// A Frame 2 window has no title bar; a dark frame outside its designed size sets it off from the
// white form under it.
constexpr int kDialogBorder = 2;
const QColor kDialogBorderColour(0x40, 0x40, 0x40);

// The area below the menu bar: the form sits at its top left and takes its size, so that locked
// controls can follow the window's edges.
class FormArea : public QWidget {
 public:
  FormArea(QWidget* parent, std::function<void(QSize)> resized) : QWidget(parent), resized_(std::move(resized)) {}

 protected:
  void resizeEvent(QResizeEvent* e) override { resized_(e->size()); }

 private:
  std::function<void(QSize)> resized_;
};

// The menu bar of a window: its own, or the application's on the main (document) window.
MenuBar* BarFor(const Window& w) {
  if (w.Menus) return w.Menus;
  if (w.Frame == 0 && App() && App()->Menus) return App()->Menus;
  return nullptr;
}

}  // namespace

WindowView::WindowView(Window& w, DesktopScreen& screen)
    : QWidget(nullptr, FlagsFor(w)), window_(w), screen_(screen) {
  setWindowTitle(Q(w.Title));
  setAttribute(Qt::WA_DeleteOnClose, false);
  setFocusPolicy(Qt::StrongFocus);
  if (IsModalFrame(w.Frame)) setWindowModality(Qt::ApplicationModal);

  QPalette pal = palette();
  pal.setColor(QPalette::Window, ToQColor(w.HasBackColor ? w.BackColor : Color(0xFFFFFF)));
  setPalette(pal);
  setAutoFillBackground(true);

  auto* layout = new QVBoxLayout(this);
  const int border = w.Frame == 2 ? kDialogBorder : 0;
  layout->setContentsMargins(border, border, border, border);
  layout->setSpacing(0);
  int barHeight = 0;
  if (MenuBar* bar = BarFor(w)) {
    menus_ = std::make_unique<MenuBarView>(*bar, screen_, this);
    layout->setMenuBar(menus_->bar());
    barHeight = menus_->bar()->sizeHint().height();
  }
  auto* area = new FormArea(this, [this](QSize size) { FollowSize(size); });
  area->setMinimumSize(0, 0);
  layout->addWidget(area, 1);
  form_ = new QWidget(area);
  form_->setGeometry(0, 0, w.Width, w.Height);

  for (const auto& c : w.Controls()) {
    if (auto view = MakeControlView(*c, form_, screen_)) views_[c.get()] = std::move(view);
  }

  const QSize size(w.Width + 2 * border, w.Height + barHeight + 2 * border);
  if (w.Resizeable) {
    setMinimumSize(std::min(w.MinWidth, w.Width) + 2 * border, std::min(w.MinHeight, w.Height) + barHeight + 2 * border);
    setMaximumSize(std::max(w.MaxWidth, w.Width) + 2 * border, std::max(w.MaxHeight, w.Height) + barHeight + 2 * border);
    resize(size);
  } else {
    setFixedSize(size);
  }
}

void WindowView::FollowSize(QSize size) {
  form_->resize(size);
  const int dx = size.width() - window_.Width, dy = size.height() - window_.Height;
  for (auto& [c, view] : views_) view->FollowWindow(dx, dy);
}

void WindowView::paintEvent(QPaintEvent* e) {
  QWidget::paintEvent(e);
  if (window_.Frame != 2) return;
  QPainter p(this);
  p.setPen(Qt::NoPen);
  p.setBrush(kDialogBorderColour);
  const QRect r = rect();
  p.drawRect(QRect(0, 0, r.width(), kDialogBorder));
  p.drawRect(QRect(0, r.height() - kDialogBorder, r.width(), kDialogBorder));
  p.drawRect(QRect(0, 0, kDialogBorder, r.height()));
  p.drawRect(QRect(r.width() - kDialogBorder, 0, kDialogBorder, r.height()));
}

WindowView::~WindowView() {
  // The controls' widgets go with the form; their views must not outlive the widgets.
  views_.clear();
}

ControlView* WindowView::ViewOf(const Control& c) const {
  auto it = views_.find(&c);
  return it == views_.end() ? nullptr : it->second.get();
}

void WindowView::Place() {
  if (placed_) return;
  placed_ = true;
  QScreen* s = QGuiApplication::primaryScreen();
  const QRect avail = s ? s->availableGeometry() : QRect(0, 0, 1024, 768);
  QRect frame(QPoint(0, 0), size());
  QWidget* parent = nullptr;
  for (Window* other : WindowRegistry::Shown()) {
    if (other == &window_) continue;
    if (WindowView* v = screen_.ViewOf(*other); v && v->isVisible()) parent = v;
  }
  switch (window_.Placement) {
    case 1:
      if (parent) {
        // Over the parent: centred across, a third of the way down, like an alert.
        const QRect p = parent->geometry();
        frame.moveTopLeft(QPoint(p.x() + (p.width() - frame.width()) / 2,
                                 p.y() + std::max(0, (p.height() - frame.height()) / 3)));
        break;
      }
      [[fallthrough]];
    case 2: frame.moveCenter(avail.center()); break;
    default: frame.moveTopLeft(avail.topLeft() + QPoint(40, 40)); break;
  }
  frame.moveLeft(std::max(avail.left(), std::min(frame.left(), avail.right() - frame.width())));
  frame.moveTop(std::max(avail.top(), std::min(frame.top(), avail.bottom() - frame.height())));
  move(frame.topLeft());
}

void WindowView::Present() {
  Place();
  show();
  // The offscreen platform of the tests has no stacking to change.
  if (QGuiApplication::platformName() != QLatin1String("offscreen")) raise();
  activateWindow();
}

void WindowView::ControlChanged(Control& c, Prop what) {
  if (ControlView* v = ViewOf(c)) v->Sync(what);
}

void WindowView::FocusTo(Control* c) {
  if (c) {
    if (ControlView* v = ViewOf(*c)) {
      v->TakeFocus();
      return;
    }
  }
  setFocus(Qt::OtherFocusReason);
}

bool WindowView::event(QEvent* e) {
  if (!IsTabKey(e)) return QWidget::event(e);
  keyPressEvent(static_cast<QKeyEvent*>(e));
  return true;
}

// Keys that no control took: Return and Escape for the Default and Cancel buttons, Tab, and keys
// meant for the focused control when Qt's focus stood elsewhere.
void WindowView::keyPressEvent(QKeyEvent* e) {
  if (IsCommandKey(*e)) return;
  if (e->key() == Qt::Key_Backtab) {
    RunEvent([&] { window_.FocusNext(true); });
    return;
  }
  for (const String& key : PlatformKeys(*e)) RunEvent([&] { window_.UserKey(key); });
}

// The close box: the main window closes (its Close event ends the program); a secondary window
// is hidden as its own close button would, and nothing else changes.
void WindowView::closeEvent(QCloseEvent* e) {
  e->ignore();
  // Behind a modal window the close box does nothing: that window holds the program.
  if (screen_.ModalAbove(this)) return;
  RunEvent([&] {
    if (window_.OnClose) {
      window_.Close();
    } else {
      window_.Hide();
    }
  });
}

// A window manager may minimise a modal window, or the main window and the modal ones with it
// (its iconify request goes to the top of the transient chain). While a modal window holds the
// program both come straight back, the modal one in front.
void WindowView::changeEvent(QEvent* e) {
  QWidget::changeEvent(e);
  if (e->type() != QEvent::WindowStateChange || !(windowState() & Qt::WindowMinimized)) return;
  if (!screen_.ModalAbove(nullptr)) return;
  QTimer::singleShot(0, this, [this] {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    if (isVisible()) show();
    screen_.RaiseModals();
  });
}

}  // namespace desk
