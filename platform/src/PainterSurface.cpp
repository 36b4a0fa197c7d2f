// SPDX-License-Identifier: GPL-3.0-or-later
#include "PainterSurface.h"

#include <QColor>
#include <QPen>
#include <QPointF>
#include <QPolygonF>
#include <QRectF>
#include <QString>

#include "Fonts.h"
#include "PictureImpl.h"

namespace {

QColor ToQColor(Color c) { return QColor(c.Red(), c.Green(), c.Blue()); }

void PaintText(QPainter& painter, const DrawOp& op) {
  painter.setFont(FontFor(op.state));
  painter.setPen(ToQColor(op.color));
  const double lineHeight = LineHeight(op.state);
  const std::vector<std::string> lines = LayoutLines(op.state, String(op.text), op.wrap);
  for (std::size_t k = 0; k < lines.size(); ++k) {
    if (lines[k].empty()) continue;
    painter.drawText(QPointF(op.x, op.y + static_cast<double>(k) * lineHeight),
                     QString::fromStdString(lines[k]));
  }
}

// Half a point wide, rules and grid alike: a firm black rule on paper that still reads as a thin
// line, while the grid keeps light by its colour. (A pen of exactly 1 reaches a PDF as a 0.1 pt
// hairline.) Square caps ink the end points themselves and let the grid's crossing lines meet
// without a notch.
void PaintLine(QPainter& painter, const DrawOp& op) {
  QPen pen(ToQColor(op.color));
  pen.setWidthF(kLineWidth);
  pen.setCapStyle(Qt::SquareCap);
  painter.setPen(pen);
  painter.drawLine(QPointF(op.x, op.y), QPointF(op.x2, op.y2));
}

void PaintPicture(QPainter& painter, const DrawOp& op, const Picture* picture) {
  if (picture == nullptr || !picture->impl() || picture->impl()->image.isNull()) return;
  painter.drawImage(QRectF(op.x, op.y, op.width, op.height), picture->impl()->image);
}

// No stop icon of the system's is at hand everywhere, so the platform draws its own: a red
// octagon with a white bar across, kStopIconSize square.
void PaintStopIcon(QPainter& painter, const DrawOp& op) {
  const double s = kStopIconSize;
  const double cut = s / (2.0 + 1.4142135623730951);  // makes the eight sides equal
  QPolygonF octagon;
  for (const QPointF& p : {QPointF(cut, 0), QPointF(s - cut, 0), QPointF(s, cut), QPointF(s, s - cut),
                           QPointF(s - cut, s), QPointF(cut, s), QPointF(0, s - cut), QPointF(0, cut)})
    octagon << p + QPointF(op.x, op.y);
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.setPen(QPen(QColor(0x80, 0x00, 0x00), 1.0));
  painter.setBrush(QColor(0xD0, 0x10, 0x10));
  painter.drawPolygon(octagon);
  painter.setPen(Qt::NoPen);
  painter.setBrush(Qt::white);
  painter.drawRect(QRectF(op.x + 7, op.y + 13, s - 14, 6));
}

}  // namespace

void PaintOp(QPainter& painter, const DrawOp& op, const Picture* picture) {
  painter.save();
  switch (op.kind) {
    case DrawOp::Text: PaintText(painter, op); break;
    case DrawOp::Line: PaintLine(painter, op); break;
    case DrawOp::PictureOp: PaintPicture(painter, op, picture); break;
    case DrawOp::StopIcon: PaintStopIcon(painter, op); break;
  }
  painter.restore();
}

void PainterSurface::Draw(const DrawOp& op, const Picture* picture) {
  if (painter_ == nullptr || finished_ || !painter_->isActive()) return;
  PaintOp(*painter_, op, picture);
}

void PainterSurface::Finish() {
  if (finished_) return;
  finished_ = true;
  EndJob();
}
