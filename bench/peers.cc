// Times the library against other libraries that do the same or similar conversions, one thread each.
//
//   zum_bench_peers [--filter=REGEX] [--sizes=WxH,...] [--isa=ssse3|avx2|avx512] [--seconds=S] [--markdown]
//
// A comparison is one function of the library and its peers. They take turns, with a memcpy between them, in many short
// samples, and the shortest sample of each counts: what else the machine does can only lengthen one. "of copy" is the
// share of the copy limit, the time of a memcpy of (bytes read + bytes written) / 2 bytes on the same memory over the
// time of a call. Peers marked ~ do similar work on other bytes: another matrix, channel order or layout. For the
// others the end of the run compares their results with ours, roughly: it finds swapped planes, not rounding.
#include <hwy/highway.h>
#include <libyuv.h>
#include <regex.h>
#include <zumcc.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#include <sstream>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

extern "C" {
#include <libavutil/log.h>
#include <libswscale/swscale.h>
}
#include <leptonica/allheaders.h>
#include <zimg.h>

namespace {

using std::string;

// ---- Images ---------------------------------------------------------------------------------------------------------

struct Plane {
  int samples;  // behind one another in a pixel
  int xShift = 0;
  int yShift = 0;
};

// How a kind of image lies in memory, and which colour channel a sample is of: sample number `sample` of the pixel in
// column x, row y of plane `plane`.
// A 16-bit sample may be a whole pixel: bits then has the bits of its three channels, the lowest first.
struct Format {
  int sampleBytes;
  std::vector<Plane> planes;
  int (*channel)(int plane, int sample, int x, int y);
  int bits[3] = {};

  bool packs16() const { return bits[0] != 0; }
};

int interleavedChannel(int, int sample, int, int) { return sample; }
int planeChannel(int plane, int, int, int) { return plane; }
int packed422Channel(int, int sample, int x, int) { return sample == 0 ? 0 : 1 + x % 2; }
int chromaFirstChannel(int, int sample, int x, int) { return sample == 1 ? 0 : 1 + x % 2; }
int lumaAndPairsChannel(int plane, int sample, int, int) { return plane + sample; }
int rggbChannel(int, int, int x, int y) { return x % 2 + y % 2; }

const Format kNone{1, {}, planeChannel};
const Format kGray8{1, {{1}}, interleavedChannel};
const Format kGray32f{4, {{1}}, interleavedChannel};
const Format kC3{1, {{3}}, interleavedChannel};
const Format kC4{1, {{4}}, interleavedChannel};
const Format kC3x16{2, {{3}}, interleavedChannel};
const Format kC4x16{2, {{4}}, interleavedChannel};
const Format kC3x32f{4, {{3}}, interleavedChannel};
const Format kC4x32f{4, {{4}}, interleavedChannel};
const Format kGray16{2, {{1}}, interleavedChannel};
const Format kBits{1, {{1, 3}}, interleavedChannel};  // eight pixels a byte
const Format kPacked422{1, {{2}}, packed422Channel};
const Format kChromaFirst422{1, {{2}}, chromaFirstChannel};
const Format kP444{1, {{1}, {1}, {1}}, planeChannel};
const Format kP422{1, {{1}, {1, 1}, {1, 1}}, planeChannel};
const Format kP411{1, {{1}, {1, 2}, {1, 2}}, planeChannel};
const Format kP420{1, {{1}, {1, 1, 1}, {1, 1, 1}}, planeChannel};
const Format kNv12{1, {{1}, {2, 1, 1}}, lumaAndPairsChannel};
const Format kPixels565{2, {{1}}, interleavedChannel, {5, 6, 5}};
const Format kPixels555{2, {{1}}, interleavedChannel, {5, 5, 5}};
const Format kPixels444{2, {{1}}, interleavedChannel, {4, 4, 4}};
const Format kMosaic8{1, {{1}}, rggbChannel};
const Format kMosaic16{2, {{1}}, rggbChannel};

struct Size {
  int width, height;
};

string toString(Size size) { return std::to_string(size.width) + "x" + std::to_string(size.height); }

// An image without padding, its planes behind one another. A plane starts at a whole vector: swscale wants it so.
class Image {
 public:
  // The memory takes `capacity` bytes if that is more than the image has. `offset` moves it away from the page's start.
  Image(const Format& format, Size size, size_t capacity, size_t offset);

  const Format& format() const { return *format_; }
  Size size() const { return size_; }
  size_t bytes() const { return bytes_; }
  uint8_t* data() const { return data_; }
  uint8_t* const* planes() const { return planes_; }
  uint8_t* plane(int p) const { return planes_[p]; }
  const int* steps() const { return steps_; }
  int step(int p) const { return steps_[p]; }
  int columns(int p) const { return size_.width >> format_->planes[p].xShift; }
  int rows(int p) const { return size_.height >> format_->planes[p].yShift; }

  // A smooth picture of all channels with a little noise.
  void fill();

