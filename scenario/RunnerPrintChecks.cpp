// SPDX-License-Identifier: GPL-3.0-or-later
// The checks of printed pages: what the last job drew, where, and in which state.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <optional>

#include "scenario/Runner.h"
#include "scenario/Snapshot.h"

namespace scn {

namespace {

// The style a drawn text is expected in; what it does not name is not checked.
struct Style {
  std::optional<std::string> font;
  std::optional<double> size;
  std::optional<bool> bold, italic;
  std::optional<std::uint32_t> color;
  std::optional<int> wrap;

  bool Holds(const DrawOp& op) const {
    if (font && !EqualsIgnoringCase(op.state.font, *font)) return false;
    if (size && std::fabs(op.state.size - *size) > 1e-9) return false;
    if (bold && op.state.bold != *bold) return false;
    if (italic && op.state.italic != *italic) return false;
    if (color && op.color.rgb != *color) return false;
    if (wrap && op.wrap != *wrap) return false;
    return true;
  }
};

Style ReadStyle(Args& a) {
  Style s;
  while (!a.AtEnd()) {
    if (a.Accept("font")) {
      s.font = a.Name("a font name");
    } else if (a.Accept("size")) {
      s.size = a.Number("a size");
    } else if (a.Accept("bold")) {
      s.bold = true;
    } else if (a.Accept("notbold")) {
      s.bold = false;
    } else if (a.Accept("italic")) {
      s.italic = true;
    } else if (a.Accept("notitalic")) {
      s.italic = false;
    } else if (a.Accept("color")) {
      s.color = a.Colour("a colour RRGGBB");
    } else if (a.Accept("wrap")) {
      s.wrap = a.Int("a wrap width");
    } else {
      a.Bad("a style: font, size, bold, notbold, italic, notitalic, color or wrap");
    }
  }
  return s;
}

std::string Number(double v) {
  if (v == std::floor(v) && std::fabs(v) < 1e9) return std::to_string(static_cast<long long>(v));
  std::string s = std::to_string(v);
  while (!s.empty() && s.back() == '0') s.pop_back();
  return s;
}

std::string Describe(const DrawOp& op) {
  std::string s;
  switch (op.kind) {
    case DrawOp::Text:
      s = "drawn " + Quote(op.text) + " at " + std::to_string(op.x) + " " + std::to_string(op.y);
      s += " font " + Quote(op.state.font) + " size " + Number(op.state.size);
      s += op.state.bold ? " bold" : " notbold";
      s += op.state.italic ? " italic" : " notitalic";
      s += " color " + ColourText(op.color.rgb);
      if (op.wrap != 0) s += " wrap " + std::to_string(op.wrap);
      return s;
    case DrawOp::Line:
      return "line " + std::to_string(op.x) + " " + std::to_string(op.y) + " " +
             std::to_string(op.x2) + " " + std::to_string(op.y2) + " color " +
             ColourText(op.color.rgb);
    case DrawOp::PictureOp:
      return "picture at " + std::to_string(op.x) + " " + std::to_string(op.y);
    case DrawOp::StopIcon:
      return "stop icon at " + std::to_string(op.x) + " " + std::to_string(op.y);
  }
  return "";
}

bool Coordinate(const std::optional<int>& want, int have) { return !want || *want == have; }

// The ops listed in a message, nearest to (x, y) first, a few of them.
std::string Nearest(std::vector<const DrawOp*> ops, std::optional<int> x, std::optional<int> y,
                    const std::string& none) {
  if (ops.empty()) return none;
  std::stable_sort(ops.begin(), ops.end(), [&](const DrawOp* p, const DrawOp* q) {
    auto d = [&](const DrawOp* o) {
      return (x ? std::abs(o->x - *x) : 0) + (y ? std::abs(o->y - *y) : 0);
    };
    return d(p) < d(q);
  });
  std::string s;
  const std::size_t kShown = 4;
  for (std::size_t i = 0; i < ops.size() && i < kShown; ++i)
    s += (i ? "; " : "") + Describe(*ops[i]);
  if (ops.size() > kShown) s += "; and " + std::to_string(ops.size() - kShown) + " more";
  return s;
}

}  // namespace

const PrintJob& Runner::LastJob(const Where& where) {
  if (screen_->jobs.empty()) Fail(where, "a print job since start", "no job");
  return screen_->jobs.back();
}

void Runner::ExpectPages(Args& a) {
  int n = a.Int("a number of pages");
  a.End();
  if (dry_) return;
  int have = static_cast<int>(screen_->jobs.size());
  if (have != n) Fail(a.where(), "pages " + std::to_string(n), "pages " + std::to_string(have));
}

void Runner::ExpectJob(Args& a) {
  std::string want;
  for (const char* w : {"portrait", "landscape", "default"}) {
    if (a.Accept(w)) want = w;
  }
  if (want.empty()) a.Bad("portrait, landscape or default");
  a.End();
  if (dry_) return;
  const PrintJob& job = LastJob(a.where());
  if (job.orientation != want) Fail(a.where(), "job " + want, "job " + job.orientation);
}

void Runner::ExpectDrawn(Args& a) {
  std::string text = a.Quoted("the text in quotes");
  bool right = false;
  std::optional<int> x, y;
  if (a.Accept("at")) {
    x = a.IntOrAny("x or *");
  } else if (a.Accept("right")) {
    right = true;
    x = a.IntOrAny("the right edge or *");
  } else {
    a.Bad("at or right");
  }
  y = a.IntOrAny("y or *");
  Style style = ReadStyle(a);
  if (dry_) return;
  const PrintJob& job = LastJob(a.where());
  std::string shown = Shown(text);
  std::vector<const DrawOp*> same;
  for (const DrawOp& op : job.ops) {
    if (op.kind != DrawOp::Text || op.text != shown) continue;
    same.push_back(&op);
    std::optional<int> wantX = x;
    // Right-aligned: the edge less the text's width in the op's own state, cut to a whole number.
    if (right && x) wantX = *x - CInt(MeasureWidth(op.state, String(op.text)));
    if (Coordinate(wantX, op.x) && Coordinate(y, op.y) && style.Holds(op)) return;
  }
  std::string expected = Render(a.command().tokens, 1);
  if (!same.empty()) Fail(a.where(), expected, Nearest(same, right ? std::nullopt : x, y, ""));
  // No op with that very text: show the texts that come close to it.
  std::vector<const DrawOp*> like;
  for (const DrawOp& op : job.ops) {
    if (op.kind != DrawOp::Text) continue;
    if (EqualsIgnoringCase(op.text, shown) ||
        (!shown.empty() && op.text.find(shown) != std::string::npos) ||
        (!op.text.empty() && shown.find(op.text) != std::string::npos)) {
      like.push_back(&op);
    }
  }
  Fail(a.where(), expected,
       "no such text drawn" + (like.empty() ? "" : "; like it: " + Nearest(like, x, y, "")));
}

void Runner::ExpectNoDrawn(Args& a) {
  std::string text = a.Quoted("the text in quotes");
  a.End();
  if (dry_) return;
  const PrintJob& job = LastJob(a.where());
  for (const DrawOp& op : job.ops) {
    if (op.kind == DrawOp::Text && op.text == Shown(text)) {
      Fail(a.where(), "nodrawn " + Quote(text), Describe(op));
    }
  }
}

void Runner::ExpectLine(Args& a) {
  std::optional<int> x1 = a.IntOrAny("x1 or *");
  std::optional<int> y1 = a.IntOrAny("y1 or *");
  std::optional<int> x2 = a.IntOrAny("x2 or *");
  std::optional<int> y2 = a.IntOrAny("y2 or *");
  std::optional<std::uint32_t> color;
  if (a.Accept("color")) color = a.Colour("a colour RRGGBB");
  a.End();
  if (dry_) return;
  const PrintJob& job = LastJob(a.where());
  std::vector<const DrawOp*> lines;
  for (const DrawOp& op : job.ops) {
    if (op.kind != DrawOp::Line) continue;
    lines.push_back(&op);
    if (Coordinate(x1, op.x) && Coordinate(y1, op.y) && Coordinate(x2, op.x2) &&
        Coordinate(y2, op.y2) && (!color || op.color.rgb == *color)) {
      return;
    }
  }
  Fail(a.where(), Render(a.command().tokens, 1), Nearest(lines, x1, y1, "no line drawn"));
}

void Runner::ExpectPicture(Args& a) {
  a.Keyword("at");
  std::optional<int> x = a.IntOrAny("x or *");
  std::optional<int> y = a.IntOrAny("y or *");
  a.End();
  if (dry_) return;
  const PrintJob& job = LastJob(a.where());
  std::vector<const DrawOp*> pictures;
  for (const DrawOp& op : job.ops) {
    if (op.kind != DrawOp::PictureOp) continue;
    pictures.push_back(&op);
    if (Coordinate(x, op.x) && Coordinate(y, op.y)) return;
  }
  Fail(a.where(), Render(a.command().tokens, 1), Nearest(pictures, x, y, "no picture drawn"));
}

// Snapshots. The golden file is the program's own output at a time when someone looked at it and
// found it right: a difference is shown line by line, and `--golden` writes the file anew.

void Runner::CompareGolden(Args& a, const std::string& file, const std::string& snapshot) {
  const std::filesystem::path path = std::filesystem::path(scriptFolder_) / file;
  if (writeGolden_) {
    std::error_code ec;
    std::filesystem::create_directories(path.parent_path(), ec);
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << snapshot;
    if (!out) Fail(a.where(), "the snapshot written to " + path.string(), "it could not be written");
    return;
  }
  std::ifstream in(path, std::ios::binary);
  if (!in) Fail(a.where(), "a golden file " + path.string(), "none; make golden writes it");
  std::stringstream golden;
  golden << in.rdbuf();
  if (golden.str() != snapshot) {
    Fail(a.where(), "the snapshot in " + file, "it differs:\n" + SnapshotDiff(golden.str(), snapshot));
  }
}

void Runner::ExpectWindow(Args& a) {
  std::string name = a.Word("a window");
  std::string file = a.Name("a golden file");
  a.End();
  if (!WindowRegistry::Known(name)) Fail(a.where(), "a window class", name);
  if (dry_) return;
  Window* w = WindowRegistry::Find(name);
  if (w == nullptr) Fail(a.where(), "window " + name + " built", "it is not built");
  CompareGolden(a, file, WindowSnapshot(*w));
}

void Runner::ExpectPage(Args& a) {
  std::string file = a.Name("a golden file");
  a.End();
  if (dry_) return;
  CompareGolden(a, file, PageSnapshot(LastJob(a.where())));
}

}  // namespace scn
