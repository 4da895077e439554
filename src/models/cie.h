// The tables of the CIE models, made by the compiler from their rules.
#ifndef ZUM_MODELS_CIE_H
#define ZUM_MODELS_CIE_H

namespace zum {

// The cube root of a number between 0 and 8, by Newton's method from above.
constexpr double cubeRoot(double x) {
  double root = 2;
  for (;;) {
    const double next = (2 * root + x / (root * root)) / 3;
    if (next >= root) return root;
    root = next;
  }
}

// Where the cube root is expanded: the range from 0 to 1 has a point a little above each of its cells.
constexpr int kCubeRootCells = 128;
struct CubeRoots {
  struct Point {
    float root;     // to six decimals
    float inverse;  // 1 over the point
  };
  Point at[kCubeRootCells];
};

constexpr CubeRoots cubeRoots(double cellsPerUnit) {
  CubeRoots result{};
  for (int i = 0; i < kCubeRootCells; ++i) {
    const double point = (i + 1) / cellsPerUnit + 0.0001;
    result.at[i].root = static_cast<float>(static_cast<int>(cubeRoot(point) * 1e6 + 0.5) / 1e6);
    result.at[i].inverse = static_cast<float>(1 / point);
  }
  return result;
}

// The points of L*u*v*. Its last cell ends at 1.
constexpr double kLuvCells = 128;
inline constexpr CubeRoots kLuvRoots = cubeRoots(kLuvCells);

// The points of L*a*b*. Its last cell ends a little above 1, so that white is in it.
constexpr double kLabCells = 127.998046875;
inline constexpr CubeRoots kLabRoots = cubeRoots(kLabCells);

}  // namespace zum

#endif
