// SPDX-License-Identifier: GPL-3.0-or-later
#include "DesktopScreen.h"

#include <QApplication>
#include <QClipboard>
#include <QCursor>
#include <QDesktopServices>
#include <QEventLoop>
#include <QKeyEvent>
#include <QMenu>
#include <QMessageBox>
#include <QRegularExpression>
#include <QTimer>
#include <QUrl>
#include <QWindow>
#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>

#include "ControlView.h"
#include "DesktopStyle.h"
#include "KeyMap.h"
#include "MenuBarView.h"
#include "PrintDialogs.h"
#include "QtText.h"
#include "WindowView.h"
#include "rb/Menu.h"
#include "rb/Window.h"

namespace desk {

namespace {

std::string Lower(std::string s) {
  for (char& ch : s) ch = static_cast<char>(std::tolower(static_cast<unsigned char>(ch)));
  return s;
}

MenuBar* TheMenuBar() {
  if (App() && App()->Menus) return App()->Menus;
  for (Window* w : WindowRegistry::Built())
    if (w->Menus) return w->Menus;
  return nullptr;
}

QString ExceptionText(const char* className, const char* what) {
  return QStringLiteral("An exception of class %1 was not handled.\n\n%2")
      .arg(QString::fromUtf8(className), QString::fromUtf8(what));
}

}  // namespace

DesktopScreen::DesktopScreen() {
  // The platform decides when the program ends: hiding the last window is no quit.
  QGuiApplication::setQuitOnLastWindowClosed(false);
  qApp->installEventFilter(this);
  UseDesktopStyle();
  // Asking the printer loads the system's print support, which would lengthen every start; it is
  // asked when the first page is set up or printed.
  PrinterSetup::SetDefaultPaperSource(TakeDefaultPaperFromPrinter);
}

DesktopScreen::~DesktopScreen() {
  if (qApp) qApp->removeEventFilter(this);
  for (auto& [w, loops] : loops_)
    for (QEventLoop* loop : loops) loop->quit();
  views_.clear();
}

// ---- the simple services -----------------------------------------------------------------

void DesktopScreen::MsgBox(const String& text) {
  ReleaseViews();
  OutermostScope outermost;
  QMessageBox box(QMessageBox::NoIcon, QString(), ToWidgetText(text), QMessageBox::Ok, FrontWidget());
  MakeModal(box);
  box.exec();
}

void DesktopScreen::Beep() { QApplication::beep(); }

// A text with no scheme of its own is a web address.
void DesktopScreen::ShowURL(const String& url) {
  QString text = Q(url).trimmed();
  static const QRegularExpression scheme(QStringLiteral("^[A-Za-z][A-Za-z0-9+.-]*:(//|[^0-9])"));
  if (!scheme.match(text).hasMatch()) text.prepend(QStringLiteral("https://"));
  QDesktopServices::openUrl(QUrl(text, QUrl::TolerantMode));
}

void DesktopScreen::Quit(Integer code) {
  if (!quitRequested_) {
    quitRequested_ = true;
    quitCode_ = code;
  }
  QCoreApplication::exit(quitCode_);
}

void DesktopScreen::UnhandledException(const RuntimeException& e) {
  const QString text = ExceptionText(e.ClassName(), e.what());
  ReleaseViews();
  auto show = [this, text] {
    OutermostScope outermost;
    QMessageBox box(QMessageBox::Critical, QString(), text, QMessageBox::Ok, FrontWidget());
    MakeModal(box);
    box.exec();
  };
  // No dialog from inside a paint: it waits for the loop to come round.
  if (painting_ > 0) {
    QTimer::singleShot(0, qApp, show);
  } else {
    show();
  }
}

// The report is written to the error stream too, and shown unless a paint is under way, when no
// dialog can come up; then the program ends, leaving a core for whoever mends it.
void DesktopScreen::Defect(const std::string& className, const std::string& what) {
  const QString text = ExceptionText(className.c_str(), what.c_str()) +
                       QStringLiteral("\n\nThe program ends.");
  std::fprintf(stderr, "%s\n", text.toLocal8Bit().constData());
  if (painting_ == 0) {
    ReleaseViews();
    OutermostScope outermost;
    QMessageBox box(QMessageBox::Critical, QString(), text, QMessageBox::Ok, FrontWidget());
    MakeModal(box);
    box.exec();
  }
  std::abort();
}

void DesktopScreen::RunModal(Window& w) {
  ReleaseViews();
  if (quitRequested_ || !w.Visible() || !ViewOf(w)) return;
  OutermostScope outermost;
  QEventLoop loop;
  loops_[&w].push_back(&loop);
  loop.exec(QEventLoop::DialogExec);
  auto& stack = loops_[&w];
  stack.erase(std::remove(stack.begin(), stack.end(), &loop), stack.end());
  if (stack.empty()) loops_.erase(&w);
}

Ref<FolderItem> DesktopScreen::OpenFileDialog(const String& filter) {
  ReleaseViews();
  OutermostScope outermost;
  return RunOpenFileDialog(filter, FrontWidget());
}

std::optional<Integer> DesktopScreen::ContextualMenu(const std::vector<String>& rows) {
  ReleaseViews();
  OutermostScope outermost;
  QMenu menu(FrontWidget());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    QString text = ToWidgetText(rows[i]);
    text.replace(QStringLiteral("&"), QStringLiteral("&&"));
    menu.addAction(text)->setData(static_cast<int>(i));
  }
  QAction* chosen = menu.exec(QCursor::pos());
  if (!chosen) return std::nullopt;
  return chosen->data().toInt();
}

