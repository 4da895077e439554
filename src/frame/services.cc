// Version, memory, copy and fill, and the reductions of single-precision images.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "frame/services.cc"
#include <algorithm>
#include <cfloat>
#include <climits>
#include <cstdint>
#include <cstring>

#include "frame/arguments.h"
#include "frame/drivers.h"
#include "frame/extended.h"
#include "hwy/cache_control.h"
#include "hwy/foreach_target.h"
#include "hwy/highway.h"

HWY_BEFORE_NAMESPACE();
namespace zum {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

struct Addition {
  static constexpr bool kInFours = false;
  static float apply(float sum, float sample) { return sum + sample; }
  template <class V>
  static V apply(V sum, V sample) {
    return hn::Add(sum, sample);
  }
};

// A NaN takes the lane and leaves it to the lane's next sample; of two zeros the later one stays.
struct Maximum {
  static constexpr bool kInFours = true;
  static float apply(float max, float sample) { return max > sample ? max : sample; }
  template <class V>
  static V apply(V max, V sample) {
#if HWY_ARCH_X86
    return hn::Max(max, sample);  // the instruction makes this very comparison
#else
    return hn::IfThenElse(hn::Gt(max, sample), max, sample);
#endif
  }
};

HWY_INLINE float sampleAt(const float* p) {
  float sample;
  std::memcpy(&sample, p, sizeof(sample));  // p may be unaligned
  return sample;
}

// The samples of a row that come before the first 16-byte boundary, if whole samples lead there.
HWY_INLINE std::size_t samplesBeforeBoundary(const float* row, std::size_t width) {
  const auto address = reinterpret_cast<std::uintptr_t>(row);
  return address % sizeof(float) ? 0 : std::min(width, (0 - address) % 16 / sizeof(float));
}

// Running results in a fixed number of lanes. The lane that a sample enters decides the rounding of a sum and the fate
// of a NaN: it is a matter of definition and not of the vector length.
template <class Operation, std::size_t lanes>
class LaneReduction {
 public:
  explicit LaneReduction(float start) { std::fill_n(lane_, lanes, start); }

  // The samples before the boundary enter lane 0 one by one, the others in groups of as many as there are lanes; the
  // remainder in groups of half as many, a quarter and so on, each from lane 0 on.
  void addRow(const float* p, std::size_t width) {
    const std::size_t before = samplesBeforeBoundary(p, width);
    for (std::size_t i = 0; i < before; ++i) lane_[0] = Operation::apply(lane_[0], sampleAt(p++));
    width -= before;
    if (width >= lanes) addGroups(p, width / lanes);
    p += width / lanes * lanes;
    for (std::size_t group = lanes / 2; group; group /= 2) {
      if (!(width & group)) continue;
      for (std::size_t i = 0; i < group; ++i) lane_[i] = Operation::apply(lane_[i], sampleAt(p++));
    }
  }

  // Adds the upper half of the lanes to the lower half until one lane is left.
  float fold() {
    for (std::size_t half = lanes / 2; half; half /= 2) {
      for (std::size_t i = 0; i < half; ++i) lane_[i] = Operation::apply(lane_[i], lane_[i + half]);
    }
    return lane_[0];
  }

 private:
  void addGroups(const float* p, std::size_t groups) {
    constexpr hn::CappedTag<float, lanes> d;
    constexpr std::size_t step = hn::MaxLanes(d), vectors = lanes / step;
    hn::Vec<decltype(d)> v[vectors];
    for (std::size_t i = 0; i < vectors; ++i) v[i] = hn::LoadU(d, lane_ + i * step);
    if constexpr (Operation::kInFours) {
      for (; groups >= 4; groups -= 4, p += 4 * lanes) {
        for (std::size_t i = 0; i < vectors; ++i) v[i] = applyFour(d, v[i], p + i * step);
      }
    }
    for (; groups; --groups) {
      for (std::size_t i = 0; i < vectors; ++i, p += step) v[i] = Operation::apply(v[i], hn::LoadU(d, p));
    }
    for (std::size_t i = 0; i < vectors; ++i) hn::StoreU(v[i], d, lane_ + i * step);
  }

  // Four groups in a row. Without a NaN among them, which shows in their sum, the operation may be made of its later
  // operands first: the running result then waits for one step, not four.
  template <class D>
  static HWY_INLINE hn::Vec<D> applyFour(D d, hn::Vec<D> v, const float* p) {
    const auto s0 = hn::LoadU(d, p), s1 = hn::LoadU(d, p + lanes), s2 = hn::LoadU(d, p + 2 * lanes),
               s3 = hn::LoadU(d, p + 3 * lanes);
    const auto sum = (s0 + s1) + (s2 + s3);
    if (HWY_LIKELY(hn::AllTrue(d, sum == sum))) {
      return Operation::apply(v, Operation::apply(Operation::apply(s0, s1), Operation::apply(s2, s3)));
    }
    return Operation::apply(Operation::apply(Operation::apply(Operation::apply(v, s0), s1), s2), s3);
  }

