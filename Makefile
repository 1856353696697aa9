# vantrel2: the everyday commands.
#
#   make demo      build, then play the member in a simulated room (real time)
#   make test      everything that can run on this machine
#   make build     the program, tests and benchmarks into build/
#   make win       vantrel2.exe and aolhost.exe: build-win/ (64-bit Windows)
#                  and build-win32/ (32-bit Windows, for old machines),
#                  stripped (WIN_SYMBOLS=ON keeps the symbols)
#   make layers-check  every include runs down the layers of
#                  docs/architecture.md; no source file over 400 lines
#   make imports-check  the Windows programs import only what Windows XP SP3
#                  (32-bit) and Vista (64-bit) have (tests/imports)
#   make wine-test the scenario scripts marked for Wine, played by aolhost.exe
#                  against vantrel2.exe under Wine (the Linux build makes
#                  their MP3 files)
#   make dist      the release: dist/vantrel2-VERSION-win32.zip and -win64.zip
#                  and dist/SHA256SUMS, the same bytes from the same commit
#   make dist-test the release made twice and checked, and its program run
#                  under Wine from a folder it cannot write to
#   make format    rewrite the sources in the house style (.clang-format)
#   make deps      install what the above need (Debian; only what is missing)
#   make clean
#
# CMake and Ninja do the real work; this file only strings the steps together.

JOBS  ?= $(shell nproc 2>/dev/null || echo 2)
CMAKE ?= cmake
CTEST ?= ctest
ARGS  ?=
WIN_SYMBOLS ?= OFF

BUILD_DIR := build
ASAN_DIR  := build-asan
WIN_DIR   := build-win
WIN32_DIR := build-win32

# The steps that test calls itself. Through a variable of its own, so that
# `make -n test` only prints them: a line that names $(MAKE) itself would run
# under -n, the Wine tier with it.
SUBMAKE = $(MAKE) --no-print-directory

