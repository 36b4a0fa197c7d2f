// SPDX-License-Identifier: GPL-3.0-or-later
// `make bench`: makes the fixtures, runs every case against its floor, prints the table and
// writes it to results.md. Benchmarks are not tests: nothing here is run by `make test`.
//
//   bench_driver [--sizes 0,1000,10000,100000] [--runs R] [--data DIR] [--out FILE] [--no-xvfb]
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fstream>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "fixture.h"
#include "stats.h"

extern char** environ;

namespace {

using bench::Median;
using bench::Now;

struct Options {
  std::vector<int> sizes = {0, 1000, 10000, 100000};
  int runs = 15;
  std::string data;
  std::string out;
  bool xvfb = true;
};

std::string BinDir() {
  char buf[4096];
  const ssize_t n = ::readlink("/proc/self/exe", buf, sizeof buf - 1);
  std::string exe(buf, n > 0 ? static_cast<std::size_t>(n) : 0);
  return exe.substr(0, exe.rfind('/'));
}

std::string LoadAverage() {
  std::ifstream in("/proc/loadavg");
  std::string one, five, fifteen;
  in >> one >> five >> fifteen;
  return one + " " + five + " " + fifteen;
}

std::string CpuModel() {
  std::ifstream in("/proc/cpuinfo");
  for (std::string line; std::getline(in, line);) {
    if (line.rfind("model name", 0) == 0) return line.substr(line.find(':') + 2);
  }
  return "unknown";
}

// ---- Child processes ------------------------------------------------------------------------

struct Run {
  bool ok = false;
  double seconds = 0;
  long peakKiB = 0;
  std::string output;
};

// Runs a program with extra environment variables; its standard output is captured (when asked),
// its errors go to the log. The wall time is from the spawn to the reaping, the peak memory is the
// child's own maximum resident set.
Run Spawn(const std::vector<std::string>& args, const std::map<std::string, std::string>& env,
          const std::string& log, bool capture) {
  std::vector<std::string> envStrings;
  for (char** e = environ; *e; ++e) {
    const std::string s = *e;
    if (!env.count(s.substr(0, s.find('=')))) envStrings.push_back(s);
  }
  for (const auto& [k, v] : env) envStrings.push_back(k + "=" + v);
  std::vector<char*> argv, envp;
  for (const auto& a : args) argv.push_back(const_cast<char*>(a.c_str()));
  argv.push_back(nullptr);
  for (auto& e : envStrings) envp.push_back(e.data());
  envp.push_back(nullptr);

  int pipefd[2] = {-1, -1};
  if (capture && ::pipe2(pipefd, O_CLOEXEC) != 0) return {};
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
  if (capture) {
    posix_spawn_file_actions_adddup2(&actions, pipefd[1], 1);
  } else {
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
  }
  posix_spawn_file_actions_addopen(&actions, 2, log.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0644);

  Run run;
  const double t0 = Now();
  pid_t pid = -1;
  const int rc = posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), envp.data());
  posix_spawn_file_actions_destroy(&actions);
  if (capture) ::close(pipefd[1]);
  if (rc != 0) {
    if (capture) ::close(pipefd[0]);
    return run;
  }
  if (capture) {
    char buf[4096];
    for (ssize_t n; (n = ::read(pipefd[0], buf, sizeof buf)) > 0;) run.output.append(buf, n);
    ::close(pipefd[0]);
  }
  int status = 0;
  rusage usage{};
  ::wait4(pid, &status, 0, &usage);
  run.seconds = Now() - t0;
  run.peakKiB = usage.ru_maxrss;
  run.ok = WIFEXITED(status) && WEXITSTATUS(status) == 0;
  return run;
}

// One long-lived Xvfb for all the runs under X: starting one per run would cost more than the
// program's start itself.
struct Xvfb {
  pid_t pid = -1;
  std::string display;

