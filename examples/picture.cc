#include "picture.h"

#include <png.h>
#include <turbojpeg.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>

namespace {

using Bytes = std::vector<uint8_t>;

Bytes readFile(const std::filesystem::path& file) {
  if (std::filesystem::is_directory(file)) throw std::runtime_error("it is a directory");
  std::ifstream in(file, std::ios::binary);
  if (!in) throw std::runtime_error(std::strerror(errno));
  Bytes bytes{std::istreambuf_iterator<char>(in), {}};
  if (in.bad()) throw std::runtime_error("it cannot be read");
  return bytes;
}

bool startsWith(const Bytes& bytes, std::initializer_list<uint8_t> magic) {
  return bytes.size() >= magic.size() && std::equal(magic.begin(), magic.end(), bytes.begin());
}

Picture decodeJpeg(const Bytes& bytes) {
  std::unique_ptr<void, int (*)(tjhandle)> decoder(tjInitDecompress(), tjDestroy);
  if (!decoder) throw std::runtime_error("no JPEG decoder: out of memory");
  auto check = [&](int status) {
    if (status == 0) return;
    const char* message = tjGetErrorStr2(decoder.get());
    if (tjGetErrorCode(decoder.get()) == TJERR_FATAL) throw std::runtime_error(message);
    std::fprintf(stderr, "warning: %s\n", message);  // what could be read of a damaged picture is still worth showing
  };
  int width, height, sampling, colours;
  check(tjDecompressHeader3(decoder.get(), bytes.data(), bytes.size(), &width, &height, &sampling, &colours));
  if (colours == TJCS_CMYK || colours == TJCS_YCCK) throw std::runtime_error("CMYK pictures are not supported");
  Picture picture(width, height, 3);
  check(tjDecompress2(decoder.get(), bytes.data(), bytes.size(), picture.data(), width, picture.step(), height,
                      TJPF_RGB, TJFLAG_ACCURATEDCT));
  return picture;
}

// An image of libpng's simplified interface; its errors become exceptions.
struct PngImage : png_image {
  PngImage() : png_image{} { version = PNG_IMAGE_VERSION; }
  ~PngImage() { png_image_free(this); }
  void check(int success) const {
    if (!success) throw std::runtime_error(message);
  }
};

Picture decodePng(const Bytes& bytes) {
  PngImage png;
  png.check(png_image_begin_read_from_memory(&png, bytes.data(), bytes.size()));
  png.format = PNG_FORMAT_RGB;
  Picture picture(int(png.width), int(png.height), 3);
  const png_color white{255, 255, 255};
  png.check(png_image_finish_read(&png, &white, picture.data(), picture.step(), nullptr));
  return picture;
}

}  // namespace

Picture readPicture(const std::filesystem::path& file) try {
  const Bytes bytes = readFile(file);
  if (startsWith(bytes, {0xFF, 0xD8, 0xFF})) return decodeJpeg(bytes);
  if (startsWith(bytes, {0x89, 'P', 'N', 'G'})) return decodePng(bytes);
  throw std::runtime_error("it is neither a JPEG nor a PNG picture");
} catch (const std::exception& error) {
  throw std::runtime_error("cannot read " + file.string() + ": " + error.what());
}

void writePng(const Picture& picture, const std::filesystem::path& file) try {
  PngImage png;
  png.width = picture.width;
  png.height = picture.height;
  png.format = picture.channels == 1 ? PNG_FORMAT_GRAY : PNG_FORMAT_RGB;
  png.flags = PNG_IMAGE_FLAG_FAST;
  png.check(png_image_write_to_file(&png, file.c_str(), 0, picture.data(), picture.step(), nullptr));
} catch (const std::exception& error) {
  throw std::runtime_error("cannot write " + file.string() + ": " + error.what());
}

Picture channel(const Picture& picture, int index) {
  Picture plane(picture.width, picture.height, 1);
  for (size_t i = 0; i < plane.samples.size(); ++i) plane.samples[i] = picture.samples[i * picture.channels + index];
  return plane;
}

Picture reversed(Picture picture) {
  for (size_t i = 0; i < picture.samples.size(); i += 3) std::swap(picture.samples[i], picture.samples[i + 2]);
  return picture;
}

Difference difference(const Picture& a, const Picture& b, int amplification) {
  Difference result;
  result.picture = Picture(std::min(a.width, b.width), std::min(a.height, b.height), a.channels);
  double squares = 0;
  for (int y = 0; y < result.picture.height; ++y) {
    const uint8_t *p = a.row(y), *q = b.row(y);
    uint8_t* out = result.picture.row(y);
    for (int x = 0; x < result.picture.step(); ++x) {
      const int distance = std::abs(p[x] - q[x]);
      result.largest = std::max(result.largest, distance);
      squares += distance * distance;
      out[x] = uint8_t(std::min(distance * amplification, 255));
    }
  }
  const double mean = squares / result.picture.samples.size();
  result.psnr = 10 * std::log10(255.0 * 255.0 / mean);  // infinite for equal pictures
  return result;
}
