// One row for each function of the library, or each variant of it that has a label, and each image size. Besides the
// time of a call: megapixels a second; share, the share of the copy limit that the call reaches, which is the time
// that memcpy takes to read and write as many bytes on the same memory over the time of the call; and copy GB/s, the
// gigabytes that memcpy reads and writes there in a second.
//
//   zum_bench [--isa=ssse3|avx2|avx512] [--threads=N] [the flags of Google Benchmark]
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <iostream>
#include <map>
#include <memory>
#include <string>

#include "support/images.h"
#include "support/instruction_sets.h"

namespace zumtest {
namespace {

constexpr ZumiSize kSizes[] = {{320, 240}, {1920, 1080}, {3840, 2160}};
constexpr size_t kPlaneAlignment = 64;

// The planes of a call, one behind the other, the sources first.
class CallMemory {
 public:
  explicit CallMemory(Call& call) : moved_(bytesMoved(call)), arena_(std::max(moved_, length(call))) {
    uint8_t* at = arena_.begin();
    const std::vector<Plane>& planes = call.function().planes;
    for (size_t i = 0; i < planes.size(); ++i) {
      const int step = call.tightStep(i);
      fill(at, planes[i].sample, step / planes[i].sample.bytes, call.rows(i), Content::kGradient, i);
      call.place(i, at, step);
      at += length(call, i);
    }
  }

  // Reads and writes together as many bytes as the call does. This may spread samples of a source over the sources and
  // the destinations, never those of a destination over a source.
  void copy() {
    std::memcpy(arena_.begin() + moved_ / 2, arena_.begin(), moved_ / 2);
    benchmark::ClobberMemory();
  }
  size_t moved() const { return moved_; }

 private:
  static size_t bytesMoved(const Call& call) {
    size_t total = 0;
    for (size_t i = 0; i < call.function().planes.size(); ++i) {
      const Plane& plane = call.function().planes[i];
      total += call.rowBytes(i) * call.rows(i) * (plane.read() + plane.written());
    }
    return total;
  }
  static size_t length(const Call& call, size_t plane) {
    return (call.tightStep(plane) * call.rows(plane) + kPlaneAlignment - 1) / kPlaneAlignment * kPlaneAlignment;
  }
  static size_t length(const Call& call) {
    size_t total = 0;
    for (size_t i = 0; i < call.function().planes.size(); ++i) total += length(call, i);
    return total;
  }

