// What is true of every function, tested on every function of the list.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <functional>
#include <ostream>

#include "support/images.h"
#include "support/instruction_sets.h"

namespace zumtest {

void PrintTo(const Function* function, std::ostream* out) { *out << function->name; }

namespace {

template <class Predicate>
std::vector<const Function*> functionsThat(Predicate predicate) {
  std::vector<const Function*> result;
  for (const Function& function : functions())
    if (predicate(function)) result.push_back(&function);
  return result;
}

class FunctionTest : public testing::TestWithParam<const Function*> {
 protected:
  ~FunctionTest() override {
    useInstructionSet(kBestInstructionSet);
    threads_omp_of_n_zum = threads_;
  }
  const Function& function() const { return *GetParam(); }
  // The smallest rectangle that is converted.
  ZumiSize smallest() const {
    const ZumiSize minimum = function().traits.minimum;
    if (function().takesRectangle()) return {1, 1};
    return {std::max(minimum.width, function().traits.narrowest), std::max(minimum.height, 1)};
  }

 private:
  const Zum32s threads_ = threads_omp_of_n_zum;
};

// Runs a case with every instruction set. The result must be the expected one; without one, that of the lowest set.
void runOnAll(const Case& c, const Placement& placement, const std::vector<Bytes>* expected = nullptr) {
  static const std::vector<int64_t> sets = instructionSets();
  std::vector<Bytes> ofLowest;
  for (int64_t set : sets) {
    useInstructionSet(set);
    const Outcome outcome = run(c, placement);
    if (set == sets.front()) ofLowest = outcome.destinations;
    const auto where = [&] { return describe(c, placement) + ", " + hwy::TargetName(set); };
    ASSERT_EQ(outcome.status, expectedStatus(c)) << where();
    ASSERT_EQ(outcome.strayWrite, "") << where();
    ASSERT_EQ(difference(expected ? *expected : ofLowest, outcome.destinations), "") << where();
  }
}

std::vector<Bytes> tight(const Case& c) {
  useInstructionSet(instructionSets().front());
  return run(c, {Placement::kBegin}).destinations;
}

// The same with room between the rows, where that matters.
std::vector<Bytes> padded(const Case& c) {
  useInstructionSet(instructionSets().front());
  Placement placement{Placement::kBegin};
  placement.padding = c.function.traits.tightShows;
  return run(c, placement).destinations;
}

// ---- Checks of the arguments

struct Fault {
  Check check;
  ZumStatus status;
  std::string what;
  std::function<void(Call&)> make;
};

std::vector<Fault> faultsOf(const Function& function, ZumiSize size) {
  std::vector<Fault> faults;
  for (size_t i = 0; i < function.kinds.size(); ++i) {
    if (i == function.traits.optionalArgument) continue;
    const Kind kind = function.kinds[i];
    if (kind == Kind::kDestination && !function.traits.checksDestination) continue;
    if (kind == Kind::kSource || kind == Kind::kDestination || kind == Kind::kSourcePlanes ||
        kind == Kind::kDestinationPlanes)
      faults.push_back({Check::kPointers, zumErrNullPtr, "argument " + std::to_string(i) + " null",
                        [i](Call& call) { call.setNull(i); }});
  }
  const ZumiSize minimum = function.traits.minimum;
  for (int below : {1, 2, INT_MAX}) {
    const ZumiSize bad{below == INT_MAX ? INT_MIN : minimum.width - below,
                       below == INT_MAX ? INT_MIN : minimum.height - below};
    for (ZumiSize s : {ZumiSize{bad.width, size.height}, ZumiSize{size.width, bad.height}, bad})
      if ((s.width == size.width || minimum.width > 0) && (s.height == size.height || minimum.height > 0))
        faults.push_back({Check::kSize, zumErrSize, std::to_string(s.width) + " by " + std::to_string(s.height),
                          [s](Call& call) { call.setSize(s); }});
  }
  for (const Plane& plane : function.planes) {
    if (plane.pointerEntry != Plane::kNone)
      faults.push_back(
          {Check::kPlanes, zumErrNullPtr,
           "plane " + std::to_string(plane.pointerEntry) + " of argument " + std::to_string(plane.pointer) + " null",
           [plane](Call& call) { call.setNull(plane); }});
    for (int step : {0, -1})
      if (plane.step != Plane::kNone)
        faults.push_back({Check::kSteps, zumErrStep, "step " + std::to_string(step),
                          [plane, step](Call& call) { call.setStep(plane, step); }});
  }
  for (const Refusal& refusal : function.traits.refusals)
    faults.push_back({Check::kParameters, refusal.status, "parameter " + std::to_string(refusal.parameters[0]),
                      [&refusal](Call& call) { call.setParameters(refusal.parameters); }});
  faults.erase(std::remove_if(faults.begin(), faults.end(),
                              [&](const Fault& fault) { return !function.traits.makes(fault.check); }),
               faults.end());
  return faults;
}

// Each fault alone, and each two of different checks, of which the one that is checked first is reported.
TEST_P(FunctionTest, ChecksArgumentsInOrder) {
  const std::vector<Check>& order = function().traits.checks;
  const auto place = [&](const Fault& fault) { return std::find(order.begin(), order.end(), fault.check); };
  const Case c(function(), {8, 8});
  const std::vector<Fault> faults = faultsOf(function(), c.size);
  for (const Fault& first : faults) {
    for (const Fault& second : faults) {
      if (&first != &second && place(first) >= place(second)) continue;
      PlacedCall call(c, {});
      const std::vector<Bytes> before = call.destinations();
      first.make(call);
      if (&first != &second) second.make(call);
      ASSERT_EQ(call(), first.status) << first.what << ", " << second.what;
      ASSERT_EQ(difference(before, call.destinations()), "") << first.what << ", " << second.what;
      ASSERT_EQ(call.strayWrite(), "") << first.what << ", " << second.what;
    }
  }
}

// ---- Memory and instruction sets

// Images that fill their memory to the guard page at one end or the other, at every width that a vector loop can end
// in.
TEST_P(FunctionTest, StaysInsideItsImages) {
  std::vector<int> widths{95, 130, 257, 1029};
  for (int width = smallest().width; width <= 70; width += function().traits.multiple.width) widths.push_back(width);
  for (int width : widths) {
    for (int height = smallest().height; height < smallest().height + 5; height += function().traits.multiple.height) {
      const Case c(function(), function().accepted({width, height}), width + 3 * height,
                   kContents[(width + height) % std::size(kContents)]);
      const std::vector<Bytes> expected = tight(c);
      for (Placement::Edge edge : {Placement::kEnd, Placement::kBegin})
        ASSERT_NO_FATAL_FAILURE(runOnAll(c, {edge}, function().traits.alignmentShows ? nullptr : &expected));
    }
  }
}

TEST_P(FunctionTest, IgnoresAlignmentAndPadding) {
  const int paddings[] = {1, 5, 16, 67};
  const bool upwardToo = !function().traits.makes(Check::kSteps);
  size_t variant = 0;
  for (int width : {1, 5, 18, 37, 67, 131}) {
    if (width < smallest().width) continue;
    const Case c(function(), function().accepted({width, smallest().height + 2}), variant++);
    const std::vector<Bytes> expected = padded(c);
    for (size_t offset : {1, 2, 3, 4, 7, 8, 13, 16, 31, 32, 45, 63}) {
      Placement placement{Placement::kBegin, offset, paddings[offset % std::size(paddings)]};
      for (bool upward : {false, true}) {
        placement.upward = upward;
        if (upward && !upwardToo) continue;
        ASSERT_NO_FATAL_FAILURE(runOnAll(c, placement, function().traits.alignmentShows ? nullptr : &expected));
      }
    }
  }
}

TEST_P(FunctionTest, DoesNotDependOnThreads) {
  // Above the thresholds of all parallel drivers, and not divisible into equal bands.
  for (size_t variant = 0; variant < function().traits.variants.size(); ++variant) {
    if (function().traits.variants[variant].threadsShow) continue;
    const Case c(function(), function().accepted({203, 199}), variant);
    threads_omp_of_n_zum = 1;
    const Outcome expected = run(c, {});
    for (int threads = 2; threads <= 8; ++threads) {
      threads_omp_of_n_zum = threads;
      const Outcome outcome = run(c, {});
      ASSERT_EQ(difference(expected.destinations, outcome.destinations), "") << threads << " threads";
      ASSERT_EQ(outcome.strayWrite, "") << threads << " threads";
    }
  }
}

INSTANTIATE_TEST_SUITE_P(All, FunctionTest, testing::ValuesIn(functionsThat([](const Function&) { return true; })),
                         [](const auto& test) { return test.param->name; });

// ---- Zero steps

class AnyStepTest : public FunctionTest {};

void repeatRow(Bytes& pixels, size_t rowBytes, size_t from) {
  const Bytes row(pixels.begin() + from * rowBytes, pixels.begin() + (from + 1) * rowBytes);
  for (size_t at = 0; at < pixels.size(); at += rowBytes) std::copy(row.begin(), row.end(), pixels.begin() + at);
}

TEST_P(AnyStepTest, ReadsOneSourceRowAgain) {
  Case c(function(), function().accepted({37, 8}));
  const Call call(function(), c.size, c.variant);
  for (size_t i = 0; i < function().planes.size(); ++i)
    if (function().planes[i].role == Role::kSource) repeatRow(c.pixels[i], call.rowBytes(i), 0);
  const std::vector<Bytes> expected = padded(c);
  Placement placement;
  placement.oneSourceRow = true;
  runOnAll(c, placement, &expected);
}

TEST_P(AnyStepTest, LeavesTheLastDestinationRow) {
  if (!function().traits.rowsInOrder) return;
  const Case c(function(), function().accepted({37, 8}));
  const Call call(function(), c.size, c.variant);
  std::vector<Bytes> expected = padded(c);
  size_t destination = 0;
  for (size_t i = 0; i < function().planes.size(); ++i)
    if (function().planes[i].written()) repeatRow(expected[destination++], call.rowBytes(i), call.rows(i) - 1);
  Placement placement;
  placement.oneDestinationRow = true;
  runOnAll(c, placement, &expected);
}

INSTANTIATE_TEST_SUITE_P(All, AnyStepTest, testing::ValuesIn(functionsThat([](const Function& function) {
                           return function.takesSteps() && !function.traits.makes(Check::kSteps) &&
                                  !function.traits.alignmentShows;
                         })),
                         [](const auto& test) { return test.param->name; });

// ---- In place

class SameLayoutTest : public FunctionTest {};

TEST_P(SameLayoutTest, WorksInPlace) {
  for (int width = smallest().width; width <= 133; width += 1 + width / 70) {
    Case c(function(), {width, smallest().height + 1}, width, kContents[width % std::size(kContents)]);
    c.pixels[1] = c.pixels[0];
    const std::vector<Bytes> expected = tight(c);
    Placement placement;
    placement.inPlace = true;
    ASSERT_NO_FATAL_FAILURE(runOnAll(c, placement, &expected));
  }
}

INSTANTIATE_TEST_SUITE_P(All, SameLayoutTest,
                         testing::ValuesIn(functionsThat([](const Function& f) { return f.worksInPlace(); })),
                         [](const auto& test) { return test.param->name; });

}  // namespace
}  // namespace zumtest
