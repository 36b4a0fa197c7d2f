// SPDX-License-Identifier: GPL-3.0-or-later
// Drawing, pictures, page setups and print jobs.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "rb/Core.h"
#include "rb/String.h"

// An opaque decoded image with its natural size.
class Picture {
 public:
  struct Impl;
  explicit Picture(std::shared_ptr<Impl> impl);
  Integer Width() const;
  Integer Height() const;
  const std::shared_ptr<Impl>& impl() const { return impl_; }

 private:
  std::shared_ptr<Impl> impl_;
};

// The state a piece of text is drawn or measured in.
struct FontState {
  std::string font = "System";  // as the code names it; resolved without regard to case
  double size = 12;
  bool bold = false;
  bool italic = false;
  bool underline = false;
};

// Real metrics of the face that stands for a font name, in points (72 to the inch): the same for
// every page surface, so a right-aligned amount lands at the same place on each.
double MeasureWidth(const FontState& state, const String& text);
double LineHeight(const FontState& state);
// The lines that DrawString makes of a text: Chr(13) begins a new line; wrap > 0 breaks lines at
// blanks so that each fits within wrap points (a word longer than wrap stands alone).
std::vector<std::string> LayoutLines(const FontState& state, const String& text, int wrap);
// The name of the installed family that stands for a font name ("times", "geneva", "System").
std::string ResolveFamily(const std::string& fontName);

// One drawing operation, with the state in force when it was made.
struct DrawOp {
  enum Kind { Text, Line, PictureOp, StopIcon };
  Kind kind = Text;
  FontState state;
  Color color;
  std::string text;  // UTF-8
  int x = 0, y = 0, x2 = 0, y2 = 0;
  int wrap = 0;
  int width = 0, height = 0;  // PictureOp: the size drawn
};

// Where a Graphics puts its operations.
class PageSurface {
 public:
  virtual ~PageSurface() = default;
  virtual void Draw(const DrawOp& op, const Picture* picture) = 0;
  // The job ends: the page goes out.
  virtual void Finish() = 0;
};

// Keeps every operation; calls the given function with them when the job ends.
class RecordingSurface : public PageSurface {
 public:
  using Done = std::function<void(const std::vector<DrawOp>&)>;
  explicit RecordingSurface(Done done = nullptr) : done_(std::move(done)) {}
  void Draw(const DrawOp& op, const Picture* picture) override;
  void Finish() override;
  const std::vector<DrawOp>& Ops() const { return ops_; }

 private:
  std::vector<DrawOp> ops_;
  Done done_;
  bool finished_ = false;
};

// A one-page PDF, 72 units to the inch, no margins: 0, 0 is the paper's top left.
std::unique_ptr<PageSurface> MakePdfSurface(const std::string& path, double widthPt, double heightPt);

// Passes every operation to each of several surfaces.
class TeeSurface : public PageSurface {
 public:
  explicit TeeSurface(std::vector<std::unique_ptr<PageSurface>> parts) : parts_(std::move(parts)) {}
  void Draw(const DrawOp& op, const Picture* picture) override;
  void Finish() override;

 private:
  std::vector<std::unique_ptr<PageSurface>> parts_;
};

// A drawing surface with a current state that stays until set again. The job ends when the last
// reference to it goes.
class Graphics {
 public:
  explicit Graphics(std::unique_ptr<PageSurface> surface);
  ~Graphics();
  Graphics(const Graphics&) = delete;
  Graphics& operator=(const Graphics&) = delete;

  String TextFont = "System";
  Double TextSize = 12;
  bool Bold = false;
  bool Italic = false;
  bool Underline = false;
  Color ForeColor = 0x000000;

  void DrawString(const String& text, Integer x, Integer y, Integer wrap = 0, bool condense = false);
  Double StringWidth(const String& text);
  Integer StringHeight(const String& text, Integer wrap);
  void DrawLine(Integer x1, Integer y1, Integer x2, Integer y2);
  // -10000 stands for the picture's own size. A nil picture draws nothing.
  void DrawPicture(const Ref<Picture>& picture, Integer x, Integer y, Integer w = -10000,
                   Integer h = -10000, Integer sx = 0, Integer sy = 0, Integer sw = -10000,
                   Integer sh = -10000);
  void DrawStopIcon(Integer x, Integer y);

  FontState State() const;
  PageSurface* Surface() { return surface_.get(); }

 private:
  void Draw(DrawOp op, const Picture* picture = nullptr);
  std::unique_ptr<PageSurface> surface_;
};

// A page setup. Sizes are points, portrait.
class PrinterSetup {
 public:
  PrinterSetup();  // the platform's default page
  bool Landscape = false;
  Integer PageWidth() const;   // with the present orientation
  Integer PageHeight() const;  // with the present orientation
  String SetupString() const;
  bool PageSetupDialog(void* parent = nullptr);

  // The portrait paper.
  double paperWidth = 595;
  double paperHeight = 842;
  bool chosenByUser = false;

  // What a new PrinterSetup holds.
  static void SetDefaultPaper(double widthPt, double heightPt);
  // Where the default page comes from when learning it is slow (asking the system's printer): the
  // source (which calls SetDefaultPaper) runs the first time a page's size is needed rather than
  // at the start. A setup made while the source waited takes up the page it gives, unless its own
  // page was changed meanwhile. Setups made otherwise keep the page they were made with.
  static void SetDefaultPaperSource(std::function<void()> source);
  // Runs a waiting source and takes up its page; PageWidth, PageHeight and the dialogs do this.
  void TakeUpDefaultPaper();

 private:
  bool provisional_ = false;
  double madeWidth_ = 0, madeHeight_ = 0;
};

// The print dialog: the Graphics of a new job, or nil when cancelled. setup may be nil.
Ref<Graphics> OpenPrinterDialog(const Ref<PrinterSetup>& setup, void* parent = nullptr);
