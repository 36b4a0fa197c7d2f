// SPDX-License-Identifier: GPL-3.0-or-later
// ledgerly-soak [CYCLES]
// One program state, many cycles of a whole invoice's life: New, typing, Save, a click on its row,
// "paid" and Save again, Print, Delete. Each cycle checks that its files come and go and that the
// form holds what was typed; the heap in use is measured after a warm-up and at the end, and must
// not grow.
#include <malloc.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "core/App.h"
#include "core/Module1.h"
#include "invoice/iwindow.h"
#include "rb/rb.h"
#include "scenario/TestScreen.h"
#include "secondary/prefswindow.h"
#include "secondary/surewindow.h"

#if defined(__SANITIZE_ADDRESS__)
#define SOAK_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define SOAK_ASAN 1
#endif
#endif
#ifdef SOAK_ASAN
// The sanitizer runtime's count of the bytes allocated and not yet freed (g++ ships no header).
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

namespace fs = std::filesystem;

namespace {

constexpr const char* kCustomer = "Soak Customer";

// The person at the screen confirms every question and closes the prefs; each print goes onto a
// recording surface.
scn::TestScreen screen;
std::string folder;
long cycle = 0;

[[noreturn]] void Fail(const std::string& what) {
  std::fprintf(stderr, "soak: cycle %ld: %s\n", cycle, what.c_str());
  std::exit(1);
}

void Check(bool ok, const std::string& what) {
  if (!ok) Fail(what);
}

// Bytes in use on the heap, as the allocator counts them.
std::size_t HeapInUse() {
#ifdef SOAK_ASAN
  return __sanitizer_get_current_allocated_bytes();
#else
  return mallinfo2().uordblks;
#endif
}

long ResidentKiB() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.rfind("VmRSS:", 0) == 0) return std::strtol(line.c_str() + 6, nullptr, 10);
  return -1;
}

std::vector<std::string> Entries(const std::string& relative) {
  std::vector<std::string> names;
  for (const auto& e : fs::directory_iterator(folder + "/" + relative))
    names.push_back(e.path().filename().string());
  return names;
}

void Menu(const std::string& item) {
  Check(ChooseMenuItem(item), "the menu item " + item + " is not live");
}

void Type(TextControl* field, const std::string& text) {
  iwindow->SetFocus(field);
  for (char c : text) iwindow->UserKey(String(std::string(1, c)));
}

void Erase(TextControl* field) {
  iwindow->SetFocus(field);
  while (!field->Text().IsEmpty()) iwindow->UserKey(Keys::Backspace);
}

void Cycle() {
  Menu("filenew");
  const std::string number = iwindow->invoicenumberField->Text().Utf8();
  Check(number == Format(cycle, "00000").Utf8(), "New gave the number " + number);
  const std::string name = number + "-16-11-2026-" + kCustomer;

  Erase(iwindow->customername);
  Type(iwindow->customername, kCustomer);
  Erase(iwindow->customeraddress);
  Type(iwindow->customeraddress, "1 High St");
  Type(iwindow->number(0), "3");
  Type(iwindow->description(0), "Widget");
  Type(iwindow->price(0), "19.99");
  iwindow->UserKey(Keys::Tab);
  Check(iwindow->total(0)->Text().Utf8() == "59.97", "the row total is " + iwindow->total(0)->Text().Utf8());

  // The bytes of the files are the scenarios' concern (invoicefiles.scn, unpaid.scn); here, that
  // each cycle makes and removes them.
  Menu("filesave");
  Check(Entries("customers") == std::vector<std::string>{name}, "no invoicefile " + name);
  Check(Entries("unpaid") == std::vector<std::string>{name}, "no unpaidmarker");
  Check(iwindow->customers->ListCount() == 1, "the list has not one row");

  // Back from the file: the form as it was saved, not edited.
  Erase(iwindow->customeraddress);
  iwindow->customers->UserCellClick(0, 0);
  Check(iwindow->customeraddress->Text().Utf8() == "1 High St", "the loaded address differs");
  Check(iwindow->total(0)->Text().Utf8() == "59.97", "the loaded row total differs");
  Check(!Module1::texthaschanged, "a loaded invoice counts as edited");

  Erase(iwindow->statusfield);
  Type(iwindow->statusfield, "paid");
  Menu("filesave");
  Check(Entries("unpaid").empty(), "the unpaidmarker stayed");

  screen.jobs.clear();
  Menu("fileprint");
  bool customerDrawn = false;
  for (const DrawOp& op : screen.jobs.empty() ? std::vector<DrawOp>{} : screen.jobs[0].ops)
    customerDrawn = customerDrawn || (op.kind == DrawOp::Text && op.text == kCustomer);
  Check(screen.jobs.size() == 1 && customerDrawn, "the invoice was not printed");
  screen.jobs.clear();

  Menu("filedeleteinvoice");
  Check(Entries("customers").empty(), "the invoicefile stayed");
  Check(iwindow->customers->ListCount() == 0, "the row stayed");
  Check(Entries("names").size() == 1, "the name book does not hold one name");
  Check(screen.messages.empty(), "a message came: " + (screen.messages.empty() ? "" : screen.messages[0].text));
  Check(screen.exceptions.empty(),
        "an exception came: " + (screen.exceptions.empty() ? "" : screen.exceptions[0].className));
}

}  // namespace

