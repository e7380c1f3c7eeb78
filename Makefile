# The two commands of the README. Both install what is missing first.
BUILD ?= build
JOBS ?= $(shell nproc)

.PHONY: setup build test sanitize demo bench fuzz clean

setup:
	@bash scripts/setup

build: setup
	@cmake -S . -B $(BUILD) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
	@cmake --build $(BUILD) -j $(JOBS)

test: build
	@cd $(BUILD) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS)

# The test suite built with AddressSanitizer and UndefinedBehaviorSanitizer: the first error
# ends the test that hit it, and so does a leak (tools/lsan.supp lists third-party ones).
SANITIZE_ENV = ASAN_OPTIONS=halt_on_error=1:detect_leaks=1:strict_string_checks=1:check_initialization_order=1 \
	UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1 \
	LSAN_OPTIONS=suppressions=$(CURDIR)/tools/lsan.supp:print_suppressions=0
sanitize: setup
	@cmake -S . -B build-sanitize -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DKIVDB_SANITIZE=ON >/dev/null
	@cmake --build build-sanitize -j $(JOBS)
	@cd build-sanitize && $(SANITIZE_ENV) QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS)

demo: build
	@bash scripts/demo $(BUILD)

# The embedded engine's cost over plain SQLite, and a million rows exported to a spreadsheet
# file beside plain SQLite into libxlsxwriter and python3-xlsxwriter: ratios measured in one run.
bench: build
	@$(BUILD)/bench/dialect_bench
	@printf '\n%-52s %12s %12s %8s %8s\n' what kivdb baseline ratio aim
	@$(BUILD)/bench/call_bench
	@$(BUILD)/bench/translation_bench
	@$(BUILD)/bench/spreadsheet_bench

# The tokenizer/parser fuzz target, built with clang's libFuzzer.
fuzz: setup
	@cmake -S . -B $(BUILD)-fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_C_COMPILER=clang -DKIVDB_FUZZ=ON >/dev/null
	@cmake --build $(BUILD)-fuzz -j $(JOBS) --target tsql_parse_fuzz
	@mkdir -p $(BUILD)-fuzz/corpus
	@# New inputs go to the build's corpus; the seeds in the source tree stay as they are.
	@# A finding (crash, sanitizer report, leak) fails the target and prints the report.
	@UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1 $(BUILD)-fuzz/src/tsql_parse_fuzz \
		-max_total_time=$${FUZZ_SECONDS:-30} -max_len=4096 -artifact_prefix=$(BUILD)-fuzz/ \
		$(BUILD)-fuzz/corpus src/kivdb/dialect/fuzz_corpus >$(BUILD)-fuzz/fuzz.log 2>&1; \
		status=$$?; if [ $$status -eq 0 ]; then tail -n 3 $(BUILD)-fuzz/fuzz.log; \
		else tail -n 60 $(BUILD)-fuzz/fuzz.log; fi; exit $$status

clean:
	rm -rf $(BUILD) $(BUILD)-fuzz build-sanitize
