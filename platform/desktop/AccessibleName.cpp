// SPDX-License-Identifier: GPL-3.0-or-later
#include "AccessibleName.h"

#include <algorithm>
#include <cctype>

#include "QtText.h"
#include "rb/Window.h"

namespace desk {

namespace {

// A label with a word, not a currency sign alone.
bool HasLetter(const String& s) {
  for (unsigned char ch : s.Utf8())
    if (std::isalpha(ch)) return true;
  return false;
}

QString Spoken(const String& s) {
  QString t = ToWidgetText(s).simplified();
  if (t.endsWith(QLatin1Char(':'))) t.chop(1);
  return t.trimmed();
}

bool SameLine(const Control& a, const Control& b) {
  return a.Top < b.Top + b.Height && b.Top < a.Top + a.Height;
}

// A currency sign may stand between a total and its caption, so only labels with a word count.
const StaticText* LabelBeside(const Control& c, const Window& w) {
  const StaticText* best = nullptr;
  int bestGap = 40;
  for (const auto& o : w.Controls()) {
    const auto* s = dynamic_cast<const StaticText*>(o.get());
    if (!s || !HasLetter(s->Text()) || !SameLine(*s, c)) continue;
    const int gap = c.Left - (s->Left + s->Width);
    if (gap >= -2 && gap <= bestGap) {
      best = s;
      bestGap = gap;
    }
  }
  return best;
}

const GroupBox* GroupAround(const Control& c, const Window& w) {
  for (const auto& o : w.Controls()) {
    const auto* g = dynamic_cast<const GroupBox*>(o.get());
    if (g && g->Left <= c.Left && g->Top <= c.Top && c.Left + c.Width <= g->Left + g->Width &&
        c.Top + c.Height <= g->Top + g->Height)
      return g;
  }
  return nullptr;
}

// The label over the first field of c's column.
const StaticText* ColumnHeading(const Control& c, const Window& w) {
  const Control* first = w.FindControl(c.Name(), 0);
  if (!first) return nullptr;
  const StaticText* best = nullptr;
  for (const auto& o : w.Controls()) {
    const auto* s = dynamic_cast<const StaticText*>(o.get());
    if (!s || !HasLetter(s->Text()) || s->Top + s->Height > first->Top + 2 ||
        s->Top + s->Height < first->Top - 30)
      continue;
    const int overlap = std::min(s->Left + s->Width, first->Left + first->Width) - std::max(s->Left, first->Left);
    if (overlap > std::min(s->Width, first->Width) / 2) best = s;
  }
  return best;
}

}  // namespace

QString AccessibleName(const Control& c) {
  if (const auto* b = dynamic_cast<const PushButton*>(&c)) return ToWidgetText(b->Caption);
  if (const auto* x = dynamic_cast<const CheckBox*>(&c)) return ToWidgetText(x->Caption);
  const Window* w = c.ParentWindow();
  if (const auto* l = dynamic_cast<const Listbox*>(&c); l && l->HasHeading && !l->Headings.empty()) {
    QStringList headings;
    for (const String& h : l->Headings) headings << Spoken(h);
    return headings.join(QStringLiteral(", "));
  }
  if (w) {
    if (const StaticText* s = LabelBeside(c, *w)) return Spoken(s->Text());
    if (const GroupBox* g = GroupAround(c, *w)) return Spoken(g->Caption);
    if (c.Index() >= 0)
      if (const StaticText* s = ColumnHeading(c, *w))
        return Spoken(s->Text()) + QStringLiteral(", row %1").arg(c.Index() + 1);
  }
  if (const auto* t = dynamic_cast<const TextControl*>(&c)) {
    const QString design = ToWidgetText(t->DesignText);
    if (!design.trimmed().isEmpty() && !design.contains(QLatin1Char('\n'))) return Spoken(t->DesignText);
    if (w && t->Multiline) return ToWidgetText(w->Title);
  }
  return QString::fromStdString(c.Name()) + (c.Index() >= 0 ? QStringLiteral(" %1").arg(c.Index() + 1) : QString());
}

}  // namespace desk
