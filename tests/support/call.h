// One call of a function: its arguments, made for a size and a variant, with the planes where the caller puts them.
#pragma once

#include <array>
#include <vector>

#include "support/describe.h"

namespace zumtest {

class Call {
 public:
  // size is that of the rectangle to convert. For a function that takes a rectangle inside an image, the image is the
  // rectangle and the variant's margins, and at least as large as the function demands.
  Call(const Function& function, ZumiSize size, const Variant& variant);
  Call(const Call&) = delete;
  Call& operator=(const Call&) = delete;

  const Function& function() const { return function_; }
  size_t rowBytes(size_t plane) const { return function_.planes[plane].rowBytes(extent(plane)); }
  size_t rows(size_t plane) const { return function_.planes[plane].rows(extent(plane)); }
  // The smallest step of a plane: the length of its row, or that of the longest row where planes share a step.
  int tightStep(size_t plane) const;

  void place(size_t plane, void* first, int step);
  void setParameters(const std::vector<double>& values);
  void setSize(ZumiSize size);
  void setTable(const void* values);
  void setNull(size_t argument) { arguments_[argument].pointer = nullptr; }
  void setNull(const Plane& plane) { planeArrays_[plane.pointer][plane.pointerEntry] = nullptr; }
  void setStep(const Plane& plane, int step);

  ZumStatus operator()() const { return function_.invoke(arguments_.data()); }

 private:
  ZumiSize extent(size_t plane) const { return function_.planes[plane].read() ? sourceSize_ : size_; }

  const Function& function_;
  ZumiSize size_, sourceSize_;
  std::vector<Argument> arguments_;
  std::vector<std::array<void*, 4>> planeArrays_;  // by argument, as the next
  std::vector<std::array<int, 4>> stepArrays_;
};

}  // namespace zumtest
