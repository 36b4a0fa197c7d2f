// SPDX-License-Identifier: GPL-3.0-or-later
// The controls that are drawn rather than edited: StaticText, Canvas, RoundRectangle.
#include "ControlSupport.h"
#include "rb/Screen.h"
#include "rb/Window.h"

void StaticText::setText(const String& v) {
  std::string s = v.Utf8();
  if (text_.Bytes() == s) return;
  text_ = String(s);
  Changed(Prop::Text);
}

void Canvas::setBackdrop(const Ref<Picture>& p) {
  if (backdrop_ == p) return;
  backdrop_ = p;
  Changed(Prop::Backdrop);
}

// The backdrop at the top left at its own size, cut at the canvas's edge, then the Paint handler
// over it.
void Canvas::Paint(Graphics& g) {
  if (backdrop_ != nil) {
    Integer w = backdrop_->Width(), h = backdrop_->Height();
    if (Width > 0 && w > Width) w = Width;
    if (Height > 0 && h > Height) h = Height;
    g.DrawPicture(backdrop_, 0, 0, w, h, 0, 0, w, h);
  }
  RunHandler([&] {
    if (OnPaint) OnPaint(g);
  });
}

void RoundRectangle::setFillColor(Color v) { Update(fill_, v, Prop::FillColor); }

void RoundRectangle::setBorderWidth(Integer v) { Update(border_, v, Prop::BorderWidth); }
