# The whole set-up: `make run` builds and starts the program, `make test` builds and runs every test.
BUILD ?= build
JOBS ?= $(shell nproc)
CMAKE_FLAGS ?=

.PHONY: all deps configure build run test format clean install package screenshot

all: build

deps:
	@bash tools/install-deps.sh

$(BUILD)/build.ninja:
	cmake -S . -B $(BUILD) -G Ninja $(CMAKE_FLAGS)

configure: deps $(BUILD)/build.ninja

build: configure
	cmake --build $(BUILD) -j $(JOBS)

# The program keeps its data in its own folder. `make run` starts a copy of the fresh build from
# the data folder, so a rebuild or a clean replaces the program and never the data.
DATA_DIR ?= $(HOME)/.local/share/ledgerly

run: build
	@mkdir -p "$(DATA_DIR)"
	@rm -f "$(DATA_DIR)/ledgerly" && cp $(BUILD)/ledgerly "$(DATA_DIR)/ledgerly"
	cd "$(DATA_DIR)" && ./ledgerly

# Into /usr/local (PREFIX=... to change); DESTDIR works as usual.
PREFIX ?= /usr/local
install: build
	cmake --install $(BUILD) --prefix $(PREFIX)

# A .deb in $(BUILD)/.
package: build
	cd $(BUILD) && cpack -G DEB

# The picture of the main window in docs/, taken under Xvfb.
screenshot: build
	bash tests/desktop/screenshot.sh $(BUILD) docs/main-window.png

test: build
	cd $(BUILD) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS)

format:
	clang-format -i $$(git ls-files '*.cpp' '*.h')

clean:
	rm -rf $(BUILD)
