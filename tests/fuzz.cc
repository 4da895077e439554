// Calls that a fuzzer thinks up. The bytes of an input choose a function, its sizes, parameters and samples, where the
// images lie and what is wrong with the arguments. Each call is made with the lowest instruction set in one thread, then
// with all of them and more: they must return what the documentation allows, write nothing outside, nothing at all with
// an error, lose no block, and come to the same.
#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <iostream>
#include <utility>

#include "support/allocator.h"
#include "support/images.h"
#include "support/instruction_sets.h"

namespace zumtest {
namespace {

void require(bool condition, const std::string& what) {
  if (condition) return;
  std::cerr << what << "\n";
  std::abort();
}

// Of an input that is used up all numbers are 0, and nothing is oneIn.
class Input : public FuzzedDataProvider {
 public:
  using FuzzedDataProvider::FuzzedDataProvider;

  int below(size_t n) { return ConsumeIntegralInRange(0, static_cast<int>(n) - 1); }
  bool oneIn(int n) { return below(n) == n - 1; }
  int anyInt() { return oneIn(2) ? ConsumeIntegral<int>() : PickValueInArray({0, -1, 1, INT_MIN, INT_MAX}); }
  float anyFloat() {
    if (oneIn(2)) return static_cast<float>(below(2001) - 1000) / 500;
    if (oneIn(4)) return PickValueInArray({0.0f, 1.0f, -0.0f, FLT_MAX, FLT_TRUE_MIN, HUGE_VALF, -HUGE_VALF, NAN});
    const uint32_t bits = ConsumeIntegral<uint32_t>();
    float value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
  }
};

class Conversion {
 public:
  explicit Conversion(Input& input)
      : input_(input),
        f_(functions()[input.below(functions().size())]),
        ownParameters_(!input.oneIn(2)),
        variant_(anyVariant()),
        case_(f_, f_.accepted(anySize()), variant_, kContents[input.below(std::size(kContents))]),
        placement_(anyPlacement()) {
    if (nameHas("Twist") || nameHas("Gray"))
      for (float& coefficient : table_) coefficient = input.anyFloat();
    for (int n = input.below(8); n > 4; --n) spoil();
    refusals_ = input.oneIn(8) ? input.ConsumeIntegral<uint32_t>() : 0;
    if (input.oneIn(8)) resize();
    allowed_ = {!faults_.empty() ? std::min_element(faults_.begin(), faults_.end())->second
                : noMemory_      ? zumErrMemAlloc
                : empty_         ? zumOk
                                 : expectedStatus(case_)};
    if (empty_) allowed_.push_back(zumErrSize);
    if (nameHas("ToneMap") && allowed_[0] == zumOk) allowed_.push_back(zumWrnNoOperation);
    for (const Refusal& refusal : f_.traits.refusals)
      if (!ownParameters_) allowed_.push_back(refusal.status);
  }

  void run() {
    static const std::vector<int64_t> sets = instructionSets();
    // Rows written over one another have an order in one thread only.
    const int threads = placement_.oneDestinationRow ? 1 : 1 + input_.below(8);
    const bool threadsShow = std::any_of(f_.traits.variants.begin(), f_.traits.variants.end(),
                                         [](const Variant& variant) { return variant.threadsShow; });
    if (input_.oneIn(2)) fillSources();
    if (placement_.inPlace) case_.pixels[1] = case_.pixels[0];
    Placement apart = placement_;
    apart.inPlace = false;
    const Outcome expected = attempt(apart, sets.front(), threadsShow ? threads : 1);
    for (const int64_t set : sets) {
      const Outcome outcome = attempt(placement_, set, threads);
      require(outcome.status == expected.status, where_ + "not the status of the lowest set");
      const std::string different = difference(expected.destinations, outcome.destinations);
      require(different == "", where_ + different);
    }
  }

 private:
  bool nameHas(const char* part) const { return f_.name.find(part) != std::string::npos; }

