# The two commands of the README, and the benchmarks.
#   make run    build and start the program
#   make serve  build and start the class server (self-signed certificate)
#   make test   build and run every test, under the Danish locale
#   make bench  build and run the benchmarks (Release)
#   make package       the Debian packages of the program and the server
#   make package-test  install them here, try them, remove them (root; CI)

BUILD      ?= build
BENCHBUILD ?= build-bench
JOBS       ?= $(shell nproc)
CMAKEFLAGS ?=

.PHONY: all setup build run serve test bench fuzz clean

all: build

setup:
	@scripts/setup.sh

$(BUILD)/CMakeCache.txt: | setup
	cmake -S . -B $(BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo $(CMAKEFLAGS)

build: setup $(BUILD)/CMakeCache.txt
	cmake --build $(BUILD) -j$(JOBS)

run: build
	$(BUILD)/app/ostrovalden

# The class server on https://localhost:8443/ with a certificate of its own.
serve: setup $(BUILD)/CMakeCache.txt
	cmake --build $(BUILD) -j$(JOBS) --target ostrovalden-server
	scripts/serve.sh $(BUILD)/server/ostrovalden-server

test: build
	cd $(BUILD) && LC_ALL=da_DK.UTF-8 QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j$(JOBS)

$(BENCHBUILD)/CMakeCache.txt: | setup
	cmake -S . -B $(BENCHBUILD) -DCMAKE_BUILD_TYPE=Release -DOSTROVALDEN_BENCH=ON $(CMAKEFLAGS)

bench: setup $(BENCHBUILD)/CMakeCache.txt
	cmake --build $(BENCHBUILD) -j$(JOBS) --target benchmarks
	LC_ALL=da_DK.UTF-8 QT_QPA_PLATFORM=offscreen bench/run.sh $(BENCHBUILD)

# Both packages into $(BUILD)/packages/, from the build that the tests ran on.
.PHONY: package package-test
package: build
	cd $(BUILD) && cpack -G DEB

package-test: package
	@scripts/setup.sh package
	scripts/package-test.sh $(BUILD)/packages

# Each fuzz target under libFuzzer for FUZZTIME seconds (installs clang);
# FUZZ=calc runs one of them. An input that finds a fault is written into
# fuzz/seeds/<target>/ as find-<hash>: commit it, and the suite replays it.
FUZZBUILD ?= build-fuzz
FUZZTIME  ?= 60
FUZZ      ?= json calc value fmt circuit
fuzz:
	@scripts/setup.sh fuzz
	CXX=clang++ cmake -S fuzz -B $(FUZZBUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo
	cmake --build $(FUZZBUILD) -j$(JOBS)
	@for t in $(FUZZ); do \
		mkdir -p $(FUZZBUILD)/corpus/$$t && \
		LC_ALL=da_DK.UTF-8 $(FUZZBUILD)/fuzz_$$t $(FUZZBUILD)/corpus/$$t fuzz/seeds/$$t \
			-max_total_time=$(FUZZTIME) -timeout=30 -rss_limit_mb=4096 \
			-artifact_prefix=fuzz/seeds/$$t/find- || exit 1; \
	done

clean:
	rm -rf $(BUILD) $(BENCHBUILD) $(FUZZBUILD)