# Benchmarks are compiled whenever there are any to compile.
BENCH := $(if $(wildcard bench/*_bench.cpp),ON,OFF)

FORMAT_DIRS  := src aolsim app tests bench fuzz
FORMAT_FILES  = $(sort $(shell find $(wildcard $(FORMAT_DIRS)) -type f \
                  \( -name '*.cpp' -o -name '*.h' \) 2>/dev/null))

# The steps depend on each other's results; keep them in order under make -j.
.NOTPARALLEL:
.DEFAULT_GOAL := build
.PHONY: deps build demo test asan-configure asan-build asan-test bench-smoke win win64 win32 \
        imports-check \
        layers-check wine-test dist dist-test format \
        format-check clean

deps:
	@bash tools/install-deps

build: deps
	$(CMAKE) -S . -B $(BUILD_DIR) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	  -DV2_BENCH=$(BENCH)
	$(CMAKE) --build $(BUILD_DIR) -j $(JOBS)

# Real time: each line typed is a command, and any other line is said in the
# room (type `date`). Ctrl-D ends it.
demo: build
	$(BUILD_DIR)/vantrel2-sim $(ARGS)

# Formatting first: it takes a second and needs no build. One Linux build
# serves it all: the sanitizer build runs the tests and the benchmarks'
# smoke run, and makes the Wine tier's tracks. The Wine tier spends its
# time waiting on real time, so it starts as soon as the 64-bit programs
# and the tracks are there and runs beside the rest (its output comes
# after theirs); its scripts are made to pass on a busy machine.
test: deps format-check layers-check win64 asan-configure
	$(CMAKE) --build $(ASAN_DIR) -j $(JOBS) --target make-track
	@echo "V2_BUILD_DIR=$(ASAN_DIR) tests/wine/run-tests (beside what follows)"
	@V2_BUILD_DIR=$(ASAN_DIR) tests/wine/run-tests >$(ASAN_DIR)/wine-test.log \
	  2>&1 & wine=$$!; \
	  $(SUBMAKE) asan-test bench-smoke imports-check; \
	  others=$$?; wait $$wine; wine_status=$$?; \
	  echo "tests/wine/run-tests:"; cat $(ASAN_DIR)/wine-test.log; \
	  [ $$others -eq 0 ] && [ $$wine_status -eq 0 ]
	$(SUBMAKE) dist-test
	@echo "make test: all passed"

asan-configure: deps
	$(CMAKE) -S . -B $(ASAN_DIR) -G Ninja -DCMAKE_BUILD_TYPE=Debug \
	  -DV2_SANITIZE=ON -DV2_BENCH=$(BENCH) -DCMAKE_UNITY_BUILD=ON

asan-build: asan-configure
	$(CMAKE) --build $(ASAN_DIR) -j $(JOBS)

# Unit tests and every scenario script, under the address and undefined
# behaviour sanitizers. The timeout only keeps a hung test from hanging the
# run; no test measures time.
asan-test: asan-build
	ASAN_OPTIONS=detect_stack_use_after_return=1:strict_string_checks=1 \
	UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
	  $(CTEST) --test-dir $(ASAN_DIR) --output-on-failure -j $(JOBS) \
	  --timeout 120

# A short run, to see that every benchmark still runs; the numbers mean
# little at this length. It runs them in the sanitizer build, which the
# tests have built already.
bench-smoke: asan-build
	@if [ -x $(ASAN_DIR)/bench/benchmarks ]; then \
	  echo "V2_BENCH_SMOKE=1 $(ASAN_DIR)/bench/benchmarks --benchmark_min_time=0.01"; \
	  V2_BENCH_SMOKE=1 $(ASAN_DIR)/bench/benchmarks --benchmark_min_time=0.01; \
	else \
	  echo "bench-smoke: no benchmarks built, nothing to run"; \
	fi

# Static executables that need nothing beside them but Windows itself,
# stripped; WIN_SYMBOLS=ON keeps their symbols for a debugger. They are
# unity builds (a few sources compiled as one), as the sanitizer build is:
# a build from nothing takes about half the time.
win: win64 win32

win64: deps
	$(CMAKE) -S . -B $(WIN_DIR) -G Ninja -DCMAKE_BUILD_TYPE=Release \
	  -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64-x86_64.cmake \
	  -DCMAKE_UNITY_BUILD=ON -DV2_WIN_SYMBOLS=$(WIN_SYMBOLS)
	$(CMAKE) --build $(WIN_DIR) -j $(JOBS)

win32: deps
	$(CMAKE) -S . -B $(WIN32_DIR) -G Ninja -DCMAKE_BUILD_TYPE=Release \
	  -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64-i686.cmake \
	  -DCMAKE_UNITY_BUILD=ON -DV2_WIN_SYMBOLS=$(WIN_SYMBOLS)
	$(CMAKE) --build $(WIN32_DIR) -j $(JOBS)

# The layers: a second, and no build needed.
layers-check:
	tests/layers/run

# Each shipped executable against the list of what its oldest Windows has.
imports-check: win
	tests/imports/run $(WIN_DIR) $(WIN32_DIR)

# Real windows, real messages, real time: each script runs for some seconds.
# The Linux build that makes the tracks is the sanitizer build.
wine-test: asan-build win64
	V2_BUILD_DIR=$(ASAN_DIR) tests/wine/run-tests

# What a member downloads, made from the stripped programs whatever
# WIN_SYMBOLS says (tools/make-dist tells what is in it).
dist: override WIN_SYMBOLS := OFF
dist: win
	tools/make-dist $(WIN_DIR) $(WIN32_DIR) dist

# Quick: it reuses the Windows builds, and plays one script under Wine.
dist-test: override WIN_SYMBOLS := OFF
dist-test: win
	tests/dist/check-dist $(WIN_DIR) $(WIN32_DIR)

format-check: deps
	@if [ -n "$(strip $(FORMAT_FILES))" ]; then \
	  clang-format --dry-run --Werror $(FORMAT_FILES) || { \
	    echo "format-check: run 'make format' to fix the files above" >&2; \
	    exit 1; }; \
	fi

format: deps
	@if [ -n "$(strip $(FORMAT_FILES))" ]; then \
	  clang-format -i $(FORMAT_FILES); \
	fi

clean:
	rm -rf $(BUILD_DIR) $(ASAN_DIR) $(WIN_DIR) $(WIN32_DIR) dist
