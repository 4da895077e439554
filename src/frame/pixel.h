// One pixel in plain integers, for the columns and edges that are not worth a vector.
#ifndef ZUM_FRAME_PIXEL_H
#define ZUM_FRAME_PIXEL_H

namespace zum {

// Three channels: R, G, B or Y, Cb, Cr and so on.
struct Pixel {
  int c0, c1, c2;
};

constexpr Pixel operator+(const Pixel& a, const Pixel& b) { return {a.c0 + b.c0, a.c1 + b.c1, a.c2 + b.c2}; }

constexpr int saturate8(int v) { return v < 0 ? 0 : v > 255 ? 255 : v; }

}  // namespace zum

#endif
