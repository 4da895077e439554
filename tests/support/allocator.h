// The allocator that the library is tested with: it counts its blocks, and refuses the requests that it is told to.
#pragma once

#include <atomic>
#include <cstdint>
#include <cstdlib>

#include "zumcc.h"

namespace zumtest {

class Allocator {
 public:
  static void install() {
    i_malloc = allocate;
    i_free = release;
  }
  // Bit n says whether the n-th request from now on is refused; those behind the last bit are not.
  static void refuse(uint32_t requests) {
    refusals_ = requests;
    refused_ = false;
  }
  static bool refused() { return refused_; }  // since then
  static int64_t blocks() { return blocks_; }

 private:
  static constexpr size_t kMost = size_t{1} << 24;  // more is not to be had either

  static void* allocate(size_t size) {
    uint32_t refusals = refusals_;
    while (!refusals_.compare_exchange_weak(refusals, refusals >> 1)) {
    }
    void* const block = refusals & 1 || size > kMost ? nullptr : std::malloc(size);
    if (block)
      ++blocks_;
    else
      refused_ = true;
    return block;
  }
  static void release(void* block) {
    if (block) --blocks_;
    std::free(block);
  }

  static inline std::atomic<uint32_t> refusals_{0};
  static inline std::atomic<bool> refused_{false};
  static inline std::atomic<int64_t> blocks_{0};
};

}  // namespace zumtest
