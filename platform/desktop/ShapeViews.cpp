// SPDX-License-Identifier: GPL-3.0-or-later
#include "ShapeViews.h"

#include <QGroupBox>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cstdlib>

#include "ButtonViews.h"
#include "DesktopScreen.h"
#include "KeyMap.h"
#include "PainterSurface.h"
#include "PictureImpl.h"
#include "QtText.h"
#include "rb/Window.h"

namespace desk {

namespace {

class CanvasWidget : public QWidget {
 public:
  CanvasWidget(Canvas& c, DesktopScreen& screen, QWidget* parent)
      : QWidget(parent), canvas_(c), screen_(screen) {}

 protected:
  // The backdrop at its own size from the top left, cut off at the edge; then Paint.
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setClipRect(rect());
    const Ref<Picture> backdrop = canvas_.Backdrop();
    if (backdrop != nil && backdrop->impl()) painter.drawImage(QPoint(0, 0), backdrop->impl()->image);
    if (!canvas_.OnPaint) return;
    Graphics g(std::make_unique<PainterSurface>(&painter));
    screen_.BeginPaint();
    RunEvent([&] {
      RunHandler([&] {
        if (canvas_.OnPaint) canvas_.OnPaint(g);
      });
    });
    screen_.EndPaint();
  }
  void mousePressEvent(QMouseEvent* e) override {
    const QPoint p = e->position().toPoint();
    const bool contextual = IsContextual(e);
    RunEvent([&] { canvas_.UserClick(p.x(), p.y(), contextual); });
  }

 private:
  Canvas& canvas_;
  DesktopScreen& screen_;
};

// The line's two ends in window coordinates: X1..Y2 when set, else the design box's corners.
void LineEnds(const Line& l, QPoint& a, QPoint& b) {
  if (l.X1 || l.Y1 || l.X2 || l.Y2) {
    a = QPoint(l.X1, l.Y1);
    b = QPoint(l.X2, l.Y2);
  } else {
    a = QPoint(l.Left, l.Top);
    b = QPoint(l.Left + l.Width, l.Top + l.Height);
  }
}

class ShapeWidget : public QWidget {
 public:
  ShapeWidget(Control& c, QWidget* parent) : QWidget(parent), control_(c) {}

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing, true);
    if (auto* r = dynamic_cast<RoundRectangle*>(&control_)) PaintRound(p, *r);
    else if (auto* r = dynamic_cast<Rectangle*>(&control_)) PaintRectangle(p, *r);
    else if (auto* l = dynamic_cast<Line*>(&control_)) PaintLine(p, *l);
    else if (auto* a = dynamic_cast<PopupArrow*>(&control_)) PaintArrow(p, *a);
  }
  void mousePressEvent(QMouseEvent* e) override {
    const QPoint p = e->position().toPoint();
    const bool contextual = IsContextual(e);
    RunEvent([&] { control_.UserClick(p.x(), p.y(), contextual); });
  }

 private:
  void PaintRound(QPainter& p, const RoundRectangle& r) {
    const double bw = r.BorderWidth();
    p.setPen(bw > 0 ? QPen(ToQColor(r.BorderColor), bw) : Qt::NoPen);
    p.setBrush(ToQColor(r.FillColor()));
    const QRectF box = QRectF(rect()).adjusted(bw / 2, bw / 2, -bw / 2, -bw / 2);
    p.drawRoundedRect(box, r.OvalWidth / 2.0, r.OvalHeight / 2.0);
  }
  void PaintRectangle(QPainter& p, const Rectangle& r) {
    p.setRenderHint(QPainter::Antialiasing, false);
    const int bw = r.BorderWidth;
    p.fillRect(rect(), ToQColor(r.FillColor));
    if (bw <= 0) return;
    p.setPen(QPen(ToQColor(r.BorderColor), bw, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    p.setBrush(Qt::NoBrush);
    const double h = bw / 2.0;
    p.drawRect(QRectF(rect()).adjusted(h, h, -h, -h));
  }
  void PaintLine(QPainter& p, const Line& l) {
    QPoint a, b;
    LineEnds(l, a, b);
    const QPoint origin = geometry().topLeft();
    p.setPen(QPen(ToQColor(l.BorderColor), std::max(1, l.BorderWidth), Qt::SolidLine, Qt::FlatCap));
    p.drawLine(a - origin, b - origin);
  }
  // Facing: 0 left, 1 right, 2 up, 3 down.
  void PaintArrow(QPainter& p, const PopupArrow& a) {
    const QRectF r = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    QPolygonF tri;
    switch (a.Facing) {
      case 0: tri << QPointF(r.right(), r.top()) << QPointF(r.right(), r.bottom()) << QPointF(r.left(), r.center().y()); break;
      case 1: tri << r.topLeft() << r.bottomLeft() << QPointF(r.right(), r.center().y()); break;
      case 2: tri << r.bottomLeft() << r.bottomRight() << QPointF(r.center().x(), r.top()); break;
      default: tri << r.topLeft() << r.topRight() << QPointF(r.center().x(), r.bottom()); break;
    }
    p.setPen(Qt::NoPen);
    p.setBrush(Qt::black);
    p.drawPolygon(tri);
  }

  Control& control_;
};

// A group box is Qt's own; the other shapes are drawn by their kind.
QWidget* MakeShape(Control& c, QWidget* form) {
  if (auto* g = dynamic_cast<GroupBox*>(&c)) return new QGroupBox(Caption(g->Caption), form);
  return new ShapeWidget(c, form);
}

}  // namespace

CanvasView::CanvasView(Canvas& c, QWidget* form, DesktopScreen& screen)
    : WidgetView(c, new CanvasWidget(c, screen, form), screen) {
  widget_->setFocusPolicy(Qt::NoFocus);
  SyncAll();
}

ShapeView::ShapeView(Control& c, QWidget* form, DesktopScreen& screen)
    : WidgetView(c, MakeShape(c, form), screen) {
  widget_->setFocusPolicy(Qt::NoFocus);
  // Drawn as designed, and nothing more: clicks go to what lies under or over them.
  const bool passive = !dynamic_cast<RoundRectangle*>(&c);
  widget_->setAttribute(Qt::WA_TransparentForMouseEvents, passive);
  SyncAll();
  if (auto* l = dynamic_cast<Line*>(&c)) {
    QPoint a, b;
    LineEnds(*l, a, b);
    const int pad = std::max(1, l->BorderWidth);
    widget_->setGeometry(QRect(a, b).normalized().adjusted(-pad, -pad, pad, pad));
  }
}

void ShapeView::Sync(Prop what) {
  if (what == Prop::Caption) {
    if (auto* box = qobject_cast<QGroupBox*>(widget_))
      box->setTitle(Caption(static_cast<GroupBox&>(shown_).Caption));
    return;
  }
  ControlView::Sync(what);
}

}  // namespace desk
