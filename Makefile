BUILD_DIR ?= build
BENCH_DIR ?= build-bench
BUILD_TYPE ?= RelWithDebInfo
JOBS ?= 2
EXAMPLE ?= examples/orca_water_opt_freq.json

.PHONY: all deps configure build demo test bench clean

all: build

deps:
	scripts/install-deps.sh

configure: deps
	cmake -S . -B $(BUILD_DIR) -DCMAKE_BUILD_TYPE=$(BUILD_TYPE)

build: configure
	cmake --build $(BUILD_DIR) -j $(JOBS)

demo: build
	$(BUILD_DIR)/qc-json-roundtrip $(EXAMPLE)

test: build
	ctest --test-dir $(BUILD_DIR) --output-on-failure -j $(JOBS)

# Benchmarks build in a directory of their own, in Release.
bench: deps
	cmake -S . -B $(BENCH_DIR) -DCMAKE_BUILD_TYPE=Release -DMORV_BUILD_BENCHMARKS=ON -DMORV_BUILD_TESTS=OFF
	cmake --build $(BENCH_DIR) -j $(JOBS) --target codec_bench
	$(BENCH_DIR)/bench/codec_bench --benchmark_repetitions=5 --benchmark_report_aggregates_only=true

clean:
	rm -rf $(BUILD_DIR) $(BENCH_DIR)