  float lane_[lanes];
};

float maxOfRows(const Rows<const float>& src, ZumiSize roi) {
  LaneReduction<Maximum, 8> max(-FLT_MAX);
  for (int r = 0; r < roi.height; ++r) max.addRow(src.row(r), static_cast<std::size_t>(roi.width));
  return max.fold();
}

double sumOfRows(const Rows<const float>& src, ZumiSize roi) {
  Extended total = 0.0;
  for (int r = 0; r < roi.height; ++r) {
    LaneReduction<Addition, 16> sum(0.0f);
    sum.addRow(src.row(r), static_cast<std::size_t>(roi.width));
    total = total + Extended(sum.fold());
  }
  return static_cast<double>(total);
}

// What a row is written from: bytes in memory, or one value.
struct Bytes {
  const Zum8u* row;

  template <class D>
  hn::Vec<D> load(D d, std::size_t x) const {
    return hn::LoadU(d, row + x);
  }
  void writeTo(Zum8u* dst, std::size_t n) const { std::memcpy(dst, row, n); }
};

struct Value {
  Zum8u value;

  template <class D>
  hn::Vec<D> load(D d, std::size_t) const {
    return hn::Set(d, value);
  }
  void writeTo(Zum8u* dst, std::size_t n) const { std::memset(dst, value, n); }
};

using ByteVector = hn::CappedTag<Zum8u, 32>;
constexpr std::size_t kVectorBytes = hn::MaxLanes(ByteVector());

// The C library is as fast as anything on a long row, but calling it costs more than writing a short one.
template <class Source>
HWY_INLINE void writeRow(Source src, Zum8u* dst, std::size_t width) {
  constexpr std::size_t kLongRow = 256;
  if (width < kVectorBytes || width >= kLongRow) return src.writeTo(dst, width);
  const ByteVector d;
  for (std::size_t x = 0; x + kVectorBytes <= width; x += kVectorBytes) hn::StoreU(src.load(d, x), d, dst + x);
  hn::StoreU(src.load(d, width - kVectorBytes), d, dst + width - kVectorBytes);
}

// The same past the cache.
template <class Source>
HWY_INLINE void streamRow(Source src, Zum8u* dst, std::size_t width) {
  if (width < kVectorBytes) return src.writeTo(dst, width);
  const ByteVector d;
  hn::StoreU(src.load(d, 0), d, dst);
  std::size_t x = kVectorBytes - reinterpret_cast<std::uintptr_t>(dst) % kVectorBytes;
  for (; x + kVectorBytes <= width; x += kVectorBytes) hn::Stream(src.load(d, x), d, dst + x);
  hn::StoreU(src.load(d, width - kVectorBytes), d, dst + width - kVectorBytes);
}

// source(r) is what row r is written from.
template <class SourceOf>
HWY_INLINE void writeRows(const SourceOf& source, const Rows<Zum8u>& dst, ZumiSize roi, bool pastCache) {
  const auto width = static_cast<std::size_t>(roi.width);
  for (int r = 0; r < roi.height; ++r) {
    if (pastCache) {
      streamRow(source(r), dst.row(r), width);
    } else {
      writeRow(source(r), dst.row(r), width);
    }
  }
  if (pastCache) hwy::FlushStream();
}

void copyRows(const Rows<const Zum8u>& src, const Rows<Zum8u>& dst, ZumiSize roi, bool pastCache) {
  writeRows([&src](int r) { return Bytes{src.row(r)}; }, dst, roi, pastCache);
}

void fillRows(Zum8u value, const Rows<Zum8u>& dst, ZumiSize roi, bool pastCache) {
  writeRows([value](int) { return Value{value}; }, dst, roi, pastCache);
}

}  // namespace HWY_NAMESPACE
}  // namespace zum
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zum {
namespace {

HWY_EXPORT(maxOfRows);
HWY_EXPORT(sumOfRows);
HWY_EXPORT(copyRows);
HWY_EXPORT(fillRows);

// A tight image is one long row.
ZumiSize asOneRow(ZumiSize roi) {
  const std::int64_t bytes = std::int64_t{roi.width} * roi.height;
  return bytes <= INT_MAX ? ZumiSize{static_cast<int>(bytes), 1} : roi;
}

// Writing through the cache is of no use to a call that touches more bytes than it holds.
bool overflowsCache(ZumiSize roi, int imagesTouched) {
  static const auto cache = static_cast<double>(cacheSize());
  return cache > 0 && static_cast<double>(roi.width) * roi.height * imagesTouched > cache;
}

// Even and odd positions of the rows apart, each in order.
double accurateSumOfRows(const Rows<const float>& src, ZumiSize roi) {
  double even = 0, odd = 0;
  for (int r = 0; r < roi.height; ++r) {
    const float* p = src.row(r);
    float pair[2];
    for (int x = 0; x < roi.width / 2; ++x, p += 2) {
      std::memcpy(pair, p, sizeof(pair));
      even += pair[0];
      odd += pair[1];
    }
    if (roi.width % 2) {
      std::memcpy(pair, p, sizeof(pair[0]));
      even += pair[0];
    }
  }
  return odd + even;
}

// A result, at any alignment.
template <class T>
void store(T* to, T result) {
  std::memcpy(to, &result, sizeof(result));
}

constexpr std::size_t kBlockAlignment = 32;

// The word before the block is for the address that the allocator returned.
template <class T>
T* allocate(int len) {
  if (len < 1) return nullptr;
  void* memory = i_malloc(static_cast<std::size_t>(len) * sizeof(T) + sizeof(void*) + kBlockAlignment);
  if (!memory) return nullptr;
  const auto first = reinterpret_cast<std::uintptr_t>(memory) + sizeof(void*);
  auto* block = reinterpret_cast<void**>((first + kBlockAlignment - 1) & ~(kBlockAlignment - 1));
  block[-1] = memory;
  return reinterpret_cast<T*>(block);
}

constexpr ZumLibraryVersion kVersion = {5, 2, 108, 321, {'k', '4'}, "libzumcck4.so.5.2", "5.2", "Jul 11 2007"};

}  // namespace
}  // namespace zum

