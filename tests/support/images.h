// Calls on images in guarded memory: where the planes lie, what they hold, what a call made of them.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "support/call.h"

namespace zumtest {

using Bytes = std::vector<uint8_t>;

// Memory between two pages that cannot be touched.
class Arena {
 public:
  explicit Arena(size_t size);
  ~Arena();
  Arena(const Arena&) = delete;
  Arena& operator=(const Arena&) = delete;

  uint8_t* begin() const { return begin_; }
  uint8_t* end() const { return begin_ + size_; }
  size_t size() const { return size_; }

 private:
  size_t size_;
  uint8_t* begin_;
};

enum class Content { kNoise, kGradient, kExtremes };
constexpr Content kContents[] = {Content::kNoise, Content::kGradient, Content::kExtremes};

// Samples over the whole range of their type, or 0 to 1 for floats.
void fill(void* samples, Sample sample, size_t columns, size_t rows, Content content, uint64_t seed);

// A call without its place in memory. pixels holds each plane's rows, one behind the other: what the sources hold, and
// the destinations before the call.
struct Case {
  Case(const Function& f, ZumiSize s, size_t v = 0, Content c = Content::kNoise);
  Case(const Function& f, ZumiSize s, const Variant& v, Content c);

  const Function& function;
  ZumiSize size;
  const Variant& variant;
  Content content;
  std::vector<Bytes> pixels;
};

// Where the planes of a call lie: each in an arena of its own.
struct Placement {
  enum Edge { kEnd, kBegin } edge = kEnd;  // of the arena, that the plane lies at
  size_t offset = 0;                       // bytes between that edge and the plane; one more for each plane
  int padding = 0;                         // bytes between the rows, in samples for those of more than one byte
  bool upward = false;                     // negative steps
  bool oneSourceRow = false;               // zero steps
  bool oneDestinationRow = false;
  bool inPlace = false;  // the destination is the source
};

// A call on images that lie in memory. There is one at a time.
class PlacedCall : public Call {
 public:
  PlacedCall(const Case& c, const Placement& placement);

  // What the destinations hold now, and the row of a plane.
  std::vector<Bytes> destinations() const;
  const uint8_t* row(size_t plane, size_t r) const { return places_[plane].first + places_[plane].step * ptrdiff_t(r); }
  // Tells of a byte that was changed though it is no sample of a destination, or alpha. Empty if there is none.
  std::string strayWrite() const;

 private:
  struct Place {
    uint8_t* first;
    ptrdiff_t step;
    uint8_t* window;  // the plane and what lies around it
    Bytes before;     // what the window held before the call
  };
  uint8_t* row(size_t plane, size_t r) { return places_[plane].first + places_[plane].step * ptrdiff_t(r); }

  std::vector<Place> places_;
};

struct Outcome {
  ZumStatus status;
  std::vector<Bytes> destinations;
  std::string strayWrite;
};

Outcome run(const Case& c, const Placement& placement);
// The status that the function must return.
ZumStatus expectedStatus(const Case& c);
// Where two outcomes differ. Empty if they do not.
std::string difference(const std::vector<Bytes>& expected, const std::vector<Bytes>& actual);

std::string describe(const Case& c, const Placement& placement);

}  // namespace zumtest
