# The two commands of the README, and what a developer adds to them. CMake does the work; see CMakePresets.json.
JOBS ?= 2

.PHONY: all report test sanitize damage fuzz bench reference setup clean

all: setup
	cmake --preset release
	cmake --build --preset release -j$(JOBS)

report: setup
	cmake --preset release
	cmake --build --preset release -j$(JOBS) --target zemfig speckle
	examples/render.sh build/release/bin out

test: all
	cmake --build --preset release -j$(JOBS) --target all_verify_interface_header_sets
	ctest --preset release -j$(JOBS)

sanitize: setup
	cmake --preset sanitize
	cmake --build --preset sanitize -j$(JOBS)
	ctest --preset sanitize -j$(JOBS)

# Every damage of every golden file, with sanitizers: an hour or two.
damage: setup
	cmake --preset sanitize
	cmake --build --preset sanitize -j$(JOBS) --target golden_damage_test
	ZEM_DAMAGE=all build/sanitize/bin/golden_damage_test

# Every reader against damaged and invented files; FUZZ_SECONDS is the time of each.
FUZZ_SECONDS ?= 60
fuzz: setup
	CC=clang CXX=clang++ cmake --preset fuzz
	cmake --build --preset fuzz -j$(JOBS)
	fuzz/run.sh build/fuzz/bin $(FUZZ_SECONDS)

bench: setup
	cmake --preset bench
	cmake --build --preset bench -j$(JOBS)
	build/bench/bin/zem-bench

reference: setup
	mkdir -p build
	doxygen docs/Doxyfile

setup:
	@packaging/setup.sh

clean:
	rm -rf build out
