// A page of pictures that shows what a row of conversions does to one photograph.
#ifndef ZUMCC_EXAMPLES_EXHIBITION_H_
#define ZUMCC_EXAMPLES_EXHIBITION_H_

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "picture.h"

class Exhibition;

// One section of the page: run() converts the photograph and hangs the pictures.
struct Section {
  const char* title;
  const char* note;
  void (*run)(Exhibition&);
};

class Exhibition {
 public:
  Exhibition(Picture photo, std::string title, std::filesystem::path folder);
  ~Exhibition() { progress(nullptr); }

  // Runs the sections one after the other, then writes index.html and prints the table. Throws std::runtime_error.
  void show(const std::vector<Section>& sections);

  // What a section may call.

  const Picture& photo() const { return photo_; }
  // Runs a conversion, several times for its speed, and adds it to the table. A warning is no failure.
  void convert(const std::string& function, const std::function<ZumStatus()>& call);
  // Hangs a picture as it is.
  void hang(const std::string& caption, Picture picture);
  // Hangs the photograph as it came back on some way; the caption tells the PSNR.
  void hangReturned(const std::string& caption, Picture result);
  // The same for the one way of a section, with the difference from the original; the table tells the PSNR.
  void hangResult(Picture result);

 private:
  struct Measured {
    std::string function;
    double speed;  // megapixels a second
  };
  struct Hung {
    std::string caption, file;
    Picture picture;
  };
  struct Room {
    Section section;
    std::vector<Measured> measured;
    std::vector<Hung> hung;
    std::string psnr;
  };

  void progress(const char* doing) const;
  void writePictures(Room& room) const;
  void writePage() const;
  void printTable() const;

  Picture photo_;
  std::string title_;
  std::filesystem::path folder_;
  std::vector<Room> rooms_;
  size_t planned_ = 0;
};

#endif