  const size_t moved_;
  const Arena arena_;
};

template <class Action>
double seconds(Action action) {
  const auto start = std::chrono::steady_clock::now();
  action();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double>& values) {
  const auto middle = values.begin() + values.size() / 2;
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

// The call and the copy take turns, so that both see the same memory, the same clock and the same neighbours.
void measure(benchmark::State& state, const Function& function, const Variant& variant, ZumiSize size) {
  Call call(function, size, variant);
  CallMemory memory(call);
  std::vector<double> calls, copies;
  if (call() < 0) return state.SkipWithError("the call failed");
  for (auto _ : state) {
    copies.push_back(seconds([&] { memory.copy(); }));
    calls.push_back(seconds([&] { benchmark::DoNotOptimize(call()); }));
    state.SetIterationTime(calls.back());
  }
  const double typical = median(calls), typicalCopy = median(copies);
  state.counters["Mpix/s"] = size.width * 1e-6 * size.height / typical;
  state.counters["share"] = typicalCopy / typical;
  state.counters["copy GB/s"] = 1e-9 * memory.moved() / typicalCopy;
}

// ---- The services, which take no image. What is made is freed: one time stands for both functions.

constexpr int kLength = 4096;

template <class State, class Sample, class Number>
void measureGenerator(benchmark::State& state, ZumStatus (*make)(State**, Number, Number, uint32_t),
                      ZumStatus (*generate)(Sample*, int, State*), ZumStatus (*release)(State*)) {
  State* generator = nullptr;
  if (make(&generator, 0, 1000, 1) != zumOk) return state.SkipWithError("no memory");
  std::vector<Sample> numbers(kLength);
  for (auto _ : state) benchmark::DoNotOptimize(generate(numbers.data(), kLength, generator));
  state.SetItemsProcessed(state.iterations() * kLength);
  release(generator);
}

template <class State, class Number>
void measureGeneratorLife(benchmark::State& state, ZumStatus (*make)(State**, Number, Number, uint32_t),
                          ZumStatus (*release)(State*)) {
  for (auto _ : state) {
    State* generator = nullptr;
    benchmark::DoNotOptimize(make(&generator, 0, 1000, 1));
    release(generator);
  }
}

template <class Sample>
void measureMemory(benchmark::State& state, Sample* (*allocate)(int)) {
  for (auto _ : state) {
    Sample* block = allocate(kLength);
    benchmark::DoNotOptimize(block);
    zumsFree(block);
  }
}

const std::map<std::string, void (*)(benchmark::State&)> kServices = {
    {"zumccGetLibVersion",
     [](benchmark::State& state) {
       for (auto _ : state) benchmark::DoNotOptimize(zumccGetLibVersion());
     }},
    {"zumsMalloc_16s", [](benchmark::State& state) { measureMemory(state, zumsMalloc_16s); }},
    {"zumsMalloc_16u", [](benchmark::State& state) { measureMemory(state, zumsMalloc_16u); }},
    {"zumsMalloc_32f", [](benchmark::State& state) { measureMemory(state, zumsMalloc_32f); }},
    {"zumsFree", [](benchmark::State& state) { measureMemory(state, zumsMalloc_32f); }},
    {"zumsRandUniformInitAlloc_16s",
     [](benchmark::State& state) {
       measureGeneratorLife(state, zumsRandUniformInitAlloc_16s, zumsRandUniformFree_16s);
     }},
    {"zumsRandUniformInitAlloc_32f",
     [](benchmark::State& state) {
       measureGeneratorLife(state, zumsRandUniformInitAlloc_32f, zumsRandUniformFree_32f);
     }},
    {"zumsRandUniformFree_16s",
     [](benchmark::State& state) {
       measureGeneratorLife(state, zumsRandUniformInitAlloc_16s, zumsRandUniformFree_16s);
     }},
    {"zumsRandUniformFree_32f",
     [](benchmark::State& state) {
       measureGeneratorLife(state, zumsRandUniformInitAlloc_32f, zumsRandUniformFree_32f);
     }},
    {"zumsRandUniform_16s",
     [](benchmark::State& state) {
       measureGenerator(state, zumsRandUniformInitAlloc_16s, zumsRandUniform_16s, zumsRandUniformFree_16s);
     }},
    {"zumsRandUniform_32f",
     [](benchmark::State& state) {
       measureGenerator(state, zumsRandUniformInitAlloc_32f, zumsRandUniform_32f, zumsRandUniformFree_32f);
     }},
};

const char* const kNames[] = {
#define ZUM_FUNCTION(name) #name,
#include "functions.def"
#undef ZUM_FUNCTION
};

bool registerAll() {
  for (const std::string name : kNames) {
    const auto service = kServices.find(name);
    if (service != kServices.end()) {
      benchmark::RegisterBenchmark(name.c_str(), service->second);
      continue;
    }
    const auto function = std::find_if(functions().begin(), functions().end(),
                                       [&](const Function& candidate) { return candidate.name == name; });
    if (function == functions().end()) {
      std::cerr << "no way to measure " << name << "\n";
      return false;
    }
    for (const Variant& variant : function->traits.variants) {
      if (variant.label.empty() && &variant != &function->traits.variants.front()) continue;
      const std::string row = variant.label.empty() ? name : name + "/" + variant.label;
      for (ZumiSize size : kSizes)
        benchmark::RegisterBenchmark(
            (row + "/" + std::to_string(size.width) + "x" + std::to_string(size.height)).c_str(),
            [function, &variant, size](benchmark::State& state) { measure(state, *function, variant, size); })
            ->UseManualTime()
            ->Unit(benchmark::kMicrosecond);
    }
  }
  return true;
}

// ---- Flags and setting

#ifdef __clang__
constexpr char kCompiler[] = __VERSION__;
#else
constexpr char kCompiler[] = "GCC " __VERSION__;
#endif

const std::map<std::string, int64_t> kIsaFlags = {
#if HWY_ARCH_X86
    {"ssse3", HWY_SSSE3}, {"avx2", HWY_AVX2}, {"avx512", HWY_AVX3_DL}
#elif HWY_ARCH_ARM
    {"neon", HWY_NEON}
#endif
};

bool selectInstructionSet(const std::string& flag) {
  const std::vector<int64_t> sets = instructionSets();
  int64_t target = sets.back();
  if (!flag.empty()) {
    const auto known = kIsaFlags.find(flag);
    if (known == kIsaFlags.end() || std::find(sets.begin(), sets.end(), known->second) == sets.end()) return false;
    target = known->second;
  }
  useInstructionSet(target);
  benchmark::AddCustomContext("instruction set", hwy::TargetName(target));
  return true;
}

// The value of a flag, which is taken out of the arguments. Empty if it is not there.
std::string take(const char* flag, std::vector<char*>& arguments) {
  std::string value;
  const auto matches = [&](const char* argument) { return std::strncmp(argument, flag, std::strlen(flag)) == 0; };
  for (const char* argument : arguments)
    if (matches(argument)) value = argument + std::strlen(flag);
  arguments.erase(std::remove_if(arguments.begin(), arguments.end(), matches), arguments.end());
  return value;
}

int benchmarkMain(int argc, char** argv) {
  std::vector<char*> arguments(argv, argv + argc);
  const std::string isa = take("--isa=", arguments), threads = take("--threads=", arguments);
  if (!selectInstructionSet(isa)) {
    std::cerr << "--isa: not an instruction set of this library and this processor\n";
    return 1;
  }
  threads_omp_of_n_zum = threads.empty() ? 1 : std::max(1, std::atoi(threads.c_str()));
  benchmark::AddCustomContext("library", zumccGetLibVersion()->version);
  benchmark::AddCustomContext("compiler", kCompiler);
  benchmark::AddCustomContext("threads", std::to_string(threads_omp_of_n_zum));

  // Short runs, as there are many; a flag of the user's comes later and wins.
  std::string minimumTime = "--benchmark_min_time=0.1", tabular = "--benchmark_counters_tabular=true";
  arguments.insert(arguments.begin() + 1, {minimumTime.data(), tabular.data()});
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 1;
  if (!registerAll()) return 1;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}

}  // namespace
}  // namespace zumtest

int main(int argc, char** argv) { return zumtest::benchmarkMain(argc, argv); }
