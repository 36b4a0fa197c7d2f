# SPDX-License-Identifier: GPL-3.0-or-later
# The whole set-up: `make run` builds and starts the program, `make test` builds and runs every test.
# Each of the two installs the Debian packages it needs first, and only those that are missing
# (tools/install-deps.sh); a plain `make` or `make build` installs nothing.
BUILD ?= build
JOBS ?= $(shell nproc)
CMAKE_FLAGS ?=

.PHONY: all deps deps-package configure build run test golden format clean deps-robustness test-asan soak soak-valgrind fuzz install package check-package screenshot

all: build

deps:
	@bash tools/install-deps.sh

deps-package:
	@bash tools/install-deps.sh package

$(BUILD)/build.ninja:
	cmake -S . -B $(BUILD) -G Ninja $(CMAKE_FLAGS)

configure: $(BUILD)/build.ninja

build: configure
	cmake --build $(BUILD) -j $(JOBS)

# The program keeps its data in its own folder. `make run` starts a copy of the fresh build from
# the data folder, so a rebuild or a clean replaces the program and never the data.
DATA_DIR ?= $(HOME)/.local/share/ledgerly

run: deps
	@$(MAKE) --no-print-directory build
	@mkdir -p "$(DATA_DIR)"
	@rm -f "$(DATA_DIR)/ledgerly" && cp $(BUILD)/ledgerly "$(DATA_DIR)/ledgerly"
	cd "$(DATA_DIR)" && ./ledgerly

test: deps
	@$(MAKE) --no-print-directory build
	cd $(BUILD) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS)

# Into /usr/local (PREFIX=... to change); DESTDIR works as usual.
PREFIX ?= /usr/local
install: build
	cmake --install $(BUILD) --prefix $(PREFIX)

# A .deb and its -dbgsym package in $(BUILD)/.
package: build
	cd $(BUILD) && cpack -G DEB

# The package as a packager checks it: lintian, AppStream, the desktop entry, and the program
# unpacked from the package started once. Not part of `make test`.
check-package: deps-package
	@$(MAKE) --no-print-directory build
	bash tools/check-package.sh $(BUILD)

# The pictures in docs/: the main window and a dialog over it under Xvfb, and a
# printed invoice at 72 and at 150 dpi.
screenshot: build
	bash tools/screenshot.sh $(BUILD) docs

# The snapshots of every window and page written anew into tests/golden/, for `git diff` to show.
# Look at what changed before committing it: the page scenarios print to PDF too, and their kept
# folders (named below) hold the PDFs.
golden: build
	QT_QPA_PLATFORM=offscreen ./$(BUILD)/ledgerly-scenario --golden --keep tests/snapshots/*.scn

format:
	clang-format -i $$(git ls-files '*.cpp' '*.h')

clean:
	rm -rf $(BUILD)

# Speed against the floor: prints the table and writes bench/results.md. Not part of `make test`.
.PHONY: bench
bench: deps configure
	cmake -S . -B $(BUILD) -DLEDGERLY_BENCH=ON >/dev/null
	cmake --build $(BUILD) -j $(JOBS) --target bench_driver bench_startup_ledgerly bench_startup_floor bench_headless
	./$(BUILD)/bench/bench_driver --out bench/results.md

# ---- Robustness: sanitizers, fuzzing and the soak. They need more than `make test` does; their
# packages come from `tools/install-deps.sh robustness`.
ASAN_BUILD ?= build-asan
FUZZ_BUILD ?= build-fuzz
FUZZ_SECONDS ?= 600
FUZZ_TARGETS ?= invoicefile prefsfile namefile stockfile text
SOAK_CYCLES ?= 10000
FUZZ_CXXFLAGS = -g -O1 -fno-omit-frame-pointer -fsanitize=fuzzer-no-link,address,undefined \
  -fno-sanitize-recover=undefined
SANITIZER_ENV = QT_QPA_PLATFORM=offscreen ASAN_OPTIONS=detect_leaks=1 \
  UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
  LSAN_OPTIONS=suppressions=$(CURDIR)/tools/lsan.supp:print_suppressions=0

deps-robustness:
	@bash tools/install-deps.sh robustness

$(ASAN_BUILD)/build.ninja:
	cmake -S . -B $(ASAN_BUILD) -G Ninja -DLEDGERLY_SANITIZE=ON $(CMAKE_FLAGS)

# Every test, unit and scenario, built with AddressSanitizer and UndefinedBehaviorSanitizer.
test-asan: deps $(ASAN_BUILD)/build.ninja
	cmake --build $(ASAN_BUILD) -j $(JOBS)
	cd $(ASAN_BUILD) && $(SANITIZER_ENV) ctest --output-on-failure -j $(JOBS)

# Ten thousand invoices' lives in one program state, under the sanitizers: no leak, a flat heap.
# A small quarantine for freed memory, so that the resident size shows the heap, not the
# quarantine filling up.
soak: deps $(ASAN_BUILD)/build.ninja
	cmake --build $(ASAN_BUILD) -j $(JOBS) --target ledgerly-soak
	$(SANITIZER_ENV) ASAN_OPTIONS=detect_leaks=1:quarantine_size_mb=16 \
	  ./$(ASAN_BUILD)/ledgerly-soak $(SOAK_CYCLES)

# The same under valgrind, on the ordinary build (about ten times slower).
soak-valgrind: deps-robustness $(BUILD)/build.ninja
	cmake --build $(BUILD) -j $(JOBS) --target ledgerly-soak
	QT_QPA_PLATFORM=offscreen valgrind --leak-check=full --errors-for-leak-kinds=definite \
	  --suppressions=tools/valgrind.supp --error-exitcode=1 ./$(BUILD)/ledgerly-soak $(SOAK_CYCLES)

# Each fuzz target for FUZZ_SECONDS, built with clang and libFuzzer in a build folder of its own.
fuzz: deps-robustness
	cmake -S . -B $(FUZZ_BUILD) -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DLEDGERLY_FUZZ=ON \
	  -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_FLAGS="$(FUZZ_CXXFLAGS)"
	cmake --build $(FUZZ_BUILD) -j $(JOBS) --target fuzzers
	bash fuzz/run.sh $(FUZZ_BUILD)/fuzz $(FUZZ_SECONDS) $(FUZZ_TARGETS)
