// What the decoders to 16-bit pixels share: the layouts of the models and the forms.
#if defined(ZUM_LUMACHROMA_PACKED16_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZUM_LUMACHROMA_PACKED16_INL_H
#undef ZUM_LUMACHROMA_PACKED16_INL_H
#else
#define ZUM_LUMACHROMA_PACKED16_INL_H
#endif

#include <array>

#include "lumachroma/forms-inl.h"
#include "lumachroma/packed16.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

// As the forms of 8-bit results, but truncated with green's chroma terms subtracted.
using PackedTruncated16 = Terms<9535, 13074, 6660, 3211, Green::kSubtracted, 16523, 0, 4>;
using PackedYuvTruncated16 = YuvTerms<9338, 4759, 3227, Green::kSubtracted, 16646, 0, 4>;

// What a family of kernels over layouts has for the layout of a model.
template <template <class Layout> class Family>
const auto& kernelsFor(Packed16Model model) {
  static constexpr std::array kInOrder = {Family<Packed16<5, 6>>::kKernels, Family<Reversed<Packed16<5, 6>>>::kKernels,
                                          Family<Packed16<5, 5>>::kKernels, Family<Reversed<Packed16<5, 5>>>::kKernels,
                                          Family<Packed16<4, 4>>::kKernels, Family<Reversed<Packed16<4, 4>>>::kKernels};
  return kInOrder[static_cast<std::size_t>(model)];
}

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#endif
