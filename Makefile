# Developer entry points; each wraps CMake (Ninja) in its own build folder.
#
#   make demo         build the vfc tool and run it on samples/
#   make test         build everything and run every test (non-zero exit on any failure)
#   make test-asan    the same under AddressSanitizer, UndefinedBehaviorSanitizer, LeakSanitizer
#   make test-windows build for 64-bit Windows (MinGW-w64) and run every test under Wine
#   make bench        build and run the benchmarks (Release); BENCH_FLAGS go to every program,
#                     e.g. BENCH_FLAGS=--benchmark_repetitions=3 for the median of three runs
#   make fuzz         build the fuzzers with clang and run each for FUZZ_SECONDS
#   make install PREFIX=/some/where
#   make coverage     run every test on an instrumented build; line coverage of vfc/ (gcovr)
#   make docs         the API reference as HTML in $(BUILD)-docs/html (Doxygen)
#   make format       clang-format every source file
#
# WERROR=ON turns warnings into errors; CXX picks the compiler (g++ by default).

CXX        ?= g++
WERROR     ?= OFF
PREFIX     ?= /usr/local
JOBS       ?= $(shell nproc 2>/dev/null || echo 2)
FUZZ_SECONDS ?= 60
BENCH_FLAGS  ?=
BUILD      ?= build

CMAKE_CONFIGURE = cmake -G Ninja -DCMAKE_CXX_COMPILER=$(CXX) -DVFC_WERROR=$(WERROR)

# The Debian packages each kind of target needs (README lists the first set). A target that
# finds one missing installs it with apt-get when run as root, saying so, and otherwise stops
# with the command to run. Machines without dpkg are not checked.
PACKAGES       = cmake ninja-build g++ libgtest-dev pkg-config
BENCH_PACKAGES = $(PACKAGES) libbenchmark-dev libre2-dev libpcre2-dev qt6-base-dev libpoco-dev \
                 libboost-serialization-dev
FUZZ_PACKAGES  = cmake ninja-build clang libclang-rt-14-dev
# GoogleTest for Windows is built from the sources libgtest-dev installs.
WINDOWS_PACKAGES = cmake ninja-build g++-mingw-w64-x86-64 mingw-w64 wine64 libgtest-dev
define need_packages
	@command -v dpkg >/dev/null 2>&1 || exit 0; \
	missing=$$(for p in $(1); do dpkg -s $$p >/dev/null 2>&1 || printf ' %s' $$p; done); \
	[ -z "$$missing" ] && exit 0; \
	if [ "$$(id -u)" = 0 ]; then \
	    echo "make: installing the missing Debian packages:$$missing"; \
	    export DEBIAN_FRONTEND=noninteractive; \
	    apt-get update -qq && apt-get install -y -qq$$missing >/dev/null || exit 1; \
	else \
	    echo "make: missing Debian packages:$$missing" >&2; \
	    echo "make: install them with: sudo apt-get update && sudo apt-get install -y$$missing" >&2; \
	    exit 1; \
	fi
endef

.PHONY: all deps build demo test test-asan test-windows bench fuzz install coverage docs format \
	clean print-packages

all: build

deps:
	$(call need_packages,$(PACKAGES))

# The package list, for CI to compare with README's.
print-packages:
	@echo $(PACKAGES)

build: deps
	$(CMAKE_CONFIGURE) -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo
	cmake --build $(BUILD) -j $(JOBS)

