// SPDX-License-Identifier: GPL-3.0-or-later
// Medians and the clock, shared by the benchmark programs.
#pragma once

#include <algorithm>
#include <chrono>
#include <vector>

namespace bench {

inline double Now() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

inline double Median(std::vector<double> v) {
  if (v.empty()) return 0;
  std::sort(v.begin(), v.end());
  const std::size_t m = v.size() / 2;
  return v.size() % 2 ? v[m] : (v[m - 1] + v[m]) / 2;
}

}  // namespace bench
