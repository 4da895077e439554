// The photograph at one look: what several conversions make of it, in strips side by side.
#include <cstring>
#include <iterator>

#include "sections.h"

namespace {

using Conversion = decltype(zumiRGBToHSV_8u_C3R);

// What a conversion makes of the photograph, as a picture of three channels.
Picture converted(Exhibition& show, const Named<Conversion>& named, const Picture& photo) {
  Picture result(photo.width, photo.height, 3);
  show.convert(named.name,
               [&] { return named.function(photo.data(), photo.step(), result.data(), result.step(), photo.size()); });
  return result;
}

// One channel repeated: the same sample of red, green and blue.
Picture asGray(const Picture& picture, int index) {
  const Picture one = channel(picture, index);
  Picture result(picture.width, picture.height, 3);
  for (size_t i = 0; i < one.samples.size(); ++i) std::memset(&result.samples[3 * i], one.samples[i], 3);
  return result;
}

Picture twisted(Exhibition& show, const Picture& photo) {
  Picture result(photo.width, photo.height, 3);
  show.convert("zumiColorTwist32f_8u_C3R", [&] {
    return zumiColorTwist32f_8u_C3R(photo.data(), photo.step(), result.data(), result.step(), photo.size(),
                                    kSepia.data());
  });
  return result;
}

Picture reduced(Exhibition& show, const Picture& photo) {
  Picture result(photo.width, photo.height, 3);
  show.convert("zumiReduceBits_8u_C3R, Floyd-Steinberg", [&] {
    return zumiReduceBits_8u_C3R(photo.data(), photo.step(), result.data(), result.step(), photo.size(), 0, zumDitherFS,
                                 2);
  });
  return result;
}

void strips(Exhibition& show) {
  const Picture& photo = show.photo();
  const Picture ycbcr = converted(show, NAMED(zumiRGBToYCbCr_8u_C3R), photo),
                hsv = converted(show, NAMED(zumiRGBToHSV_8u_C3R), photo);
  const Picture parts[] = {photo, asGray(ycbcr, 0),     asGray(ycbcr, 1),    asGray(hsv, 1),
                           hsv,   twisted(show, photo), reduced(show, photo)};
  constexpr int kParts = static_cast<int>(std::size(parts));
  Picture all = photo;
  for (int i = 0; i < kParts; ++i) {
    const int begin = photo.width * i / kParts, end = photo.width * (i + 1) / kParts;
    // A copy of bytes: any samples, the width counted in bytes.
    if (end > begin)
      zumiCopy_8u_C1R(parts[i].data() + 3 * begin, photo.step(), all.data() + 3 * begin, photo.step(),
                      {3 * (end - begin), photo.height});
  }
  show.hang("Side by side", std::move(all));
}

}  // namespace

std::vector<Section> stripSections() {
  return {
      {"In strips",
       "The photograph, its luma and Cb of YCbCr, its saturation, HSV as if it were RGB, sepia by a colour twist, two "
       "levels by error diffusion.",
       strips}};
}