demo: build
	@echo '--- vfc grep: environment-variable references in samples/paths.txt'
	$(BUILD)/tools/vfc/vfc grep -o '%[^%]+%|\$$[^$$/:\\]+' samples/paths.txt
	@echo '--- vfc grep: lines holding a URL scheme'
	$(BUILD)/tools/vfc/vfc grep '^[a-z]+://|[ "][a-z]+://' samples/paths.txt samples/notes.txt
	@echo '--- vfc grep: HTML file names, as a wildcard list'
	$(BUILD)/tools/vfc/vfc grep -list '*.htm;*.html' samples/files.txt
	@echo '--- vfc dump: the persistent object file samples/catalog.vor'
	$(BUILD)/tools/vfc/vfc dump samples/catalog.vor
	@echo '--- vfc path: URLs of samples/paths.txt in UNIX, DOS and MIF notation'
	$(BUILD)/tools/vfc/vfc path -from url+ -to unix \
	    'file:///home/writer/drafts/Release%20Notes.html' 'https://docs.example.org/search?q=1'
	$(BUILD)/tools/vfc/vfc path -from unix -to dos+ '/usr/share/doc/publisher/README'
	$(BUILD)/tools/vfc/vfc path -from dos -to mif -list 'C:/Program Files/Publisher/bin/convert.exe'
	@echo '--- vfc rel / resolve: links between output files'
	$(BUILD)/tools/vfc/vfc rel /out/guide/ch1 /out/guide/img/fig1.png
	$(BUILD)/tools/vfc/vfc resolve -notation url 'http://www.example.com:8080/docs/' '../img/logo.png'
	@echo '--- vfc type: the content type of every sample in samples/types'
	$(BUILD)/tools/vfc/vfc type samples/types/*
	@echo '--- vfc ini: sections and keys of samples/types/settings.ini'
	$(BUILD)/tools/vfc/vfc ini samples/types/settings.ini
	@echo '--- vfc match: which names a wildcard list takes (letters in any case)'
	$(BUILD)/tools/vfc/vfc match -i '*.htm;*.html' $$(cat samples/files.txt)
	@echo '--- vfc info: product, user and machine as the application object sees them'
	$(BUILD)/tools/vfc/vfc info
	@echo '--- vfc expand: variable references in both forms; VORLANDIXHOME is the product directory'
	$(BUILD)/tools/vfc/vfc expand '%HOME%/docs' '$$HOME/.config' '%VORLANDIXHOME%/styles' '%UNSET_NAME%'
	@echo '--- vfc run: a child process with its output captured (exit status: the child'"'"'s)'
	$(BUILD)/tools/vfc/vfc run sh -c 'echo converted $$(wc -l < samples/notes.txt) lines of notes'
	@echo '--- vfc urlencode / urldecode'
	$(BUILD)/tools/vfc/vfc urlencode 'Release Notes/2026 #3.html' '~user/a b?x=1&y=2'
	$(BUILD)/tools/vfc/vfc urldecode 'Release%20Notes%2f2026%20%233.html' 'keep%00%zz'

test: build
	ctest --test-dir $(BUILD) --output-on-failure -j $(JOBS)

test-asan: deps
	$(CMAKE_CONFIGURE) -S . -B $(BUILD)-asan -DCMAKE_BUILD_TYPE=Debug -DVFC_SANITIZE=ON
	cmake --build $(BUILD)-asan -j $(JOBS)
	ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 \
	LSAN_OPTIONS=suppressions=$(CURDIR)/tests/lsan.supp:print_suppressions=0 \
	UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
	ctest --test-dir $(BUILD)-asan --output-on-failure -j $(JOBS)

# Cross-built with the toolchain file; ctest runs the unit tests and the whole-program tests
# under Wine (cmake/wine-run.sh, with a Wine prefix inside the build folder).
test-windows:
	$(call need_packages,$(WINDOWS_PACKAGES))
	cmake -G Ninja -S . -B $(BUILD)-windows -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64-x86_64.cmake \
	    -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVFC_WERROR=$(WERROR)
	cmake --build $(BUILD)-windows -j $(JOBS)
	ctest --test-dir $(BUILD)-windows --output-on-failure -j $(JOBS)

bench:
	$(call need_packages,$(BENCH_PACKAGES))
	$(CMAKE_CONFIGURE) -S . -B $(BUILD)-bench -DCMAKE_BUILD_TYPE=Release -DVFC_BUILD_BENCH=ON \
	    -DVFC_BUILD_TESTS=OFF
	cmake --build $(BUILD)-bench -j $(JOBS)
	@rm -f $(BUILD)-bench/summary.tsv
	@set -e; export VFC_BENCH_SUMMARY=$(CURDIR)/$(BUILD)-bench/summary.tsv; \
	for b in string_bench regex_bench collections_bench path_bench io_bench files_bench \
	    process_bench persist_bench; do \
	    if [ -x $(BUILD)-bench/bench/$$b ]; then $(BUILD)-bench/bench/$$b $(BENCH_FLAGS); \
	    else echo "$$b not built (a peer library is missing)"; fi; \
	done
	$(BUILD)-bench/bench/bench_summary $(BUILD)-bench/summary.tsv

fuzz:
	$(call need_packages,$(FUZZ_PACKAGES))
	cmake -G Ninja -S . -B $(BUILD)-fuzz -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	    -DVFC_SHARED=OFF -DVFC_BUILD_FUZZ=ON -DVFC_BUILD_TESTS=OFF -DVFC_BUILD_TOOLS=OFF
	cmake --build $(BUILD)-fuzz -j $(JOBS)
	mkdir -p $(BUILD)-fuzz/corpus/regexp $(BUILD)-fuzz/corpus/pstream $(BUILD)-fuzz/corpus/args \
	    $(BUILD)-fuzz/corpus/path $(BUILD)-fuzz/corpus/ifstream $(BUILD)-fuzz/corpus/contenttypes \
	    $(BUILD)-fuzz/corpus/url
	$(BUILD)-fuzz/fuzz/regexp_fuzz -max_total_time=$(FUZZ_SECONDS) -max_len=512 \
	    $(BUILD)-fuzz/corpus/regexp fuzz/corpus/regexp
	$(BUILD)-fuzz/fuzz/pstream_fuzz -max_total_time=$(FUZZ_SECONDS) -max_len=4096 \
	    -rss_limit_mb=1024 -malloc_limit_mb=256 -dict=fuzz/pstream.dict \
	    $(BUILD)-fuzz/corpus/pstream fuzz/corpus/pstream
	$(BUILD)-fuzz/fuzz/args_fuzz -max_total_time=$(FUZZ_SECONDS) -max_len=1024 \
	    $(BUILD)-fuzz/corpus/args fuzz/corpus/args
	$(BUILD)-fuzz/fuzz/path_fuzz -max_total_time=$(FUZZ_SECONDS) -max_len=512 \
	    $(BUILD)-fuzz/corpus/path fuzz/corpus/path
	$(BUILD)-fuzz/fuzz/ifstream_fuzz -max_total_time=$(FUZZ_SECONDS) -max_len=4096 \
	    $(BUILD)-fuzz/corpus/ifstream fuzz/corpus/ifstream
	$(BUILD)-fuzz/fuzz/contenttypes_fuzz -max_total_time=$(FUZZ_SECONDS) -max_len=2048 \
	    $(BUILD)-fuzz/corpus/contenttypes fuzz/corpus/contenttypes
	$(BUILD)-fuzz/fuzz/url_fuzz -max_total_time=$(FUZZ_SECONDS) -max_len=1024 \
	    $(BUILD)-fuzz/corpus/url fuzz/corpus/url

# Line coverage of the library itself: its tests, the tool's and the examples' runs all count;
# the test sources and the test helpers do not.
coverage:
	$(call need_packages,$(PACKAGES) gcovr)
	$(CMAKE_CONFIGURE) -S . -B $(BUILD)-coverage -DCMAKE_BUILD_TYPE=Debug -DVFC_COVERAGE=ON
	# Start from nothing: notes or counts left by an earlier build of changed sources would not
	# merge with the new ones.
	find $(BUILD)-coverage -name '*.gcno' -delete -o -name '*.gcda' -delete
	cmake --build $(BUILD)-coverage -j $(JOBS) --clean-first
	ctest --test-dir $(BUILD)-coverage --output-on-failure -j $(JOBS)
	mkdir -p $(BUILD)-coverage/html
	gcovr --root . --object-directory $(BUILD)-coverage --filter 'vfc/' \
	    --exclude '.*_test\.cpp' --exclude 'vfc/testing/' --exclude '.*/testdata/' \
	    --html-details $(BUILD)-coverage/html/index.html --print-summary

docs:
	@if command -v doxygen >/dev/null; then \
	    mkdir -p $(BUILD)-docs && \
	    (cat docs/Doxyfile; echo 'OUTPUT_DIRECTORY = $(BUILD)-docs'; \
	     echo 'WARN_LOGFILE = $(BUILD)-docs/warnings.log'; \
	     echo "PROJECT_NUMBER = $$(sed -n 's/^ *VERSION \([0-9.]*\)$$/\1/p' CMakeLists.txt)") \
	    | doxygen - && echo "API reference: $(BUILD)-docs/html/index.html"; \
	else echo "make docs needs Doxygen (apt-get install -y doxygen)"; fi

install: build
	cmake --install $(BUILD) --prefix $(PREFIX)

format:
	git ls-files '*.h' '*.cpp' | xargs clang-format -i

clean:
	rm -rf $(BUILD) $(BUILD)-asan $(BUILD)-bench $(BUILD)-fuzz $(BUILD)-coverage $(BUILD)-docs \
	    $(BUILD)-windows
