#include "exhibition.h"

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cctype>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <future>
#include <sstream>
#include <stdexcept>
#include <thread>

#include "page.h"

namespace {

constexpr int kAmplification = 16;
constexpr char kPhotoFile[] = "photograph.png";

std::string decimals(double value, int digits) {
  std::ostringstream out;
  out.setf(std::ios::fixed);
  out.precision(digits);
  out << value;
  return out.str();
}

std::string escaped(const std::string& text) {
  std::string out;
  for (char c : text) {
    if (c == '<')
      out += "&lt;";
    else if (c == '>')
      out += "&gt;";
    else if (c == '&')
      out += "&amp;";
    else if (c == '"')
      out += "&quot;";
    else
      out += c;
  }
  return out;
}

// The file name of a picture: "YCbCr 4:2:0", "Cb" is ycbcr-4-2-0-cb.png.
std::string fileName(const std::string& section, const std::string& caption) {
  std::string name;
  for (char c : section + " " + caption) {
    if (std::isalnum(static_cast<unsigned char>(c)))
      name += char(std::tolower(c));
    else if (!name.empty() && name.back() != '-')
      name += '-';
  }
  return name + ".png";
}

// Seconds that the fastest of several calls takes: enough calls to be sure, few enough to be quick.
double fastest(const std::function<ZumStatus()>& call) {
  using Clock = std::chrono::steady_clock;
  constexpr auto kPatience = std::chrono::milliseconds(150);
  double best = INFINITY;
  const auto start = Clock::now();
  for (int calls = 0; calls < 5 || Clock::now() - start < kPatience; ++calls) {
    const auto before = Clock::now();
    call();
    best = std::min(best, std::chrono::duration<double>(Clock::now() - before).count());
  }
  return best;
}

std::string sizeText(const Picture& picture) {
  return std::to_string(picture.width) + " × " + std::to_string(picture.height);
}

void writeFigure(std::ostream& page, const std::string& file, const std::string& caption) {
  page << "<figure><a href=\"" << file << "\"><img src=\"" << file << "\" loading=lazy alt=\"" << escaped(caption)
       << "\"></a><figcaption>" << escaped(caption) << "</figcaption></figure>\n";
}

}  // namespace

Exhibition::Exhibition(Picture photo, std::string title, std::filesystem::path folder)
    : photo_(std::move(photo)), title_(std::move(title)), folder_(std::move(folder)) {
  std::error_code error;
  std::filesystem::create_directories(folder_, error);
  if (error) throw std::runtime_error("cannot make the folder " + folder_.string() + ": " + error.message());
  threads_omp_of_n_zum = 1;  // most conversions never use more, and the speeds are to be compared
}

void Exhibition::show(const std::vector<Section>& sections) {
  planned_ = sections.size();
  writePng(photo_, folder_ / kPhotoFile);
  for (const Section& section : sections) {
    rooms_.push_back({section, {}, {}, {}});
    progress("converting");
    section.run(*this);
    progress("writing the pictures");
    writePictures(rooms_.back());
  }
  progress(nullptr);
  writePage();
  printTable();
}

void Exhibition::convert(const std::string& function, const std::function<ZumStatus()>& call) {
  const ZumStatus status = call();
  if (status < 0) throw std::runtime_error(function + " failed with status " + std::to_string(status));
  rooms_.back().measured.push_back({function, photo_.pixels() / fastest(call) / 1e6});
}

void Exhibition::hang(const std::string& caption, Picture picture) {
  Room& room = rooms_.back();
  const bool whole = picture.width == photo_.width && picture.height == photo_.height;
  room.hung.push_back({whole ? caption : caption + ", " + sizeText(picture), fileName(room.section.title, caption),
                       std::move(picture)});
}

void Exhibition::hangReturned(const std::string& caption, Picture result) {
  const double psnr = difference(photo_, result, 1).psnr;
  hang(caption, std::move(result));
  rooms_.back().hung.back().caption += std::isinf(psnr) ? ": equal" : ": " + decimals(psnr, 2) + " dB";
}

