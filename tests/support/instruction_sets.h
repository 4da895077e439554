// The choice among the instruction sets that the library was compiled for, made through Highway.
#pragma once

#include <hwy/targets.h>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace zumtest {

constexpr int64_t kBestInstructionSet = 0;

// From the next call of the library on.
inline void useInstructionSet(int64_t target) {
  hwy::SetSupportedTargetsForTest(target);
  hwy::GetChosenTarget().Update(hwy::SupportedTargets());
}

// Those that this processor has, the lowest first.
inline std::vector<int64_t> instructionSets() {
  useInstructionSet(kBestInstructionSet);
  std::vector<int64_t> sets = hwy::SupportedAndGeneratedTargets();
  std::reverse(sets.begin(), sets.end());
  return sets;
}

}  // namespace zumtest
