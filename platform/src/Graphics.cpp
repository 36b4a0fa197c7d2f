// SPDX-License-Identifier: GPL-3.0-or-later
// The drawing object, the surfaces it draws on, page setups and the print dialog.
#include "rb/Graphics.h"

#include <cmath>
#include <sstream>

#include "PainterSurface.h"
#include "rb/Screen.h"

// ---- Surfaces

void RecordingSurface::Draw(const DrawOp& op, const Picture*) {
  if (!finished_) ops_.push_back(op);
}

void RecordingSurface::Finish() {
  if (finished_) return;
  finished_ = true;
  if (done_) done_(ops_);
}

void TeeSurface::Draw(const DrawOp& op, const Picture* picture) {
  for (auto& part : parts_) part->Draw(op, picture);
}

void TeeSurface::Finish() {
  for (auto& part : parts_) part->Finish();
}

// ---- Graphics

Graphics::Graphics(std::unique_ptr<PageSurface> surface) : surface_(std::move(surface)) {}

// Letting go of the last reference ends the job: the page goes out here.
Graphics::~Graphics() {
  if (!surface_) return;
  try {
    surface_->Finish();
  } catch (...) {
    // A page that cannot go out is not the program's concern; it never hears of print failures.
  }
}

FontState Graphics::State() const {
  FontState s;
  s.font = TextFont.Utf8();
  s.size = TextSize;
  s.bold = Bold;
  s.italic = Italic;
  s.underline = Underline;
  return s;
}

// Every call is drawn in the state and colour of the moment.
void Graphics::Draw(DrawOp op, const Picture* picture) {
  op.state = State();
  op.color = ForeColor;
  if (surface_) surface_->Draw(op, picture);
}

// An empty text is drawn too: it shows nothing, but the page still has the call.
void Graphics::DrawString(const String& text, Integer x, Integer y, Integer wrap, bool /*condense*/) {
  Draw({.kind = DrawOp::Text, .text = text.Utf8(), .x = x, .y = y, .wrap = wrap});
}

Double Graphics::StringWidth(const String& text) { return MeasureWidth(State(), text); }

Integer Graphics::StringHeight(const String& text, Integer wrap) {
  const FontState state = State();
  const double lines = static_cast<double>(LayoutLines(state, text, wrap).size());
  return static_cast<Integer>(std::lround(lines * LineHeight(state)));
}

void Graphics::DrawLine(Integer x1, Integer y1, Integer x2, Integer y2) {
  Draw({.kind = DrawOp::Line, .x = x1, .y = y1, .x2 = x2, .y2 = y2});
}

// The whole picture goes into w by h; the program only ever asks for it whole and unscaled, so the
// source rectangle is not used.
void Graphics::DrawPicture(const Ref<Picture>& picture, Integer x, Integer y, Integer w, Integer h,
                           Integer /*sx*/, Integer /*sy*/, Integer /*sw*/, Integer /*sh*/) {
  if (picture == nil) return;
  constexpr Integer kOwnSize = -10000;
  Draw({.kind = DrawOp::PictureOp,
        .x = x,
        .y = y,
        .width = w == kOwnSize ? picture->Width() : w,
        .height = h == kOwnSize ? picture->Height() : h},
       picture.get());
}

void Graphics::DrawStopIcon(Integer x, Integer y) {
  Draw({.kind = DrawOp::StopIcon, .x = x, .y = y, .width = kStopIconSize, .height = kStopIconSize});
}

// ---- Page setup

namespace {
double gDefaultPaperWidth = 595;  // A4, portrait
double gDefaultPaperHeight = 842;

std::function<void()>& DefaultPaperSource() {
  static std::function<void()> source;
  return source;
}

std::string PointsText(double v) {
  std::ostringstream out;
  out.precision(10);
  out << v;
  return out.str();
}
}  // namespace

void PrinterSetup::SetDefaultPaper(double widthPt, double heightPt) {
  gDefaultPaperWidth = widthPt;
  gDefaultPaperHeight = heightPt;
}

void PrinterSetup::SetDefaultPaperSource(std::function<void()> source) { DefaultPaperSource() = std::move(source); }

PrinterSetup::PrinterSetup()
    : paperWidth(gDefaultPaperWidth),
      paperHeight(gDefaultPaperHeight),
      provisional_(static_cast<bool>(DefaultPaperSource())),
      madeWidth_(gDefaultPaperWidth),
      madeHeight_(gDefaultPaperHeight) {}

void PrinterSetup::TakeUpDefaultPaper() {
  if (!provisional_) return;
  if (std::function<void()> source = std::move(DefaultPaperSource())) {
    DefaultPaperSource() = nullptr;
    source();
  }
  provisional_ = false;
  if (!chosenByUser && paperWidth == madeWidth_ && paperHeight == madeHeight_) {
    paperWidth = gDefaultPaperWidth;
    paperHeight = gDefaultPaperHeight;
  }
}

Integer PrinterSetup::PageWidth() const {
  const_cast<PrinterSetup*>(this)->TakeUpDefaultPaper();
  return static_cast<Integer>(std::lround(Landscape ? paperHeight : paperWidth));
}

Integer PrinterSetup::PageHeight() const {
  const_cast<PrinterSetup*>(this)->TakeUpDefaultPaper();
  return static_cast<Integer>(std::lround(Landscape ? paperWidth : paperHeight));
}

// "paper=595x842;landscape=0": the portrait paper in points and the orientation. Nothing reads it
// back, so it asks no printer: before the first print it may still name the page the platform
// assumes.
String PrinterSetup::SetupString() const {
  return String("paper=" + PointsText(paperWidth) + "x" + PointsText(paperHeight) +
                ";landscape=" + (Landscape ? "1" : "0"));
}

bool PrinterSetup::PageSetupDialog(void* /*parent*/) {
  TakeUpDefaultPaper();
  const bool confirmed = CurrentScreen().PageSetupDialog(*this);
  if (confirmed) chosenByUser = true;
  return confirmed;
}

Ref<Graphics> OpenPrinterDialog(const Ref<PrinterSetup>& setup, void* /*parent*/) {
  if (setup != nil) setup->TakeUpDefaultPaper();
  std::unique_ptr<PageSurface> surface = CurrentScreen().PrintDialog(setup.get());
  if (!surface) return nil;
  return New<Graphics>(std::move(surface));
}
