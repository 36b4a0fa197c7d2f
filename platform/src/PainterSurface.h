// SPDX-License-Identifier: GPL-3.0-or-later
// Inside the platform: a page surface that paints each operation at once with a QPainter, on
// whatever device the painter is open on (a PDF, a printer, a widget, a list cell).
#pragma once

#include <QPainter>

#include "rb/Graphics.h"

// The size of the stop icon, in units.
constexpr int kStopIconSize = 32;
// The width of a DrawLine, in units: points on paper.
constexpr double kLineWidth = 0.5;

// Paints one operation. Text goes through LayoutLines and LineHeight with the face of FontFor,
// so it stands where StringWidth and StringHeight said it would.
void PaintOp(QPainter& painter, const DrawOp& op, const Picture* picture);

class PainterSurface : public PageSurface {
 public:
  // The painter must stay open on its device until Finish.
  explicit PainterSurface(QPainter* painter = nullptr) : painter_(painter) {}
  void Draw(const DrawOp& op, const Picture* picture) override;
  // Runs EndJob once; later calls do nothing.
  void Finish() override;

 protected:
  void SetPainter(QPainter* painter) { painter_ = painter; }
  // What a device does when the job ends: a PDF or printer ends its painter there.
  virtual void EndJob() {}

 private:
  QPainter* painter_;
  bool finished_ = false;
};