std::unique_ptr<PageSurface> DesktopScreen::PrintDialog(const PrinterSetup* setup) {
  ReleaseViews();
  OutermostScope outermost;
  return RunPrintDialog(setup, FrontWidget());
}

bool DesktopScreen::PageSetupDialog(PrinterSetup& setup) {
  ReleaseViews();
  OutermostScope outermost;
  return RunPageSetupDialog(setup, FrontWidget());
}

// ---- the notices -------------------------------------------------------------------------

void DesktopScreen::WindowShown(Window& w) {
  if (holding_) return;
  auto& view = views_[&w];
  const bool made = !view;
  if (made) view = std::make_unique<WindowView>(w, *this);
  if (IsModalFrame(w.Frame)) {
    TieToMain(*view);
  } else if (made && w.Frame == 0) {
    // The main window came after a modal one (the first start's preferences): the modal windows
    // showing now get it as their parent, shown anew so that the window system hears of it.
    for (auto& [other, v] : views_)
      if (v.get() != view.get() && IsModalFrame(other->Frame) && v->isVisible() && TieToMain(*v)) {
        v->hide();
        v->show();
      }
  }
  view->Present();
  if (!IsModalFrame(w.Frame)) RaiseModals();
  if (Control* focus = w.Focus()) view->FocusTo(focus);
  RefreshMenus();
}

QWidget* DesktopScreen::MainWidget() const {
  for (const auto& [w, view] : views_)
    if (w->Frame == 0) return view.get();
  return nullptr;
}

bool DesktopScreen::TieToMain(QWidget& dialog) {
  QWidget* main = MainWidget();
  if (!main || main == &dialog) return false;
  main->winId();
  dialog.winId();
  if (dialog.windowHandle()->transientParent() == main->windowHandle()) return false;
  dialog.windowHandle()->setTransientParent(main->windowHandle());
  return true;
}

bool DesktopScreen::ModalAbove(const QWidget* view) const {
  QWidget* modal = QApplication::activeModalWidget();
  return modal && modal != view;
}

