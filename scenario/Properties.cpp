// SPDX-License-Identifier: GPL-3.0-or-later
#include "scenario/Properties.h"

#include "scenario/Args.h"

namespace scn {

namespace {

// One `name` or `name(args)` part of a dotted name.
struct Part {
  std::string name;
  bool hasArgs = false;
  std::vector<int> args;
};

bool SplitParts(const std::string& text, std::vector<Part>& parts, std::string& error) {
  std::vector<std::string> pieces;
  std::string cur;
  int depth = 0;
  for (char c : text) {
    if (c == '(') ++depth;
    if (c == ')') --depth;
    if (c == '.' && depth == 0) {
      pieces.push_back(cur);
      cur.clear();
    } else {
      cur += c;
    }
  }
  pieces.push_back(cur);
  for (const std::string& p : pieces) {
    Part part;
    std::size_t open = p.find('(');
    part.name = p.substr(0, open);
    if (part.name.empty()) {
      error = "an empty name";
      return false;
    }
    if (open != std::string::npos) {
      if (p.back() != ')') {
        error = "text after ')'";
        return false;
      }
      part.hasArgs = true;
      std::string inner = p.substr(open + 1, p.size() - open - 2);
      std::size_t start = 0;
      while (true) {
        std::size_t comma = inner.find(',', start);
        std::string a =
            inner.substr(start, comma == std::string::npos ? std::string::npos : comma - start);
        int v = 0;
        if (!ParseInt(a, v)) {
          error = "a whole number in the parentheses of " + part.name;
          return false;
        }
        part.args.push_back(v);
        if (comma == std::string::npos) break;
        start = comma + 1;
      }
    }
    parts.push_back(std::move(part));
  }
  return true;
}

bool ControlPart(const Part& p, Target& out, std::string& error) {
  out.control = p.name;
  if (p.hasArgs) {
    if (p.args.size() != 1) {
      error = "one index for the control array " + p.name;
      return false;
    }
    out.index = p.args[0];
  }
  return true;
}

Value TextValue(const String& s) {
  Value v;
  v.kind = Value::Text;
  v.text = s.Utf8();
  return v;
}
Value BoolValue(bool b) {
  Value v;
  v.kind = Value::Bool;
  v.b = b;
  return v;
}
Value IntValue(long long i) {
  Value v;
  v.kind = Value::Int;
  v.i = i;
  return v;
}
Value ColourValue(Color c) {
  Value v;
  v.kind = Value::Colour;
  v.rgb = c.rgb;
  return v;
}

// Whether the control is of one of the classes.
template <class... C>
bool Is(const Control& c) {
  return ((dynamic_cast<const C*>(&c) != nullptr) || ...);
}

// The rows of a list, a popup or a contextual menu, whichever the control is.
template <class F>
auto WithRows(const Control& c, F f) {
  if (const auto* l = dynamic_cast<const Listbox*>(&c)) return f(*l);
  if (const auto* p = dynamic_cast<const PopupMenu*>(&c)) return f(*p);
  return f(dynamic_cast<const ContextualMenu&>(c));
}

bool RowInRange(int row, int count, std::string& error) {
  if (row >= 0 && row < count) return true;
  error = "no row " + std::to_string(row) + " (ListCount " + std::to_string(count) + ")";
  return false;
}

// A cell of a list: its row and column in range.
bool CellInRange(const Listbox& l, const std::vector<int>& args, std::string& error) {
  if (!RowInRange(args[0], l.ListCount(), error)) return false;
  int columns = l.ColumnCount < 1 ? 1 : l.ColumnCount;
  if (args[1] >= 0 && args[1] < columns) return true;
  error = "no column " + std::to_string(args[1]) + " (ColumnCount " + std::to_string(columns) + ")";
  return false;
}

// A property's arguments: a row, or a row and a column.
using Indexes = std::vector<int>;

// Each property the runner reads, once: the classes that have it and how it is read. One with
// arguments (a row, or a row and a column) answers False with a message when they name no cell.
// One cell of a list, its row and column checked first.
template <Value (*Get)(Listbox&, Integer row, Integer column)>
bool ReadCell(const Control& c, const Indexes& at, Value& out, std::string& error) {
  auto& l = const_cast<Listbox&>(dynamic_cast<const Listbox&>(c));
  if (!CellInRange(l, at, error)) return false;
  out = Get(l, at[0], at[1]);
  return true;
}

Value CellText(Listbox& l, Integer row, Integer column) { return TextValue(l.Cell(row, column)); }

Value CellBoldness(Listbox& l, Integer row, Integer column) {
  return BoolValue(l.CellBold(row, column));
}

// The colour the list paints the cell's text in once the program's CellTextPaint has run, on a
// surface that keeps what that handler draws to itself.
Value CellTextColour(Listbox& l, Integer row, Integer column) {
  Graphics g(std::make_unique<RecordingSurface>());
  return ColourValue(l.PaintCellText(g, row, column));
}

struct Property {
  const char* name;
  bool (*of)(const Control& c);
  Value (*get)(const Control& c);  // one with no arguments
  std::size_t args = 0;
  bool (*read)(const Control& c, const Indexes& at, Value& out, std::string& error) = nullptr;
};

// clang-format off
const Property kProperties[] = {
    {"Text", Is<TextControl, StaticText, PopupMenu, PushButton, CheckBox, GroupBox>, [](const Control& c) {
       if (const auto* t = dynamic_cast<const TextControl*>(&c)) return TextValue(t->Text());
       if (const auto* s = dynamic_cast<const StaticText*>(&c)) return TextValue(s->Text());
       if (const auto* p = dynamic_cast<const PopupMenu*>(&c)) return TextValue(p->Text());
       if (const auto* b = dynamic_cast<const PushButton*>(&c)) return TextValue(b->Caption);
       if (const auto* x = dynamic_cast<const CheckBox*>(&c)) return TextValue(x->Caption);
       return TextValue(dynamic_cast<const GroupBox&>(c).Caption);
     }},
    {"BackColor", Is<Control>, [](const Control& c) { return ColourValue(c.BackColor()); }},
    {"TextColor", Is<Control>, [](const Control& c) { return ColourValue(c.TextColor()); }},
    {"FillColor", Is<RoundRectangle, Rectangle>, [](const Control& c) {
       if (const auto* r = dynamic_cast<const RoundRectangle*>(&c)) return ColourValue(r->FillColor());
       return ColourValue(dynamic_cast<const Rectangle&>(c).FillColor);
     }},
    {"BorderWidth", Is<RoundRectangle, Rectangle, Line>, [](const Control& c) {
       if (const auto* r = dynamic_cast<const RoundRectangle*>(&c)) return IntValue(r->BorderWidth());
       if (const auto* q = dynamic_cast<const Rectangle*>(&c)) return IntValue(q->BorderWidth);
       return IntValue(dynamic_cast<const Line&>(c).BorderWidth);
     }},
    {"ReadOnly", Is<TextControl>, [](const Control& c) { return BoolValue(dynamic_cast<const TextControl&>(c).ReadOnly()); }},
    {"SelStart", Is<TextControl>, [](const Control& c) { return IntValue(dynamic_cast<const TextControl&>(c).SelStart()); }},
    {"SelLength", Is<TextControl>, [](const Control& c) { return IntValue(dynamic_cast<const TextControl&>(c).SelLength()); }},
    {"Enabled", Is<Control>, [](const Control& c) { return BoolValue(c.Enabled()); }},
    {"Visible", Is<Control>, [](const Control& c) { return BoolValue(c.Visible()); }},
    {"Value", Is<CheckBox>, [](const Control& c) { return BoolValue(dynamic_cast<const CheckBox&>(c).Value()); }},
    {"Underline", Is<Control>, [](const Control& c) { return BoolValue(c.Underline()); }},
    {"Bold", Is<Control>, [](const Control& c) { return BoolValue(c.Bold()); }},
    {"Italic", Is<Control>, [](const Control& c) { return BoolValue(c.Italic()); }},
    {"TextFont", Is<Control>, [](const Control& c) { return TextValue(c.TextFont()); }},
    {"Backdrop", Is<Canvas>, [](const Control& c) {
       Value v;
       v.kind = Value::Word;
       v.text = dynamic_cast<const Canvas&>(c).Backdrop() == nil ? "none" : "picture";
       return v;
     }},
    {"ListCount", Is<Listbox, PopupMenu, ContextualMenu>, [](const Control& c) {
       return IntValue(WithRows(c, [](const auto& rows) { return rows.ListCount(); }));
     }},
    {"ListIndex", Is<Listbox, PopupMenu>, [](const Control& c) {
       const auto* l = dynamic_cast<const Listbox*>(&c);
       return IntValue(l ? l->ListIndex() : dynamic_cast<const PopupMenu&>(c).ListIndex());
     }},
    {"List", Is<Listbox, PopupMenu, ContextualMenu>, nullptr, 1,
     [](const Control& c, const Indexes& at, Value& out, std::string& error) {
       return WithRows(c, [&](const auto& rows) {
         if (!RowInRange(at[0], rows.ListCount(), error)) return false;
         out = TextValue(rows.List(at[0]));
         return true;
       });
     }},
    {"Cell", Is<Listbox>, nullptr, 2, ReadCell<CellText>},
    {"CellBold", Is<Listbox>, nullptr, 2, ReadCell<CellBoldness>},
    {"CellTextColor", Is<Listbox>, nullptr, 2, ReadCell<CellTextColour>},
};
// clang-format on

}  // namespace

std::string Target::ControlName() const {
  std::string s = window + "." + control;
  if (index >= 0) s += "(" + std::to_string(index) + ")";
  return s;
}

bool ParseControl(const std::string& text, Target& out, std::string& error) {
  std::vector<Part> parts;
  if (!SplitParts(text, parts, error)) return false;
  out = Target{};
  out.written = text;
  if (parts.size() != 2 || parts[0].hasArgs) {
    error = "window.control or window.control(index)";
    return false;
  }
  out.window = parts[0].name;
  return ControlPart(parts[1], out, error);
}

bool ParseProperty(const std::string& text, Target& out, std::string& error) {
  std::vector<Part> parts;
  if (!SplitParts(text, parts, error)) return false;
  out = Target{};
  out.written = text;
  if ((parts.size() != 2 && parts.size() != 3) || parts[0].hasArgs) {
    error = "window.Property or window.control.Property";
    return false;
  }
  out.window = parts[0].name;
  if (parts.size() == 3 && !ControlPart(parts[1], out, error)) return false;
  const Part& prop = parts.back();
  out.property = prop.name;
  out.args = prop.args;
  if (parts.size() == 2 && prop.hasArgs) {
    error = "a window's property without arguments";
    return false;
  }
  return true;
}

std::string Value::Show() const {
  switch (kind) {
    case Text:
      return Quote(text);
    case Bool:
      return b ? "true" : "false";
    case Int:
      return std::to_string(i);
    case Colour:
      return ColourText(rgb);
    case Word:
      return text;
  }
  return "";
}

bool ReadProperty(const Control& c, const std::string& property, const std::vector<int>& args,
                  Value& out, std::string& error) {
  for (const Property& p : kProperties) {
    if (property != p.name || !p.of(c)) continue;
    if (args.size() != p.args) {
      if (p.args == 0) {
        error = property + " takes no arguments";
      } else {
        error = property + " takes " + std::to_string(p.args) + (p.args == 1 ? " argument" : " arguments");
      }
      return false;
    }
    try {
      if (p.read == nullptr) {
        out = p.get(c);
        return true;
      }
      return p.read(c, args, out, error);
    } catch (const RuntimeException& e) {
      error = std::string("reading it raised ") + e.ClassName();
      return false;
    }
  }
  error = std::string("a ") + c.ClassName() + " has no property " + property;
  return false;
}

std::string Shown(const std::string& bytes) {
  return String::FromBytes(bytes, TextEncoding::None).Utf8();
}

bool Matches(const Value& v, const Token& expected, std::string& problem) {
  const std::string& e = expected.text;
  switch (v.kind) {
    case Value::Text:
      if (expected.kind != Token::Quoted) {
        problem = "a text in quotes";
        return false;
      }
      return v.text == Shown(e);
    case Value::Bool:
      if (expected.kind != Token::Word || (e != "true" && e != "false")) {
        problem = "true or false";
        return false;
      }
      return v.b == (e == "true");
    case Value::Int: {
      int n = 0;
      if (expected.kind != Token::Word || !ParseInt(e, n)) {
        problem = "a whole number";
        return false;
      }
      return v.i == n;
    }
    case Value::Colour: {
      std::uint32_t rgb = 0;
      if (expected.kind != Token::Word || !ParseColour(e, rgb)) {
        problem = "a colour RRGGBB";
        return false;
      }
      return v.rgb == rgb;
    }
    case Value::Word:
      if (expected.kind != Token::Word) {
        problem = "a word";
        return false;
      }
      return v.text == e;
  }
  return false;
}

}  // namespace scn