void Exhibition::hangResult(Picture result) {
  Difference change = difference(photo_, result, kAmplification);
  Room& room = rooms_.back();
  room.psnr = std::isinf(change.psnr) ? "equal" : decimals(change.psnr, 2);
  hangReturned("And back", std::move(result));
  hang("Difference", std::move(change.picture));
  room.hung.back().caption +=
      " times " + std::to_string(kAmplification) + "; largest " + std::to_string(change.largest);
}

// One line on a terminal, rewritten as the work goes on; nothing elsewhere. Null ends it.
void Exhibition::progress(const char* doing) const {
  if (!isatty(STDERR_FILENO)) return;
  std::fputs("\r\033[K", stderr);
  if (doing) {
    constexpr int kBar = 24;
    const int done = int((rooms_.size() - 1) * kBar / planned_);
    std::fprintf(stderr, "[%.*s%*s] %zu/%zu  %s: %s", done, "########################", kBar - done, "", rooms_.size(),
                 planned_, rooms_.back().section.title, doing);
  }
  std::fflush(stderr);
}

// Compression takes most of the time of a gallery, so each processor takes pictures until none are left. Their memory
// is given back.
void Exhibition::writePictures(Room& room) const {
  std::atomic<size_t> next{0};
  auto work = [&] {
    for (size_t i; (i = next++) < room.hung.size();) {
      writePng(room.hung[i].picture, folder_ / room.hung[i].file);
      room.hung[i].picture = {};
    }
  };
  std::vector<std::future<void>> workers;
  for (unsigned i = 0; i < std::max(1u, std::thread::hardware_concurrency()); ++i)
    workers.push_back(std::async(std::launch::async, work));
  for (auto& worker : workers) worker.get();
}

void Exhibition::writePage() const {
  const std::filesystem::path file = folder_ / "index.html";
  std::ofstream page(file);
  page << kPageHead << "<header><h1>" << escaped(title_) << "</h1><p>" << sizeText(photo_) << " pixels through "
       << zumccGetLibVersion()->name << ", on one thread</p></header>\n<main style=\"--shape: " << photo_.width << '/'
       << photo_.height << "\">\n"
       << kTableHead;
  for (const Room& room : rooms_) {
    const size_t rows = room.measured.size();
    for (size_t i = 0; i < rows; ++i) {
      page << "<tr>";
      if (i == 0) {
        page << "<th rowspan=" << rows << "><a href=\"#" << &room - rooms_.data() << "\">"
             << escaped(room.section.title) << "</a></th>";
      }
      page << "<td><code>" << room.measured[i].function << "</code></td><td class=number>"
           << decimals(room.measured[i].speed, 0) << "</td>";
      if (i == 0) page << "<td class=number rowspan=" << rows << ">" << room.psnr << "</td>";
      page << "</tr>\n";
    }
  }
  page << "</table>\n";
  for (const Room& room : rooms_) {
    page << "<section id=\"" << &room - rooms_.data() << "\"><h2>" << escaped(room.section.title) << "</h2><p>"
         << escaped(room.section.note) << "</p>\n<div class=wall>\n";
    writeFigure(page, kPhotoFile, "Photograph");
    for (const Hung& hung : room.hung) writeFigure(page, hung.file, hung.caption);
    page << "</div></section>\n";
  }
  page << kPageFoot;
  page.close();
  if (!page) throw std::runtime_error("cannot write " + file.string());
}

void Exhibition::printTable() const {
  std::printf("%-17s  %-44s  %10s  %8s\n", "conversion", "function", "Mpixel/s", "PSNR dB");
  for (const Room& room : rooms_) {
    for (const Measured& measured : room.measured) {
      const bool first = &measured == &room.measured.front(), last = &measured == &room.measured.back();
      std::printf("%-17s  %-44s  %10.1f  %8s\n", first ? room.section.title : "", measured.function.c_str(),
                  measured.speed, last ? room.psnr.c_str() : "");
    }
  }
  std::printf("\nOne thread. Pictures: %s\n", (folder_ / "index.html").c_str());
}
