// Canvas, and the shapes drawn as designed: RoundRectangle, Rectangle, Line, PopupArrow, GroupBox.
#pragma once

#include <QWidget>

#include "ControlView.h"

namespace desk {

class CanvasView : public ControlView {
 public:
  CanvasView(Canvas& c, QWidget* form, DesktopScreen& screen);
  QWidget* widget() const override { return widget_; }

 private:
  QWidget* widget_;
};

// Every other control with a place on the window: drawn by its kind.
class ShapeView : public ControlView {
 public:
  ShapeView(Control& c, QWidget* form, DesktopScreen& screen);
  QWidget* widget() const override { return widget_; }
  void Sync(Prop what) override;

 private:
  QWidget* widget_;
};

}  // namespace desk
