// SPDX-License-Identifier: GPL-3.0-or-later
// Canvas, and the shapes drawn as designed: RoundRectangle, Rectangle, Line, PopupArrow, GroupBox.
#pragma once

#include <QWidget>

#include "ControlView.h"

namespace desk {

class CanvasView : public WidgetView<Canvas, QWidget> {
 public:
  CanvasView(Canvas& c, QWidget* form, DesktopScreen& screen);
};

// Every other control with a place on the window: drawn by its kind.
class ShapeView : public WidgetView<Control, QWidget> {
 public:
  ShapeView(Control& c, QWidget* form, DesktopScreen& screen);
  void Sync(Prop what) override;
};

}  // namespace desk
