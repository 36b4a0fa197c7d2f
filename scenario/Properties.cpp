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

bool WantArgs(const std::string& property, const std::vector<int>& args, std::size_t n,
              std::string& error) {
  if (args.size() == n) return true;
  if (n == 0) {
    error = property + " takes no arguments";
  } else {
    error = property + " takes " + std::to_string(n) + (n == 1 ? " argument" : " arguments");
  }
  return false;
}

bool RowInRange(int row, int count, std::string& error) {
  if (row >= 0 && row < count) return true;
  error = "no row " + std::to_string(row) + " (ListCount " + std::to_string(count) + ")";
  return false;
}

bool ReadList(const Control& c, const std::string& property, const std::vector<int>& args,
              Value& out, std::string& error) {
  if (const auto* l = dynamic_cast<const Listbox*>(&c)) {
    if (property == "ListCount") {
      out = IntValue(l->ListCount());
      return WantArgs(property, args, 0, error);
    }
    if (property == "ListIndex") {
      out = IntValue(l->ListIndex());
      return WantArgs(property, args, 0, error);
    }
    if (property == "List") {
      if (!WantArgs(property, args, 1, error) || !RowInRange(args[0], l->ListCount(), error)) {
        return false;
      }
      out = TextValue(l->List(args[0]));
      return true;
    }
    if (property == "Cell" || property == "CellBold" || property == "CellTextColor") {
      if (!WantArgs(property, args, 2, error) || !RowInRange(args[0], l->ListCount(), error)) {
        return false;
      }
      int columns = l->ColumnCount < 1 ? 1 : l->ColumnCount;
      if (args[1] < 0 || args[1] >= columns) {
        error = "no column " + std::to_string(args[1]) + " (ColumnCount " +
                std::to_string(columns) + ")";
        return false;
      }
      if (property == "Cell") {
        out = TextValue(l->Cell(args[0], args[1]));
      } else if (property == "CellBold") {
        out = BoolValue(l->CellBold(args[0], args[1]));
      } else {
        // The colour the list paints the cell's text in once the program's CellTextPaint has run,
        // on a surface that keeps what that handler draws to itself.
        Graphics g(std::make_unique<RecordingSurface>());
        out = ColourValue(const_cast<Listbox*>(l)->PaintCellText(g, args[0], args[1]));
      }
      return true;
    }
    return false;
  }
  if (const auto* p = dynamic_cast<const PopupMenu*>(&c)) {
    if (property == "ListCount") {
      out = IntValue(p->ListCount());
      return WantArgs(property, args, 0, error);
    }
    if (property == "ListIndex") {
      out = IntValue(p->ListIndex());
      return WantArgs(property, args, 0, error);
    }
    if (property == "List") {
      if (!WantArgs(property, args, 1, error) || !RowInRange(args[0], p->ListCount(), error)) {
        return false;
      }
      out = TextValue(p->List(args[0]));
      return true;
    }
    return false;
  }
  if (const auto* m = dynamic_cast<const ContextualMenu*>(&c)) {
    if (property == "ListCount") {
      out = IntValue(m->ListCount());
      return WantArgs(property, args, 0, error);
    }
    if (property == "List") {
      if (!WantArgs(property, args, 1, error) || !RowInRange(args[0], m->ListCount(), error)) {
        return false;
      }
      out = TextValue(m->List(args[0]));
      return true;
    }
  }
  return false;
}

bool ReadPlain(const Control& c, const std::string& property, Value& out) {
  if (property == "Text") {
    if (const auto* t = dynamic_cast<const TextControl*>(&c)) {
      out = TextValue(t->Text());
    } else if (const auto* s = dynamic_cast<const StaticText*>(&c)) {
      out = TextValue(s->Text());
    } else if (const auto* p = dynamic_cast<const PopupMenu*>(&c)) {
      out = TextValue(p->Text());
    } else if (const auto* b = dynamic_cast<const PushButton*>(&c)) {
      out = TextValue(b->Caption);
    } else if (const auto* x = dynamic_cast<const CheckBox*>(&c)) {
      out = TextValue(x->Caption);
    } else if (const auto* g = dynamic_cast<const GroupBox*>(&c)) {
      out = TextValue(g->Caption);
    } else {
      return false;
    }
    return true;
  }
  if (property == "BackColor") {
    out = ColourValue(c.BackColor());
    return true;
  }
  if (property == "TextColor") {
    out = ColourValue(c.TextColor());
    return true;
  }
  if (property == "FillColor") {
    if (const auto* r = dynamic_cast<const RoundRectangle*>(&c)) {
      out = ColourValue(r->FillColor());
    } else if (const auto* q = dynamic_cast<const Rectangle*>(&c)) {
      out = ColourValue(q->FillColor);
    } else {
      return false;
    }
    return true;
  }
  if (property == "BorderWidth") {
    if (const auto* r = dynamic_cast<const RoundRectangle*>(&c)) {
      out = IntValue(r->BorderWidth());
    } else if (const auto* q = dynamic_cast<const Rectangle*>(&c)) {
      out = IntValue(q->BorderWidth);
    } else if (const auto* l = dynamic_cast<const Line*>(&c)) {
      out = IntValue(l->BorderWidth);
    } else {
      return false;
    }
    return true;
  }
  if (property == "ReadOnly" || property == "SelStart" || property == "SelLength") {
    const auto* t = dynamic_cast<const TextControl*>(&c);
    if (t == nullptr) return false;
    if (property == "ReadOnly") out = BoolValue(t->ReadOnly());
    if (property == "SelStart") out = IntValue(t->SelStart());
    if (property == "SelLength") out = IntValue(t->SelLength());
    return true;
  }
  if (property == "Enabled") {
    out = BoolValue(c.Enabled());
    return true;
  }
  if (property == "Visible") {
    out = BoolValue(c.Visible());
    return true;
  }
  if (property == "Value") {
    const auto* x = dynamic_cast<const CheckBox*>(&c);
    if (x == nullptr) return false;
    out = BoolValue(x->Value());
    return true;
  }
  if (property == "Underline") {
    out = BoolValue(c.Underline());
    return true;
  }
  if (property == "Bold") {
    out = BoolValue(c.Bold());
    return true;
  }
  if (property == "Italic") {
    out = BoolValue(c.Italic());
    return true;
  }
  if (property == "TextFont") {
    out = TextValue(c.TextFont());
    return true;
  }
  if (property == "Backdrop") {
    const auto* v = dynamic_cast<const Canvas*>(&c);
    if (v == nullptr) return false;
    out.kind = Value::Word;
    out.text = v->Backdrop() == nil ? "none" : "picture";
    return true;
  }
  return false;
}

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
  try {
    if (property == "List" || property == "ListCount" || property == "ListIndex" ||
        property == "Cell" || property == "CellBold" || property == "CellTextColor") {
      if (ReadList(c, property, args, out, error)) return true;
      if (!error.empty()) return false;
    } else if (ReadPlain(c, property, out)) {
      return WantArgs(property, args, 0, error);
    }
  } catch (const RuntimeException& e) {
    error = std::string("reading it raised ") + e.ClassName();
    return false;
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
