// What is particular to a function and cannot be read from its name or its declaration.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "zumcc.h"

namespace zumtest {

// One group of argument checks.
enum class Check { kPointers, kSize, kPlanes, kSteps, kParameters };

// Values of the parameters of a conversion that are worth a run of their own. The margins are for the functions that
// take a rectangle inside an image: the part of the image around the rectangle.
struct Variant {
  std::vector<double> parameters;
  int left = 0, top = 0, right = 0, bottom = 0;
  std::string label{};       // of a row of its own in the benchmark
  bool threadsShow = false;  // the result depends on threads_omp_of_n_zum
};

// Parameters that the function refuses, and how.
struct Refusal {
  std::vector<double> parameters;
  ZumStatus status;
};

struct Traits {
  std::vector<Check> checks{Check::kPointers, Check::kSize, Check::kPlanes};  // in the order that they are made
  ZumiSize minimum{1, 1};                                                     // 0: not checked
  ZumiSize multiple{1, 1};                                                    // of which a size has to be
  bool (*oddSize)(ZumiSize) = [](ZumiSize) { return false; };                 // when zumWrnOddSize is returned
  bool halfWidthRoundsUp = true;  // chroma of 4:2:2 and 4:1:1: is the plane wide enough for an odd last pixel?
  bool halfSizeRoundsUp = false;  // chroma of 4:2:0, both ways
  int (*columnsBehind)(int width) = [](int) { return 0; };  // pixels behind each row, read and written as if its own
  size_t optionalArgument = ~size_t{0};                     // a pointer that may be null
  bool keepsAlpha = true;                                   // AC4 destinations
  int narrowest = 1;                                        // the width from which on all is regular
  std::vector<Variant> variants{{}};
  std::vector<Refusal> refusals;
  bool rowsInOrder = true;        // images below the thresholds of the parallel drivers are written from the top down
  bool checksDestination = true;  // for a null pointer
  bool alignmentShows = false;    // the result depends on the address of the source
  bool estimates = false;         // uses the processor's reciprocal estimate
  bool tightShows = false;        // images without padding are converted in another way

  bool makes(Check check) const { return std::count(checks.begin(), checks.end(), check) != 0; }
};

Traits traitsOf(const std::string& function);

}  // namespace zumtest
