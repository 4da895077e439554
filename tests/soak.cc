// Random calls of all functions, any size, content, variant and placement: every instruction set against the lowest,
// nothing written outside, and with an allocator that fails now and then nothing lost. Then calls from many threads at
// once, alone and inside a parallel region.
//
//   zum_soak CALLS [SEED]
#include <cstdlib>
#include <iostream>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "support/allocator.h"
#include "support/images.h"
#include "support/instruction_sets.h"

namespace zumtest {
namespace {

class Soak {
 public:
  explicit Soak(unsigned seed) : random_(seed) {}

  // False, and a message, if something is wrong.
  bool call() {
    const Function& function = functions()[below(functions().size())];
    const Traits& traits = function.traits;
    const ZumiSize size{1 + static_cast<int>(below(below(8) == 0 ? 300 : 70)), 1 + static_cast<int>(below(12))};
    const Case c(function, function.accepted(size), below(traits.variants.size()),
                 kContents[below(std::size(kContents))]);

    Placement placement{below(2) ? Placement::kBegin : Placement::kEnd, below(3) ? 0 : below(70)};
    placement.padding = below(2) ? static_cast<int>(below(20)) : 0;
    placement.upward = !traits.makes(Check::kSteps) && below(4) == 0;
    threads_omp_of_n_zum = traits.variants.empty() || !c.variant.threadsShow ? 1 + static_cast<int>(below(4)) : 1;

    const uint32_t refusals = below(16) == 0 ? static_cast<uint32_t>(random_()) : 0;
    std::vector<Bytes> expected;
    for (const int64_t set : sets_) {
      useInstructionSet(set);
      Allocator::refuse(refusals);
      const Outcome outcome = run(c, placement);
      const std::string where = describe(c, placement) + ", " + hwy::TargetName(set) + ": ";
      if (outcome.strayWrite != "") return tell(where + outcome.strayWrite);
      if (Allocator::blocks() != 0) return tell(where + std::to_string(Allocator::blocks()) + " blocks not freed");
      const ZumStatus expectedNow = Allocator::refused() ? zumErrMemAlloc : expectedStatus(c);
      if (outcome.status != expectedNow) return tell(where + "status " + std::to_string(outcome.status));
      if (expected.empty()) expected = outcome.destinations;
      const std::string different = difference(expected, outcome.destinations);
      if (different != "") return tell(where + different);
    }
    return true;
  }

 private:
  size_t below(size_t n) { return random_() % n; }
  static bool tell(const std::string& what) {
    std::cout << what << "\n";
    return false;
  }

  std::mt19937 random_;
  const std::vector<int64_t> sets_ = instructionSets();
};

// ---- Threads

// A call on images of its own.
struct OwnImages {
  explicit OwnImages(const Function& function)
      : call(function, function.accepted({205, 197}), function.traits.variants.front()) {
    for (size_t i = 0; i < function.planes.size(); ++i) {
      Bytes& plane = planes.emplace_back(call.tightStep(i) * call.rows(i) + 64);
      fill(plane.data(), function.planes[i].sample, plane.size() / function.planes[i].sample.bytes, 1,
           Content::kGradient, i);
      call.place(i, plane.data(), call.tightStep(i));
    }
  }

  Call call;
  std::vector<Bytes> planes;
};

// Functions whose bands are cut by hand do, in a region that gets fewer threads, only the bands that there are threads
// for: they are called with one.
bool sliced(const Function& function) {
  return function.takesRectangle() || function.name.find("565") != std::string::npos;
}

bool threadsAgree() {
  constexpr int kCallers = 6;
  bool good = true;
  for (const Function& function : functions()) {
    if (function.traits.alignmentShows) continue;
    threads_omp_of_n_zum = 1;
    OwnImages expected(function);
    expected.call();
    threads_omp_of_n_zum = sliced(function) ? 1 : 3;

    std::vector<std::unique_ptr<OwnImages>> own;
    for (int i = 0; i < 2 * kCallers; ++i) own.push_back(std::make_unique<OwnImages>(function));
    std::vector<std::thread> callers;
    for (int i = 0; i < kCallers; ++i) callers.emplace_back([&own, i] { own[i]->call(); });
    for (std::thread& caller : callers) caller.join();
#pragma omp parallel for num_threads(kCallers)
    for (int i = kCallers; i < 2 * kCallers; ++i) own[i]->call();

    for (const auto& images : own) {
      if (images->planes == expected.planes) continue;
      std::cout << function.name << " from several threads differs\n";
      good = false;
      break;
    }
  }
  return good;
}

int soakMain(int argc, char** argv) {
  const int64_t calls = argc > 1 ? std::atoll(argv[1]) : 100000;
  const unsigned seed = argc > 2 ? static_cast<unsigned>(std::atoi(argv[2])) : 1;
  Allocator::install();
  Soak soak(seed);
  for (int64_t i = 0; i < calls; ++i) {
    if (!soak.call()) {
      std::cout << "call " << i << " of seed " << seed << "\n";
      return 1;
    }
  }
  useInstructionSet(kBestInstructionSet);
  Allocator::refuse(0);
  if (!threadsAgree()) return 1;
  std::cout << calls << " calls of " << functions().size() << " functions with " << instructionSets().size()
            << " instruction sets, and all of them from several threads: nothing different, written outside or lost\n";
  return 0;
}

}  // namespace
}  // namespace zumtest

int main(int argc, char** argv) { return zumtest::soakMain(argc, argv); }
