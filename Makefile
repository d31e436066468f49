BUILD_DIR ?= build
BENCH_DIR ?= build-bench
SANITIZE_DIR ?= build-sanitize
FUZZ_DIR ?= build-fuzz
BUILD_TYPE ?= RelWithDebInfo
JOBS ?= 2
# Debian's interpreter, which the python3-* packages serve (an interpreter
# earlier on PATH, such as pyenv's, would not see them).
PYTHON ?= /usr/bin/python3
EXAMPLES ?= $(wildcard examples/*.json)
CLI = $(BUILD_DIR)/tools/morv-qc-json
# ON turns the project's warnings into errors; .ci/run does.
WARNINGS_AS_ERRORS ?= OFF
# Seconds that fuzz-smoke gives each fuzzer.
FUZZ_SECONDS ?= 60

.PHONY: all deps configure build demo test test-sanitize bench fuzz fuzz-smoke clean

all: build

deps:
	scripts/install-deps.sh

configure: deps
	cmake -S . -B $(BUILD_DIR) -DCMAKE_BUILD_TYPE=$(BUILD_TYPE) -DMORV_BUILD_PYTHON=ON -DPython3_EXECUTABLE=$(PYTHON) \
	  -DMORV_WARNINGS_AS_ERRORS=$(WARNINGS_AS_ERRORS)

build: configure
	cmake --build $(BUILD_DIR) -j $(JOBS)

# Checks the bundled examples, writes each back indented into the build
# folder and summarises them, runs the Python example, then imports the
# bundled Gaussian output and summarises its document, and draws the infrared
# spectrum of the bundled ORCA document.
demo: build
	$(CLI) check $(EXAMPLES)
	@for example in $(EXAMPLES); do \
	  out=$(BUILD_DIR)/demo/$$(basename $$example .json).pretty.json; mkdir -p $(BUILD_DIR)/demo; \
	  echo "$(CLI) format --pretty $$example -o $$out"; $(CLI) format --pretty $$example -o $$out || exit $$?; \
	done
	$(CLI) stats $(EXAMPLES)
	PYTHONPATH=$(BUILD_DIR)/python $(PYTHON) examples/energies.py
	$(CLI) import examples/gaussian/water_mp2.log -o $(BUILD_DIR)/demo/water_mp2.json
	$(CLI) stats $(BUILD_DIR)/demo/water_mp2.json
	PYTHONPATH=$(BUILD_DIR)/python $(PYTHON) -m morv_qc_json plot examples/orca_water_opt_freq.json --kind ir \
	  -o $(BUILD_DIR)/demo/orca_water_ir.png

test: build
	ctest --test-dir $(BUILD_DIR) --output-on-failure -j $(JOBS)

# The whole suite under AddressSanitizer and UndefinedBehaviorSanitizer, the
# Python module's tests included: CTest runs them with the sanitizers'
# runtimes preloaded into the interpreter. The packaging tests install and
# link plain consumers, which an instrumented library cannot serve, so they
# run only in `make test`.
test-sanitize: deps
	cmake -S . -B $(SANITIZE_DIR) -DCMAKE_BUILD_TYPE=Debug -DMORV_SANITIZE=ON -DMORV_BUILD_PYTHON=ON \
	  -DPython3_EXECUTABLE=$(PYTHON) -DMORV_WARNINGS_AS_ERRORS=$(WARNINGS_AS_ERRORS)
	cmake --build $(SANITIZE_DIR) -j $(JOBS)
	ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
	  ctest --test-dir $(SANITIZE_DIR) --output-on-failure -j $(JOBS) -LE packaging

# Benchmarks build in a directory of their own, in Release. The figures also
# go to $(BENCH_DIR)/codec_bench.json, from which bench/README.md is updated.
bench:
	scripts/install-deps.sh bench
	cmake -S . -B $(BENCH_DIR) -DCMAKE_BUILD_TYPE=Release -DMORV_BUILD_BENCHMARKS=ON -DMORV_BUILD_TESTS=OFF \
	  -DMORV_BUILD_PYTHON=ON -DPython3_EXECUTABLE=$(PYTHON)
	cmake --build $(BENCH_DIR) -j $(JOBS) --target codec_bench peak_heap write_generated_documents morv_qc_json_python
	$(BENCH_DIR)/bench/codec_bench --benchmark_repetitions=5 --benchmark_report_aggregates_only=true \
	  --benchmark_out=$(BENCH_DIR)/codec_bench.json --benchmark_out_format=json
	$(BENCH_DIR)/bench/peak_heap
	$(BENCH_DIR)/bench/write_generated_documents bench $(BENCH_DIR)
	PYTHONPATH=$(BENCH_DIR)/python $(PYTHON) bench/python_load_bench.py $(BENCH_DIR)
	PYTHONPATH=$(BENCH_DIR)/python $(PYTHON) bench/import_bench.py
	PYTHONPATH=$(BENCH_DIR)/python $(PYTHON) bench/dask_bench.py

# The libFuzzer targets, built with clang in a directory of their own.
fuzz:
	scripts/install-deps.sh fuzz
	cmake -S . -B $(FUZZ_DIR) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++-14 \
	  -DMORV_BUILD_FUZZERS=ON -DMORV_BUILD_TESTS=OFF -DMORV_BUILD_PYTHON=OFF \
	  -DMORV_WARNINGS_AS_ERRORS=$(WARNINGS_AS_ERRORS)
	cmake --build $(FUZZ_DIR) -j $(JOBS) --target fuzzers

# Each fuzzer for FUZZ_SECONDS from the seed corpus in fuzz/corpus/, which
# stays untouched; logs and findings go to $(FUZZ_DIR)/fuzz/findings.
fuzz-smoke: fuzz
	fuzz/run-fuzzers.sh $(FUZZ_DIR)/fuzz $(FUZZ_SECONDS)

clean:
	rm -rf $(BUILD_DIR) $(BENCH_DIR) $(SANITIZE_DIR) $(FUZZ_DIR)
