// SPDX-License-Identifier: GPL-3.0-or-later
// Value types, references that may be nil, and the runtime's exceptions.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>

using Integer = std::int32_t;
using Single = float;
using Double = double;
using Boolean = bool;

// A colour as 0xRRGGBB.
struct Color {
  std::uint32_t rgb = 0;
  constexpr Color() = default;
  constexpr Color(std::uint32_t v) : rgb(v & 0xFFFFFF) {}  // NOLINT: 0xRRGGBB literals read best
  constexpr int Red() const { return (rgb >> 16) & 0xFF; }
  constexpr int Green() const { return (rgb >> 8) & 0xFF; }
  constexpr int Blue() const { return rgb & 0xFF; }
  friend constexpr bool operator==(Color a, Color b) { return a.rgb == b.rgb; }
  friend constexpr bool operator!=(Color a, Color b) { return a.rgb != b.rgb; }
};

constexpr Color RGB(int r, int g, int b) {
  return Color(static_cast<std::uint32_t>(((r & 0xFF) << 16) | ((g & 0xFF) << 8) | (b & 0xFF)));
}

// The exceptions that the runtime raises: NilObjectException, OutOfBoundsException and
// IOException, and no other. Application code catches none of them: they stop the running handler
// and reach the platform, which reports them and keeps the program going (RunHandler).
class RuntimeException : public std::runtime_error {
 public:
  virtual const char* ClassName() const = 0;

 protected:
  explicit RuntimeException(const std::string& what) : std::runtime_error(what) {}
};

class NilObjectException : public RuntimeException {
 public:
  NilObjectException() : RuntimeException("An object was nil where one was needed.") {}
  const char* ClassName() const override { return "NilObjectException"; }
};

class OutOfBoundsException : public RuntimeException {
 public:
  OutOfBoundsException() : RuntimeException("An index was out of bounds.") {}
  const char* ClassName() const override { return "OutOfBoundsException"; }
};

// A file that could not be written whole: the disk is full, or the system refused the write. The
// file keeps what it held before.
class IOException : public RuntimeException {
 public:
  explicit IOException(const std::string& what) : RuntimeException("A file could not be written: " + what) {}
  const char* ClassName() const override { return "IOException"; }
};

// `nil`, as the code writes it: `if (f != nil && f->Exists())`.
constexpr std::nullptr_t nil = nullptr;

// An object held by reference and counted. Using a nil one throws NilObjectException instead of
// crashing.
template <class T>
class Ref {
 public:
  Ref() = default;
  Ref(std::nullptr_t) {}  // NOLINT: nil converts implicitly
  Ref(std::shared_ptr<T> p) : p_(std::move(p)) {}  // NOLINT
  template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
  Ref(const Ref<U>& other) : p_(other.shared()) {}  // NOLINT

  T* operator->() const {
    if (!p_) throw NilObjectException();
    return p_.get();
  }
  T& operator*() const {
    if (!p_) throw NilObjectException();
    return *p_;
  }
  T* get() const { return p_.get(); }
  const std::shared_ptr<T>& shared() const { return p_; }
  bool IsNil() const { return !p_; }

  friend bool operator==(const Ref& a, std::nullptr_t) { return !a.p_; }
  friend bool operator!=(const Ref& a, std::nullptr_t) { return static_cast<bool>(a.p_); }
  friend bool operator==(const Ref& a, const Ref& b) { return a.p_ == b.p_; }
  friend bool operator!=(const Ref& a, const Ref& b) { return a.p_ != b.p_; }

 private:
  std::shared_ptr<T> p_;
};

// `New PrinterSetup` and the like.
template <class T, class... Args>
Ref<T> New(Args&&... args) {
  return Ref<T>(std::make_shared<T>(std::forward<Args>(args)...));
}
