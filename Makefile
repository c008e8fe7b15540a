# Brevane: what users and CI call. Every target installs what it needs first (a no-op when all is there).
BUILD ?= build/release
JOBS ?= $(shell nproc)
# Tests make many small stores; they are quicker where nothing waits for a disk.
SCRATCH := $(shell [ -w /dev/shm ] && echo /dev/shm || echo /tmp)

.PHONY: all deps build demo run screenshots demo-summary bench test check format-check include-check tidy tidy-changed asan fuzz lines clean

all: build

deps:
	@scripts/install-deps

build: deps
	@cmake -S . -B $(BUILD) -G Ninja -DCMAKE_BUILD_TYPE=Release > /dev/null
	@cmake --build $(BUILD) -j $(JOBS)

demo: build
	@scripts/demo $(BUILD)

demo-summary: build
	@scripts/demo-summary $(BUILD)

# The desktop program on a sample store that stays in out/run.
run: build
	@[ -d out/run ] || $(BUILD)/samples/samplestore out/run --sales 720 --days 7 --seed 1
	@XDG_CONFIG_HOME=$(CURDIR)/out/run/config BREVANE_PROGRAM_FOLDER=$(CURDIR)/out/run/program $(BUILD)/src/app/brevane

screenshots: build
	@cmake --build $(BUILD) -j $(JOBS) --target brevane-screenshots
	@scripts/screenshots $(BUILD)

bench: deps
	@cmake -S . -B build/bench -G Ninja -DCMAKE_BUILD_TYPE=Release -DBREVANE_BENCH=ON > /dev/null
	@cmake --build build/bench -j $(JOBS) --target benches
	@build/bench/bench/benches

test: build
	@TMPDIR=$(SCRATCH) ctest --test-dir $(BUILD) --output-on-failure -j $(JOBS)

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
	@cmake -S . -B build/asan -G Ninja -DCMAKE_BUILD_TYPE=Debug "-DCMAKE_CXX_FLAGS_DEBUG=-g1 -O1" -DBREVANE_SANITIZE=ON > /dev/null
	@cmake --build build/asan -j $(JOBS)
	@TMPDIR=$(SCRATCH) ctest --test-dir build/asan --output-on-failure -j $(JOBS)

fuzz: build
	@BREVANE_FUZZ_CASES=1000000 $(BUILD)/tests/test_security --gtest_filter='*.fuzz'

lines:
	@scripts/lines

clean:
	@rm -rf build out
