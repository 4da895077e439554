// Sends a photograph through the conversions of the library and back, and writes a page of the pictures.
//
//   gallery PHOTOGRAPH [FOLDER]
//
// A new section is a function that converts and hangs, and a line in the list of its subject.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <vector>

#include "exhibition.h"
#include "picture.h"
#include "sections.h"

namespace {

std::vector<Section> allSections() {
  std::vector<Section> all;
  for (const auto& subject : {stripSections, lumaChromaSections, modelSections, samplingSections, sensorSections,
                              levelSections, toneSections}) {
    for (const Section& section : subject()) all.push_back(section);
  }
  return all;
}

}  // namespace

int main(int argc, char** argv) try {
  if (argc < 2 || argc > 3) {
    std::fprintf(stderr, "usage: %s PHOTOGRAPH [FOLDER]\n", argv[0]);
    return 2;
  }
  const std::filesystem::path file = argv[1];
  Picture photo = readPicture(file);
  if (photo.width < 2 || photo.height < 2) {
    std::fprintf(stderr, "gallery: %s is smaller than 2 by 2 pixels\n", argv[1]);
    return 1;
  }
  Exhibition(std::move(photo), file.filename().string(), argc == 3 ? argv[2] : "gallery").show(allSections());
  return 0;
} catch (const std::exception& error) {
  std::fprintf(stderr, "gallery: %s\n", error.what());
  return 1;
}
