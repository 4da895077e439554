# The everyday commands. Each installs the Debian packages that it needs and lacks, through apt-get.
#
#   make demo          a gallery of pictures from a photograph: PHOTO=file for your own, GALLERY=folder for another place
#   make test          the format check, then the tests with optimisation and again with the sanitizers
#   make test-i386     the tests on 32-bit x86;  make test-arm64 on 64-bit Arm, by emulation
#   make fuzz          calls that a fuzzer thinks up, for FUZZ_SECONDS: stops at the first that goes wrong
#   make bench         the speed of every function
#   make bench-peers   the same conversions in other libraries
#   make performance   docs/performance.md, the speed of all this on one page, in a quarter of an hour
#   make package       Debian packages, in build/package, and a look at what they hold
#   make docs          the reference, in build/docs/html
#   make format        put the sources into their format;  make check-format only looks
#   make clean         remove what these commands made
PHOTO ?= /usr/share/palapeli/collection/citrus-fruits.jpg
GALLERY ?= gallery
JOBS ?= 2
FUZZ_SECONDS ?= 600
CLANG_FORMAT ?= clang-format-14

sources = find include src tests bench docs examples -name '*.h' -o -name '*.c' -o -name '*.cc'
configure = cmake -S . -G Ninja -DZUM_WERROR=ON -DCMAKE_BUILD_TYPE=Release \
  $(if $(shell command -v ccache),-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
build = cmake --build $(1) -j $(JOBS)
only_library = -DZUM_BUILD_TESTS=OFF -DZUM_BUILD_EXAMPLES=OFF

.PHONY: demo test test-i386 test-arm64 fuzz bench bench-peers performance package docs format check-format clean

demo:
	scripts/packages.sh build demo $(if $(filter file,$(origin PHOTO)),photo)
	$(configure) -B build/demo -DZUM_BUILD_TESTS=OFF
	$(call build,build/demo) --target gallery
	build/demo/examples/gallery "$(PHOTO)" "$(GALLERY)"

test: check-format
	scripts/packages.sh build demo test
	$(configure) -B build/release
	$(call build,build/release)
	ctest --test-dir build/release --output-on-failure -j $(JOBS)
	$(configure) -B build/sanitize -DZUM_SANITIZE=ON -DCMAKE_CXX_FLAGS_RELEASE=-O1
	$(call build,build/sanitize)
	ctest --test-dir build/sanitize --output-on-failure -j $(JOBS)

test-i386 test-arm64: test-%:
	scripts/packages.sh build test $*
	$(configure) -B build/$* --toolchain cmake/toolchains/$*.cmake -DZUM_BUILD_EXAMPLES=OFF
	$(call build,build/$*)
	ctest --test-dir build/$* --output-on-failure -j $(JOBS) --timeout 900

fuzz:
	scripts/packages.sh build fuzz
	$(configure) -B build/fuzz $(only_library) -DZUM_FUZZ=ON -DCMAKE_C_COMPILER=clang-14 \
	  -DCMAKE_CXX_COMPILER=clang++-14 -DCMAKE_CXX_FLAGS_RELEASE=-O1
	$(call build,build/fuzz) --target zum_fuzz
	rm -rf build/fuzz/corpus && mkdir build/fuzz/corpus
	OMP_WAIT_POLICY=passive build/fuzz/tests/zum_fuzz -max_total_time=$(FUZZ_SECONDS) -timeout=60 -rss_limit_mb=2048 \
	  -len_control=0 -reduce_inputs=0 -max_len=256 -print_final_stats=1 -artifact_prefix=build/fuzz/ build/fuzz/corpus

bench:
	scripts/packages.sh build bench
	$(configure) -B build/bench $(only_library) -DZUM_BUILD_BENCHMARKS=ON
	$(call build,build/bench) --target zum_bench
	build/bench/bench/zum_bench $(BENCH_FLAGS)

bench-peers:
	scripts/packages.sh build peers
	$(configure) -B build/bench-peers $(only_library) -DZUM_BUILD_PEERS=ON
	$(call build,build/bench-peers) --target zum_bench_peers
	build/bench-peers/bench/zum_bench_peers $(BENCH_FLAGS)

performance:
	scripts/packages.sh build bench peers
	$(configure) -B build/performance $(only_library) -DZUM_BUILD_BENCHMARKS=ON -DZUM_BUILD_PEERS=ON
	$(call build,build/performance) --target zum_bench zum_bench_diffusion zum_bench_peers
	python3 bench/page.py --run build/performance/bench $(PAGE_FLAGS) build/performance/results docs

package:
	scripts/packages.sh build package
	$(configure) -B build/package $(only_library) -DCMAKE_INSTALL_PREFIX=/usr
	$(call build,build/package)
	cd build/package && cpack
	scripts/check-packages.sh build/package

docs:
	scripts/packages.sh docs
	mkdir -p build/docs
	doxygen docs/Doxyfile

format:
	scripts/packages.sh format
	$(sources) | xargs $(CLANG_FORMAT) -i

check-format:
	scripts/packages.sh format
	$(sources) | xargs $(CLANG_FORMAT) --dry-run --Werror

clean:
	rm -rf build gallery
