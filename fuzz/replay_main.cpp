// SPDX-License-Identifier: GPL-3.0-or-later
// ledgerly-fuzz-replay TARGET FILE-OR-FOLDER...
// Runs every file through the fuzz entry of TARGET, as the fuzzer would, so that the corpora keep
// guarding in an ordinary build. A broken rule stops the process, as it does in the fuzzer.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "fuzz/Targets.h"

namespace fs = std::filesystem;

int main(int argc, char** argv) {
  if (argc < 3) {
    std::cerr << "usage: ledgerly-fuzz-replay TARGET FILE-OR-FOLDER...\n";
    return 2;
  }
  const fuzz::Entry entry = fuzz::FindTarget(argv[1]);
  if (entry == nullptr) {
    std::cerr << "no fuzz target " << argv[1] << "\n";
    return 2;
  }
  // The paths are made absolute first: the entries work from a folder of their own.
  std::vector<fs::path> files;
  for (int i = 2; i < argc; ++i) {
    const fs::path p = fs::absolute(argv[i]);
    if (fs::is_directory(p)) {
      for (const auto& e : fs::recursive_directory_iterator(p))
        if (e.is_regular_file()) files.push_back(e.path());
    } else if (fs::is_regular_file(p)) {
      files.push_back(p);
    } else {
      std::cerr << "cannot read " << p << "\n";
      return 2;
    }
  }
  std::sort(files.begin(), files.end());
  std::vector<std::string> inputs;
  for (const fs::path& f : files) {
    std::ifstream in(f, std::ios::binary);
    inputs.emplace_back(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  }
  for (std::size_t i = 0; i < files.size(); ++i) {
    std::cout << files[i].filename().string() << std::endl;
    entry(reinterpret_cast<const std::uint8_t*>(inputs[i].data()), inputs[i].size());
  }
  std::cout << files.size() << " inputs replayed through " << argv[1] << std::endl;
  return files.empty() ? 1 : 0;
}
