// SPDX-License-Identifier: GPL-3.0-or-later
#include "ButtonViews.h"

#include <QAbstractItemView>
#include <QAccessibleWidget>
#include <QCursor>
#include <QMouseEvent>
#include <QPalette>
#include <QSignalBlocker>
#include <QFontMetrics>
#include <algorithm>

#include "DesktopScreen.h"
#include "QtText.h"
#include "rb/Window.h"

namespace desk {

namespace {

// A press and its release make one click; the release may come outside (a link that is pressed
// and dragged away still acts on release).
class ClickLabel : public QLabel {
 public:
  ClickLabel(Control& c, QWidget* parent) : QLabel(parent), control_(c) {}

 protected:
  void mousePressEvent(QMouseEvent* e) override {
    pressed_ = e->button() == Qt::LeftButton || e->button() == Qt::RightButton;
    contextual_ = e->button() == Qt::RightButton || (e->modifiers() & Qt::ControlModifier);
  }
  void mouseReleaseEvent(QMouseEvent* e) override {
    if (!pressed_) return;
    pressed_ = false;
    const QPoint p = e->position().toPoint();
    RunEvent([&] { control_.UserClick(p.x(), p.y(), contextual_); });
  }

 private:
  Control& control_;
  bool pressed_ = false;
  bool contextual_ = false;
};

QPoint ClickPoint(const QWidget* w) {
  const QPoint p = w->mapFromGlobal(QCursor::pos());
  return w->rect().contains(p) ? p : w->rect().center();
}

}  // namespace

QString Caption(const String& text) {
  QString s = ToWidgetText(text);
  s.replace(QStringLiteral("&"), QStringLiteral("&&"));
  return s;
}

// ---- LabelView ---------------------------------------------------------------------------

LabelView::LabelView(StaticText& c, QWidget* form, DesktopScreen& screen)
    : WidgetView(c, new ClickLabel(c, form), screen) {
  widget_->setTextFormat(Qt::PlainText);
  widget_->setFocusPolicy(Qt::NoFocus);
  widget_->setWordWrap(c.Multiline);
  const Qt::Alignment h = c.TextAlign == 1 ? Qt::AlignHCenter : c.TextAlign == 2 ? Qt::AlignRight : Qt::AlignLeft;
  widget_->setAlignment(h | Qt::AlignTop);
  widget_->setContentsMargins(0, 0, 0, 0);
  SyncAll();
  Sync(Prop::Text);
  Sync(Prop::TextColor);
  Sync(Prop::BackColor);
}

void LabelView::Sync(Prop what) {
  switch (what) {
    case Prop::Text:
      widget_->setText(ToWidgetText(shown_.Text()));
      Fit();
      break;
    case Prop::Font:
      ControlView::Sync(what);
      Fit();
      break;
    case Prop::TextColor:
    case Prop::BackColor: {
      QPalette pal = widget_->palette();
      pal.setColor(QPalette::WindowText, ToQColor(shown_.TextColor()));
      pal.setColor(QPalette::Window, ToQColor(shown_.BackColor()));
      widget_->setPalette(pal);
      widget_->setAutoFillBackground(shown_.HasBackColor);
      break;
    }
    default: ControlView::Sync(what); break;
  }
}

// A one-line label whose text is wider than its box shows it whole, spilling out on the side away
// from its alignment, as the form's right-aligned captions did on the system they were drawn on.
void LabelView::Fit() {
  const Control& c = control();
  QRect box(c.Left, c.Top, c.Width, c.Height);
  if (!widget_->wordWrap()) {
    const QFontMetrics metrics(widget_->font());
    int need = 0;
    for (const QString& line : widget_->text().split(QLatin1Char('\n')))
      need = std::max(need, metrics.horizontalAdvance(line) + 1);
    const int extra = need - c.Width;
    if (extra > 0) {
      if (c.TextAlign == 2) box.adjust(-extra, 0, 0, 0);
      else if (c.TextAlign == 1) box.adjust(-extra / 2, 0, extra - extra / 2, 0);
      else box.adjust(0, 0, extra, 0);
    }
  }
  widget_->setGeometry(box);
}

// ---- PopupView ---------------------------------------------------------------------------

namespace {

class PopupAccessible : public QAccessibleWidget {
 public:
  explicit PopupAccessible(QWidget* w) : QAccessibleWidget(w, QAccessible::ComboBox) {}
  QString text(QAccessible::Text t) const override {
    const auto* combo = static_cast<const QComboBox*>(widget());
    if (t == QAccessible::Name) return combo->accessibleName();
    if (t == QAccessible::Value) return combo->currentText();
    return QAccessibleWidget::text(t);
  }
  // The list of rows, as a screen reader walks into it when it is open.
  int childCount() const override { return 1; }
  QAccessibleInterface* child(int index) const override {
    return index == 0 ? QAccessible::queryAccessibleInterface(static_cast<QComboBox*>(widget())->view()) : nullptr;
  }
  int indexOfChild(const QAccessibleInterface* child) const override { return child == this->child(0) ? 0 : -1; }
  QStringList actionNames() const override { return {showMenuAction()}; }
  void doAction(const QString& action) override {
    if (action == showMenuAction()) static_cast<QComboBox*>(widget())->showPopup();
  }
};

QAccessibleInterface* PopupAccessibleFactory(const QString& className, QObject* object) {
  if (className == QLatin1String(PopupCombo::staticMetaObject.className()) && object->isWidgetType())
    return new PopupAccessible(static_cast<QWidget*>(object));
  return nullptr;
}

}  // namespace

int PopupModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : rows_; }

