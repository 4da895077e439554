// The functions of the library, each described from its name, the C++ type of its declaration and its traits, so that
// tests and benchmarks can be written once for all of them.
#pragma once

#include <functional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "support/traits.h"
#include "zumcc.h"

namespace zumtest {

// What a parameter of a function is, by its type.
enum class Kind { kSource, kDestination, kSourcePlanes, kDestinationPlanes, kInt, kInts, kNumber, kSize, kRect };

// An argument of any kind; one of the members is used.
struct Argument {
  void* pointer = nullptr;
  double number = 0;
  ZumiSize size{};
  ZumiRect rect{};
};

enum class Role { kSource, kDestination, kInPlace };

struct Sample {
  char type;  // 'u', 's' or 'f'
  size_t bytes;
};

// One plane of samples that a call reads or writes.
struct Plane {
  static constexpr size_t kNone = ~size_t{0};

  Role role;
  Sample sample;
  size_t samplesPerColumn = 1;                   // 0: one sample altogether, the result of a reduction
  int columnDivisor = 1, rowDivisor = 1;         // pixels that share a column or a row of this plane
  bool roundsUp = false;                         // when the size is not a multiple of those
  int (*columnsBehind)(int width) = nullptr;     // the trait
  bool keepsAlpha = false;                       // the fourth sample of each pixel is not written
  size_t pointer = kNone, pointerEntry = kNone;  // the argument with its address, and its place if that is an array
  size_t step = kNone, stepEntry = kNone;        // the same for its step

  bool read() const { return role != Role::kDestination; }
  bool written() const { return role != Role::kSource; }
  size_t rowBytes(ZumiSize size) const;
  size_t rows(ZumiSize size) const;
};

struct Function {
  std::string name;
  Traits traits;
  std::vector<Kind> kinds;  // of the arguments
  std::vector<Plane> planes;
  std::function<ZumStatus(const Argument*)> invoke;

  bool takesRectangle() const;
  bool isParameter(size_t argument) const;  // a number that is no step
  bool takesSteps() const;
  // One interleaved image of the same layout on each side, so that they may be the same image.
  bool worksInPlace() const;
  // The size, or the next one that the function converts.
  ZumiSize accepted(ZumiSize size) const;
};

// All the functions that take an image, in the order of the list.
const std::vector<Function>& functions();

// ---- from the type of a declaration

template <class T>
constexpr Kind kindOf() {
  if constexpr (std::is_same_v<T, ZumiSize>) {
    return Kind::kSize;
  } else if constexpr (std::is_same_v<T, ZumiRect>) {
    return Kind::kRect;
  } else if constexpr (std::is_same_v<T, int>) {
    return Kind::kInt;
  } else if constexpr (std::is_same_v<T, const int*>) {
    return Kind::kInts;
  } else if constexpr (std::is_pointer_v<T>) {
    using Target = std::remove_pointer_t<T>;
    if constexpr (std::is_pointer_v<Target>)
      return std::is_const_v<std::remove_pointer_t<Target>> ? Kind::kSourcePlanes : Kind::kDestinationPlanes;
    else
      return std::is_const_v<Target> ? Kind::kSource : Kind::kDestination;
  } else {
    return Kind::kNumber;
  }
}

// The size of the samples behind a pointer, 0 if there are none.
template <class T>
constexpr size_t sampleBytes() {
  if constexpr (std::is_pointer_v<T>)
    return sampleBytes<std::remove_pointer_t<T>>();
  else if constexpr (std::is_arithmetic_v<T>)
    return sizeof(T);
  else
    return 0;
}

template <class T>
T get(const Argument& argument) {
  if constexpr (std::is_same_v<T, ZumiSize>)
    return argument.size;
  else if constexpr (std::is_same_v<T, ZumiRect>)
    return argument.rect;
  else if constexpr (std::is_pointer_v<T>)
    return static_cast<T>(argument.pointer);
  else
    return static_cast<T>(argument.number);
}

template <class... T, size_t... I>
ZumStatus apply(ZumStatus (*function)(T...), const Argument* arguments, std::index_sequence<I...>) {
  return function(get<T>(arguments[I])...);
}

}  // namespace zumtest
