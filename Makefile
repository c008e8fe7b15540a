# Brevane: what users and CI call. Every target installs what it needs first (a no-op when all is there).
BUILD ?= build/release
JOBS ?= $(shell nproc)

.PHONY: all deps build demo bench test check format-check include-check tidy tidy-changed asan lines clean

all: build

deps:
	@scripts/install-deps

build: deps
	@cmake -S . -B $(BUILD) -G Ninja -DCMAKE_BUILD_TYPE=Release > /dev/null
	@cmake --build $(BUILD) -j $(JOBS)

demo: build
	@scripts/demo $(BUILD)

bench: deps
	@cmake -S . -B build/bench -G Ninja -DCMAKE_BUILD_TYPE=Release -DBREVANE_BENCH=ON > /dev/null
	@cmake --build build/bench -j $(JOBS) --target benches
	@build/bench/bench/benches

test: build
	@ctest --test-dir $(BUILD) --output-on-failure -j $(JOBS)

check: deps format-check include-check tidy-changed asan

format-check:
	@scripts/check-format

include-check:
	@scripts/check-includes

tidy: build
	@scripts/tidy $(BUILD) all

tidy-changed: build
	@scripts/tidy $(BUILD) changed

asan: deps
	@cmake -S . -B build/asan -G Ninja -DCMAKE_BUILD_TYPE=Debug -DBREVANE_SANITIZE=ON > /dev/null
	@cmake --build build/asan -j $(JOBS)
	@ctest --test-dir build/asan --output-on-failure -j $(JOBS)

lines:
	@scripts/lines

clean:
	@rm -rf build out
