// SPDX-License-Identifier: GPL-3.0-or-later
#include "fixture.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace bench {

namespace {

namespace fs = std::filesystem;

const char kDate[] = "16-11-2026";
const char kStampVersion[] = "ledgerly bench fixture 1";

void PString(std::string& out, const std::string& s) {
  const std::size_t n = std::min<std::size_t>(s.size(), 255);
  out.push_back(static_cast<char>(n));
  out.append(s, 0, n);
}

template <class U>
void BigEndian(std::string& out, U bits) {
  for (int i = sizeof(U) - 1; i >= 0; --i) out.push_back(static_cast<char>((bits >> (8 * i)) & 0xFF));
}

void Double(std::string& out, double v) { BigEndian(out, std::bit_cast<std::uint64_t>(v)); }
void Single(std::string& out, float v) { BigEndian(out, std::bit_cast<std::uint32_t>(v)); }

void WriteFile(const std::string& path, const std::string& bytes) {
  const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  if (fd < 0) throw std::runtime_error("cannot write " + path);
  const ssize_t w = ::write(fd, bytes.data(), bytes.size());
  ::close(fd);
  if (w != static_cast<ssize_t>(bytes.size())) throw std::runtime_error("short write to " + path);
}

// An amount as the form shows it: at least two digits before the point, two after.
std::string Amount(double v) {
  char buf[32];
  std::snprintf(buf, sizeof buf, "%05.2f", v);
  return buf;
}

std::string Address(int customer) { return "12 High Street\rTown " + std::to_string(customer); }

// One to three rows in use, with amounts that differ from one invoice to the next, so that loading
// one after another changes the fields and runs their handlers.
std::string Invoicefile(int i, int n) {
  std::string b;
  PString(b, kDate);
  char number[16];
  std::snprintf(number, sizeof number, "%05d", i);
  PString(b, number);
  const int used = 1 + i % 3;
  for (int r = 0; r < 10; ++r) {
    if (r < used) {
      const int quantity = (i + r) % 7 + 1;
      const double price = 4.10 + (i * 7 + r * 3) % 50;
      PString(b, std::to_string(quantity));
      PString(b, "Item " + std::to_string(r + 1));
      PString(b, Amount(price));
      PString(b, Amount(quantity * price));
    } else {
      for (int k = 0; k < 4; ++k) PString(b, "");
    }
  }
  const int customer = i % CustomerCount(n);
  PString(b, "Customer" + std::to_string(customer));
  PString(b, Address(customer));
  PString(b, "comments");
  PString(b, i % 2 == 1 ? "unpaid" : "paid");
  Double(b, i % 4 == 0 ? 5.0 : 0.0);
  PString(b, "03.50");
  PString(b, i % 5 == 0 ? "PO-" + std::to_string(i) : "");
  return b;
}

std::string Prefsfile(int n) {
  std::string b;
  PString(b, "Bench Trading");
  PString(b, "1 Market Square\rTown");
  Single(b, static_cast<float>(n));
  PString(b, "17.5");
  PString(b, "");  // no logo
  Single(b, 0);    // the first currency
  PString(b, "office@example.com");
  PString(b, "www.example.com");
  PString(b, "Payment within 30 days.");
  PString(b, "This invoice is still unpaid.");
  PString(b, "Thank you for your payment.");
  b.push_back(0);  // no date editing
  return b;
}

std::size_t Entries(const fs::path& folder) {
  std::error_code ec;
  std::size_t count = 0;
  for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) ++count;
  return count;
}

std::string StampPath(const std::string& folder) { return folder + ".stamp"; }

bool IsFixture(const std::string& folder, int n) {
  std::ifstream in(StampPath(folder));
  std::string line;
  if (!std::getline(in, line) || line != std::string(kStampVersion) + " " + std::to_string(n)) return false;
  const fs::path root(folder);
  return fs::exists(root / "ledgerlyprefs") && Entries(root / "customers") == static_cast<std::size_t>(n) &&
         Entries(root / "unpaid") == static_cast<std::size_t>(n / 2) &&
         Entries(root / "names") == static_cast<std::size_t>(n / 20);
}

}  // namespace

int CustomerCount(int n) { return std::max(1, n / 20); }

std::string CustomerName(int i, int n) { return "Customer" + std::to_string(i % CustomerCount(n)); }

std::string InvoiceName(int i, int n) {
  char number[16];
  std::snprintf(number, sizeof number, "%05d", i);
  return std::string(number) + "-" + kDate + "-" + CustomerName(i, n);
}

void RemoveTree(const std::string& folder) {
  std::error_code ec;
  fs::remove_all(folder, ec);
}

void MakeFixture(const std::string& folder, int n) {
  if (IsFixture(folder, n)) return;
  RemoveTree(folder);
  ::unlink(StampPath(folder).c_str());
  const fs::path root(folder);
  fs::create_directories(root / "customers");
  fs::create_directories(root / "unpaid");
  fs::create_directories(root / "names");
  for (int i = 1; i <= n; ++i) {
    const std::string name = InvoiceName(i, n);
    WriteFile((root / "customers" / name).string(), Invoicefile(i, n));
    if (i % 2 == 1) WriteFile((root / "unpaid" / name).string(), CustomerName(i, n) + "\n");
  }
  for (int k = 0; k < n / 20; ++k) {
    std::string b;
    PString(b, Address(k));
    WriteFile((root / "names" / ("Customer" + std::to_string(k))).string(), b);
  }
  WriteFile((root / "ledgerlyprefs").string(), Prefsfile(n));
  std::ofstream(StampPath(folder)) << kStampVersion << " " << n << "\n";
}

}  // namespace bench
