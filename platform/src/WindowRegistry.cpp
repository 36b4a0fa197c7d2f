// SPDX-License-Identifier: GPL-3.0-or-later
// The implicit instances: one per window class, made and built on the first touch of its name, and
// the stack of the windows shown.
#include <algorithm>
#include <map>
#include <stdexcept>

#include "rb/Screen.h"
#include "rb/Window.h"

namespace {

struct Registry {
  std::map<std::string, WindowRegistry::Factory> factories;
  std::map<std::string, std::unique_ptr<Window>> instances;
  std::vector<Window*> built;  // in the order they were made
  std::vector<Window*> shown;  // back to front
};

Registry& R() {
  static Registry registry;
  return registry;
}

}  // namespace

void WindowRegistry::Register(const std::string& className, Factory factory) {
  R().factories[className] = std::move(factory);
}

// The instance is on record before it is built, so that a handler that touches its own window
// while the window is being built gets this same object.
Window& WindowRegistry::Touch(const std::string& className) {
  Registry& r = R();
  if (auto it = r.instances.find(className); it != r.instances.end()) return *it->second;
  auto f = r.factories.find(className);
  if (f == r.factories.end() || !f->second)
    throw std::logic_error("no window class registered as " + className);
  std::unique_ptr<Window> made = f->second();
  Window* w = made.get();
  r.instances[className] = std::move(made);
  r.built.push_back(w);
  w->Build();
  return *w;
}

Window* WindowRegistry::Find(const std::string& className) {
  Registry& r = R();
  auto it = r.instances.find(className);
  return it == r.instances.end() ? nullptr : it->second.get();
}

bool WindowRegistry::Known(const std::string& className) { return R().factories.count(className) > 0; }

std::vector<Window*> WindowRegistry::Built() { return R().built; }

std::vector<Window*> WindowRegistry::Shown() { return R().shown; }

Window* WindowRegistry::Front() {
  const auto& shown = R().shown;
  return shown.empty() ? nullptr : shown.back();
}

void WindowRegistry::ResetAll() {
  Registry& r = R();
  std::map<std::string, std::unique_ptr<Window>> doomed;
  doomed.swap(r.instances);
  std::vector<Window*> order;
  order.swap(r.built);
  r.shown.clear();
  for (auto it = order.rbegin(); it != order.rend(); ++it) CurrentScreen().WindowDestroyed(**it);
  doomed.clear();
}

void WindowRegistry::NoteShown(Window* w) {
  auto& shown = R().shown;
  shown.erase(std::remove(shown.begin(), shown.end(), w), shown.end());
  shown.push_back(w);
}

void WindowRegistry::NoteHidden(Window* w) {
  auto& shown = R().shown;
  shown.erase(std::remove(shown.begin(), shown.end(), w), shown.end());
}
