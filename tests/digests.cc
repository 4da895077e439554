// A digest of what each function makes of a fixed battery of calls: sizes, contents, variants, paddings, statuses. The
// digests are the same on all processors and with every instruction set, and so tell of any change of a result.
//
//   zum_digests          prints them, a line for each function
//   zum_digests FILE     compares them with those of a file
//
// Some functions use the processor's reciprocal estimate. Their digests are those of the estimate that reciprocal.h
// has in tables; on a processor with another one they are not compared.
#include <cstdio>
#include <fstream>
#include <iostream>
#include <map>
#include <string>

#include "support/images.h"
#include "support/instruction_sets.h"
#include "support/plain.h"

namespace zumtest {
namespace {

// FNV-1a over bytes.
class Digest {
 public:
  void add(const void* data, size_t bytes) {
    for (size_t i = 0; i < bytes; ++i) state_ = (state_ ^ static_cast<const uint8_t*>(data)[i]) * 0x100000001B3;
  }
  void add(int64_t number) { add(&number, sizeof number); }
  std::string text() const {
    char hex[17];
    std::snprintf(hex, sizeof hex, "%016llx", static_cast<unsigned long long>(state_));
    return hex;
  }

 private:
  uint64_t state_ = 0xCBF29CE484222325;
};

// Widths around the blocks and vectors, tight and padded images, areas on both sides of the thresholds of parallel and
// of table driven functions.
constexpr ZumiSize kSizes[] = {{2, 2}, {5, 3}, {8, 8}, {23, 4}, {36, 7}, {67, 4}, {130, 5}, {260, 24}};

ZumiSize accepted(const Function& function, ZumiSize size) {
  const ZumiSize multiple = function.traits.multiple;
  return {(size.width + multiple.width - 1) / multiple.width * multiple.width,
          (size.height + multiple.height - 1) / multiple.height * multiple.height};
}

std::string digestOf(const Function& function) {
  Digest digest;
  for (size_t variant = 0; variant < function.traits.variants.size(); ++variant) {
    for (ZumiSize size : kSizes) {
      for (Content content : kContents) {
        const Case c(function, accepted(function, size), variant, content);
        Placement placement{Placement::kBegin};
        placement.padding = size.width % 2 * 4;
        for (int threads : {1, 2}) {
          if (threads == 2 && !c.variant.threadsShow) continue;
          threads_omp_of_n_zum = threads;
          const Outcome outcome = run(c, placement);
          digest.add(outcome.status);
          for (const Bytes& plane : outcome.destinations) digest.add(plane.data(), plane.size());
        }
      }
    }
  }
  return digest.text();
}

// ---- The functions that take no image

template <class State, class Sample, class Number>
std::string digestOfGenerator(ZumStatus (*make)(State**, Number, Number, uint32_t),
                              ZumStatus (*generate)(Sample*, int, State*), ZumStatus (*release)(State*)) {
  Digest digest;
  for (uint32_t seed : {0u, 1u, 0xDEADBEEFu}) {
    State* state = nullptr;
    Sample numbers[1000] = {};
    digest.add(make(&state, -100, 1000, seed));
    digest.add(generate(numbers, 1000, state));
    digest.add(numbers, sizeof numbers);
    digest.add(release(state));
  }
  return digest.text();
}

template <class Sample>
std::string digestOfAllocation(Sample* (*allocate)(int)) {
  Digest digest;
  for (int length : {-1, 0, 1, 1000}) {
    Sample* block = allocate(length);
    digest.add(block ? static_cast<int64_t>(reinterpret_cast<uintptr_t>(block) % 32) : -1);
    zumsFree(block);
  }
  return digest.text();
}

std::map<std::string, std::string> digestsOfServices() {
  const ZumLibraryVersion& version = *zumccGetLibVersion();
  Digest digest;
  digest.add(&version.major, 4 * sizeof(Zum32s) + sizeof version.targetCpu);
  for (const std::string text : {version.name, version.version, version.buildDate})
    digest.add(text.data(), text.size());
  const std::string of16 =
                        digestOfGenerator(zumsRandUniformInitAlloc_16s, zumsRandUniform_16s, zumsRandUniformFree_16s),
                    of32 =
                        digestOfGenerator(zumsRandUniformInitAlloc_32f, zumsRandUniform_32f, zumsRandUniformFree_32f);
  return {{"zumccGetLibVersion", digest.text()},
          {"zumsMalloc_16s", digestOfAllocation(zumsMalloc_16s)},
          {"zumsMalloc_16u", digestOfAllocation(zumsMalloc_16u)},
          {"zumsMalloc_32f", digestOfAllocation(zumsMalloc_32f)},
          {"zumsFree", digestOfAllocation(zumsMalloc_32f)},
          {"zumsRandUniformInitAlloc_16s", of16},
          {"zumsRandUniform_16s", of16},
          {"zumsRandUniformFree_16s", of16},
          {"zumsRandUniformInitAlloc_32f", of32},
          {"zumsRandUniform_32f", of32},
          {"zumsRandUniformFree_32f", of32}};
}

// ---- All of them

std::map<std::string, std::string> allDigests() {
  std::map<std::string, std::string> digests = digestsOfServices();
  for (const Function& function : functions()) digests[function.name] = digestOf(function);
  return digests;
}

bool estimatesByTable() {
  for (uint32_t significand = 0; significand < 1u << 23; significand += 1u << 11) {
    const float x = ofBits(0x3F800000 | significand);
    if (bitsOf(estimate(x)) != zum::reciprocalBits(bitsOf(x))) return false;
  }
  return true;
}

int compare(const std::map<std::string, std::string>& digests, const char* file) {
  std::ifstream stream(file);
  const bool comparesEstimates = estimatesByTable();
  size_t known = 0, different = 0, skipped = 0;
  for (std::string name, digest; stream >> name >> digest; ++known) {
    const auto found = digests.find(name);
    const bool estimated = found != digests.end() && traitsOf(name).estimates;
    if (estimated && !comparesEstimates) {
      ++skipped;
    } else if (found == digests.end() || found->second != digest) {
      std::cout << name << ": " << (found == digests.end() ? "no such function" : found->second) << ", not " << digest
                << "\n";
      ++different;
    }
  }
  std::cout << known << " digests, " << different << " different, " << skipped
            << " of another reciprocal estimate not compared, " << digests.size() << " functions\n";
  return known == digests.size() && different == 0 ? 0 : 1;
}

int digestsMain(int argc, char** argv) {
  const std::map<std::string, std::string> digests = allDigests();
  if (argc > 1) return compare(digests, argv[1]);
  for (const auto& [name, digest] : digests) std::cout << name << ' ' << digest << '\n';
  return 0;
}

}  // namespace
}  // namespace zumtest

int main(int argc, char** argv) { return zumtest::digestsMain(argc, argv); }
