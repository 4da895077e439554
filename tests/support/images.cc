#include "support/images.h"

#include <signal.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <stdexcept>

namespace zumtest {
namespace {

constexpr size_t kSurroundings = 128;  // bytes that are watched on either side of a plane
constexpr uint8_t kUntouched = 0xA5;

size_t pageSize() {
  static const size_t size = static_cast<size_t>(sysconf(_SC_PAGESIZE));
  return size;
}

// A small, fast generator (SplitMix64): the same numbers everywhere.
class Random {
 public:
  explicit Random(uint64_t seed) : state_(seed) {}
  uint64_t operator()() {
    uint64_t z = state_ += 0x9E3779B97F4A7C15;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EB;
    return z ^ (z >> 31);
  }

 private:
  uint64_t state_;
};

// The sample at a fraction (of 2 to the 32) of its range.
void store(void* at, Sample sample, uint32_t fraction) {
  if (sample.type == 'f') {
    const float value = static_cast<float>(fraction * 0x1p-32);
    std::memcpy(at, &value, sizeof value);
    return;
  }
  uint32_t value = fraction >> (32 - 8 * sample.bytes);
  if (sample.type == 's') value ^= 1u << (8 * sample.bytes - 1);
  for (size_t i = 0; i < sample.bytes; ++i) static_cast<uint8_t*>(at)[i] = static_cast<uint8_t>(value >> (8 * i));
}

Arena& arena(size_t index, size_t size) {
  static std::vector<std::unique_ptr<Arena>> arenas;
  if (arenas.size() <= index) arenas.resize(index + 1);
  if (!arenas[index] || arenas[index]->size() < size) arenas[index] = std::make_unique<Arena>(size);
  return *arenas[index];
}

// Says which call touched a guard page before the process goes, or whoever else looks after that is told.
std::string placedCall;
struct sigaction otherHandlers[2];
void reportFault(int signal) {
  const char text[] = "\nFault in the call of ";
  (void)!write(STDERR_FILENO, text, sizeof text - 1);
  (void)!write(STDERR_FILENO, placedCall.c_str(), placedCall.size());
  (void)!write(STDERR_FILENO, "\n", 1);
  sigaction(signal, &otherHandlers[signal == SIGBUS], nullptr);
}
bool reportFaults() {
  struct sigaction own {};
  own.sa_handler = reportFault;
  return sigaction(SIGSEGV, &own, &otherHandlers[0]) == 0 && sigaction(SIGBUS, &own, &otherHandlers[1]) == 0;
}

}  // namespace

Arena::Arena(size_t size) : size_((size + pageSize() - 1) / pageSize() * pageSize()) {
  const size_t page = pageSize();
  void* all = mmap(nullptr, size_ + 2 * page, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (all == MAP_FAILED) throw std::bad_alloc();
  begin_ = static_cast<uint8_t*>(all) + page;
  if (mprotect(begin_, size_, PROT_READ | PROT_WRITE) != 0) throw std::bad_alloc();
}

Arena::~Arena() { munmap(begin_ - pageSize(), size_ + 2 * pageSize()); }

void fill(void* samples, Sample sample, size_t columns, size_t rows, Content content, uint64_t seed) {
  Random random(seed);
  uint8_t* at = static_cast<uint8_t*>(samples);
  const uint32_t across = static_cast<uint32_t>(random() >> 38), down = static_cast<uint32_t>(random() >> 38);
  for (size_t y = 0; y < rows; ++y) {
    for (size_t x = 0; x < columns; ++x, at += sample.bytes) {
      const uint32_t noise = static_cast<uint32_t>(random());
      switch (content) {
        case Content::kNoise:
          store(at, sample, noise);
          break;
        case Content::kGradient:
          store(at, sample, static_cast<uint32_t>(x) * across + static_cast<uint32_t>(y) * down + (noise >> 5));
          break;
        case Content::kExtremes:
          store(at, sample, noise & 1 ? ~0u : 0u);
          break;
      }
    }
  }
}

Case::Case(const Function& f, ZumiSize s, size_t v, Content c)
    : Case(f, s, f.traits.variants[v % f.traits.variants.size()], c) {}

Case::Case(const Function& f, ZumiSize s, const Variant& v, Content c) : function(f), size(s), variant(v), content(c) {
  const Call call(f, size, variant);
  for (size_t i = 0; i < f.planes.size(); ++i) {
    const Sample sample = f.planes[i].sample;
    pixels.emplace_back(call.rowBytes(i) * call.rows(i));
    fill(pixels[i].data(), sample, call.rowBytes(i) / sample.bytes, call.rows(i), content, 1 + i);
  }
}

PlacedCall::PlacedCall(const Case& c, const Placement& placement)
    : Call(c.function, c.size, c.variant), places_(c.function.planes.size()) {
  const std::vector<Plane>& planes = c.function.planes;
  for (size_t i = 0; i < planes.size(); ++i) {
    Place& place = places_[i];
    if (placement.inPlace && planes[i].role == Role::kDestination) {
      place = places_[0];
      Call::place(i, place.first, static_cast<int>(place.step));
      continue;
    }
    const bool stepped = planes[i].step != Plane::kNone;
    const bool oneRow =
        stepped && (planes[i].role == Role::kSource ? placement.oneSourceRow : placement.oneDestinationRow);
    const ptrdiff_t step =
        oneRow ? 0 : tightStep(i) + (stepped ? placement.padding * ptrdiff_t(planes[i].sample.bytes) : 0);
    const size_t length = rows(i) == 0 ? 0 : rowBytes(i) + step * (rows(i) - 1);
    const size_t offset = placement.offset == 0 ? 0 : placement.offset + i;
    const Arena& memory = arena(i, length + offset + kSurroundings);
    uint8_t* lowest = placement.edge == Placement::kEnd ? memory.end() - offset - length : memory.begin() + offset;
    const bool upward = stepped && placement.upward && rows(i) != 0;
    place.first = upward ? lowest + step * (rows(i) - 1) : lowest;
    place.step = upward ? -step : step;
    Call::place(i, place.first, static_cast<int>(place.step));

    place.window = std::max(memory.begin(), lowest - std::min<size_t>(kSurroundings, lowest - memory.begin()));
    const uint8_t* windowEnd = lowest + length + std::min<size_t>(kSurroundings, memory.end() - (lowest + length));
    std::memset(place.window, kUntouched, windowEnd - place.window);
    for (size_t r = 0; r < rows(i); ++r) std::copy_n(c.pixels[i].data() + r * rowBytes(i), rowBytes(i), row(i, r));
    place.before.assign(const_cast<const uint8_t*>(place.window), windowEnd);
  }

  static const bool reports = reportFaults();
  (void)reports;
  placedCall = describe(c, placement);
}

std::vector<Bytes> PlacedCall::destinations() const {
  std::vector<Bytes> result;
  for (size_t i = 0; i < places_.size(); ++i) {
    if (!function().planes[i].written()) continue;
    Bytes& pixels = result.emplace_back();
    for (size_t r = 0; r < rows(i); ++r) pixels.insert(pixels.end(), row(i, r), row(i, r) + rowBytes(i));
  }
  return result;
}

std::string PlacedCall::strayWrite() const {
  for (size_t i = 0; i < places_.size(); ++i) {
    const Place& place = places_[i];
    Bytes expected = place.before;
    for (size_t j = 0; j < places_.size(); ++j) {
      const Plane& plane = function().planes[j];
      if (!plane.written() || places_[j].window != place.window) continue;
      const size_t pixel = plane.keepsAlpha ? 4 * plane.sample.bytes : std::max<size_t>(rowBytes(j), 1);
      const size_t written = plane.keepsAlpha ? 3 * plane.sample.bytes : pixel;
      for (size_t r = 0; r < rows(j); ++r)
        for (size_t x = 0; x < rowBytes(j); x += pixel)
          std::copy_n(row(j, r) + x, written, expected.data() + (row(j, r) + x - place.window));
    }
    const auto found = std::mismatch(expected.begin(), expected.end(), place.window);
    if (found.first == expected.end()) continue;
    std::ostringstream text;
    text << "plane " << i << ", byte " << found.second - place.first << " from its first, step " << place.step;
    return text.str();
  }
  return {};
}

Outcome run(const Case& c, const Placement& placement) {
  PlacedCall call(c, placement);
  const ZumStatus status = call();
  return {status, call.destinations(), call.strayWrite()};
}

ZumStatus expectedStatus(const Case& c) { return c.function.traits.oddSize(c.size) ? zumWrnOddSize : zumOk; }

std::string difference(const std::vector<Bytes>& expected, const std::vector<Bytes>& actual) {
  for (size_t i = 0; i < expected.size(); ++i) {
    const auto found = std::mismatch(expected[i].begin(), expected[i].end(), actual[i].begin(), actual[i].end());
    if (found.first == expected[i].end() && found.second == actual[i].end()) continue;
    std::ostringstream text;
    text << "destination plane " << i << ", byte " << found.first - expected[i].begin() << " of its pixels is "
         << int{*found.second} << ", not " << int{*found.first};
    return text.str();
  }
  return {};
}

std::string describe(const Case& c, const Placement& placement) {
  const char* const contents[] = {"noise", "gradient", "extremes"};
  std::ostringstream text;
  text << c.function.name << ", " << c.size.width << " by " << c.size.height << ", parameters";
  for (double parameter : c.variant.parameters) text << ' ' << parameter;
  text << ", " << contents[static_cast<int>(c.content)] << ", at the "
       << (placement.edge == Placement::kEnd ? "end" : "beginning") << ", offset " << placement.offset << ", padding "
       << placement.padding << (placement.upward ? ", upward" : "")
       << (placement.oneSourceRow ? ", one source row" : "")
       << (placement.oneDestinationRow ? ", one destination row" : "") << (placement.inPlace ? ", in place" : "");
  return text.str();
}

}  // namespace zumtest