 private:
  const Format* format_;
  Size size_;
  size_t bytes_ = 0;
  std::unique_ptr<uint8_t, decltype(&std::free)> memory_;
  uint8_t* data_;
  uint8_t* planes_[4] = {};
  int steps_[4] = {};
};

size_t bytesOf(const Format& format, Size size) {
  size_t bytes = 0;
  for (const Plane& plane : format.planes)
    bytes += size_t(size.width >> plane.xShift) * (size.height >> plane.yShift) * plane.samples * format.sampleBytes;
  return bytes;
}

Image::Image(const Format& format, Size size, size_t capacity, size_t offset)
    : format_(&format), size_(size), bytes_(bytesOf(format, size)), memory_(nullptr, &std::free) {
  constexpr size_t kPage = 4096, kVector = 16;
  size_t allocated = (std::max(bytes_, capacity) + offset + 2 * kPage - 1) / kPage * kPage;
  memory_.reset(static_cast<uint8_t*>(std::aligned_alloc(kPage, allocated)));
  if (!memory_) throw std::bad_alloc();
  std::memset(memory_.get(), 0, allocated);
  data_ = memory_.get() + offset;
  uint8_t* next = data_;
  for (size_t p = 0; p < format.planes.size(); ++p) {
    planes_[p] = next;
    steps_[p] = columns(p) * format.planes[p].samples * format.sampleBytes;
    next += (size_t(steps_[p]) * rows(p) + kVector - 1) / kVector * kVector;
  }
}

int triangleWave(int t) {
  constexpr int kPeak = 256;
  return std::abs(t % (2 * kPeak) - kPeak);
}

void Image::fill() {
  uint32_t random = 1;
  for (size_t p = 0; p < format_->planes.size(); ++p) {
    const Plane& plane = format_->planes[p];
    for (int y = 0; y < rows(p); ++y) {
      uint8_t* out = planes_[p] + size_t(steps_[p]) * y;
      for (int x = 0; x < columns(p); ++x) {
        auto sample = [&](int c) {
          random = random * 1664525 + 1013904223;
          int smooth = triangleWave((x << plane.xShift) + 90 * c) + triangleWave((y << plane.yShift) + 150 * c);
          return uint8_t(48 + smooth * 5 / 16 + random / (1u << 30));
        };
        for (int s = 0; s < plane.samples; ++s, out += format_->sampleBytes) {
          if (format_->packs16()) {
            unsigned pixel = 0;
            for (int c = 2; c >= 0; --c) pixel = pixel << format_->bits[c] | sample(c) >> (8 - format_->bits[c]);
            uint16_t packed = pixel;
            std::memcpy(out, &packed, sizeof packed);
            continue;
          }
          uint8_t value = sample(format_->channel(p, s, x, y));
          if (format_->sampleBytes == 1) {
            *out = value;
          } else if (format_->sampleBytes == 2) {
            uint16_t wide = value << 8 | random >> 24;
            std::memcpy(out, &wide, sizeof wide);
          } else {
            float real = (value << 8 | random >> 24) / 65535.0f;
            std::memcpy(out, &real, sizeof real);
          }
        }
      }
    }
  }
}

// The samples of an image, those of packed pixels apart, as parts of their range.
std::vector<float> samplesOf(const Image& image) {
  const Format& format = image.format();
  std::vector<float> samples;
  for (size_t at = 0; at < image.bytes(); at += format.sampleBytes) {
    uint16_t wide;
    std::memcpy(&wide, image.data() + at, format.sampleBytes == 2 ? 2 : 1);
    if (format.sampleBytes == 1) {
      samples.push_back(image.data()[at] / 255.0f);
    } else if (format.sampleBytes == 4) {
      float real;
      std::memcpy(&real, image.data() + at, sizeof real);
      samples.push_back(real);
    } else if (!format.packs16()) {
      samples.push_back(wide / 65535.0f);
    } else {
      unsigned pixel = wide;
      for (int bits : format.bits) {
        unsigned highest = (1u << bits) - 1;
        samples.push_back(float(pixel & highest) / highest);
        pixel >>= bits;
      }
    }
  }
  return samples;
}

// The peak signal-to-noise ratio of two images of one format, in dB.
double psnr(const Image& a, const Image& b) {
  double sum = 0;
  const std::vector<float> u = samplesOf(a), v = samplesOf(b);
  for (size_t i = 0; i < u.size(); ++i) sum += double(u[i] - v[i]) * (u[i] - v[i]);
  return sum == 0 ? std::numeric_limits<double>::infinity() : 10 * std::log10(u.size() / sum);
}

// ---- Calls ----------------------------------------------------------------------------------------------------------

// Makes the call that often.
using Loop = std::function<void(int calls)>;
// Prepares a call on two images, which outlive it: what a program would set up once for many calls is done here.
using Prepare = std::function<Loop(const Image& src, const Image& dst)>;

template <class Call>
Loop loop(Call call) {
  return [call](int calls) mutable {
    for (int i = 0; i < calls; ++i) {
      call();
      asm volatile("" ::: "memory");  // no call may be dropped because the next one writes the same
    }
  };
}

// A call that needs nothing prepared.
template <class Call>
Prepare direct(Call call) {
  return [call](const Image& src, const Image& dst) { return loop([call, &src, &dst] { call(src, dst); }); };
}

void check(ZumStatus status) {
  if (status != zumOk) throw std::runtime_error("the library returned status " + std::to_string(status));
}

ZumiSize roiOf(const Image& image) { return {image.size().width, image.size().height}; }

// An image as an argument: interleaved or in planes, with one step or a step for each plane.
template <class Argument>
Argument pointerTo(const Image& image) {
  if constexpr (std::is_pointer_v<std::remove_pointer_t<Argument>>)
    return image.planes();
  else
    return reinterpret_cast<Argument>(image.data());
}
template <class Argument>
Argument stepOf(const Image& image) {
  if constexpr (std::is_pointer_v<Argument>)
    return image.steps();
  else
    return image.step(0);
}

// The library's functions, by their shapes. Most convert an image to another, some of them with a value for alpha.
template <class Src, class SrcStep, class Dst, class DstStep, class... Alpha>
Prepare zum(ZumStatus (*f)(Src, SrcStep, Dst, DstStep, ZumiSize, Alpha...)) {
  return direct([f](auto& src, auto& dst) {
    check(f(pointerTo<Src>(src), stepOf<SrcStep>(src), pointerTo<Dst>(dst), stepOf<DstStep>(dst), roiOf(src),
            Alpha{255}...));
  });
}
Prepare zum(ZumStatus (*f)(const Zum8u* const*, const int*, Zum8u* const*, const int*, ZumiSize)) {
  return direct(
      [f](auto& src, auto& dst) { check(f(src.planes(), src.steps(), dst.planes(), dst.steps(), roiOf(src))); });
}
Prepare zum(ZumStatus (*f)(const Zum8u*, int, Zum8u*, int, Zum8u*, int, ZumiSize)) {
  return direct([f](auto& src, auto& dst) {
    check(f(src.data(), src.step(0), dst.plane(0), dst.step(0), dst.plane(1), dst.step(1), roiOf(src)));
  });
}
Prepare zum(ZumStatus (*f)(const Zum8u*, int, const Zum8u*, int, Zum8u*, int, ZumiSize)) {
  return direct([f](auto& src, auto& dst) {
    check(f(src.plane(0), src.step(0), src.plane(1), src.step(1), dst.data(), dst.step(0), roiOf(src)));
  });
}
Prepare zum(ZumStatus (*f)(const Zum8u* const*, const int*, Zum8u*, int, Zum8u*, int, ZumiSize)) {
  return direct([f](auto& src, auto& dst) {
    check(f(src.planes(), src.steps(), dst.plane(0), dst.step(0), dst.plane(1), dst.step(1), roiOf(src)));
  });
}
Prepare zum(ZumStatus (*f)(const Zum8u*, int, const Zum8u*, int, Zum8u* const*, const int*, ZumiSize)) {
  return direct([f](auto& src, auto& dst) {
    check(f(src.plane(0), src.step(0), src.plane(1), src.step(1), dst.planes(), dst.steps(), roiOf(src)));
  });
}
Prepare zum(ZumStatus (*f)(Zum8u, Zum8u*, int, ZumiSize)) {
  return direct([f](auto&, auto& dst) { check(f(77, dst.data(), dst.step(0), roiOf(dst))); });
}
Prepare zum(ZumStatus (*f)(const Zum32f*, int, ZumiSize, Zum32f*)) {
  return direct([f](auto& src, auto&) {
    Zum32f result;
    check(f(reinterpret_cast<const Zum32f*>(src.data()), src.step(0), roiOf(src), &result));
  });
}
Prepare zum(ZumStatus (*f)(const Zum32f*, int, ZumiSize, double*, int)) {
  return direct([f](auto& src, auto&) {
    double result;
    check(f(reinterpret_cast<const Zum32f*>(src.data()), src.step(0), roiOf(src), &result, zumHintFast));
  });
}
template <class T>
Prepare zum(ZumStatus (*f)(const T*, ZumiRect, ZumiSize, int, T*, int, ZumiBayerGrid)) {
  return direct([f](auto& src, auto& dst) {
    ZumiSize size = roiOf(src);
    check(f(reinterpret_cast<const T*>(src.data()), {0, 0, size.width, size.height}, size, src.step(0),
            reinterpret_cast<T*>(dst.data()), dst.step(0), zumiBayerRGGB));
  });
}

// With the bottom and the top of the range of values.
Prepare zum(ZumStatus (*f)(const Zum32f*, int, Zum32f*, int, ZumiSize, Zum32f, Zum32f)) {
  return direct([f](auto& src, auto& dst) {
    check(f(pointerTo<const Zum32f*>(src), src.step(0), pointerTo<Zum32f*>(dst), dst.step(0), roiOf(src), 0, 1));
  });
}

// Fewer levels, without noise.
template <class Src, class Dst>
Prepare reduced(ZumStatus (*f)(const Src*, int, Dst*, int, ZumiSize, int, ZumDitherType, int), ZumDitherType dither,
                int levels) {
  return direct([=](auto& src, auto& dst) {
    check(f(pointerTo<const Src*>(src), src.step(0), pointerTo<Dst*>(dst), dst.step(0), roiOf(src), 0, dither, levels));
  });
}

// A sepia tone; of four samples the last stays as it is.
const float kSepia[3][4] = {{0.393f, 0.769f, 0.189f, 0}, {0.349f, 0.686f, 0.168f, 0}, {0.272f, 0.534f, 0.131f, 0}};
const float kSepia4[4][4] = {
    {0.393f, 0.769f, 0.189f, 0}, {0.349f, 0.686f, 0.168f, 0}, {0.272f, 0.534f, 0.131f, 0}, {0, 0, 0, 1}};
template <class T>
Prepare zum(ZumStatus (*f)(const T*, int, T*, int, ZumiSize, const Zum32f*)) {
  return direct([f](auto& src, auto& dst) {
    const float* matrix = &src.format() == &kC4x32f ? *kSepia4 : *kSepia;
    check(f(pointerTo<const T*>(src), src.step(0), pointerTo<T*>(dst), dst.step(0), roiOf(src), matrix));
  });
}

// libyuv's functions, by their shapes.
template <class Result>
Prepare yuv(Result (*f)(const uint8_t*, int, uint8_t*, int, int, int)) {
  return direct([f](auto& src, auto& dst) {
    f(src.data(), src.step(0), dst.data(), dst.step(0), src.size().width, src.size().height);
  });
}
Prepare yuv(int (*f)(const uint8_t*, int, const uint8_t*, int, const uint8_t*, int, uint8_t*, int, int, int)) {
  return direct([f](auto& src, auto& dst) {
    f(src.plane(0), src.step(0), src.plane(1), src.step(1), src.plane(2), src.step(2), dst.data(), dst.step(0),
      src.size().width, src.size().height);
  });
}
Prepare yuv(int (*f)(const uint8_t*, int, uint8_t*, int, uint8_t*, int, uint8_t*, int, int, int)) {
  return direct([f](auto& src, auto& dst) {
    f(src.data(), src.step(0), dst.plane(0), dst.step(0), dst.plane(1), dst.step(1), dst.plane(2), dst.step(2),
      src.size().width, src.size().height);
  });
}
Prepare yuv(int (*f)(const uint8_t*, int, const uint8_t*, int, uint8_t*, int, int, int)) {
  return direct([f](auto& src, auto& dst) {
    f(src.plane(0), src.step(0), src.plane(1), src.step(1), dst.data(), dst.step(0), src.size().width,
      src.size().height);
  });
}
Prepare yuv(int (*f)(const uint8_t*, int, uint8_t*, int, uint8_t*, int, int, int)) {
  return direct([f](auto& src, auto& dst) {
    f(src.data(), src.step(0), dst.plane(0), dst.step(0), dst.plane(1), dst.step(1), src.size().width,
      src.size().height);
  });
}
// With a matrix for dither, its own.
Prepare yuv(int (*f)(const uint8_t*, int, const uint8_t*, int, const uint8_t*, int, uint8_t*, int, const uint8_t*, int,
                     int)) {
  return direct([f](auto& src, auto& dst) {
    f(src.plane(0), src.step(0), src.plane(1), src.step(1), src.plane(2), src.step(2), dst.data(), dst.step(0), nullptr,
      src.size().width, src.size().height);
  });
}
Prepare yuv(int (*f)(const uint8_t*, int, const uint8_t*, int, uint8_t*, int, uint8_t*, int, uint8_t*, int, int, int)) {
  return direct([f](auto& src, auto& dst) {
    f(src.plane(0), src.step(0), src.plane(1), src.step(1), dst.plane(0), dst.step(0), dst.plane(1), dst.step(1),
      dst.plane(2), dst.step(2), src.size().width, src.size().height);
  });
}
Prepare yuv(int (*f)(const uint8_t*, int, const uint8_t*, int, const uint8_t*, int, uint8_t*, int, uint8_t*, int, int,
                     int)) {
  return direct([f](auto& src, auto& dst) {
    f(src.plane(0), src.step(0), src.plane(1), src.step(1), src.plane(2), src.step(2), dst.plane(0), dst.step(0),
      dst.plane(1), dst.step(1), src.size().width, src.size().height);
  });
}
Prepare yuv(int (*f)(const uint8_t*, int, const uint8_t*, int, const uint8_t*, int, uint8_t*, int, uint8_t*, int,
                     uint8_t*, int, int, int)) {
  return direct([f](auto& src, auto& dst) {
    f(src.plane(0), src.step(0), src.plane(1), src.step(1), src.plane(2), src.step(2), dst.plane(0), dst.step(0),
      dst.plane(1), dst.step(1), dst.plane(2), dst.step(2), src.size().width, src.size().height);
  });
}
using YuvPacked = int (*)(const uint8_t*, int, uint8_t*, int, int, int);
// Two conversions with four bytes a pixel between them, a few rows at a time so that those stay in the cache.
Prepare yuvChain(YuvPacked first, YuvPacked second) {
  return [=](const Image& src, const Image& dst) {
    constexpr int kBand = 8;
    std::vector<uint8_t> between(size_t(4) * src.size().width * kBand);
    return loop([=, &src, &dst]() mutable {
      int width = src.size().width, height = src.size().height, step = 4 * width;
      for (int y = 0; y < height; y += kBand) {
        int rows = std::min(kBand, height - y);
        first(src.data() + size_t(src.step(0)) * y, src.step(0), between.data(), step, width, rows);
        second(between.data(), step, dst.data() + size_t(dst.step(0)) * y, dst.step(0), width, rows);
      }
    });
  };
}

cv::Mat matOf(const Image& image) {
  if (&image.format() == &kP420 || &image.format() == &kNv12)
    return cv::Mat(image.size().height * 3 / 2, image.size().width, CV_8U, image.data());
  if (image.format().packs16()) return cv::Mat(image.size().height, image.size().width, CV_8UC2, image.data());
  if (image.format().planes.size() != 1) throw std::logic_error("an OpenCV image has one plane");
  int depth = image.format().sampleBytes == 1 ? CV_8U : image.format().sampleBytes == 2 ? CV_16U : CV_32F;
  return cv::Mat(image.size().height, image.size().width, CV_MAKETYPE(depth, image.format().planes[0].samples),
                 image.data());
}

Prepare openCv(int code) {
  return [code](const Image& src, const Image& dst) {
    return loop([code, in = matOf(src), out = matOf(dst), &dst]() mutable {
      cv::cvtColor(in, out, code, out.channels());
      if (out.data != dst.data()) throw std::logic_error("OpenCV wants an output of another shape");
    });
  };
}

// Without SWS_ACCURATE_RND and with SWS_POINT swscale uses its special converters between formats wherever it has one;
// elsewhere it goes through its general scaler, point-sampled. Colour: BT.601, studio range YCbCr, full range RGB.
Prepare swScale(AVPixelFormat from, AVPixelFormat to) {
  struct Pointers {
    Pointers(const Image& image, AVPixelFormat format) {
      for (int p = 0; p < 4; ++p) {
        int ours = format == AV_PIX_FMT_GBRP && p < 3 ? (p + 1) % 3 : p;
        plane[p] = image.plane(ours);
        step[p] = image.step(ours);
      }
    }
    uint8_t* plane[4];
    int step[4];
  };
  return [=](const Image& src, const Image& dst) {
    Size size = src.size();
    std::shared_ptr<SwsContext> context(sws_getContext(size.width, size.height, from, size.width, size.height, to,
                                                       SWS_POINT, nullptr, nullptr, nullptr),
                                        &sws_freeContext);
    if (!context) throw std::runtime_error("swscale has no such conversion");
    return loop([context, in = Pointers(src, from), out = Pointers(dst, to), size] {
      sws_scale(context.get(), in.plane, in.step, 0, size.height, out.plane, out.step);
    });
  };
}

// Gray of any depth to bytes, full range on both sides.
Prepare zimg(zimg_dither_type_e dither) {
  return [dither](const Image& src, const Image& dst) {
    const auto formatOf = [](const Image& image) {
      zimg_image_format format;
      zimg_image_format_default(&format, ZIMG_API_VERSION);
      format.width = image.size().width;
      format.height = image.size().height;
      const int bytes = image.format().sampleBytes;
      format.pixel_type = bytes == 1 ? ZIMG_PIXEL_BYTE : bytes == 2 ? ZIMG_PIXEL_WORD : ZIMG_PIXEL_FLOAT;
      format.depth = 8 * bytes;
      format.pixel_range = ZIMG_RANGE_FULL;
      return format;
    };
    zimg_graph_builder_params params;
    zimg_graph_builder_params_default(&params, ZIMG_API_VERSION);
    params.dither_type = dither;
    params.cpu_type = ZIMG_CPU_AUTO_64B;
    const zimg_image_format from = formatOf(src), to = formatOf(dst);
    std::shared_ptr<zimg_filter_graph> graph(zimg_filter_graph_build(&from, &to, &params), &zimg_filter_graph_free);
    size_t room = 0;
    if (!graph || zimg_filter_graph_get_tmp_size(graph.get(), &room)) throw std::runtime_error("zimg refuses");
    constexpr size_t kAlignment = 64;
    std::shared_ptr<void> memory(std::aligned_alloc(kAlignment, (room + kAlignment) / kAlignment * kAlignment),
                                 &std::free);
    return loop([=, &src, &dst] {
      zimg_image_buffer_const in{ZIMG_API_VERSION, {}};
      zimg_image_buffer out{ZIMG_API_VERSION, {}};
      in.plane[0] = {src.data(), src.step(0), ZIMG_BUFFER_MAX};
      out.plane[0] = {dst.data(), dst.step(0), ZIMG_BUFFER_MAX};
      if (zimg_filter_graph_process(graph.get(), &in, &out, memory.get(), nullptr, nullptr, nullptr, nullptr))
        throw std::runtime_error("zimg failed");
    });
  };
}

// Floyd and Steinberg's diffusion to bits, in an image of its own making. The bytes of its words are in another order.
Loop leptonicaDither(const Image& src, const Image&) {
  const auto discard = [](PIX* pix) { pixDestroy(&pix); };
  std::shared_ptr<PIX> gray(pixCreateHeader(src.size().width, src.size().height, 8), [discard](PIX* pix) {
    pixSetData(pix, nullptr);
    discard(pix);
  });
  pixSetData(gray.get(), reinterpret_cast<l_uint32*>(src.data()));
  return loop([=] { discard(pixDitherToBinary(gray.get())); });
}

// ---- The table ------------------------------------------------------------------------------------------------------

struct Peer {
  string name;
  Prepare prepare;
  // Set where the peer's images are not ours.
  const Format* src = nullptr;
  const Format* dst = nullptr;
  bool similar = false;
};

Peer similar(Peer peer) {
  peer.similar = true;
  return peer;
}
Peer similar(Peer peer, const Format& src, const Format& dst) {
  peer.src = &src;
  peer.dst = &dst;
  return similar(std::move(peer));
}

// What a function makes of each byte, `channels` times behind one another.
using ByteFunction = ZumStatus (*)(const Zum8u*, int, Zum8u*, int, ZumiSize);
std::vector<uint8_t> tableOf(ByteFunction function, int channels) {
  constexpr int kLevels = 256, kStep = 3 * kLevels;
  uint8_t gray[kStep];
  for (int i = 0; i < kStep; ++i) gray[i] = i / 3;
  check(function(gray, kStep, gray, kStep, {kLevels, 1}));
  std::vector<uint8_t> table(kLevels * channels);
  for (int i = 0; i < kLevels * channels; ++i) table[i] = gray[i / channels * 3];
  return table;
}
Peer openCvTable(ByteFunction function) {
  return {"OpenCV LUT", [table = tableOf(function, 1)](const Image& src, const Image& dst) {
            return loop([table, in = matOf(src), out = matOf(dst)]() mutable {
              cv::LUT(in, cv::Mat(1, int(table.size()), CV_8U, table.data()), out);
            });
          }};
}
// In place only, so after a copy. Alpha stays as it is.
Peer yuvTable(ByteFunction function) {
  return {"libyuv ARGBCopy+RGBColorTable", direct([table = tableOf(function, 4)](auto& src, auto& dst) {
            int width = src.size().width, height = src.size().height;
            libyuv::ARGBCopy(src.data(), src.step(0), dst.data(), dst.step(0), width, height);
            libyuv::RGBColorTable(dst.data(), dst.step(0), table.data(), 0, 0, width, height);
          })};
}
// The power alone, in single precision.
Peer openCvPower(double exponent) {
  return {"OpenCV pow", [exponent](const Image& src, const Image& dst) {
            return loop([exponent, in = matOf(src), out = matOf(dst)]() mutable { cv::pow(in, exponent, out); });
          }};
}

struct Comparison {
  string name;
  Prepare prepare;
  const Format* src;
  const Format* dst;
  std::vector<Peer> peers;
  int rowUnit = 1;  // heights are rounded up to a multiple of it: chroma blocks, or enough rows for a mosaic's interior
};

#define REDUCED(function, dither, levels) \
#function " " #dither " " #levels, reduced(function, zumDither##dither, levels)
#define ZIMG(dither) \
  Peer { "zimg " #dither, zimg(ZIMG_DITHER_##dither) }
#define OURS(function) #function, zum(function)
#define OPENCV(code) \
  Peer { "OpenCV " #code, openCv(cv::COLOR_##code) }
#define LIBYUV(function) \
  Peer { "libyuv " #function, yuv(libyuv::function) }
#define LIBYUV_CHAIN(first, second) \
  Peer { "libyuv " #first "+" #second, yuvChain(libyuv::first, libyuv::second) }
#define SWSCALE(from, to) \
  Peer { "swscale " #from ">" #to, swScale(AV_PIX_FMT_##from, AV_PIX_FMT_##to) }

std::vector<Comparison> comparisons() {
  const Peer copyRows{"memcpy", direct([](auto& src, auto& dst) { std::memcpy(dst.data(), src.data(), src.bytes()); })};
  const Peer setRows{"memset", direct([](auto&, auto& dst) { std::memset(dst.data(), 77, dst.bytes()); })};
  const Peer setPlane{"libyuv SetPlane", direct([](auto&, auto& dst) {
                        libyuv::SetPlane(dst.data(), dst.step(0), dst.size().width, dst.size().height, 77);
                      })};
  const Peer leptonica{"leptonica pixDitherToBinary", leptonicaDither};
  const Peer minMax{"OpenCV minMaxIdx", [](auto& src, auto&) {
                      return loop([in = matOf(src)] {
                        double least, largest;
                        cv::minMaxIdx(in, &least, &largest);
                      });
                    }};
  const Peer sum{"OpenCV sum", [](auto& src, auto&) { return loop([in = matOf(src)] { cv::sum(in); }); }};
  const Peer mean{"OpenCV mean", [](auto& src, auto&) { return loop([in = matOf(src)] { cv::mean(in); }); }};
  // With as many columns as there are samples, or one more for the offsets.
  const Peer transform{
      "OpenCV transform", [](auto& src, auto& dst) {
        return loop([in = matOf(src), out = matOf(dst)]() mutable {
          const bool four = in.channels() == 4;
          cv::transform(in, out, cv::Mat(four ? 4 : 3, 4, CV_32F, const_cast<float*>(four ? *kSepia4 : *kSepia)));
        });
      }};
  // In 64ths, blue first; alpha is converted too.
  const Peer colorMatrix{"libyuv ARGBColorMatrix", direct([](auto& src, auto& dst) {
                           const int8_t matrix[16] = {8, 34, 17, 0, 11, 44, 22, 0, 12, 49, 25, 0, 0, 0, 0, 64};
                           libyuv::ARGBColorMatrix(src.data(), src.step(0), dst.data(), dst.step(0), matrix,
                                                   src.size().width, src.size().height);
                         })};
  const Peer toneMap{"OpenCV minMaxIdx+convertTo", [](auto& src, auto& dst) {
                       return loop([in = matOf(src), out = matOf(dst)]() mutable {
                         double least, largest;
                         cv::minMaxIdx(in, &least, &largest);
                         in.convertTo(out, CV_8U, 255 / largest);
                       });
                     }};
  const Peer toneMapMean{"OpenCV mean+convertTo", [](auto& src, auto& dst) {
                           return loop([in = matOf(src), out = matOf(dst)]() mutable {
                             in.convertTo(out, CV_8U, 127.5 / cv::mean(in)[0]);
                           });
                         }};

  return {
      {OURS(zumiCopy_8u_C1R), &kGray8, &kGray8, {copyRows, LIBYUV(CopyPlane)}},
      {OURS(zumiSet_8u_C1R), &kNone, &kGray8, {setRows, setPlane}},
      {OURS(zumiMax_32f_C1R), &kGray32f, &kNone, {similar(minMax)}},
      {OURS(zumiSum_32f_C1R), &kGray32f, &kNone, {similar(sum)}},
      {OURS(zumiMean_32f_C1R), &kGray32f, &kNone, {similar(mean)}},

      {OURS(zumiRGBToYCbCr_8u_C3R),
       &kC3,
       &kC3,
       {similar(OPENCV(RGB2YCrCb)), similar(OPENCV(RGB2YUV)), similar(SWSCALE(RGB24, YUV444P), kC3, kP444)}},
      {OURS(zumiRGBToYCbCr_8u_AC4R),
       &kC4,
       &kC4,
       {similar(OPENCV(RGB2YCrCb), kC4, kC3), similar(LIBYUV(ARGBToI444), kC4, kP444)}},
      {OURS(zumiRGBToYCbCr_8u_P3R), &kP444, &kP444, {SWSCALE(GBRP, YUV444P)}},
      {OURS(zumiYCbCrToRGB_8u_C3R), &kC3, &kC3, {similar(OPENCV(YCrCb2RGB)), similar(OPENCV(YUV2RGB))}},
      {OURS(zumiYCbCrToRGB_8u_AC4R),
       &kC4,
       &kC4,
       {similar(OPENCV(YCrCb2RGB), kC3, kC4), similar(LIBYUV(I444ToABGR), kP444, kC4)}},
      {OURS(zumiYCbCrToRGB_8u_P3R), &kP444, &kP444, {SWSCALE(YUV444P, GBRP)}},
      {OURS(zumiYCbCrToRGB_8u_P3C3R),
       &kP444,
       &kC3,
       {LIBYUV(I444ToRAW), similar(LIBYUV(I444ToARGB), kP444, kC4), SWSCALE(YUV444P, RGB24)}},

      {OURS(zumiRGBToYCbCr422_8u_C3C2R),
       &kC3,
       &kPacked422,
       {LIBYUV_CHAIN(RAWToARGB, ARGBToYUY2), similar(LIBYUV(ARGBToYUY2), kC4, kPacked422), SWSCALE(RGB24, YUYV422)}},
      {OURS(zumiRGBToYCbCr422_8u_P3C2R), &kP444, &kPacked422, {SWSCALE(GBRP, YUYV422)}},
      {OURS(zumiRGBToYCrCb422_8u_C3C2R), &kC3, &kPacked422, {SWSCALE(RGB24, YVYU422)}},
      {OURS(zumiRGBToYCrCb422_8u_P3C2R), &kP444, &kPacked422, {SWSCALE(GBRP, YVYU422)}},
      {OURS(zumiYCbCr422ToRGB_8u_C2C3R),
       &kPacked422,
       &kC3,
       {OPENCV(YUV2RGB_YUY2), LIBYUV_CHAIN(YUY2ToARGB, ARGBToRAW), similar(LIBYUV(YUY2ToARGB), kPacked422, kC4),
        SWSCALE(YUYV422, RGB24)}},
      {OURS(zumiYCbCr422ToRGB_8u_C2P3R), &kPacked422, &kP444, {SWSCALE(YUYV422, GBRP)}},
      {OURS(zumiYCbCr422ToRGB_8u_P3C3R),
       &kP422,
       &kC3,
       {LIBYUV(I422ToRAW), similar(LIBYUV(I422ToARGB), kP422, kC4), SWSCALE(YUV422P, RGB24)}},
      {OURS(zumiYCrCb422ToRGB_8u_C2C3R), &kPacked422, &kC3, {OPENCV(YUV2RGB_YVYU), SWSCALE(YVYU422, RGB24)}},
      {OURS(zumiYCrCb422ToRGB_8u_C2P3R), &kPacked422, &kP444, {SWSCALE(YVYU422, GBRP)}},

      {OURS(zumiRGBToYCbCr420_8u_C3P3R),
       &kC3,
       &kP420,
       {LIBYUV(RAWToI420), similar(LIBYUV(ARGBToI420), kC4, kP420), OPENCV(RGB2YUV_I420), SWSCALE(RGB24, YUV420P),
        similar(SWSCALE(BGR24, YUV420P))},
       2},
      {OURS(zumiYCbCr420ToRGB_8u_P3C3R),
       &kP420,
       &kC3,
       {LIBYUV(I420ToRAW), similar(LIBYUV(I420ToARGB), kP420, kC4), OPENCV(YUV2RGB_I420), SWSCALE(YUV420P, RGB24)},
       2},

      // The planar peers scale U and V another way.
      {OURS(zumiRGBToYUV_8u_C3R), &kC3, &kC3, {OPENCV(RGB2YUV)}},
      {OURS(zumiRGBToYUV_8u_AC4R), &kC4, &kC4, {similar(OPENCV(RGB2YUV), kC4, kC3)}},
      {OURS(zumiRGBToYUV_8u_C3P3R), &kC3, &kP444, {similar(LIBYUV(ARGBToI444), kC4, kP444)}},
      {OURS(zumiYUVToRGB_8u_C3R), &kC3, &kC3, {OPENCV(YUV2RGB)}},
      {OURS(zumiYUVToRGB_8u_AC4R), &kC4, &kC4, {similar(OPENCV(YUV2RGB), kC3, kC4)}},
      {OURS(zumiYUVToRGB_8u_P3R), &kP444, &kP444, {similar(SWSCALE(YUVJ444P, GBRP))}},
      {OURS(zumiYUVToRGB_8u_P3C3R), &kP444, &kC3, {similar(LIBYUV(J444ToARGB), kP444, kC4)}},
      {OURS(zumiRGBToYUV422_8u_C3C2R),
       &kC3,
       &kPacked422,
       {similar(LIBYUV_CHAIN(RAWToARGB, ARGBToYUY2)), similar(LIBYUV(ARGBToYUY2), kC4, kPacked422),
        similar(SWSCALE(RGB24, YUYV422))}},
      {OURS(zumiRGBToYUV422_8u_C3P3R), &kC3, &kP422, {similar(LIBYUV(ARGBToJ422), kC4, kP422)}},
      {OURS(zumiYUV422ToRGB_8u_C2C3R),
       &kPacked422,
       &kC3,
       {similar(OPENCV(YUV2RGB_YUY2)), similar(LIBYUV_CHAIN(YUY2ToARGB, ARGBToRAW)),
        similar(LIBYUV(YUY2ToARGB), kPacked422, kC4)}},
      {OURS(zumiYUV422ToRGB_8u_P3C3R),
       &kP422,
       &kC3,
       {similar(LIBYUV(I422ToRAW)), similar(LIBYUV(J422ToABGR), kP422, kC4)}},
      {OURS(zumiYUV422ToRGB_8u_P3AC4R), &kP422, &kC4, {similar(LIBYUV(J422ToABGR))}},
      {OURS(zumiRGBToYUV420_8u_C3P3R),
       &kC3,
       &kP420,
       {similar(LIBYUV(RAWToJ420)), similar(LIBYUV(ARGBToJ420), kC4, kP420), similar(OPENCV(RGB2YUV_I420)),
        similar(SWSCALE(RGB24, YUVJ420P))},
       2},
      {OURS(zumiYUV420ToRGB_8u_P3C3R),
       &kP420,
       &kC3,
       {similar(LIBYUV(J420ToRAW)), similar(LIBYUV(J420ToABGR), kP420, kC4), similar(OPENCV(YUV2RGB_I420)),
        similar(SWSCALE(YUVJ420P, RGB24))},
       2},
      {OURS(zumiYUV420ToRGB_8u_P3AC4R), &kP420, &kC4, {similar(LIBYUV(J420ToABGR))}, 2},

      {OURS(zumiBGRToYCbCr422_8u_C3C2R),
       &kC3,
       &kPacked422,
       {LIBYUV_CHAIN(RGB24ToARGB, ARGBToYUY2), SWSCALE(BGR24, YUYV422)}},
      {OURS(zumiBGRToYCbCr422_8u_AC4C2R), &kC4, &kPacked422, {LIBYUV(ARGBToYUY2), SWSCALE(BGRA, YUYV422)}},
      {OURS(zumiBGRToYCbCr422_8u_C3P3R),
       &kC3,
       &kP422,
       {similar(LIBYUV(ARGBToI422), kC4, kP422), SWSCALE(BGR24, YUV422P)}},
      {OURS(zumiBGRToYCbCr422_8u_AC4P3R), &kC4, &kP422, {LIBYUV(ARGBToI422), SWSCALE(BGRA, YUV422P)}},
      {OURS(zumiBGRToYCbCr420_8u_C3P3R),
       &kC3,
       &kP420,
       {LIBYUV(RGB24ToI420), similar(LIBYUV(ARGBToNV12), kC4, kNv12), OPENCV(BGR2YUV_I420), SWSCALE(BGR24, YUV420P),
        similar(SWSCALE(BGR24, NV12), kC3, kNv12)},
       2},
      {OURS(zumiBGRToYCrCb420_8u_C3P3R), &kC3, &kP420, {similar(LIBYUV(RGB24ToI420)), OPENCV(BGR2YUV_YV12)}, 2},
      {OURS(zumiBGRToYCbCr420_8u_AC4P3R),
       &kC4,
       &kP420,
       {LIBYUV(ARGBToI420), similar(LIBYUV(ARGBToNV12), kC4, kNv12), OPENCV(BGRA2YUV_I420), SWSCALE(BGRA, YUV420P)},
       2},
      {OURS(zumiBGRToYCrCb420_8u_AC4P3R), &kC4, &kP420, {similar(LIBYUV(ARGBToI420)), OPENCV(BGRA2YUV_YV12)}, 2},
      {OURS(zumiBGRToYCbCr411_8u_C3P3R), &kC3, &kP411, {SWSCALE(BGR24, YUV411P)}},
      {OURS(zumiBGRToYCbCr411_8u_AC4P3R), &kC4, &kP411, {SWSCALE(BGRA, YUV411P)}},
      {OURS(zumiBGR565ToYCbCr422_16u8u_C3C2R),
       &kPixels565,
       &kPacked422,
       {LIBYUV_CHAIN(RGB565ToARGB, ARGBToYUY2), SWSCALE(RGB565LE, YUYV422)}},
      {OURS(zumiBGR555ToYCbCr422_16u8u_C3C2R),
       &kPixels555,
       &kPacked422,
       {LIBYUV_CHAIN(ARGB1555ToARGB, ARGBToYUY2), SWSCALE(RGB555LE, YUYV422)}},
      {OURS(zumiBGR565ToYCbCr420_16u8u_C3P3R),
       &kPixels565,
       &kP420,
       {LIBYUV(RGB565ToI420), SWSCALE(RGB565LE, YUV420P)},
       2},
      {OURS(zumiBGR555ToYCbCr420_16u8u_C3P3R),
       &kPixels555,
       &kP420,
       {LIBYUV(ARGB1555ToI420), SWSCALE(RGB555LE, YUV420P)},
       2},

      {OURS(zumiYCbCrToBGR_8u_P3C3R), &kP444, &kC3, {LIBYUV(I444ToRGB24), SWSCALE(YUV444P, BGR24)}},
      {OURS(zumiYCbCrToBGR_8u_P3C4R), &kP444, &kC4, {LIBYUV(I444ToARGB), SWSCALE(YUV444P, BGRA)}},
      {OURS(zumiYCbCr422ToBGR_8u_C2C3R),
       &kPacked422,
       &kC3,
       {OPENCV(YUV2BGR_YUY2), LIBYUV_CHAIN(YUY2ToARGB, ARGBToRGB24), SWSCALE(YUYV422, BGR24)}},
      {OURS(zumiYCbCr422ToBGR_8u_C2C4R),
       &kPacked422,
       &kC4,
       {OPENCV(YUV2BGRA_YUY2), LIBYUV(YUY2ToARGB), SWSCALE(YUYV422, BGRA)}},
      {OURS(zumiYCbCr411ToBGR_8u_P3C3R), &kP411, &kC3, {SWSCALE(YUV411P, BGR24)}},
      {OURS(zumiYCbCr411ToBGR_8u_P3C4R), &kP411, &kC4, {SWSCALE(YUV411P, BGRA)}},
      {OURS(zumiYCbCr420ToBGR_8u_P3C3R),
       &kP420,
       &kC3,
       {LIBYUV(I420ToRGB24), similar(LIBYUV(I420ToARGB), kP420, kC4), similar(LIBYUV(NV12ToRGB24), kNv12, kC3),
        OPENCV(YUV2BGR_I420), similar(OPENCV(YUV2BGR_NV12), kNv12, kC3), SWSCALE(YUV420P, BGR24),
        similar(SWSCALE(NV12, BGR24), kNv12, kC3)},
       2},
      {OURS(zumiYUV420ToBGR_8u_P3C3R), &kP420, &kC3, {similar(LIBYUV(J420ToRGB24))}, 4},
      {OURS(zumiYCrCb420ToBGR_Filter_8u_P3C4R),
       &kP420,
       &kC4,
       {similar(LIBYUV(I420ToARGB)), OPENCV(YUV2BGRA_YV12), similar(SWSCALE(YUV420P, BGRA))},
       2},

      {OURS(zumiRGBToCbYCr422_8u_C3C2R),
       &kC3,
       &kChromaFirst422,
       {LIBYUV_CHAIN(RAWToARGB, ARGBToUYVY), SWSCALE(RGB24, UYVY422)}},
      {OURS(zumiBGRToCbYCr422_8u_AC4C2R), &kC4, &kChromaFirst422, {LIBYUV(ARGBToUYVY), SWSCALE(BGRA, UYVY422)}},
      {OURS(zumiCbYCr422ToRGB_8u_C2C3R),
       &kChromaFirst422,
       &kC3,
       {OPENCV(YUV2RGB_UYVY), LIBYUV_CHAIN(UYVYToARGB, ARGBToRAW), SWSCALE(UYVY422, RGB24)}},
      {OURS(zumiCbYCr422ToBGR_8u_C2C4R),
       &kChromaFirst422,
       &kC4,
       {OPENCV(YUV2BGRA_UYVY), LIBYUV(UYVYToARGB), SWSCALE(UYVY422, BGRA)}},

      // Back from 565, zeros take the place of lost bits, as in OpenCV; the others repeat the upper bits there.
      {OURS(zumiBGRToBGR565_8u16u_C3R),
       &kC3,
       &kPixels565,
       {OPENCV(BGR2BGR565), LIBYUV_CHAIN(RGB24ToARGB, ARGBToRGB565), SWSCALE(BGR24, RGB565LE)}},
      {OURS(zumiRGBToRGB565_8u16u_C3R), &kC3, &kPixels565, {OPENCV(BGR2BGR565), SWSCALE(RGB24, BGR565LE)}},
      {OURS(zumiBGR565ToBGR_16u8u_C3R),
       &kPixels565,
       &kC3,
       {OPENCV(BGR5652BGR), LIBYUV_CHAIN(RGB565ToARGB, ARGBToRGB24), SWSCALE(RGB565LE, BGR24)}},
      {OURS(zumiRGB565ToRGB_16u8u_C3R), &kPixels565, &kC3, {OPENCV(BGR5652BGR), SWSCALE(BGR565LE, RGB24)}},

      {OURS(zumiYCbCrToBGR565_8u16u_P3C3R), &kP444, &kPixels565, {SWSCALE(YUV444P, RGB565LE)}},
      {OURS(zumiYCbCrToBGR565Dither_8u16u_P3C3R), &kP444, &kPixels565, {SWSCALE(YUV444P, RGB565LE)}},
      {OURS(zumiYCbCr422ToBGR565_8u16u_C2C3R),
       &kPacked422,
       &kPixels565,
       {LIBYUV_CHAIN(YUY2ToARGB, ARGBToRGB565), SWSCALE(YUYV422, RGB565LE)}},
      {OURS(zumiYCbCr422ToBGR565Dither_8u16u_C2C3R), &kPacked422, &kPixels565, {SWSCALE(YUYV422, RGB565LE)}},
      {OURS(zumiYCbCr422ToBGR565_8u16u_P3C3R), &kP422, &kPixels565, {LIBYUV(I422ToRGB565), SWSCALE(YUV422P, RGB565LE)}},
      {OURS(zumiYCbCr420ToBGR565_8u16u_P3C3R),
       &kP420,
       &kPixels565,
       {LIBYUV(I420ToRGB565), similar(LIBYUV(NV12ToRGB565), kNv12, kPixels565), SWSCALE(YUV420P, RGB565LE)},
       2},
      {OURS(zumiYCbCr420ToBGR555_8u16u_P3C3R),
       &kP420,
       &kPixels555,
       {LIBYUV(I420ToARGB1555), SWSCALE(YUV420P, RGB555LE)},
       2},
      {OURS(zumiYCbCr420ToBGR444_8u16u_P3C3R),
       &kP420,
       &kPixels444,
       {LIBYUV(I420ToARGB4444), SWSCALE(YUV420P, RGB444LE)},
       2},
      {OURS(zumiYCbCr420ToBGR565Dither_8u16u_P3C3R),
       &kP420,
       &kPixels565,
       {LIBYUV(I420ToRGB565Dither), SWSCALE(YUV420P, RGB565LE)},
       2},
      {OURS(zumiYCbCr420ToBGR555Dither_8u16u_P3C3R), &kP420, &kPixels555, {SWSCALE(YUV420P, RGB555LE)}, 2},
      {OURS(zumiYCbCr420ToBGR444Dither_8u16u_P3C3R), &kP420, &kPixels444, {SWSCALE(YUV420P, RGB444LE)}, 2},
      {OURS(zumiYUV420ToBGR565_8u16u_P3C3R), &kP420, &kPixels565, {similar(LIBYUV(J420ToRGB565))}, 2},

      // Some peers average the chroma of two rows where we drop one, and interpolate where we repeat.
      {OURS(zumiYCbCr420_8u_P2P3R), &kNv12, &kP420, {LIBYUV(NV12ToI420), SWSCALE(NV12, YUV420P)}, 2},
      {OURS(zumiYCbCr420ToYCrCb420_8u_P2P3R), &kNv12, &kP420, {LIBYUV(NV12ToI420), SWSCALE(NV12, YUV420P)}, 2},
      {OURS(zumiYCbCr420_8u_P3P2R), &kP420, &kNv12, {LIBYUV(I420ToNV12), SWSCALE(YUV420P, NV12)}, 2},
      {OURS(zumiYCrCb420ToYCbCr420_8u_P3P2R), &kP420, &kNv12, {LIBYUV(I420ToNV21), SWSCALE(YUV420P, NV21)}, 2},
      {OURS(zumiYCbCr422_8u_C2P3R), &kPacked422, &kP422, {LIBYUV(YUY2ToI422), SWSCALE(YUYV422, YUV422P)}},
      {OURS(zumiYCrCb422ToYCbCr422_8u_C2P3R),
       &kPacked422,
       &kP422,
       {similar(LIBYUV(YUY2ToI422)), SWSCALE(YVYU422, YUV422P)}},
      {OURS(zumiCbYCr422ToYCbCr422_8u_C2P3R),
       &kChromaFirst422,
       &kP422,
       {LIBYUV(UYVYToI422), SWSCALE(UYVY422, YUV422P)}},
      {OURS(zumiYCbCr422ToYCbCr420_8u_C2P3R), &kPacked422, &kP420, {LIBYUV(YUY2ToI420), SWSCALE(YUYV422, YUV420P)}, 2},
      {OURS(zumiYCbCr422ToYCrCb420_8u_C2P3R),
       &kPacked422,
       &kP420,
       {similar(LIBYUV(YUY2ToI420)), SWSCALE(YVYU422, YUV420P)},
       2},
      {OURS(zumiCbYCr422ToYCbCr420_8u_C2P3R),
       &kChromaFirst422,
       &kP420,
       {LIBYUV(UYVYToI420), SWSCALE(UYVY422, YUV420P)},
       2},
      {OURS(zumiCbYCr422ToYCrCb420_8u_C2P3R),
       &kChromaFirst422,
       &kP420,
       {similar(LIBYUV(UYVYToI420)), similar(SWSCALE(UYVY422, YUV420P))},
       2},
      {OURS(zumiYCbCr422ToYCbCr420_8u_C2P2R), &kPacked422, &kNv12, {LIBYUV(YUY2ToNV12), SWSCALE(YUYV422, NV12)}, 2},
      {OURS(zumiCbYCr422ToYCbCr420_8u_C2P2R),
       &kChromaFirst422,
       &kNv12,
       {LIBYUV(UYVYToNV12), SWSCALE(UYVY422, NV12)},
       2},
      {OURS(zumiYCbCr422_8u_P3C2R), &kP422, &kPacked422, {LIBYUV(I422ToYUY2), SWSCALE(YUV422P, YUYV422)}},
      {OURS(zumiYCbCr422ToYCrCb422_8u_P3C2R),
       &kP422,
       &kPacked422,
       {similar(LIBYUV(I422ToYUY2)), SWSCALE(YUV422P, YVYU422)}},
      {OURS(zumiYCrCb420ToYCbCr422_8u_P3C2R),
       &kP420,
       &kPacked422,
       {similar(LIBYUV(I420ToYUY2)), SWSCALE(YUV420P, YVYU422)},
       2},
      {OURS(zumiYCrCb420ToCbYCr422_8u_P3C2R),
       &kP420,
       &kChromaFirst422,
       {similar(LIBYUV(I420ToUYVY)), similar(SWSCALE(YUV420P, UYVY422))},
       2},
      {OURS(zumiYCbCr420ToYCbCr422_8u_P2C2R), &kNv12, &kPacked422, {SWSCALE(NV12, YUYV422)}, 2},
      {OURS(zumiYCbCr420ToCbYCr422_8u_P2C2R), &kNv12, &kChromaFirst422, {SWSCALE(NV12, UYVY422)}, 2},
      {OURS(zumiYCbCr420ToYCbCr422_8u_P2P3R), &kNv12, &kP422, {SWSCALE(NV12, YUV422P)}, 2},
      {OURS(zumiYCbCr420ToYCbCr422_8u_P3R), &kP420, &kP422, {LIBYUV(I420ToI422), SWSCALE(YUV420P, YUV422P)}, 2},
      {OURS(zumiYCbCr422ToYCbCr420_8u_P3R), &kP422, &kP420, {LIBYUV(I422ToI420), SWSCALE(YUV422P, YUV420P)}, 2},
      {OURS(zumiYCbCr422ToYCbCr420_8u_P3P2R), &kP422, &kNv12, {similar(LIBYUV(I422ToNV21)), SWSCALE(YUV422P, NV12)}, 2},
      {OURS(zumiYCbCr422ToCbYCr422_8u_C2R), &kPacked422, &kChromaFirst422, {SWSCALE(YUYV422, UYVY422)}},
      {OURS(zumiCbYCr422ToYCbCr422_8u_C2R), &kChromaFirst422, &kPacked422, {SWSCALE(UYVY422, YUYV422)}},
      {OURS(zumiYCbCr422ToYCrCb422_8u_C2R), &kPacked422, &kPacked422, {SWSCALE(YUYV422, YVYU422)}},
      {OURS(zumiYCbCr422ToYCbCr411_8u_P3R), &kP422, &kP411, {SWSCALE(YUV422P, YUV411P)}},
      {OURS(zumiYCbCr422ToYCbCr411_8u_C2P3R), &kPacked422, &kP411, {SWSCALE(YUYV422, YUV411P)}},
      {OURS(zumiYCbCr411ToYCbCr422_8u_P3R), &kP411, &kP422, {SWSCALE(YUV411P, YUV422P)}},
      {OURS(zumiYCbCr411ToYCbCr422_8u_P3C2R), &kP411, &kPacked422, {SWSCALE(YUV411P, YUYV422)}},

      {OURS(zumiRGBToGray_8u_C3C1R),
       &kC3,
       &kGray8,
       {OPENCV(RGB2GRAY), LIBYUV(RAWToJ400), similar(SWSCALE(RGB24, GRAY8))}},
      {OURS(zumiRGBToGray_8u_AC4C1R),
       &kC4,
       &kGray8,
       {OPENCV(RGBA2GRAY), LIBYUV(ABGRToJ400), similar(SWSCALE(RGBA, GRAY8))}},
      {OURS(zumiRGBToGray_16u_C3C1R), &kC3x16, &kGray16, {OPENCV(RGB2GRAY)}},
      {OURS(zumiRGBToGray_16u_AC4C1R), &kC4x16, &kGray16, {OPENCV(RGBA2GRAY)}},
      {OURS(zumiRGBToGray_32f_C3C1R), &kC3x32f, &kGray32f, {OPENCV(RGB2GRAY)}},
      {OURS(zumiRGBToGray_32f_AC4C1R), &kC4x32f, &kGray32f, {OPENCV(RGBA2GRAY)}},

      // OpenCV's hue circle has 256 steps in these, ours 255.
      {OURS(zumiRGBToHSV_8u_C3R), &kC3, &kC3, {OPENCV(RGB2HSV_FULL)}},
      {OURS(zumiRGBToHSV_8u_AC4R), &kC4, &kC4, {similar(OPENCV(RGB2HSV_FULL), kC4, kC3)}},
      {OURS(zumiHSVToRGB_8u_C3R), &kC3, &kC3, {OPENCV(HSV2RGB_FULL)}},
      {OURS(zumiHSVToRGB_8u_AC4R), &kC4, &kC4, {similar(OPENCV(HSV2RGB_FULL), kC3, kC4)}},

      {OURS(zumiRGBToHLS_8u_C3R), &kC3, &kC3, {OPENCV(RGB2HLS_FULL)}},
      {OURS(zumiRGBToHLS_8u_AC4R), &kC4, &kC4, {similar(OPENCV(RGB2HLS_FULL), kC4, kC3)}},
      {OURS(zumiHLSToRGB_8u_C3R), &kC3, &kC3, {OPENCV(HLS2RGB_FULL)}},
      {OURS(zumiHLSToRGB_8u_AC4R), &kC4, &kC4, {similar(OPENCV(HLS2RGB_FULL), kC3, kC4)}},
      {OURS(zumiBGRToHLS_8u_AC4R), &kC4, &kC4, {similar(OPENCV(BGR2HLS_FULL), kC4, kC3)}},
      {OURS(zumiBGRToHLS_8u_C3P3R), &kC3, &kP444, {similar(OPENCV(BGR2HLS_FULL), kC3, kC3)}},
      {OURS(zumiHLSToBGR_8u_P3C3R), &kP444, &kC3, {similar(OPENCV(HLS2BGR_FULL), kC3, kC3)}},

      {OURS(zumiRGBToYCC_8u_C3R), &kC3, &kC3, {similar(OPENCV(RGB2YCrCb))}},
      {OURS(zumiRGBToYCC_8u_AC4R), &kC4, &kC4, {similar(OPENCV(RGB2YCrCb), kC4, kC3)}},
      {OURS(zumiRGBToYCC_16u_C3R), &kC3x16, &kC3x16, {similar(OPENCV(RGB2YCrCb))}},
      {OURS(zumiRGBToYCC_16u_AC4R), &kC4x16, &kC4x16, {similar(OPENCV(RGB2YCrCb), kC4x16, kC3x16)}},
      {OURS(zumiRGBToYCC_32f_C3R), &kC3x32f, &kC3x32f, {similar(OPENCV(RGB2YCrCb))}},
      {OURS(zumiRGBToYCC_32f_AC4R), &kC4x32f, &kC4x32f, {similar(OPENCV(RGB2YCrCb), kC4x32f, kC3x32f)}},

      {OURS(zumiYCCToRGB_8u_C3R), &kC3, &kC3, {similar(OPENCV(YCrCb2RGB))}},
      {OURS(zumiYCCToRGB_8u_AC4R), &kC4, &kC4, {similar(OPENCV(YCrCb2RGB), kC3, kC4)}},
      {OURS(zumiYCCToRGB_16u_C3R), &kC3x16, &kC3x16, {similar(OPENCV(YCrCb2RGB))}},
      {OURS(zumiYCCToRGB_16u_AC4R), &kC4x16, &kC4x16, {similar(OPENCV(YCrCb2RGB), kC3x16, kC4x16)}},
      {OURS(zumiYCCToRGB_32f_C3R), &kC3x32f, &kC3x32f, {similar(OPENCV(YCrCb2RGB))}},
      {OURS(zumiYCCToRGB_32f_AC4R), &kC4x32f, &kC4x32f, {similar(OPENCV(YCrCb2RGB), kC3x32f, kC4x32f)}},

      {OURS(zumiRGBToXYZ_8u_C3R), &kC3, &kC3, {OPENCV(RGB2XYZ)}},
      {OURS(zumiRGBToXYZ_8u_AC4R), &kC4, &kC4, {similar(OPENCV(RGB2XYZ), kC4, kC3)}},
      {OURS(zumiRGBToXYZ_16u_C3R), &kC3x16, &kC3x16, {OPENCV(RGB2XYZ)}},
      {OURS(zumiRGBToXYZ_16u_AC4R), &kC4x16, &kC4x16, {similar(OPENCV(RGB2XYZ), kC4x16, kC3x16)}},
      {OURS(zumiRGBToXYZ_32f_C3R), &kC3x32f, &kC3x32f, {OPENCV(RGB2XYZ)}},
      {OURS(zumiRGBToXYZ_32f_AC4R), &kC4x32f, &kC4x32f, {similar(OPENCV(RGB2XYZ), kC4x32f, kC3x32f)}},

      // OpenCV does not limit floats.
      {OURS(zumiXYZToRGB_8u_C3R), &kC3, &kC3, {OPENCV(XYZ2RGB)}},
      {OURS(zumiXYZToRGB_8u_AC4R), &kC4, &kC4, {similar(OPENCV(XYZ2RGB), kC3, kC4)}},
      {OURS(zumiXYZToRGB_16u_C3R), &kC3x16, &kC3x16, {OPENCV(XYZ2RGB)}},
      {OURS(zumiXYZToRGB_16u_AC4R), &kC4x16, &kC4x16, {similar(OPENCV(XYZ2RGB), kC3x16, kC4x16)}},
      {OURS(zumiXYZToRGB_32f_C3R), &kC3x32f, &kC3x32f, {similar(OPENCV(XYZ2RGB))}},
      {OURS(zumiXYZToRGB_32f_AC4R), &kC4x32f, &kC4x32f, {similar(OPENCV(XYZ2RGB), kC3x32f, kC4x32f)}},

      {OURS(zumiRGBToLUV_8u_C3R), &kC3, &kC3, {OPENCV(LRGB2Luv)}},
      {OURS(zumiRGBToLUV_8u_AC4R), &kC4, &kC4, {similar(OPENCV(LRGB2Luv), kC4, kC3)}},
      {OURS(zumiLUVToRGB_8u_C3R), &kC3, &kC3, {OPENCV(Luv2LRGB)}},
      {OURS(zumiLUVToRGB_8u_AC4R), &kC4, &kC4, {similar(OPENCV(Luv2LRGB), kC3, kC4)}},
      {OURS(zumiBGRToLab_8u_C3R), &kC3, &kC3, {OPENCV(LBGR2Lab)}},
      {OURS(zumiLabToBGR_8u_C3R), &kC3, &kC3, {OPENCV(Lab2LBGR)}},

      {OURS(zumiCFAToRGB_8u_C1C3R),
       &kMosaic8,
       &kC3,
       {OPENCV(BayerRGGB2RGB), OPENCV(BayerRGGB2RGB_EA), SWSCALE(BAYER_RGGB8, RGB24)},
       8},
      {OURS(zumiCFAToRGB_16u_C1C3R),
       &kMosaic16,
       &kC3x16,
       {OPENCV(BayerRGGB2RGB), OPENCV(BayerRGGB2RGB_EA), SWSCALE(BAYER_RGGB16, RGB48)},
       8},

      {OURS(zumiGammaFwd_8u_C3R), &kC3, &kC3, {openCvTable(zumiGammaFwd_8u_C3R)}},
      {OURS(zumiGammaInv_8u_C3R), &kC3, &kC3, {openCvTable(zumiGammaInv_8u_C3R)}},
      {OURS(zumiGammaFwd_8u_AC4R),
       &kC4,
       &kC4,
       {similar(openCvTable(zumiGammaFwd_8u_C3R)), similar(yuvTable(zumiGammaFwd_8u_C3R))}},
      {OURS(zumiGammaInv_8u_AC4R),
       &kC4,
       &kC4,
       {similar(openCvTable(zumiGammaInv_8u_C3R)), similar(yuvTable(zumiGammaInv_8u_C3R))}},
      {OURS(zumiGammaFwd_32f_C3R), &kC3x32f, &kC3x32f, {similar(openCvPower(0.45))}},
      {OURS(zumiGammaInv_32f_C3R), &kC3x32f, &kC3x32f, {similar(openCvPower(1 / 0.45))}},

      {OURS(zumiColorTwist32f_8u_C3R), &kC3, &kC3, {transform}},
      {OURS(zumiColorTwist32f_8u_AC4R), &kC4, &kC4, {similar(transform), similar(colorMatrix)}},
      {OURS(zumiColorTwist32f_16u_C3R), &kC3x16, &kC3x16, {transform}},
      {OURS(zumiColorTwist_32f_C3R), &kC3x32f, &kC3x32f, {transform}},
      {OURS(zumiColorTwist_32f_C4R), &kC4x32f, &kC4x32f, {transform}},
      {OURS(zumiToneMapLinear_32f8u_C1R), &kGray32f, &kGray8, {toneMap}},
      {OURS(zumiToneMapMean_32f8u_C1R), &kGray32f, &kGray8, {toneMapMean}},

      // zimg diffuses the errors of Floyd and Steinberg. Its ordered pattern is of 16 by 16 pixels, swscale's of 8
      // by 8.
      {REDUCED(zumiReduceBits_16u8u_C1R, FS, 256), &kGray16, &kGray8, {ZIMG(ERROR_DIFFUSION)}},
      {REDUCED(zumiReduceBits_32f8u_C1R, FS, 256), &kGray32f, &kGray8, {ZIMG(ERROR_DIFFUSION)}},
      {REDUCED(zumiReduceBits_16u8u_C1R, Bayer, 256), &kGray16, &kGray8, {ZIMG(ORDERED)}},
      {REDUCED(zumiReduceBits_32f8u_C1R, Bayer, 256), &kGray32f, &kGray8, {ZIMG(ORDERED)}},
      {REDUCED(zumiReduceBits_16u8u_C1R, None, 256), &kGray16, &kGray8, {ZIMG(NONE)}},
      {REDUCED(zumiReduceBits_32f8u_C1R, None, 256), &kGray32f, &kGray8, {ZIMG(NONE)}},
      {REDUCED(zumiReduceBits_8u_C1R, FS, 2), &kGray8, &kGray8, {similar(leptonica, kGray8, kBits)}},
      {REDUCED(zumiReduceBits_8u_C1R, Bayer, 2), &kGray8, &kGray8, {similar(SWSCALE(GRAY8, MONOWHITE), kGray8, kBits)}},
  };
}

// ---- Measuring ------------------------------------------------------------------------------------------------------

double secondsOf(const Loop& run, int calls) {
  using Clock = std::chrono::steady_clock;
  Clock::time_point start = Clock::now();
  run(calls);
  return std::chrono::duration<double>(Clock::now() - start).count();
}

// The shortest time of a call, in seconds, found in samples of many calls.
class Timer {
 public:
  explicit Timer(Loop run) : run_(std::move(run)) {
    constexpr double kSampleSeconds = 300e-6;
    while (secondsOf(run_, calls_) < kSampleSeconds) calls_ *= 2;
  }
  // The first call of a sample brings the caches and the memory to where this conversion leaves them.
  void sample() {
    run_(1);
    best_ = std::min(best_, secondsOf(run_, calls_) / calls_);
  }
  double best() const { return best_; }

 private:
  Loop run_;
  int calls_ = 1;
  double best_ = std::numeric_limits<double>::infinity();
};

// One side of a comparison with its images.
class Contender {
 public:
  Contender(const Prepare& prepare, std::shared_ptr<Image> src, const Format& dstFormat, size_t room)
      : src_(std::move(src)), dst_(dstFormat, src_->size(), room, kDstOffset), run_(prepare(*src_, dst_)) {}

  const Image& dst() const { return dst_; }
  const Loop& run() const { return run_; }
  Loop copy() const {
    return loop(
        [to = dst_.data(), from = src_->data(), n = (src_->bytes() + dst_.bytes()) / 2] { std::memcpy(to, from, n); });
  }

 private:
  // Reads and writes at the same place of a page disturb each other on many processors.
  static constexpr size_t kDstOffset = 2048;

  std::shared_ptr<Image> src_;
  Image dst_;
  Loop run_;
};

// The library first, then its peers. Who reads the same format reads the same image.
std::vector<std::unique_ptr<Contender>> contenders(const Comparison& comparison, Size size) {
  auto srcOf = [&](const Peer& peer) { return peer.src ? peer.src : comparison.src; };
  auto dstOf = [&](const Peer& peer) { return peer.dst ? peer.dst : comparison.dst; };
  // Every image can hold what any of the conversions reads or writes, for the copies.
  size_t room = std::max(bytesOf(*comparison.src, size), bytesOf(*comparison.dst, size));
  for (const Peer& peer : comparison.peers)
    room = std::max({room, bytesOf(*srcOf(peer), size), bytesOf(*dstOf(peer), size)});

  std::map<const Format*, std::shared_ptr<Image>> sources;
  auto sourceOf = [&](const Format* format) {
    std::shared_ptr<Image>& source = sources[format];
    if (!source) {
      source = std::make_shared<Image>(*format, size, room, 0);
      source->fill();
    }
    return source;
  };
  std::vector<std::unique_ptr<Contender>> all;
  auto add = [&](const Prepare& prepare, const Format* src, const Format* dst) {
    all.push_back(std::make_unique<Contender>(prepare, sourceOf(src), *dst, room));
  };
  add(comparison.prepare, comparison.src, comparison.dst);
  for (const Peer& peer : comparison.peers) add(peer.prepare, srcOf(peer), dstOf(peer));
  return all;
}

struct Speed {
  double pixelsPerSecond;
  double copyShare;
};

// The speeds of the library and of its peers, in this order.
std::vector<Speed> measure(const Comparison& comparison, Size size, double seconds) {
  constexpr int kFewestRounds = 5;
  std::vector<Timer> calls, copies;
  auto all = contenders(comparison, size);
  for (const auto& contender : all) {
    calls.emplace_back(contender->run());
    copies.emplace_back(contender->copy());
  }
  auto takeTurns = [&](int rounds) {
    for (; rounds > 0; --rounds) {
      for (size_t i = 0; i < calls.size(); ++i) {
        calls[i].sample();
        copies[i].sample();
      }
    }
  };
  double spent = secondsOf(takeTurns, kFewestRounds);
  while (spent < seconds) spent += secondsOf(takeTurns, 1);

  std::vector<Speed> speeds;
  for (size_t i = 0; i < calls.size(); ++i) {
    double pixels = double(size.width) * size.height;
    speeds.push_back({pixels / calls[i].best(), copies[i].best() / calls[i].best()});
  }
  return speeds;
}

// ---- The report -----------------------------------------------------------------------------------------------------

struct Options {
  string filter;  // an extended regular expression
  std::vector<Size> sizes{{16, 1}, {320, 240}, {1920, 1080}, {3840, 2160}};
  double seconds = 0.3;  // for each comparison and size
  bool markdown = false;
};

struct Column {
  const char* title;
  int width;  // negative: to the left
};

class Table {
 public:
  Table(std::vector<Column> columns, bool markdown) : columns_(std::move(columns)), markdown_(markdown) {
    std::vector<string> titles;
    for (const Column& column : columns_) titles.push_back(column.title);
    row(titles);
    if (!markdown_) return;
    for (const Column& column : columns_) std::printf("|%s", column.width < 0 ? "---" : "--:");
    std::printf("|\n");
  }
  void row(const std::vector<string>& cells) const {
    for (size_t i = 0; i < cells.size(); ++i)
      std::printf(markdown_ ? "| %*s " : "%*s  ", markdown_ ? 0 : columns_[i].width, cells[i].c_str());
    std::printf(markdown_ ? "|\n" : "\n");
    std::fflush(stdout);
  }

 private:
  std::vector<Column> columns_;
  bool markdown_;
};

string number(double value, int decimals) {
  char text[32];
  std::snprintf(text, sizeof text, "%.*f", decimals, value);
  return text;
}

string shownName(const Peer& peer) { return (peer.similar ? "~" : "") + peer.name; }

// What we want to be against the fastest peer: no slower, and clearly faster where it leaves much of the memory's speed
// unused. Calls on a few pixels measure the way into the function, where no slower is enough.
bool meetsGoal(double ratio, double peerCopyShare, Size size) {
  constexpr double kNoise = 0.97, kClearlyFaster = 1.5, kMuchUnused = 0.5;
  constexpr int kFewPixels = 256;
  bool small = size.width * size.height <= kFewPixels;
  return ratio >= kNoise * (!small && peerCopyShare < kMuchUnused ? kClearlyFaster : 1);
}

// The widths of the two columns of names: to the left, as wide as the longest.
std::pair<int, int> nameWidths(const std::vector<Comparison>& comparisons) {
  size_t name = 0, peerName = 0;
  for (const Comparison& comparison : comparisons) {
    name = std::max(name, comparison.name.size());
    for (const Peer& peer : comparison.peers) peerName = std::max(peerName, shownName(peer).size());
  }
  return {-int(name), -int(peerName)};
}

void reportSpeeds(const std::vector<Comparison>& comparisons, const Options& options) {
  int met = 0, missed = 0;
  auto [nameWidth, peerWidth] = nameWidths(comparisons);
  Table table({{"conversion", nameWidth},
               {"size", 9},
               {"Mpx/s", 8},
               {"of copy", 7},
               {"peer", peerWidth},
               {"Mpx/s", 8},
               {"of copy", 7},
               {"ratio", 6},
               {"goal", -6}},
              options.markdown);
  for (const Comparison& comparison : comparisons) {
    for (Size size : options.sizes) {
      size.height = (size.height + comparison.rowUnit - 1) / comparison.rowUnit * comparison.rowUnit;
      std::vector<Speed> speeds = measure(comparison, size, options.seconds);
      auto slower = [](const Speed& a, const Speed& b) { return a.pixelsPerSecond < b.pixelsPerSecond; };
      size_t fastest = std::max_element(speeds.begin() + 1, speeds.end(), slower) - speeds.begin();
      for (size_t i = 1; i < speeds.size(); ++i) {
        double ratio = speeds[0].pixelsPerSecond / speeds[i].pixelsPerSecond;
        string goal;
        if (i == fastest) {
          bool meets = meetsGoal(ratio, speeds[i].copyShare, size);
          ++(meets ? met : missed);
          goal = meets ? "met" : "MISSED";
        }
        table.row({comparison.name, toString(size), number(speeds[0].pixelsPerSecond / 1e6, 0),
                   number(speeds[0].copyShare, 2), shownName(comparison.peers[i - 1]),
                   number(speeds[i].pixelsPerSecond / 1e6, 0), number(speeds[i].copyShare, 2), number(ratio, 2), goal});
      }
    }
  }
  std::printf("\nAgainst the fastest peer: goal met %d times, missed %d times.\n\n", met, missed);
}

// Returns false if a result is not what the peer makes of the same image.
bool reportAgreement(const std::vector<Comparison>& comparisons, const Options& options) {
  constexpr double kSuspectDb = 25;
  constexpr Size kSize{320, 240};
  bool agree = true;
  auto [nameWidth, peerWidth] = nameWidths(comparisons);
  Table table({{"conversion", nameWidth}, {"peer", peerWidth}, {"PSNR, dB", 8}, {"", -7}}, options.markdown);
  for (const Comparison& comparison : comparisons) {
    auto all = contenders(comparison, kSize);
    for (const auto& contender : all) contender->run()(1);
    for (size_t i = 1; i < all.size(); ++i) {
      const Peer& peer = comparison.peers[i - 1];
      if (peer.similar) continue;
      double db = psnr(all[0]->dst(), all[i]->dst());
      bool suspect = db < kSuspectDb;
      if (suspect) agree = false;
      table.row({comparison.name, peer.name, number(db, 1), suspect ? "SUSPECT" : ""});
    }
  }
  return agree;
}

string processorName() {
  std::ifstream info("/proc/cpuinfo");
  for (string line; std::getline(info, line);)
    if (line.rfind("model name", 0) == 0) return line.substr(line.find(':') + 2);
  return "unknown processor";
}

void reportSetting() {
  int64_t targets = hwy::SupportedTargets() & HWY_TARGETS;
  std::printf("%s, our instruction set: %s (Highway %d.%d.%d)\n", processorName().c_str(),
              hwy::TargetName(targets & -targets), HWY_MAJOR, HWY_MINOR, HWY_PATCH);
  unsigned swscale = swscale_version();
  unsigned zimgVersion[3];
  zimg_get_version_info(&zimgVersion[0], &zimgVersion[1], &zimgVersion[2]);
  std::printf(
      "zumcc %s, OpenCV %s, libyuv %d, libswscale %u.%u.%u, zimg %u.%u.%u, Leptonica %d.%d.%d; one thread each\n\n",
      zumccGetLibVersion()->version, cv::getVersionString().c_str(), LIBYUV_VERSION, swscale >> 16, swscale >> 8 & 255,
      swscale & 255, zimgVersion[0], zimgVersion[1], zimgVersion[2], LIBLEPT_MAJOR_VERSION, LIBLEPT_MINOR_VERSION,
      LIBLEPT_PATCH_VERSION);
}

// ---- The command line -----------------------------------------------------------------------------------------------

// Makes Highway choose no better instruction set than the named one.
void limitInstructionSet(const string& name) {
  const std::map<string, int64_t> targets{{"ssse3", HWY_SSSE3}, {"avx2", HWY_AVX2}, {"avx512", HWY_AVX3_DL}};
  auto found = targets.find(name);
  if (found == targets.end()) throw std::invalid_argument("unknown instruction set " + name);
  int64_t best = found->second, supported = hwy::SupportedTargets() & HWY_TARGETS;
  if (!(supported & best)) throw std::invalid_argument("this processor has no " + name);
  int64_t better = best - 1;  // a better target is a lower bit
  hwy::SetSupportedTargetsForTest(supported & ~better);
  hwy::GetChosenTarget().Update(hwy::SupportedTargets());
}

std::vector<Size> parseSizes(const string& text) {
  std::vector<Size> sizes;
  std::istringstream in(text);
  for (string item; std::getline(in, item, ',');) {
    Size size{};
    char rest;
    if (std::sscanf(item.c_str(), "%dx%d%c", &size.width, &size.height, &rest) != 2 || size.width < 2 ||
        size.height < 1 || size.width % 2 != 0)
      throw std::invalid_argument("a size is an even width and a height, as 320x240, not " + item);
    sizes.push_back(size);
  }
  return sizes;
}

Options parseOptions(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    string argument = argv[i], key = argument.substr(0, argument.find('='));
    string value = key.size() < argument.size() ? argument.substr(key.size() + 1) : "";
    if (key == "--filter") {
      options.filter = value;
    } else if (key == "--sizes") {
      options.sizes = parseSizes(value);
    } else if (key == "--isa") {
      limitInstructionSet(value);
    } else if (key == "--seconds") {
      options.seconds = std::stod(value);
    } else if (argument == "--markdown") {
      options.markdown = true;
    } else {
      throw std::invalid_argument("unknown argument " + argument);
    }
  }
  return options;
}

// The comparisons with those peers whose pair of names the filter finds.
std::vector<Comparison> chosen(const string& filter) {
  regex_t compiled;
  if (regcomp(&compiled, filter.c_str(), REG_EXTENDED | REG_NOSUB) != 0)
    throw std::invalid_argument("not a regular expression: " + filter);
  std::unique_ptr<regex_t, decltype(&regfree)> expression(&compiled, &regfree);
  std::vector<Comparison> all = comparisons();
  for (Comparison& comparison : all) {
    auto isLeftOut = [&](const Peer& peer) {
      return regexec(expression.get(), (comparison.name + " " + peer.name).c_str(), 0, nullptr, 0) != 0;
    };
    auto& peers = comparison.peers;
    peers.erase(std::remove_if(peers.begin(), peers.end(), isLeftOut), peers.end());
  }
  all.erase(std::remove_if(all.begin(), all.end(), [](const Comparison& c) { return c.peers.empty(); }), all.end());
  return all;
}

}  // namespace

int main(int argc, char** argv) try {
  Options options = parseOptions(argc, argv);
  threads_omp_of_n_zum = 1;
  cv::setNumThreads(1);
  av_log_set_level(AV_LOG_ERROR);
  std::vector<Comparison> comparisons = chosen(options.filter);
  reportSetting();
  reportSpeeds(comparisons, options);
  return reportAgreement(comparisons, options) ? EXIT_SUCCESS : EXIT_FAILURE;
} catch (const std::exception& error) {
  std::fprintf(stderr, "zum_bench_peers: %s\n", error.what());
  return EXIT_FAILURE;
}