  // The function's own parameters or any others; rectangles inside images, across their edges and outside.
  Variant anyVariant() {
    Variant variant = f_.traits.variants[input_.below(f_.traits.variants.size())];
    if (ownParameters_) return variant;
    variant.parameters.clear();
    for (size_t i = 0; i < f_.kinds.size(); ++i)
      if (f_.isParameter(i)) variant.parameters.push_back(anyParameter(f_.kinds[i]));
    for (int* margin : {&variant.left, &variant.top, &variant.right, &variant.bottom}) *margin = input_.below(12) - 4;
    return variant;
  }
  double anyParameter(Kind kind) {
    if (kind == Kind::kNumber) return nameHas("_32f_") ? input_.anyFloat() : input_.below(nameHas("8u") ? 256 : 32768);
    const int number = input_.oneIn(2) ? input_.anyInt() : input_.below(102);
    const bool band = number == zumTopBand || number == zumMiddleBand || number == zumBottomBand;
    return band && nameHas("_Filter_") ? zumWholePicture : number;  // bands reach out of their images
  }
  ZumiSize anySize() {
    if (input_.oneIn(64)) return {190 + input_.below(32), 190 + input_.below(16)};  // for many threads
    if (input_.oneIn(4)) return {1 + input_.below(300), 1 + input_.below(20)};
    return {1 + input_.below(72), 1 + input_.below(12)};
  }
  Placement anyPlacement() {
    Placement placement{input_.oneIn(2) ? Placement::kBegin : Placement::kEnd};
    placement.offset = input_.oneIn(2) ? input_.below(70) : 0;
    placement.padding = input_.oneIn(2) ? input_.below(40) : 0;
    placement.inPlace = f_.worksInPlace() && input_.oneIn(4);
    if (f_.traits.makes(Check::kSteps)) return placement;
    placement.upward = input_.oneIn(4);
    placement.oneSourceRow = !placement.inPlace && input_.oneIn(8);
    placement.oneDestinationRow = !placement.inPlace && input_.oneIn(8);
    return placement;
  }
  void fillSources() {
    const Bytes bytes = input_.ConsumeRemainingBytes<uint8_t>();
    for (size_t i = 0; i < f_.planes.size() && !bytes.empty(); ++i)
      for (size_t at = 0; f_.planes[i].read() && at < case_.pixels[i].size(); ++at)
        case_.pixels[i][at] = bytes[(i + at) % bytes.size()];
  }

