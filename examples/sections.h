// The sections of the gallery, by subject, and what several of them need.
#ifndef ZUMCC_EXAMPLES_SECTIONS_H_
#define ZUMCC_EXAMPLES_SECTIONS_H_

#include <array>
#include <vector>

#include "exhibition.h"
#include "picture.h"
#include "zumcc.h"

std::vector<Section> stripSections();
std::vector<Section> lumaChromaSections();
std::vector<Section> modelSections();
std::vector<Section> samplingSections();
std::vector<Section> sensorSections();
std::vector<Section> levelSections();
std::vector<Section> toneSections();

// A function and its name.
template <class Function>
struct Named {
  const char* name;
  Function* function;
};
#define NAMED(function) \
  { #function, function }

// Brown for gray: a colour twist, a row for each channel, the offset behind the weights.
inline constexpr std::array<Zum32f, 12> kSepia = {0.393f, 0.769f, 0.189f, 0,      0.349f, 0.686f,
                                                  0.168f, 0,      0.272f, 0.534f, 0.131f, 0};

// The three planes of a luma-chroma image, chroma at its own size, in the form that the library takes.
struct Planes {
  Planes(ZumiSize luma, ZumiSize chroma)
      : y(luma.width, luma.height, 1), cb(chroma.width, chroma.height, 1), cr(chroma.width, chroma.height, 1) {}
  void hang(Exhibition& show, const char* first = "Cb", const char* second = "Cr") && {
    show.hang("Y", std::move(y));
    show.hang(first, std::move(cb));
    show.hang(second, std::move(cr));
  }

  Picture y, cb, cr;
  std::array<Zum8u*, 3> data{y.data(), cb.data(), cr.data()};
  std::array<int, 3> steps{y.step(), cb.step(), cr.step()};
};

#endif