  bool Start(const std::string& log) {
    int fds[2];
    if (::pipe(fds) != 0) return false;
    const std::string fd = std::to_string(fds[1]);
    std::vector<std::string> args = {"/usr/bin/Xvfb", "-displayfd", fd, "-screen", "0", "1280x1024x24",
                                     "-nolisten", "tcp", "-noreset"};
    std::vector<char*> argv;
    for (auto& a : args) argv.push_back(a.data());
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addclose(&actions, fds[0]);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 2, log.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0644);
    const int rc = posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    ::close(fds[1]);
    if (rc != 0) {
      ::close(fds[0]);
      pid = -1;
      return false;
    }
    pollfd p{fds[0], POLLIN, 0};
    std::string number;
    while (::poll(&p, 1, 10000) > 0) {
      char c;
      if (::read(fds[0], &c, 1) != 1 || c == '\n') break;
      number.push_back(c);
    }
    ::close(fds[0]);
    if (number.empty()) {
      Stop();
      return false;
    }
    display = ":" + number;
    return true;
  }
  void Stop() {
    if (pid <= 0) return;
    ::kill(pid, SIGTERM);
    ::waitpid(pid, nullptr, 0);
    pid = -1;
  }
};

// ---- Results --------------------------------------------------------------------------------

struct Row {
  std::string name;  // "start-up, offscreen", "save", ...
  int n = 0;
  double ours = 0, floor = 0;
  long peakOurs = 0, peakFloor = 0;  // KiB; 0 where it does not apply
  double ratio = 0, memRatio = 0;    // medians of the ratios of the pairs
  int runs = 0;
  std::string note;  // why a row has no figures
  std::string goal;  // "≤ 1.3×, met" and the like
  bool missed = false;
};

std::string Time(double s) {
  char buf[32];
  if (s <= 0) return "-";
  if (s < 1e-3) {
    std::snprintf(buf, sizeof buf, "%.1f µs", s * 1e6);
  } else if (s < 1) {
    std::snprintf(buf, sizeof buf, "%.1f ms", s * 1e3);
  } else {
    std::snprintf(buf, sizeof buf, "%.2f s", s);
  }
  return buf;
}

std::string MiB(long kib) {
  if (kib <= 0) return "";
  char buf[32];
  std::snprintf(buf, sizeof buf, "%.1f MiB", kib / 1024.0);
  return buf;
}

std::string Ratio(double r) {
  if (r <= 0) return "-";
  char buf[32];
  std::snprintf(buf, sizeof buf, "%.2f×", r);
  return buf;
}

// A goal on a ratio: met or missed, with the figure.
void Goal(Row& row, const char* what, double ratio, double limit) {
  char buf[96];
  const bool met = ratio <= limit;
  std::snprintf(buf, sizeof buf, "%s%s ≤ %.1f×: %s", row.goal.empty() ? "" : "; ", what, limit,
                met ? "met" : "MISSED");
  row.goal += buf;
  row.missed = row.missed || !met;
}

void SetGoals(std::vector<Row>& rows) {
  for (Row& r : rows) {
    if (r.ratio <= 0) continue;
    const double ratio = r.ratio;
    const bool startup = r.name.rfind("start-up", 0) == 0;
    if (r.n == 10000) {
      if (startup) Goal(r, "time", ratio, 1.3);
      if (r.name == "save") Goal(r, "time", ratio, 2.0);
      if (r.name == "load") Goal(r, "time", ratio, 2.0);
      if (r.name == "key") Goal(r, "time", ratio, 10.0);
      if (r.name == "print") Goal(r, "time", ratio, 1.5);
    }
    if (r.n == 100000 && startup) {
      Goal(r, "time", ratio, 1.5);
      if (r.memRatio > 0) Goal(r, "memory", r.memRatio, 1.5);
    }
  }
}

std::string Table(const std::vector<Row>& rows) {
  std::ostringstream t;
  t << "| case | N | ours (median) | floor (median) | ratio | peak memory, ours | peak memory, floor | memory ratio | runs "
       "| goal |\n";
  t << "|---|---:|---:|---:|---:|---:|---:|---:|---:|---|\n";
  for (const Row& r : rows) {
    t << "| " << r.name << " | " << r.n << " | ";
    if (!r.note.empty()) {
      t << r.note << " | | | | | | | |\n";
      continue;
    }
    t << Time(r.ours) << " | " << Time(r.floor) << " | " << Ratio(r.ratio) << " | " << MiB(r.peakOurs) << " | "
      << MiB(r.peakFloor) << " | " << (r.memRatio > 0 ? Ratio(r.memRatio) : "") << " | " << r.runs << " | "
      << r.goal << " |\n";
  }
  return t.str();
}

