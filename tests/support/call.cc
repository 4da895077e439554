#include "support/call.h"

#include <algorithm>

namespace zumtest {
namespace {

// For the functions that take a table: a colour matrix with offsets, and weights.
const float kCoefficients[16] = {0.4f, 0.5f, 0.1f, 0.02f, -0.2f, 0.9f, 0.3f, 0.01f,
                                 0.3f, 0.3f, 0.4f, 0.00f, 0.1f,  0.2f, 0.3f, 0.40f};
constexpr double kParameter = 100;  // where a variant says nothing

}  // namespace

Call::Call(const Function& function, ZumiSize size, const Variant& variant)
    : function_(function),
      size_(size),
      sourceSize_(size),
      arguments_(function.kinds.size()),
      planeArrays_(function.kinds.size()),
      stepArrays_(function.kinds.size()) {
  if (function.takesRectangle()) {
    const ZumiSize minimum = function.traits.minimum;
    sourceSize_.width = std::max(minimum.width, variant.left + size.width + variant.right);
    sourceSize_.height = std::max(minimum.height, variant.top + size.height + variant.bottom);
  }
  for (size_t i = 0; i < arguments_.size(); ++i) {
    if (function.kinds[i] == Kind::kSource) arguments_[i].pointer = const_cast<float*>(kCoefficients);
    arguments_[i].rect = {variant.left, variant.top, size.width, size.height};
  }
  setSize(sourceSize_);
  setParameters(variant.parameters);
}

int Call::tightStep(size_t plane) const {
  const Plane& own = function_.planes[plane];
  size_t longest = rowBytes(plane);
  if (own.step == Plane::kNone) return static_cast<int>(longest);
  for (size_t other = 0; other < function_.planes.size(); ++other) {
    const Plane& p = function_.planes[other];
    if (p.step == own.step && p.stepEntry == own.stepEntry) longest = std::max(longest, rowBytes(other));
  }
  return static_cast<int>(longest);
}

void Call::place(size_t plane, void* first, int step) {
  const Plane& p = function_.planes[plane];
  if (p.pointerEntry == Plane::kNone) {
    arguments_[p.pointer].pointer = first;
  } else {
    planeArrays_[p.pointer][p.pointerEntry] = first;
    arguments_[p.pointer].pointer = planeArrays_[p.pointer].data();
  }
  setStep(p, step);
}

void Call::setParameters(const std::vector<double>& values) {
  size_t next = 0;
  for (size_t i = 0; i < arguments_.size(); ++i) {
    if (!function_.isParameter(i)) continue;
    arguments_[i].number = next < values.size() ? values[next] : kParameter;
    ++next;
  }
}

void Call::setSize(ZumiSize size) {
  for (Argument& argument : arguments_) argument.size = size;
}

void Call::setTable(const void* values) {
  for (size_t i = 0; i < arguments_.size(); ++i) {
    const bool image = std::any_of(function_.planes.begin(), function_.planes.end(),
                                   [i](const Plane& plane) { return plane.pointer == i; });
    if (function_.kinds[i] == Kind::kSource && !image) arguments_[i].pointer = const_cast<void*>(values);
  }
}

void Call::setStep(const Plane& plane, int step) {
  if (plane.step == Plane::kNone) return;
  if (plane.stepEntry == Plane::kNone) {
    arguments_[plane.step].number = step;
  } else {
    stepArrays_[plane.step][plane.stepEntry] = step;
    arguments_[plane.step].pointer = stepArrays_[plane.step].data();
  }
}

}  // namespace zumtest