QVariant PopupModel::data(const QModelIndex& index, int role) const {
  if ((role != Qt::DisplayRole && role != Qt::EditRole) || !index.isValid() || index.row() >= popup_.ListCount())
    return {};
  return ToWidgetText(popup_.List(index.row()));
}

void PopupModel::Reset() {
  beginResetModel();
  rows_ = popup_.ListCount();
  endResetModel();
}

PopupView::PopupView(PopupMenu& c, QWidget* form, DesktopScreen& screen)
    : WidgetView(c, new PopupCombo(form), screen), model_(new PopupModel(c, widget_)) {
  static const bool factory = (QAccessible::installFactory(PopupAccessibleFactory), true);
  (void)factory;
  widget_->setFocusPolicy(Qt::NoFocus);
  widget_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  widget_->setMinimumContentsLength(0);
  widget_->setModel(model_);
  QObject::connect(widget_, &QComboBox::activated, widget_, [this](int row) {
    RunEvent([&] { shown_.UserSelect(row); });
    SyncIndex();
  });
  SyncAll();
  SyncRows();
}

void PopupView::Sync(Prop what) {
  switch (what) {
    case Prop::Rows:
      // A refill adds its rows one by one: they are taken in once, when the event loop comes round.
      RunOnceLater(widget_, rowsPending_, [this] { SyncRows(); });
      break;
    case Prop::ListIndex:
    case Prop::Text: SyncIndex(); break;
    default: ControlView::Sync(what); break;
  }
}

void PopupView::SyncRows() {
  rowsPending_ = false;
  const QSignalBlocker block(widget_);
  model_->Reset();
  SyncIndex();
}

void PopupView::SyncIndex() {
  if (rowsPending_) return;
  const QSignalBlocker block(widget_);
  widget_->setCurrentIndex(shown_.ListIndex() < widget_->count() ? shown_.ListIndex() : -1);
}

// ---- ButtonView --------------------------------------------------------------------------

ButtonView::ButtonView(PushButton& c, QWidget* form, DesktopScreen& screen)
    : WidgetView(c, new QPushButton(form), screen) {
  // The field or list that has the focus keeps it: stockwindow's list relies on that.
  widget_->setFocusPolicy(Qt::NoFocus);
  widget_->setAutoDefault(false);
  widget_->setDefault(c.Default);
  QObject::connect(widget_, &QPushButton::clicked, widget_, [this] {
    const QPoint p = ClickPoint(widget_);
    RunEvent([&] { shown_.UserClick(p.x(), p.y(), false); });
  });
  SyncAll();
  Sync(Prop::Caption);
}

void ButtonView::Sync(Prop what) {
  if (what == Prop::Caption) {
    widget_->setText(Caption(shown_.Caption));
    return;
  }
  ControlView::Sync(what);
}

// ---- CheckView ---------------------------------------------------------------------------

CheckView::CheckView(CheckBox& c, QWidget* form, DesktopScreen& screen)
    : WidgetView(c, new QCheckBox(form), screen) {
  widget_->setFocusPolicy(Qt::NoFocus);
  QObject::connect(widget_, &QCheckBox::clicked, widget_, [this] {
    const QPoint p = ClickPoint(widget_);
    RunEvent([&] { shown_.UserClick(p.x(), p.y(), false); });
    Sync(Prop::Value);
  });
  SyncAll();
  Sync(Prop::Caption);
  Sync(Prop::Value);
}

void CheckView::Sync(Prop what) {
  switch (what) {
    case Prop::Caption: widget_->setText(Caption(shown_.Caption)); break;
    case Prop::Value: {
      const QSignalBlocker block(widget_);
      widget_->setChecked(shown_.Value());
      break;
    }
    default: ControlView::Sync(what); break;
  }
}

}  // namespace desk
