# The two commands of the README, and what a developer adds to them. CMake does the work; see CMakePresets.json.
JOBS ?= 2

.PHONY: all report test sanitize bench reference setup clean

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