const Row* Find(const std::vector<Row>& rows, const std::string& name, int n) {
  for (const Row& r : rows)
    if (r.name == name && r.n == n && r.note.empty()) return &r;
  return nullptr;
}

// ---- Cases ----------------------------------------------------------------------------------

Row StartupCase(const std::string& name, const std::string& bin, const std::string& folder, int n, int runs,
                const std::map<std::string, std::string>& env, const std::string& log) {
  Row row;
  row.name = name;
  row.n = n;
  const std::vector<std::string> ours = {bin + "/bench_startup_ledgerly", folder};
  const std::vector<std::string> floor = {bin + "/bench_startup_floor", folder};
  std::vector<double> to, tf, ratios;
  std::vector<double> mo, mf, memRatios;
  // One pair first to warm the caches, not counted.
  Spawn(ours, env, log, false);
  Spawn(floor, env, log, false);
  for (int r = 0; r < runs; ++r) {
    Run a, b;
    if (r % 2 == 0) {
      a = Spawn(ours, env, log, false);
      b = Spawn(floor, env, log, false);
    } else {
      b = Spawn(floor, env, log, false);
      a = Spawn(ours, env, log, false);
    }
    if (!a.ok || !b.ok) {
      row.note = std::string("failed (") + (a.ok ? "floor" : "ours") + "), see " + log;
      return row;
    }
    to.push_back(a.seconds), tf.push_back(b.seconds);
    mo.push_back(a.peakKiB), mf.push_back(b.peakKiB);
    ratios.push_back(a.seconds / b.seconds);
    memRatios.push_back(static_cast<double>(a.peakKiB) / static_cast<double>(b.peakKiB));
  }
  row.ratio = Median(ratios), row.memRatio = Median(memRatios);
  row.ours = Median(to), row.floor = Median(tf);
  row.peakOurs = static_cast<long>(Median(mo)), row.peakFloor = static_cast<long>(Median(mf));
  row.runs = runs;
  return row;
}

std::vector<Row> HeadlessCases(const std::string& bin, const std::string& folder, int n, int runs,
                               const std::string& log) {
  const Run run = Spawn({bin + "/bench_headless", folder, std::to_string(n), std::to_string(runs)},
                        {{"QT_QPA_PLATFORM", "offscreen"}}, log, true);
  std::vector<Row> rows;
  std::istringstream in(run.output);
  for (std::string line; std::getline(in, line);) {
    std::istringstream words(line);
    std::string kind, name;
    int size = 0;
    words >> kind >> name >> size;
    Row row;
    row.name = name;
    row.n = size;
    if (kind == "RESULT") {
      words >> row.ours >> row.floor >> row.runs >> row.ratio;
    } else if (kind == "SKIP") {
      std::getline(words, row.note);
      row.note = "n/a:" + row.note;
    } else {
      continue;
    }
    rows.push_back(row);
  }
  if (!run.ok) {
    Row failed;
    failed.name = "headless cases";
    failed.n = n;
    failed.note = "failed, see " + log;
    rows.push_back(failed);
  }
  return rows;
}

Options Parse(int argc, char** argv) {
  Options o;
  for (int i = 1; i < argc; ++i) {
    const std::string a = argv[i];
    auto next = [&]() -> std::string { return i + 1 < argc ? argv[++i] : ""; };
    if (a == "--sizes") {
      o.sizes.clear();
      std::istringstream in(next());
      for (std::string s; std::getline(in, s, ',');) o.sizes.push_back(std::atoi(s.c_str()));
    } else if (a == "--runs") {
      o.runs = std::max(1, std::atoi(next().c_str()));
    } else if (a == "--data") {
      o.data = next();
    } else if (a == "--out") {
      o.out = next();
    } else if (a == "--no-xvfb") {
      o.xvfb = false;
    } else {
      std::fprintf(stderr, "unknown argument %s\n", a.c_str());
      std::exit(2);
    }
  }
  return o;
}

}  // namespace