  void fail(Check check, ZumStatus status, std::function<void(Call&)> make) {
    const std::vector<Check>& checks = f_.traits.checks;
    faults_.push_back({std::find(checks.begin(), checks.end(), check), status});
    changes_.push_back(std::move(make));
  }
  // A pointer null, or a step where they are checked wrong.
  void spoil() {
    const size_t i = input_.below(f_.kinds.size());
    const Plane& plane = f_.planes[input_.below(f_.planes.size())];
    const int kind = input_.below(3), step = std::min(input_.anyInt(), 0);
    if (kind == 0 && i == f_.traits.optionalArgument) {
      changes_.push_back([i](Call& call) { call.setNull(i); });
    } else if (kind == 0 && f_.kinds[i] <= Kind::kDestinationPlanes) {
      if (f_.traits.checksDestination || f_.kinds[i] != Kind::kDestination)
        fail(Check::kPointers, zumErrNullPtr, [i](Call& call) { call.setNull(i); });
    } else if (kind == 1 && plane.pointerEntry != Plane::kNone) {
      fail(Check::kPlanes, zumErrNullPtr, [&plane](Call& call) { call.setNull(plane); });
    } else if (kind == 2 && plane.step != Plane::kNone && f_.traits.makes(Check::kSteps)) {
      fail(Check::kSteps, zumErrStep, [&plane, step](Call& call) { call.setStep(plane, step); });
    }
  }
  // A size that is not that of the images, for a call that is to touch none of them.
  void resize() {
    const auto other = [this](int length, int least) {
      const int any = input_.anyInt();
      return input_.PickValueInArray({any, length, least - 1});
    };
    const ZumiSize least = f_.traits.minimum, multiple = f_.traits.multiple;
    const ZumiSize size{other(case_.size.width, least.width), other(case_.size.height, least.height)};
    const auto set = [size](Call& call) { call.setSize(size); };
    const bool refused = (least.width > 0 && size.width < least.width) ||
                         (least.height > 0 && size.height < least.height) || size.width % multiple.width != 0 ||
                         size.height % multiple.height != 0;
    if (refused && f_.traits.makes(Check::kSize)) {
      fail(Check::kSize, zumErrSize, set);
      return;
    }
    changes_.push_back(set);
    empty_ = refused || size.width < 1 || size.height < 1;
    noMemory_ = !empty_ && asksForMemory(size);
    if (noMemory_)
      refusals_ = ~0u;
    else if (!empty_)
      fail(Check::kPointers, zumErrNullPtr, [this](Call& call) { call.setNull(f_.planes.front().pointer); });
  }
  bool asksForMemory(ZumiSize size) const {
    const uint32_t samples = 3u * static_cast<unsigned>(size.width) * static_cast<unsigned>(size.height);
    if (nameHas("Gamma")) return nameHas("_16u_") && samples > 65536 && samples <= INT_MAX;
    if (!nameHas("ReduceBits")) return false;
    const double noise = variant_.parameters[0], dither = variant_.parameters[1];
    return dither >= zumDitherFS && dither <= (noise != 0 ? zumDitherBayer : zumDitherStucki);
  }

  Outcome attempt(const Placement& placement, int64_t set, int threads) {
    useInstructionSet(set);
    threads_omp_of_n_zum = threads;
    where_ = describe(case_, placement) + ", " + hwy::TargetName(set) + ", " + std::to_string(threads) + " threads, " +
             std::to_string(changes_.size()) + " changes: ";
    PlacedCall call(case_, placement);
    call.setTable(table_);
    for (const auto& change : changes_) change(call);
    const std::vector<Bytes> before = call.destinations();
    Allocator::refuse(refusals_);
    const ZumStatus status = call();
    const Outcome outcome{status, call.destinations(), call.strayWrite()};
    const bool allowed = std::count(allowed_.begin(), allowed_.end(), status) != 0;
    require(Allocator::refused() ? status == zumErrMemAlloc : allowed, where_ + "status " + std::to_string(status));
    require(outcome.strayWrite == "", where_ + outcome.strayWrite);
    require(Allocator::blocks() == 0, where_ + "a block is not freed");
    const bool nothing = status < 0 || status == zumWrnNoOperation || empty_;
    require(!nothing || outcome.destinations == before, where_ + "something is written");
    return {status, alike(outcome.destinations), ""};
  }
  // All NaNs made one: which of two comes out of an operation, compilers choose.
  std::vector<Bytes> alike(std::vector<Bytes> destinations) const {
    auto pixels = destinations.begin();
    for (const Plane& plane : f_.planes) {
      if (!plane.written()) continue;
      for (size_t at = 0; plane.sample.type == 'f' && plane.sample.bytes == sizeof(float) && at < pixels->size();
           at += sizeof(float)) {
        float value;
        std::memcpy(&value, &(*pixels)[at], sizeof value);
        if (std::isnan(value)) std::fill_n(&(*pixels)[at], sizeof value, 0xFF);
      }
      ++pixels;
    }
    return destinations;
  }

