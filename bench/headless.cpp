// SPDX-License-Identifier: GPL-3.0-or-later
// The headless cases: the real program on a program folder made by the fixture maker, with a
// screen that shows nothing. Each case runs ours and its floor in turn, swapping which goes first
// from one run to the next, and prints one line per case:
//   RESULT <case> <N> <median ours, s> <median floor, s> <runs> <median of the pairs' ratios>
// A case that cannot run at this N prints "SKIP <case> <N> <why>".
//
//   bench_headless PROGRAMFOLDER N RUNS [CASE]   (CASE: save, load, key or print; all if none)
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "core/App.h"
#include "core/Module1.h"
#include "fixture.h"
#include "floors.h"
#include "invoice/iwindow.h"
#include "scenario/TestScreen.h"
#include "secondary/prefswindow.h"
#include "stats.h"

namespace {

using bench::Now;
namespace fs = std::filesystem;

void Require(bool ok, const std::string& what) {
  if (!ok) throw std::runtime_error(what);
}

// A case that meets a message or an error is not measuring what it means to.
void RequireQuiet(const scn::TestScreen& screen, const std::string& where) {
  Require(screen.messages.empty(), where + ": the program said \"" +
                                       (screen.messages.empty() ? "" : screen.messages.front().text) + "\"");
  Require(screen.exceptions.empty(),
          where + ": unhandled " + (screen.exceptions.empty() ? "" : screen.exceptions.front().className));
}

std::string ReadAll(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::stringstream s;
  s << in.rdbuf();
  return s.str();
}

std::set<std::string> Entries(const std::string& folder) {
  std::set<std::string> names;
  for (const auto& e : fs::directory_iterator(folder)) names.insert(e.path().filename().string());
  return names;
}

// Runs ours and the floor once each per run, the first of the pair alternating; each sample is
// the time of one operation (a batch's time divided by its size).
struct Pairs {
  std::vector<double> ours, floor;
};

Pairs Alternate(int runs, const std::function<double()>& ours, const std::function<double()>& floor) {
  Pairs p;
  // One pair first, not counted: the first run of a case pays for caches the later ones find warm.
  ours();
  floor();
  for (int r = 0; r < runs; ++r) {
    if (r % 2 == 0) {
      p.ours.push_back(ours());
      p.floor.push_back(floor());
    } else {
      p.floor.push_back(floor());
      p.ours.push_back(ours());
    }
  }
  return p;
}

// The ratio is the median of the ratios of the pairs: each pair ran side by side, under the same
// load, which the medians of the two columns taken apart do not guarantee.
void Report(const char* name, int n, const Pairs& p) {
  std::vector<double> ratios;
  for (std::size_t k = 0; k < p.ours.size(); ++k) ratios.push_back(p.ours[k] / p.floor[k]);
  std::printf("RESULT %s %d %.9f %.9f %zu %.6f\n", name, n, bench::Median(p.ours), bench::Median(p.floor),
              p.ours.size(), bench::Median(ratios));
  std::fflush(stdout);
}

// ---- Saving ---------------------------------------------------------------------------------

// A new invoice for a known customer, typed in and not yet saved.
void PrepareNewInvoice(int number, int n, int r) {
  iwindow->invoicenumberField->setText(Format(number, "00000"));
  iwindow->datefield->setText("16-11-2026");
  iwindow->customername->setText(String(bench::CustomerName(number, n)));
  iwindow->number(0)->setText(Str(static_cast<Integer>(r % 9 + 1)));
  iwindow->price(0)->setText("19.99");
  iwindow->statusfield->setText("unpaid");
  Module1::texthaschanged = true;
}

bench::InvoiceFields FormFields() {
  bench::InvoiceFields f;
  auto add = [&](const String& s) { f.strings.push_back(s.Bytes()); };
  add(iwindow->datefield->Text());
  add(iwindow->invoicenumberField->Text());
  for (Integer i = 0; i <= 9; i++) {
    add(iwindow->number(i)->Text());
    add(iwindow->description(i)->Text());
    add(iwindow->price(i)->Text());
    add(iwindow->total(i)->Text());
  }
  add(iwindow->customername->Text());
  add(iwindow->customeraddress->Text());
  add(ConvertEncoding(iwindow->comments->Text(), Encodings::MacRoman));
  add(iwindow->statusfield->Text());
  f.discount = Val(iwindow->discountfield->Text());
  add(iwindow->PostageField->Text());
  add(iwindow->ordernumberfield->Text());
  return f;
}

void SaveCase(scn::TestScreen& screen, const std::string& folder, int n, int runs) {
  const std::set<std::string> namesBefore = Entries(folder + "/names");
  const std::string prefsBytes = ReadAll(folder + "/ledgerlyprefs");
  const std::string floorPrefs = folder + "/ledgerlyprefs-floor";
  int number = n + 1;
  auto forget = [&](const std::string& name) {
    fs::remove(folder + "/customers/" + name);
    fs::remove(folder + "/unpaid/" + name);
  };
  int r = 0;
  const Pairs p = Alternate(
      runs,
      [&] {
        PrepareNewInvoice(number, n, r);
        const std::string name = iwindow->invoicename().Utf8();
        const double t0 = Now();
        iwindow->_filesave_Action();
        const double t = Now() - t0;
        RequireQuiet(screen, "saving");
        Require(iwindow->customers->ListCount() == n + 1, "saving: the list does not hold the new invoice");
        Require(fs::exists(folder + "/unpaid/" + name), "saving: no marker");
        forget(name);
        ++number, ++r;
        return t;
      },
      [&] {
        PrepareNewInvoice(number, n, r);
        const std::string name = iwindow->invoicename().Utf8();
        const bench::InvoiceFields fields = FormFields();
        const double t0 = Now();
        bench::SaveFloor(folder, name, fields, floorPrefs, prefsBytes);
        const double t = Now() - t0;
        forget(name);
        return t;
      });
  Module1::texthaschanged = false;
  fs::remove(floorPrefs);
  // A namefile that the saving made for a customer of an empty book goes again.
  for (const std::string& name : Entries(folder + "/names"))
    if (!namesBefore.count(name)) fs::remove(folder + "/names/" + name);
  Report("save", n, p);
}

// ---- Loading --------------------------------------------------------------------------------

void LoadCase(scn::TestScreen& screen, const std::string& folder, int n, int runs) {
  if (n < 2) {
    std::printf("SKIP load %d no invoices to click\n", n);
    return;
  }
  iwindow->getcustomers();
  iwindow->markthem();
  Listbox* list = iwindow->customers;
  Require(list->ListCount() == n, "loading: the list does not show the folder");
  // Two neighbouring invoices in turn, so that every click changes the form.
  const Integer rows[2] = {n / 2 - 1, n / 2};
  const std::string paths[2] = {folder + "/customers/" + list->List(rows[0]).Utf8(),
                                folder + "/customers/" + list->List(rows[1]).Utf8()};
  const String names[2] = {list->List(rows[0]), list->List(rows[1])};
  const String rate = ::prefswindow->vatamountfield->Text();
  const int batch = 20;
  Module1::texthaschanged = false;
  const Pairs p = Alternate(
      runs,
      [&] {
        const double t0 = Now();
        for (int k = 0; k < batch; ++k) list->UserCellClick(rows[k % 2], 0, 4, 4);
        const double t = (Now() - t0) / batch;
        RequireQuiet(screen, "loading");
        Require(Left(names[(batch - 1) % 2], 5) == iwindow->invoicenumberField->Text(),
                "loading: the form does not show the invoice clicked");
        return t;
      },
      [&] {
        volatile std::size_t sink = 0;
        const double t0 = Now();
        for (int k = 0; k < batch; ++k) sink = sink + bench::LoadFloor(paths[k % 2], rate).size();
        return (Now() - t0) / batch;
      });
  // The floor gives the amount due that the form shows.
  Require(bench::LoadFloor(paths[(batch - 1) % 2], rate) == iwindow->duefield->Text().Utf8(),
          "loading: floor and form disagree on the amount due");
  Report("load", n, p);
}

// ---- One key --------------------------------------------------------------------------------

void KeyCase(scn::TestScreen& screen, int n, int runs) {
  iwindow->makeeditable();
  iwindow->number(0)->setText("");
  iwindow->price(0)->setText("19.99");
  iwindow->SetFocus(iwindow->number(0));
  const String rate = ::prefswindow->vatamountfield->Text();
  std::vector<String> totals;
  for (Integer i = 0; i <= 9; i++) totals.push_back(iwindow->total(i)->Text());
  const String price = iwindow->price(0)->Text(), postage = iwindow->PostageField->Text(),
               discount = iwindow->discountfield->Text();
  const String keys[2] = {"7", Keys::Backspace};
  const String quantities[2] = {"7", ""};

  iwindow->UserKey(keys[0]);
  Require(iwindow->number(0)->Text() == "7", "key: the quantity did not take the key");
  Require(iwindow->duefield->Text().Utf8() == bench::KeyFloor(quantities[0], price, totals, rate, postage, discount),
          "key: floor and form disagree on the amount due");
  iwindow->UserKey(keys[1]);

  const int batch = 200;
  const Pairs p = Alternate(
      runs,
      [&] {
        const double t0 = Now();
        for (int k = 0; k < batch; ++k) iwindow->UserKey(keys[k % 2]);
        const double t = (Now() - t0) / batch;
        RequireQuiet(screen, "key");
        return t;
      },
      [&] {
        volatile std::size_t sink = 0;
        const double t0 = Now();
        for (int k = 0; k < batch; ++k)
          sink = sink + bench::KeyFloor(quantities[k % 2], price, totals, rate, postage, discount).size();
        return (Now() - t0) / batch;
      });
  Report("key", n, p);
}

// ---- Printing -------------------------------------------------------------------------------

void PrintCase(scn::TestScreen& screen, const std::string& out, int n, int runs) {
  iwindow->_fileprint_Action();
  Require(!screen.jobs.empty() && !screen.jobs.back().ops.empty(), "print: nothing was drawn");
  const std::vector<DrawOp> ops = screen.jobs.back().ops;
  std::map<std::string, std::string> families;
  for (const DrawOp& op : ops) families.emplace(op.state.font, ResolveFamily(op.state.font));
  // From here on each job goes to a PDF only, as a printer's would.
  scn::Answer pdf;
  pdf.kind = scn::Answer::Print;
  pdf.text = out + "/ours.pdf";
  pdf.record = false;
  screen.Standing(pdf);
  const std::string floorPdf = out + "/floor.pdf";
  const Pairs p = Alternate(
      runs,
      [&] {
        fs::remove(pdf.text);
        const double t0 = Now();
        iwindow->_fileprint_Action();
        const double t = Now() - t0;
        RequireQuiet(screen, "print");
        Require(fs::file_size(pdf.text) > 0, "print: no PDF");
        return t;
      },
      [&] {
        fs::remove(floorPdf);
        const double t0 = Now();
        bench::PrintFloor(ops, families, floorPdf, 595, 842);
        return Now() - t0;
      });
  Report("print", n, p);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 4) {
    std::fprintf(stderr, "usage: %s PROGRAMFOLDER N RUNS [CASE]\n", argv[0]);
    return 2;
  }
  const std::string folder = argv[1];
  const int n = std::atoi(argv[2]);
  const int runs = std::max(1, std::atoi(argv[3]));
  const std::string only = argc > 4 ? argv[4] : "";
  auto wanted = [&](const std::string& name) { return only.empty() || only == name; };
  const std::string out = folder + ".out";
  fs::create_directories(out);

  InitRuntime(argc, argv);
  SetProgramFolder(folder);
  // Nothing is shown: a modal window is hidden at once, and a print goes onto a recording surface.
  scn::TestScreen screen;
  screen.StandAsAPassiveUser();
  SetScreen(&screen);
  try {
    RegisterWindows();
    StartProgram();
    RequireQuiet(screen, "start");
    Require(iwindow->customers->ListCount() == n, "start: the list does not show the folder");
    if (wanted("save")) SaveCase(screen, folder, n, runs);
    if (wanted("load")) LoadCase(screen, folder, n, runs);
    if (wanted("key")) KeyCase(screen, n, runs);
    if (wanted("print")) PrintCase(screen, out, n, runs);
  } catch (const std::exception& e) {
    std::fprintf(stderr, "bench_headless: %s\n", e.what());
    return 1;
  }
  SetScreen(nullptr);
  return 0;
}
