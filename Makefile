# make run   builds Ludax.exe and starts it under Wine on a demo Steam folder
# make test  builds both trees and runs every test suite
SHELL := /bin/bash
JOBS ?= $(shell nproc)
NATIVE := build/native
WINDOWS := build/windows

# Debian packages the build, the tests and the demo need.
PACKAGES := cmake make g++ googletest zlib1g-dev \
            g++-mingw-w64-x86-64-posix libz-mingw-w64-dev \
            wine wine64 xvfb x11-apps x11-utils imagemagick \
            clang libclang-rt-14-dev locales osslsigncode openssl eatmydata ninja-build

.PHONY: all deps native windows test test-native test-windows test-fuzz run fuzz bench payload-art sign mutants test-share clean

# What the organiser runs after changing a file set: what ships and nothing else. The build
# machine's two tools, then Ludax.exe, whose packing step checks both sets and packs them; the
# check's errors and warnings come last, after the build's own lines, each once. No test
# program is built.
all: deps
	$(CONFIGURE_NATIVE)
	$(call NATIVE_BUILD,--target ludax-pack ludax-logo-pack)
	$(CONFIGURE_WINDOWS)
	tools/pack/build-with-findings-last $(WINDOWS) -j $(JOBS) --target Ludax

deps:
	@missing=$$(for p in $(PACKAGES); do dpkg-query -W -f='$${Status}\n' $$p 2>/dev/null | grep -q '^install ok installed' || echo $$p; done); \
	if [ -n "$$missing" ]; then \
	  echo "Installing:" $$missing; \
	  export DEBIAN_FRONTEND=noninteractive; \
	  apt-get update -qq && apt-get install -y -qq --no-install-recommends $$missing; \
	fi

CONFIGURE_NATIVE = cmake -S . -B $(NATIVE) -DCMAKE_BUILD_TYPE=Debug >/dev/null
CONFIGURE_WINDOWS = cmake -S . -B $(WINDOWS) -DCMAKE_BUILD_TYPE=Release \
  -DCMAKE_TOOLCHAIN_FILE=$(CURDIR)/cmake/mingw-w64-x86_64.cmake -DLUDAX_HOST_BIN=$(CURDIR)/$(NATIVE)/bin >/dev/null
# `make sign` writes the signed copy here; the build's own Ludax.exe stays as built.
SIGNED := $(WINDOWS)/signed/Ludax.exe
# The native tree checks and packs the sets first; when it fails (a refused set, say) the
# Windows program of an earlier build and its signed copy go too, so none is left looking current.
NATIVE_BUILD = cmake --build $(NATIVE) -j $(JOBS) $(1) || { for program in $(WINDOWS)/Ludax.exe $(SIGNED); do if [ -e $$program ]; then rm -f $$program; echo "Removed $$program, built from an earlier state"; fi; done; exit 1; }

native: deps
	$(CONFIGURE_NATIVE)
	$(call NATIVE_BUILD,)

windows: native
	$(CONFIGURE_WINDOWS)
	cmake --build $(WINDOWS) -j $(JOBS)

test-native: native
	ctest --test-dir $(NATIVE) --output-on-failure

test-windows: windows
	tests/with-wineserver ctest --test-dir $(WINDOWS) --output-on-failure

# A short bounded run of every fuzzer; `make fuzz` gives them minutes.
FUZZ_SECONDS ?= 20
test-fuzz: deps
	tests/fuzz/run-fuzzers $(FUZZ_SECONDS)

test: test-native test-windows test-fuzz

fuzz: deps
	tests/fuzz/run-fuzzers 300

# The mutation run (not part of make test): one-line faults built in and run against the tests
# that can see them; prints each verdict and the score (tests/mutants/). A list of words runs
# only the mutants whose file or text holds one: make mutants ONLY="uninstall.cpp".
mutants: deps
	tests/mutants/run $(ONLY)

# The tests' share of the C++ lines, folder by folder (tests/share).
test-share:
	tests/share

# Install and uninstall timed against a plain copy, natively and under Wine (bench/RESULTS.md).
bench: windows
	bench/run

# The stand-ins' generator, only on request: builds tools/generator on its own, reruns it into
# build/payload-art and fails unless every file it writes equals the committed one.
ART := build/payload-art
payload-art: deps
	cmake -S tools/generator -B build/generator -DCMAKE_BUILD_TYPE=Release >/dev/null
	cmake --build build/generator -j $(JOBS)
	rm -rf $(ART) && mkdir -p $(ART)
	build/generator/ludax-payload-gen $(ART)
	@cd $(ART) && files=0 differ=0; \
	for f in $$(find . -type f | sort); do \
	  files=$$((files + 1)); \
	  cmp -s "$$f" "$(CURDIR)/$$f" || { echo "differs from the committed file: $${f#./}"; differ=$$((differ + 1)); }; \
	done; \
	echo "payload-art: $$files files generated, $$differ differ from the repository"; \
	[ $$files -gt 0 ] && [ $$differ -eq 0 ]

# The demo needs only what ships and the demo's remote control.
run: all
	cmake --build $(WINDOWS) -j $(JOBS) --target ludax_demo_session
	app/demo/run-demo

# Authenticode: builds Ludax.exe and signs a copy of it with the organiser's certificate and key.
# Both are checked before anything is built.
sign:
	@if [ -z "$(CERT)" ] || [ -z "$(KEY)" ]; then \
	  echo "usage: make sign CERT=<certificate file> KEY=<private key file>" >&2; \
	  echo "  builds $(WINDOWS)/Ludax.exe and writes a signed copy of it to $(SIGNED)" >&2; exit 2; fi
	@for file in "$(CERT)" "$(KEY)"; do [ -f "$$file" ] || { echo "make sign: $$file: no such file" >&2; exit 1; }; done
	@$(MAKE) --no-print-directory all
	tools/sign/ludax-sign "$(CERT)" "$(KEY)" $(WINDOWS)/Ludax.exe $(SIGNED)

clean:
	rm -rf build