int main(int argc, char** argv) {
  const long cycles = argc > 1 ? std::strtol(argv[1], nullptr, 10) : 10000;
  const long warmup = std::min(100L, cycles / 2);
  InitRuntime(argc, argv);

  const char* tmp = std::getenv("TMPDIR");
  std::string pattern = std::string(tmp != nullptr && *tmp != '\0' ? tmp : "/tmp") + "/ledgerly-soak-XXXXXX";
  if (mkdtemp(pattern.data()) == nullptr) Fail("no program folder could be made");
  folder = pattern;
  SetProgramFolder(folder);
  Date::SetToday(2026, 11, 16);
  Date::SetShortDateFormat("dd/MM/yyyy");
  screen.StandAsAPassiveUser([](Window& w) {
    if (w.ClassName() == "surewindow") surewindow->acceptbutt->UserClick();
    if (w.ClassName() == "prefswindow") prefswindow->closebutt->UserClick();
  });
  SetScreen(&screen);
  StartProgram();
  Check(screen.messages.size() == 1 && screen.messages[0].text == "Please fill out the prefs.",
        "the first start did not ask for the prefs");
  screen.messages.clear();

  std::size_t heapWarm = 0;
  long rssWarm = 0;
  const auto begun = std::chrono::steady_clock::now();
  for (cycle = 1; cycle <= cycles; ++cycle) {
    Cycle();
    if (cycle == warmup) {
      heapWarm = HeapInUse();
      rssWarm = ResidentKiB();
    }
    if (cycle % 1000 == 0 || cycle == cycles)
      std::printf("cycle %ld: heap in use %zu bytes, resident %ld KiB\n", cycle, HeapInUse(), ResidentKiB());
  }
  const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begun).count();
  const std::size_t heapEnd = HeapInUse();
  const long rssEnd = ResidentKiB();
  std::printf("%ld cycles in %.1f s; after %ld: heap %zu bytes, resident %ld KiB; at the end: heap %zu "
              "bytes, resident %ld KiB\n",
              cycles, seconds, warmup, heapWarm, rssWarm, heapEnd, rssEnd);

  // Under valgrind the allocator is valgrind's, which glibc cannot count: its leak check stands in.
  if (heapEnd == 0) std::printf("the heap in use is not counted under this allocator\n");

  ResetProgram();
  SetScreen(nullptr);
  std::error_code ec;
  fs::remove_all(folder, ec);
  // What one cycle leaves behind adds up over thousands: over 10,000 cycles, 64 KiB is less than
  // seven bytes a cycle.
  if (cycles >= 1000 && heapEnd > heapWarm + 64 * 1024) {
    std::fprintf(stderr, "soak: the heap grew by %zu bytes\n", heapEnd - heapWarm);
    return 1;
  }
  return 0;
}
