// Pictures in memory and in files: what the examples need around the library.
#ifndef ZUMCC_EXAMPLES_PICTURE_H_
#define ZUMCC_EXAMPLES_PICTURE_H_

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <vector>

#include "zumcc.h"

// A tight 8-bit image of interleaved channels: 1 is gray, 3 is red, green, blue.
struct Picture {
  Picture() = default;
  Picture(int w, int h, int c) : width(w), height(h), channels(c), samples(size_t(w) * h * c) {}

  int step() const { return width * channels; }
  ZumiSize size() const { return {width, height}; }
  size_t pixels() const { return size_t(width) * height; }
  uint8_t* data() { return samples.data(); }
  const uint8_t* data() const { return samples.data(); }
  uint8_t* row(int y) { return data() + size_t(y) * step(); }
  const uint8_t* row(int y) const { return data() + size_t(y) * step(); }

  int width = 0, height = 0, channels = 0;
  std::vector<uint8_t> samples;
};

// Reads a JPEG or PNG file as three channels: gray is repeated, transparency is laid over white. Throws
// std::runtime_error with a message for the user.
Picture readPicture(const std::filesystem::path& file);

// Writes a PNG file of one or three channels. Throws as readPicture.
void writePng(const Picture& picture, const std::filesystem::path& file);

// One channel of an interleaved picture.
Picture channel(const Picture& picture, int index);

// Red and blue exchanged.
Picture reversed(Picture picture);

// How a picture differs from another of the same channels, over the area that they share.
struct Difference {
  Picture picture;  // the absolute differences, amplified and clipped
  int largest = 0;  // of the differences
  double psnr = 0;  // in decibels; infinite if there is no difference
};
Difference difference(const Picture& a, const Picture& b, int amplification);

#endif
