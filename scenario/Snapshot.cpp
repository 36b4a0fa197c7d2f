// SPDX-License-Identifier: GPL-3.0-or-later
#include "scenario/Snapshot.h"

#include <cmath>
#include <cstdio>
#include <set>
#include <sstream>
#include <vector>

#include "scenario/ScriptLexer.h"
#include "secondary/StaticTextButton.h"

namespace scn {

namespace {

std::string Hex(Color c) {
  char hex[8];
  std::snprintf(hex, sizeof hex, "%06X", static_cast<unsigned>(c.rgb));
  return hex;
}

std::string Num(double v) {
  if (v == std::floor(v) && std::fabs(v) < 1e9) return std::to_string(static_cast<long long>(v));
  std::ostringstream out;
  out << v;
  return out.str();
}

std::string Font(const std::string& name, double size, bool bold, bool italic, bool underline) {
  std::string s = "font " + Quote(name) + " " + Num(size);
  if (bold) s += " bold";
  if (italic) s += " italic";
  if (underline) s += " underline";
  if (!bold && !italic && !underline) s += " plain";
  return s;
}

const char* FieldAlign(Integer a) {
  switch (a) {
    case 1:
      return "left";
    case 2:
      return "centre";
    case 3:
      return "right";
  }
  return "default";
}

const char* LabelAlign(Integer a) { return a == 1 ? "centre" : a == 2 ? "right" : "left"; }

std::string Rows(const std::vector<String>& rows) {
  std::string s;
  for (const String& r : rows) s += " " + Quote(r.Utf8());
  return s;
}

std::string DrawCall(const DrawOp& op) {
  const std::string at = std::to_string(op.x) + "," + std::to_string(op.y);
  switch (op.kind) {
    case DrawOp::Text: {
      std::string s = "text " + Quote(op.text) + " at " + at;
      if (op.wrap != 0) {
        s += " wrap " + std::to_string(op.wrap);
      } else {
        s += " to " + std::to_string(op.x + CInt(MeasureWidth(op.state, String(op.text))));
      }
      return s + "; " +
             Font(op.state.font, op.state.size, op.state.bold, op.state.italic, op.state.underline) +
             "; color " + Hex(op.color);
    }
    case DrawOp::Line:
      return "line " + at + " to " + std::to_string(op.x2) + "," + std::to_string(op.y2) + "; color " +
             Hex(op.color);
    case DrawOp::PictureOp:
      return "picture at " + at + " size " + std::to_string(op.width) + "x" + std::to_string(op.height);
    case DrawOp::StopIcon:
      return "stop icon at " + at;
  }
  return "";
}

std::string ClassPart(Control& c) {
  std::string s;
  if (auto* t = dynamic_cast<TextControl*>(&c)) {
    if (t->Alignment != 0) s += "; align " + std::string(FieldAlign(t->Alignment));
    if (t->LimitText != 0) s += "; limit " + std::to_string(t->LimitText);
    if (t->ReadOnly()) s += "; read-only";
    if (!t->Border) s += "; no border";
    if (t->Multiline) s += "; multi-line";
    if (auto* area = dynamic_cast<TextArea*>(&c); area && area->ScrollBarVertical) s += "; scroll bar";
    return s + "; text " + Quote(t->Text().Utf8());
  }
  if (auto* t = dynamic_cast<StaticText*>(&c)) {
    if (t->TextAlign != 0) s += "; align " + std::string(LabelAlign(t->TextAlign));
    if (t->Multiline) s += "; multi-line";
    return s + "; text " + Quote(t->Text().Utf8());
  }
  if (auto* l = dynamic_cast<Listbox*>(&c)) {
    s += "; columns " + std::to_string(l->ColumnCount) + " widths " + Quote(l->ColumnWidths);
    if (l->HasHeading) s += "; heading" + Rows(l->Headings);
    if (l->EnableDragReorder) s += "; drag reorder";
    s += "; grid " + std::to_string(l->GridLinesHorizontal) + "," + std::to_string(l->GridLinesVertical);
    if (!l->ScrollBarVertical) s += "; no scroll bar";
    return s + "; rows " + std::to_string(l->ListCount());
  }
  if (auto* p = dynamic_cast<PopupMenu*>(&c)) {
    std::vector<String> rows;
    for (Integer i = 0; i < p->ListCount(); ++i) rows.push_back(p->List(i));
    return "; rows" + Rows(rows) + "; index " + std::to_string(p->ListIndex());
  }
  if (auto* m = dynamic_cast<ContextualMenu*>(&c)) return "; rows " + std::to_string(m->ListCount());
  if (auto* b = dynamic_cast<PushButton*>(&c)) {
    if (b->Default) s += "; default";
    if (b->Cancel) s += "; cancel";
    return s + "; caption " + Quote(b->Caption.Utf8());
  }
  if (auto* b = dynamic_cast<CheckBox*>(&c)) {
    return std::string("; ") + (b->Value() ? "checked" : "unchecked") + "; caption " + Quote(b->Caption.Utf8());
  }
  if (auto* g = dynamic_cast<GroupBox*>(&c)) return "; caption " + Quote(g->Caption.Utf8());
  if (auto* r = dynamic_cast<RoundRectangle*>(&c)) {
    return "; fill " + Hex(r->FillColor()) + "; border " + std::to_string(r->BorderWidth()) + " " +
           Hex(r->BorderColor) + "; oval " + std::to_string(r->OvalWidth) + "x" + std::to_string(r->OvalHeight);
  }
  if (auto* r = dynamic_cast<Rectangle*>(&c)) {
    return "; fill " + Hex(r->FillColor) + "; border " + std::to_string(r->BorderWidth) + " " + Hex(r->BorderColor);
  }
  if (auto* l = dynamic_cast<Line*>(&c)) {
    return "; from " + std::to_string(l->X1) + "," + std::to_string(l->Y1) + " to " + std::to_string(l->X2) +
           "," + std::to_string(l->Y2) + "; border " + std::to_string(l->BorderWidth) + " " + Hex(l->BorderColor);
  }
  if (auto* a = dynamic_cast<PopupArrow*>(&c)) return "; facing " + std::to_string(a->Facing);
  if (auto* canvas = dynamic_cast<Canvas*>(&c)) {
    s += canvas->Backdrop() == nil ? "; no backdrop"
                                   : "; backdrop " + std::to_string(canvas->Backdrop()->Width()) + "x" +
                                         std::to_string(canvas->Backdrop()->Height());
    // What the canvas paints on a new surface, in the state a new one has.
    std::vector<DrawOp> ops;
    {
      Graphics g(std::make_unique<RecordingSurface>([&ops](const std::vector<DrawOp>& all) { ops = all; }));
      canvas->Paint(g);
    }
    for (const DrawOp& op : ops) s += "\n    paints " + DrawCall(op);
    return s;
  }
  return s;
}

// The names whose flag is set, separated by commas.
using Flags = std::vector<std::pair<bool, const char*>>;
std::string Listed(const Flags& flags) {
  std::string s;
  for (const auto& [set, name] : flags)
    if (set) s += (s.empty() ? "" : ", ") + std::string(name);
  return s;
}

// The lines under a control's own: what is seldom set, and which of its events have handlers.
std::string MoreLines(Control& c) {
  std::string s;
  const std::string locks = Listed(
      {{c.LockLeft, "left"}, {c.LockTop, "top"}, {c.LockRight, "right"}, {c.LockBottom, "bottom"}});
  if (!locks.empty()) s += "\n    locked " + locks;
  Flags events = {{bool(c.OnOpen), "Open"},           {bool(c.OnGotFocus), "GotFocus"},
                  {bool(c.OnLostFocus), "LostFocus"}, {bool(c.OnKeyDown), "KeyDown"},
                  {bool(c.OnMouseDown), "MouseDown"}, {bool(c.OnMouseUp), "MouseUp"},
                  {bool(c.OnMouseEnter), "MouseEnter"}, {bool(c.OnMouseExit), "MouseExit"}};
  if (auto* t = dynamic_cast<TextControl*>(&c)) {
    if (t->HasBackColor) s += "\n    has back color";
    if (t->DesignText.Bytes() != t->Text().Bytes()) s += "\n    design text " + Quote(t->DesignText.Utf8());
    events.push_back({bool(t->OnTextChange), "TextChange"});
  }
  if (auto* l = dynamic_cast<Listbox*>(&c)) {
    events.push_back({bool(l->OnCellClick), "CellClick"});
    events.push_back({bool(l->OnCellTextPaint), "CellTextPaint"});
  }
  if (auto* p = dynamic_cast<PopupMenu*>(&c)) events.push_back({bool(p->OnChange), "Change"});
  if (auto* m = dynamic_cast<ContextualMenu*>(&c)) events.push_back({bool(m->OnAction), "Action"});
  if (auto* b = dynamic_cast<PushButton*>(&c)) events.push_back({bool(b->OnAction), "Action"});
  if (auto* b = dynamic_cast<CheckBox*>(&c)) events.push_back({bool(b->OnAction), "Action"});
  if (auto* v = dynamic_cast<Canvas*>(&c)) events.push_back({bool(v->OnPaint), "Paint"});
  if (auto* link = dynamic_cast<StaticTextButton*>(&c)) {
    events.insert(events.end(), {{bool(link->OpenEvent), "its own Open"},
                                 {bool(link->MouseEnterEvent), "its own MouseEnter"},
                                 {bool(link->MouseExitEvent), "its own MouseExit"},
                                 {bool(link->ActionEvent), "its own Action"}});
  }
  if (const std::string handled = Listed(events); !handled.empty()) s += "\n    events " + handled;
  return s;
}

void MenuLines(std::ostringstream& out, const Window& w, const MenuItem& item, int depth) {
  out << std::string(2 * depth, ' ') << item.Name << " " << Quote(item.Text.Utf8());
  if (!item.KeyboardShortcut.empty()) out << " " << item.KeyboardShortcut;
  if (item.ItemKind == MenuItem::Kind::AppleMenu) out << "; application menu";
  if (item.ItemKind == MenuItem::Kind::Quit) out << "; quit";
  if (!item.AutoEnable) out << "; not auto-enabled";
  if (w.HasMenuHandler(item.Name)) out << "; handled";
  out << "\n";
  for (const auto& sub : item.Items) MenuLines(out, w, *sub, depth + 1);
}

}  // namespace

std::string WindowSnapshot(Window& w) {
  std::ostringstream out;
  out << "window " << w.ClassName() << "\n";
  out << "  title " << Quote(w.Title.Utf8()) << "\n";
  out << "  size " << w.Width << "x" << w.Height << "; min " << w.MinWidth << "x" << w.MinHeight << "; max "
      << w.MaxWidth << "x" << w.MaxHeight << "\n";
  out << "  frame " << w.Frame << "; placement " << w.Placement << "\n";
  out << "  " << (w.Resizeable ? "resizeable" : "fixed size") << "; close box " << (w.CloseButton ? "yes" : "no")
      << "; maximize box " << (w.MaximizeButton ? "yes" : "no") << "; minimize box "
      << (w.MinimizeButton ? "yes" : "no") << "; " << (w.VisibleByDesign ? "visible" : "hidden")
      << " by design\n";
  out << "  back " << (w.HasBackColor ? Hex(w.BackColor) : "none (" + Hex(w.BackColor) + " unused)") << "\n";
  const std::string events =
      Listed({{bool(w.OnOpen), "Open"}, {bool(w.OnClose), "Close"}, {bool(w.OnActivate), "Activate"}});
  if (!events.empty()) out << "  events " << events << "\n";
  if (w.Menus != nullptr) {
    out << "menu bar\n";
    for (const auto& menu : w.Menus->Menus) MenuLines(out, w, *menu, 1);
  }
  out << "controls, in the order of creation\n";
  for (const auto& owned : w.Controls()) {
    Control& c = *owned;
    out << "  " << c.FullName() << ": " << c.ClassName() << "; at " << c.Left << "," << c.Top << " size "
        << c.Width << "x" << c.Height << "; tab " << c.TabIndex;
    if (!c.TabStop) out << " (no stop)";
    if (!c.UseFocusRing) out << "; no focus ring";
    if (!c.Enabled()) out << "; disabled";
    if (!c.Visible()) out << "; hidden";
    out << "; " << Font(c.TextFont().Utf8(), c.TextSize(), c.Bold(), c.Italic(), c.Underline());
    out << "; color " << Hex(c.TextColor());
    // A text field always shows its background; other controls only one they were given.
    if (c.HasBackColor || dynamic_cast<TextControl*>(&c) != nullptr) out << "; back " << Hex(c.BackColor());
    out << ClassPart(c) << MoreLines(c) << "\n";
  }
  return out.str();
}

std::string PageSnapshot(const PrintJob& job) {
  std::ostringstream out;
  out << "page " << job.orientation << ", paper " << Num(job.paperWidth) << "x" << Num(job.paperHeight) << "\n";
  std::set<std::string> fonts;
  for (const DrawOp& op : job.ops)
    if (op.kind == DrawOp::Text) fonts.insert(op.state.font);
  for (const std::string& f : fonts) out << "measured: " << Quote(f) << " with " << Quote(ResolveFamily(f)) << "\n";
  for (const DrawOp& op : job.ops) out << DrawCall(op) << "\n";
  return out.str();
}

std::string SnapshotDiff(const std::string& before, const std::string& after) {
  auto lines = [](const std::string& text) {
    std::vector<std::string> out;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) out.push_back(line);
    return out;
  };
  const std::vector<std::string> a = lines(before), b = lines(after);
  const std::size_t n = a.size(), m = b.size();
  // The longest common run of lines, from the end.
  std::vector<std::vector<int>> common(n + 1, std::vector<int>(m + 1, 0));
  for (std::size_t i = n; i-- > 0;)
    for (std::size_t j = m; j-- > 0;)
      common[i][j] = a[i] == b[j] ? common[i + 1][j + 1] + 1 : std::max(common[i + 1][j], common[i][j + 1]);
  std::string out;
  std::size_t i = 0, j = 0;
  bool inRun = false;
  while (i < n || j < m) {
    if (i < n && j < m && a[i] == b[j]) {
      ++i, ++j;
      inRun = false;
      continue;
    }
    if (!inRun) out += "@@ line " + std::to_string(i + 1) + "\n";
    inRun = true;
    if (i < n && (j == m || common[i + 1][j] >= common[i][j + 1])) {
      out += "- " + a[i++] + "\n";
    } else {
      out += "+ " + b[j++] + "\n";
    }
  }
  return out;
}

}  // namespace scn
