// SPDX-License-Identifier: GPL-3.0-or-later
// A window's controls as a layout table: one row a control, in the order they are made, which is
// also their stacking order. `design::Build` makes them from the table.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <type_traits>

#include "rb/Controls.h"
#include "rb/Core.h"
#include "rb/Window.h"

namespace design {

// As the tables write alignment. A field counts it 1 left, 2 centre, 3 right; a label 0, 1, 2.
enum Align { unaligned, left, centre, right };

enum Style : unsigned { plain = 0, bold = 1, italic = 2, underline = 4 };

// What a row sets that differs from its class's default.
enum Flag : unsigned {
  ReadOnly = 1u << 0,
  NoFocusRing = 1u << 1,
  Disabled = 1u << 2,
  Hidden = 1u << 3,
  Default = 1u << 4,    // the push button of the Return key
  Cancel = 1u << 5,     // the push button of the Escape key
  Multiline = 1u << 6,  // a label of several lines
  ScrollBar = 1u << 7,  // a text with a vertical scroll bar
  LockLeft = 1u << 8,
  LockTop = 1u << 9,
  LockRight = 1u << 10,
  LockBottom = 1u << 11,
  Locked = LockLeft | LockTop | LockRight | LockBottom,
};

// A Top or a TabIndex that steps from one element of a control array to the next: {181, 28} is
// 181 for element 0 and 181 + 28i for element i.
struct Step {
  Integer first = 0, by = 0;
  constexpr Step(Integer value) : first(value) {}  // NOLINT: a plain number steps by nothing
  constexpr Step(Integer value, Integer step) : first(value), by(step) {}
  constexpr Integer At(Integer element) const { return first + by * element; }
};

// Makes a row's control in the window and keeps it in the window's member.
using Maker = Control* (*)(Window& window, const std::string& name, Integer index);

namespace detail {

template <class T>
struct MemberOf;
template <class W, class M>
struct MemberOf<M W::*> {
  using Owner = W;
  using Type = M;
};

template <auto Member>
Control* Keep(Window& window, const std::string& name, Integer index) {
  using Owner = typename MemberOf<decltype(Member)>::Owner;
  using Type = typename MemberOf<decltype(Member)>::Type;
  auto& slot = static_cast<Owner&>(window).*Member;
  if constexpr (std::is_pointer_v<Type>) {
    auto* c = window.Add<std::remove_pointer_t<Type>>(name, index);
    slot = c;
    return c;
  } else {
    auto* c = window.Add<typename Type::Element>(name, index);
    slot.Place(index, c);
    return c;
  }
}

}  // namespace detail

// The member of the window a row's control is kept in, a pointer or a ControlArray; its type
// gives the control's class: `Bind<&iwindow::customername>`.
template <auto Member>
inline constexpr Maker Bind = &detail::Keep<Member>;

// A back colour left blank: the control keeps its class's.
inline constexpr std::nullopt_t blank = std::nullopt;

// One control. A blank at the end of a row keeps the class's default.
struct Row {
  Maker control;
  const char* name;
  Integer index;  // -1 outside a control array; in an array's table, its element 0
  Integer left;
  Step top;
  Integer width, height;
  Step tab;                    // TabIndex
  const char* text = nullptr;  // the design text, or the caption of a button or a group
  const char* font = nullptr;  // nullptr keeps "System"
  Double size = 0;             // TextSize; 0 keeps the default
  unsigned style = plain;
  Align align = unaligned;
  Integer limit = 0;           // LimitText
  std::optional<Color> back;   // a field's background, a rectangle's fill
  unsigned flags = 0;
  Color color = 0x000000;      // TextColor
};

// Makes the window's controls from its table, in the table's order, each with its design
// values. An array's table is made element by element: every row's element 0, then every row's
// element 1, and so on. Handlers are wired after, so the design raises no event.
void Build(Window& window, std::span<const Row> table, Integer elements = 1);

}  // namespace design