// Without a window manager nothing keeps a dialog above its parent: a window that comes to the
// front puts the modal windows back over it, the innermost last.
void DesktopScreen::RaiseModals() {
  if (QGuiApplication::platformName() == QLatin1String("offscreen")) return;
  for (Window* w : WindowRegistry::Shown())
    if (WindowView* v = ViewOf(*w); v && v->isVisible() && IsModalFrame(w->Frame)) v->raise();
  if (QWidget* modal = QApplication::activeModalWidget()) {
    modal->raise();
    modal->activateWindow();
  }
}

void DesktopScreen::ReleaseViews() {
  if (!holding_) return;
  holding_ = false;
  for (Window* w : WindowRegistry::Shown()) WindowShown(*w);
}

void DesktopScreen::WindowHidden(Window& w) {
  if (WindowView* view = ViewOf(w)) view->hide();
  auto it = loops_.find(&w);
  if (it != loops_.end())
    for (QEventLoop* loop : it->second) loop->quit();
  if (Window* front = WindowRegistry::Front())
    if (WindowView* v = ViewOf(*front); v && v->isVisible()) {
      if (QGuiApplication::platformName() != QLatin1String("offscreen")) v->raise();
      v->activateWindow();
    }
  RefreshMenus();
}

void DesktopScreen::WindowDestroyed(Window& w) {
  auto it = loops_.find(&w);
  if (it != loops_.end())
    for (QEventLoop* loop : it->second) loop->quit();
  views_.erase(&w);
}

void DesktopScreen::ControlChanged(Control& c, Prop what) {
  if (Window* w = c.ParentWindow())
    if (WindowView* view = ViewOf(*w)) view->ControlChanged(c, what);
}

void DesktopScreen::FocusChanged(Window& w, Control* c) {
  if (WindowView* view = ViewOf(w)) view->FocusTo(c);
  RefreshMenus();
}

// ---- lookups -----------------------------------------------------------------------------

WindowView* DesktopScreen::ViewOf(const Window& w) const {
  auto it = views_.find(&w);
  return it == views_.end() ? nullptr : it->second.get();
}

ControlView* DesktopScreen::ViewOf(const Control& c) const {
  Window* w = c.ParentWindow();
  WindowView* view = w ? ViewOf(*w) : nullptr;
  return view ? view->ViewOf(c) : nullptr;
}

QWidget* DesktopScreen::FrontWidget() const {
  Window* front = WindowRegistry::Front();
  WindowView* view = front ? ViewOf(*front) : nullptr;
  return view && view->isVisible() ? view : nullptr;
}

// ---- menus and keys ----------------------------------------------------------------------

void DesktopScreen::RefreshMenus() {
  for (auto& [w, view] : views_)
    if (MenuBarView* menus = view->Menus()) menus->Refresh();
}

void DesktopScreen::ChooseItem(const std::string& name) {
  const std::string n = Lower(name);
  QClipboard* clipboard = QGuiApplication::clipboard();
  if (n == "editpaste" && clipboard && !clipboard->text().isEmpty())
    Clipboard() = String(FromWidgetText(clipboard->text()));
  RunEvent([&] { ChooseMenuItem(name); });
  if ((n == "editcut" || n == "editcopy") && clipboard && !Clipboard().IsEmpty())
    clipboard->setText(ToWidgetText(Clipboard()));
  RefreshMenus();
}

void DesktopScreen::CommandKey(const QKeyEvent& e) {
  MenuBar* bar = TheMenuBar();
  if (!bar) return;
  MenuItem* item = bar->FindByShortcut(CommandShortcut(e));
  if (item) ChooseItem(item->Name);
}

// Every key pressed with Control in one of the program's windows is a menu command, whatever
// widget has the focus: "Cmd+A" is About even inside a text field. The event stops here, so the
// item runs once.
bool DesktopScreen::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  auto* target = qobject_cast<QWidget*>(watched);
  if (!target || !dynamic_cast<WindowView*>(target->window())) return false;
  auto* key = static_cast<QKeyEvent*>(event);
  if (!IsCommandKey(*key)) return false;
  CommandKey(*key);
  key->accept();
  return true;
}

}  // namespace desk