  Input& input_;
  const Function& f_;
  const bool ownParameters_;
  const Variant variant_;
  Case case_;
  const Placement placement_;
  float table_[16] = {};
  std::vector<std::pair<std::vector<Check>::const_iterator, ZumStatus>> faults_;  // the first decides
  std::vector<std::function<void(Call&)>> changes_;
  std::vector<ZumStatus> allowed_;
  bool empty_ = false;     // nothing to do, by a size that may not be checked
  bool noMemory_ = false;  // for a size too large for anything
  uint32_t refusals_;
  std::string where_;
};

template <class T>
void allocate(Input& input, T* (*function)(int)) {
  const int len = input.oneIn(2) ? input.anyInt() : input.below(5000);
  Allocator::refuse(input.oneIn(4));
  T* const block = function(len);
  require((block != nullptr) == (len > 0 && !Allocator::refused()), "a block where there is none, or none");
  require(reinterpret_cast<uintptr_t>(block) % 32 == 0, "a block is not aligned");
  if (block) block[0] = block[len - 1] = T{};
  zumsFree(block);
}

// Random numbers in pieces, with calls between them that are refused, and at once.
template <class State, class T>
void generate(Input& input, T low, T high, ZumStatus (*create)(State**, T, T, uint32_t),
              ZumStatus (*numbers)(T*, int, State*), ZumStatus (*destroy)(State*)) {
  const uint32_t seed = input.ConsumeIntegral<uint32_t>();
  State *inPieces = nullptr, *atOnce = nullptr;
  Allocator::refuse(input.oneIn(8));
  const ZumStatus status = create(&inPieces, low, high, seed);
  require(status == (Allocator::refused() ? zumErrMemAlloc : zumOk) && !inPieces == (status != zumOk), "create");
  Allocator::refuse(0);
  if (!inPieces) return;
  require(create(nullptr, low, high, seed) == zumErrNullPtr && create(&atOnce, low, high, seed) == zumOk, "create");
  std::vector<T> pieces;
  while (input.remaining_bytes() > 0) {
    const int len = input.oneIn(4) ? std::min(input.anyInt(), 0) : 1 + input.below(700);
    const bool isNull = input.oneIn(8), stateless = input.oneIn(8);
    std::vector<T> piece(std::max(len, 1));
    const ZumStatus expected = isNull || stateless ? zumErrNullPtr : len < 1 ? zumErrSize : zumOk;
    require(numbers(isNull ? nullptr : piece.data(), len, stateless ? nullptr : inPieces) == expected, "numbers");
    if (expected == zumOk) pieces.insert(pieces.end(), piece.begin(), piece.end());
  }
  std::vector<T> all(pieces.size() + 1);
  require(numbers(all.data(), static_cast<int>(all.size()), atOnce) == zumOk, "numbers at once");
  require(pieces.empty() || std::memcmp(all.data(), pieces.data(), pieces.size() * sizeof(T)) == 0, "other numbers");
  require(destroy(inPieces) == zumOk && destroy(atOnce) == zumOk && destroy(nullptr) == zumErrNullPtr, "destroy");
}

void service(Input& input) {
  const Zum16s low = input.ConsumeIntegral<Zum16s>(), high = input.ConsumeIntegral<Zum16s>();
  const float lowest = input.anyFloat(), highest = input.anyFloat();
  allocate(input, zumsMalloc_16s);
  allocate(input, zumsMalloc_16u);
  allocate(input, zumsMalloc_32f);
  if (input.oneIn(2))
    generate(input, low, high, zumsRandUniformInitAlloc_16s, zumsRandUniform_16s, zumsRandUniformFree_16s);
  else
    generate(input, lowest, highest, zumsRandUniformInitAlloc_32f, zumsRandUniform_32f, zumsRandUniformFree_32f);
  require(Allocator::blocks() == 0, "a block is not freed");
}

}  // namespace
}  // namespace zumtest

// The threads of OpenMP keep something for themselves when they end.
extern "C" const char* __lsan_default_suppressions() { return "leak:libomp"; }

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  zumtest::Allocator::install();
  zumtest::Input input(data, size);
  if (input.oneIn(64))
    zumtest::service(input);
  else
    zumtest::Conversion(input).run();
  return 0;
}