int main(int argc, char** argv) {
  Options o = Parse(argc, argv);
  const std::string bin = BinDir();
  if (o.data.empty()) o.data = bin + "/data";
  ::mkdir(o.data.c_str(), 0755);
  const std::string log = o.data + "/bench.log";
  const double started = Now();
  const std::string loadBefore = LoadAverage();
  std::printf("load average before: %s\n", loadBefore.c_str());

  std::map<int, std::string> folders;
  for (int n : o.sizes) {
    folders[n] = o.data + "/n" + std::to_string(n);
    const double t0 = Now();
    bench::MakeFixture(folders[n], n);
    std::printf("fixture N=%d ready (%.1f s)\n", n, Now() - t0);
    std::fflush(stdout);
  }

  std::vector<Row> rows;
  const std::map<std::string, std::string> offscreen = {{"QT_QPA_PLATFORM", "offscreen"}};
  for (int n : o.sizes) {
    rows.push_back(StartupCase("start-up, offscreen", bin, folders[n], n, o.runs, offscreen, log));
    std::printf("start-up offscreen N=%d done\n", n);
    std::fflush(stdout);
  }
  Xvfb x;
  if (o.xvfb && x.Start(log)) {
    const std::map<std::string, std::string> xcb = {{"QT_QPA_PLATFORM", "xcb"}, {"DISPLAY", x.display}};
    for (int n : o.sizes) {
      rows.push_back(StartupCase("start-up, Xvfb", bin, folders[n], n, o.runs, xcb, log));
      std::printf("start-up Xvfb N=%d done\n", n);
      std::fflush(stdout);
    }
    x.Stop();
  } else {
    Row row;
    row.name = "start-up, Xvfb";
    row.note = o.xvfb ? "n/a: Xvfb did not start" : "n/a: not asked for";
    rows.push_back(row);
  }
  std::map<std::string, std::vector<Row>> byCase;
  for (int n : o.sizes) {
    for (Row& r : HeadlessCases(bin, folders[n], n, o.runs, log)) byCase[r.name].push_back(r);
    std::printf("headless cases N=%d done\n", n);
    std::fflush(stdout);
  }
  for (const char* name : {"save", "load", "key", "print", "headless cases"})
    for (Row& r : byCase[name]) rows.push_back(r);
  SetGoals(rows);

  // Saving must grow no faster than the number of files.
  std::string growth;
  if (const Row *a = Find(rows, "save", 10000), *b = Find(rows, "save", 100000); a && b) {
    char buf[256];
    const double g = b->ours / a->ours, gf = b->floor / a->floor;
    std::snprintf(buf, sizeof buf,
                  "Saving from N = 10,000 to 100,000 (10× the files): ours grows %.2f×, the floor %.2f×: %s.", g,
                  gf, g <= 10.0 ? "no faster than the files, met" : "more than 10×, MISSED");
    growth = buf;
  }

  const std::string loadAfter = LoadAverage();
  const std::string table = Table(rows);
  std::printf("\n%s\n%s\nload average before %s, after %s; %.0f s in all\n", table.c_str(), growth.c_str(),
              loadBefore.c_str(), loadAfter.c_str(), Now() - started);

  if (!o.out.empty()) {
    std::time_t now = std::time(nullptr);
    char date[64];
    std::strftime(date, sizeof date, "%Y-%m-%d %H:%M", std::localtime(&now));
    std::ofstream md(o.out);
    md << "# Benchmark results\n\n"
       << "Written by `make bench` (bench/driver.cpp) on " << date << ". Machine: " << ::sysconf(_SC_NPROCESSORS_ONLN)
       << " × " << CpuModel() << "; load average " << loadBefore << " before the run, " << loadAfter
       << " after. How the figures are taken: docs/performance.md.\n\n"
       << "Each row runs ours and its floor in turn in the same run, the first of the pair alternating; "
          "the times are medians over the runs, and the ratios are the medians of the ratios of the "
          "pairs, each pair having run side by side under the same load. Start-up is a whole process "
          "from its spawn to its end after the main window's first paint with the list filled; peak "
          "memory is the process's maximum resident set. The other cases run headless, one operation "
          "at a time.\n\n"
       << table << "\n"
       << (growth.empty() ? "" : growth + "\n");
    bool anyMissed = false;
    for (const Row& r : rows) anyMissed = anyMissed || r.missed;
    md << "\n" << (anyMissed ? "Some goals are missed in this run; docs/performance.md says why.\n"
                             : "Every goal is met in this run.\n");
    std::printf("written to %s\n", o.out.c_str());
  }
  return 0;
}
