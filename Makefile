BUILD_DIR ?= build
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

clean:
	rm -rf $(BUILD_DIR)
