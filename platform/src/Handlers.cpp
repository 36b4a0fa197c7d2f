// The running of event handlers: the outermost one stops an unhandled runtime exception and reports
// it; nested ones let it pass up, so the whole event stops at once and is reported once.
#include <exception>

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

// The report comes after the handler's level is left, so that a screen which shows it in a dialog
// serves that dialog's events as outermost ones.
void Report(const std::exception_ptr& caught) {
  try {
    std::rethrow_exception(caught);
  } catch (const RuntimeException& e) {
    CurrentScreen().UnhandledException(e);
  }
}

}  // namespace

void RunHandler(const std::function<void()>& body) {
  if (!body) return;
  if (handlerDepth > 0) {
    DepthGuard guard;
    body();
    return;
  }
  std::exception_ptr caught;
  {
    DepthGuard guard;
    try {
      body();
    } catch (const RuntimeException&) {
      caught = std::current_exception();
    }
  }
  if (caught) Report(caught);
}

bool RunHandlerBool(const std::function<bool()>& body, bool fallback) {
  if (!body) return fallback;
  if (handlerDepth > 0) {
    DepthGuard guard;
    return body();
  }
  std::exception_ptr caught;
  bool result = fallback;
  {
    DepthGuard guard;
    try {
      result = body();
    } catch (const RuntimeException&) {
      caught = std::current_exception();
    }
  }
  if (caught) {
    Report(caught);
    return fallback;
  }
  return result;
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
