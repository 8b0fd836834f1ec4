# Everyday commands; "make help" lists them. They install what is missing on Debian 12, and
# configure and build what they need.

PRESET ?= dev
WERROR ?= OFF
JOBS ?= $(shell nproc)
# More settings for CMake, as -DNAME=VALUE.
DEFINES ?=
TOUR ?= build/tour
FUZZ_SECONDS ?= 30

.DEFAULT_GOAL := help
.PHONY: run test tour bench fuzz lint check format clean help

define compile # preset, targets, further options
	@cmake --preset $(1) -DTADIALOGS_WERROR=$(WERROR) $(3) $(DEFINES) >build/$(1).log || \
	    { cat build/$(1).log; exit 1; }
	cmake --build --preset $(1) -j $(JOBS) $(if $(2),--target $(2))
endef

# The terminal and its tour alone need no test or benchmark packages.
define compile-program # target
	tools/install-deps
	$(call compile,release,$(1),-DTADIALOGS_TESTS=OFF -DTADIALOGS_BENCH=OFF)
endef

run: | build ## build the terminal and open it; without a display, make tour
ifeq ($(DISPLAY)$(WAYLAND_DISPLAY),)
	@echo "There is no display here, so the tour takes pictures of the terminal instead."
	@$(MAKE) --no-print-directory tour
else
	$(call compile-program,terminal)
	build/release/bin/terminal
endif

test: | build ## build and run every test (PRESET=dev, release or asan; WERROR=ON)
	tools/install-deps --test
	$(call compile,$(PRESET),,-DTADIALOGS_TESTS=ON -DTADIALOGS_BENCH=OFF)
	ctest --preset $(PRESET) -j $(JOBS)

tour: | build ## walk through the terminal without a display, pictures into TOUR=build/tour
	$(call compile-program,tour)
	build/release/bin/tour $(TOUR)
	@echo "The pictures are in $(abspath $(TOUR))"

bench: | build ## run the benchmarks
	tools/install-deps --test --bench
	$(call compile,release,bench/all,-DTADIALOGS_TESTS=ON -DTADIALOGS_BENCH=ON)
	@for bench in build/release/bin/bench_*; do \
	    echo; echo "$$bench"; QT_QPA_PLATFORM=offscreen $$bench || exit 1; \
	done

fuzz: | build ## run every fuzz target for FUZZ_SECONDS=30
	tools/install-deps --test --fuzz
	$(call compile,fuzz,fuzz/all)
	tools/fuzz $(FUZZ_SECONDS)

lint: | build ## run clang-tidy over the library and the terminal
	tools/install-deps --lint
	tools/lint

check: | build ## check formatting, layers, circles, forgotten sources and language keys
	tools/install-deps --test --bench --check
	tools/check

format: ## lay out every source with clang-format
	tools/install-deps --check
	git ls-files -co --exclude-standard '*.h' '*.cpp' | xargs clang-format -i

clean: ## remove everything that was built
	rm -rf build

build:
	@mkdir -p build

help: ## list these commands
	@sed -n 's/^\([a-z]*\):.* ## /  make \1\t/p' Makefile | expand -t 16
