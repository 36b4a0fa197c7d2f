// SPDX-License-Identifier: GPL-3.0-or-later
// The running of event handlers and events, and the one rule for what they leave: the runtime's
// exceptions are reported and the program goes on; any other is a defect that ends it. Nested
// handlers let what they raise pass up, so the whole event stops at once and is reported once.
#include <cxxabi.h>

#include <cstdlib>
#include <exception>
#include <memory>
#include <string>
#include <typeinfo>

#include "ControlSupport.h"
#include "rb/Screen.h"
#include "rb/Window.h"

namespace {

thread_local int handlerDepth = 0;
thread_local bool contextualClick = false;

class DepthGuard {
 public:
  DepthGuard() { ++handlerDepth; }
  ~DepthGuard() { --handlerDepth; }
  DepthGuard(const DepthGuard&) = delete;
  DepthGuard& operator=(const DepthGuard&) = delete;
};

// The name of an exception's class as the program spells it ("std::logic_error").
std::string ClassNameOf(const std::exception& e) {
  int status = 0;
  std::unique_ptr<char, void (*)(void*)> name(
      abi::__cxa_demangle(typeid(e).name(), nullptr, nullptr, &status), std::free);
  return status == 0 && name ? name.get() : typeid(e).name();
}

// The rule, applied once the handler's level is left, so that a screen which shows the report in
// a dialog serves that dialog's events as outermost ones.
void Report(const std::exception_ptr& caught) {
  try {
    std::rethrow_exception(caught);
  } catch (const RuntimeException& e) {
    CurrentScreen().UnhandledException(e);
  } catch (const std::exception& e) {
    CurrentScreen().Defect(ClassNameOf(e), e.what());
  }
}

// Runs body at the next handler level. Nested, whatever it raises passes up; outermost, what it
// left goes by the rule, and the answer is False.
template <class Body>
bool Handled(Body&& body) {
  if (handlerDepth > 0) {
    DepthGuard guard;
    body();
    return true;
  }
  std::exception_ptr caught;
  {
    DepthGuard guard;
    try {
      body();
    } catch (const std::exception&) {
      caught = std::current_exception();
    }
  }
  if (!caught) return true;
  Report(caught);
  return false;
}

}  // namespace

void RunHandler(const std::function<void()>& body) {
  if (body) Handled(body);
}

bool RunHandlerBool(const std::function<bool()>& body, bool fallback) {
  if (!body) return fallback;
  bool result = fallback;
  return Handled([&] { result = body(); }) ? result : fallback;
}

void RunEvent(const std::function<void()>& body) {
  std::exception_ptr caught;
  try {
    body();
  } catch (const std::exception&) {
    caught = std::current_exception();
  }
  if (caught) Report(caught);
}

OutermostScope::OutermostScope() : saved_(handlerDepth) { handlerDepth = 0; }

OutermostScope::~OutermostScope() { handlerDepth = saved_; }

bool IsContextualClick() { return contextualClick; }

namespace rbi {

ContextualClickScope::ContextualClickScope(bool contextual) : saved_(contextualClick) {
  contextualClick = contextual;
}

ContextualClickScope::~ContextualClickScope() { contextualClick = saved_; }

}  // namespace rbi
