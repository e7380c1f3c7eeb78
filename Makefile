# The two commands of the README. Both install what is missing first.
BUILD ?= build
JOBS ?= $(shell nproc)

.PHONY: setup build test demo bench fuzz clean

setup:
	@bash scripts/setup

build: setup
	@cmake -S . -B $(BUILD) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
	@cmake --build $(BUILD) -j $(JOBS)

test: build
	@cd $(BUILD) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS)

demo: build
	@bash scripts/demo $(BUILD)

# The embedded engine's cost over plain SQLite, as ratios measured in one run.
bench: build
	@$(BUILD)/bench/dialect_bench

# The tokenizer/parser fuzz target, built with clang's libFuzzer.
fuzz: setup
	@cmake -S . -B $(BUILD)-fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_C_COMPILER=clang -DKIVDB_FUZZ=ON >/dev/null
	@cmake --build $(BUILD)-fuzz -j $(JOBS) --target tsql_parse_fuzz
	@mkdir -p $(BUILD)-fuzz/corpus
	@# New inputs go to the build's corpus; the seeds in the source tree stay as they are.
	@$(BUILD)-fuzz/src/tsql_parse_fuzz -max_total_time=$${FUZZ_SECONDS:-30} -max_len=4096 \
		$(BUILD)-fuzz/corpus src/kivdb/dialect/fuzz_corpus 2>&1 | tail -n 3

clean:
	rm -rf $(BUILD) $(BUILD)-fuzz