using namespace zum;

const ZumLibraryVersion* zumccGetLibVersion(void) { return &kVersion; }

Zum16s* zumsMalloc_16s(int len) { return allocate<Zum16s>(len); }
Zum16u* zumsMalloc_16u(int len) { return allocate<Zum16u>(len); }
Zum32f* zumsMalloc_32f(int len) { return allocate<Zum32f>(len); }

void zumsFree(void* pBlock) {
  if (pBlock) i_free(static_cast<void**>(pBlock)[-1]);
}

ZumStatus zumiCopy_8u_C1R(const Zum8u* pSrc, int srcStep, Zum8u* pDst, int dstStep, ZumiSize roi) {
  const Pixels src{pSrc, srcStep};
  const Pixels dst{pDst, dstStep};
  if (const ZumStatus status = check(src, dst, roi)) return status;
  const bool tight = srcStep == roi.width && dstStep == roi.width;
  ZUM_KERNEL(copyRows)(src.rows(), dst.rows(), tight ? asOneRow(roi) : roi, overflowsCache(roi, 2));
  return zumOk;
}

ZumStatus zumiSet_8u_C1R(Zum8u value, Zum8u* pDst, int dstStep, ZumiSize roi) {
  const Pixels dst{pDst, dstStep};
  if (const ZumStatus status = check(dst, dst, roi)) return status;
  const bool tight = dstStep == roi.width;
  ZUM_KERNEL(fillRows)(value, dst.rows(), tight ? asOneRow(roi) : roi, overflowsCache(roi, 1));
  return zumOk;
}

ZumStatus zumiMax_32f_C1R(const Zum32f* pSrc, int srcStep, ZumiSize roi, Zum32f* pMax) {
  const Pixels src{pSrc, srcStep};
  if (const ZumStatus status = check(src, Pixels{pMax, 0}, roi)) return status;
  store(pMax, ZUM_KERNEL(maxOfRows)(src.rows(), roi));
  return zumOk;
}

ZumStatus zumiSum_32f_C1R(const Zum32f* pSrc, int srcStep, ZumiSize roi, double* pSum, int hint) {
  const Pixels src{pSrc, srcStep};
  if (const ZumStatus status = check(src, Pixels{pSum, 0}, roi)) return status;
  store(pSum, hint == zumHintAccurate ? accurateSumOfRows(src.rows(), roi) : ZUM_KERNEL(sumOfRows)(src.rows(), roi));
  return zumOk;
}

ZumStatus zumiMean_32f_C1R(const Zum32f* pSrc, int srcStep, ZumiSize roi, double* pMean, int hint) {
  if (!pMean) return zumErrNullPtr;
  double sum;
  const ZumStatus status = zumiSum_32f_C1R(pSrc, srcStep, roi, &sum, hint);
  if (status == zumOk) store(pMean, sum / (static_cast<double>(roi.width) * roi.height));
  return status;
}

#endif  // HWY_ONCE
