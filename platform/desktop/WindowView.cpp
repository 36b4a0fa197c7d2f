#include "WindowView.h"

#include <QCloseEvent>
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

namespace desk {

bool IsModalFrame(Integer frame) { return frame == 1 || frame == 2 || frame == 8; }

namespace {

Qt::WindowFlags FlagsFor(const Window& w) {
  if (!IsModalFrame(w.Frame)) {
    Qt::WindowFlags f = Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::CustomizeWindowHint;
    if (w.CloseButton) f |= Qt::WindowCloseButtonHint;
    if (w.MinimizeButton) f |= Qt::WindowMinimizeButtonHint;
    if (w.MaximizeButton && w.Resizeable) f |= Qt::WindowMaximizeButtonHint;
    return f;
  }
  if (w.Frame == 2) return Qt::Dialog | Qt::CustomizeWindowHint;  // no title bar, no close box
  Qt::WindowFlags f = Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint;
  if (w.CloseButton) f |= Qt::WindowCloseButtonHint;
  return f;
}

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
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  int barHeight = 0;
  if (MenuBar* bar = BarFor(w)) {
    menus_ = std::make_unique<MenuBarView>(*bar, screen_, this);
    layout->setMenuBar(menus_->bar());
    barHeight = menus_->bar()->sizeHint().height();
  }
  // The area below the menu bar; the form sits at its top left and never moves.
  auto* area = new QWidget(this);
  area->setMinimumSize(0, 0);
  layout->addWidget(area, 1);
  form_ = new QWidget(area);
  form_->setGeometry(0, 0, w.Width, w.Height);

  for (const auto& c : w.Controls()) {
    if (auto view = MakeControlView(*c, form_, screen_)) views_[c.get()] = std::move(view);
  }

  const QSize size(w.Width, w.Height + barHeight);
  if (w.Resizeable) {
    setMinimumSize(std::min(w.MinWidth, w.Width), std::min(w.MinHeight, w.Height) + barHeight);
    setMaximumSize(std::max(w.MaxWidth, w.Width), std::max(w.MaxHeight, w.Height) + barHeight);
    resize(size);
  } else {
    setFixedSize(size);
  }
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
  if (e->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(e)->key();
    if (key == Qt::Key_Tab || key == Qt::Key_Backtab) {
      keyPressEvent(static_cast<QKeyEvent*>(e));
      return true;
    }
  }
  return QWidget::event(e);
}

// Keys that no control took: Return and Escape for the Default and Cancel buttons, Tab, and keys
// meant for the focused control when Qt's focus stood elsewhere.
void WindowView::keyPressEvent(QKeyEvent* e) {
  if (IsCommandKey(*e)) return;
  if (e->key() == Qt::Key_Backtab) {
    Guard([&] { window_.FocusNext(true); });
    return;
  }
  for (const String& key : PlatformKeys(*e)) Guard([&] { window_.UserKey(key); });
}

// The close box: the main window closes (its Close event ends the program); a secondary window
// is hidden as its own close button would, and nothing else changes.
void WindowView::closeEvent(QCloseEvent* e) {
  e->ignore();
  Guard([&] {
    if (window_.OnClose) {
      window_.Close();
    } else {
      window_.Hide();
    }
  });
}

}  // namespace desk
