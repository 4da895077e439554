#include "support/describe.h"

#include <algorithm>
#include <cctype>
#include <sstream>
#include <stdexcept>

namespace zumtest {
namespace {

// What a name says of one side of a conversion.
struct Format {
  std::string model, depth, layout;
};

struct Name {
  Format source, destination;
  bool inPlace;
};

// One tag stands for both sides, two are the source's and the destination's. isLast tells the last character of a tag.
void setBoth(const std::string& tags, int (*isLast)(int), std::string Format::*member, Name& name) {
  const auto end = std::find_if(tags.begin(), tags.end(), isLast);
  if (end == tags.end()) throw std::logic_error("unknown tag " + tags);
  name.source.*member = {tags.begin(), end + 1};
  name.destination.*member = end + 1 == tags.end() ? name.source.*member : std::string(end + 1, tags.end());
}

Name parse(const std::string& function) {
  std::vector<std::string> parts;  // operation, depth, layout, with a variant behind the operation in some
  std::istringstream stream(function);
  for (std::string part; std::getline(stream, part, '_');) parts.push_back(part);
  if (parts.size() < 3 || parts.front().compare(0, 4, "zumi") != 0) throw std::logic_error("unknown form of name");

  Name name;
  const std::string operation = parts.front().substr(4);
  const size_t to = operation.find("To", 1);
  name.source.model = operation.substr(0, to);
  name.destination.model = to == std::string::npos ? operation : operation.substr(to + 2);
  setBoth(parts[parts.size() - 2], std::isalpha, &Format::depth, name);

  std::string layout = parts.back();
  if (layout.back() == 'R') layout.pop_back();
  const auto inPlace = std::remove(layout.begin(), layout.end(), 'I');
  name.inPlace = inPlace != layout.end();
  layout.erase(inPlace, layout.end());
  setBoth(layout, std::isdigit, &Format::layout, name);
  return name;
}

bool contains(const std::string& model, const char* what) { return model.find(what) != std::string::npos; }

Sample sampleOf(const std::string& depth) { return {depth.back(), std::stoul(depth) / 8}; }

// The planes of a format. Where they are found in the arguments is still open.
std::vector<Plane> planesOf(const Format& format, Role role, const Traits& traits) {
  const std::string& model = format.model;
  const Sample sample = sampleOf(format.depth);
  Plane full{role, sample}, chroma{role, sample};
  full.columnsBehind = chroma.columnsBehind = traits.columnsBehind;
  chroma.roundsUp = traits.halfWidthRoundsUp;
  if (contains(model, "1620")) {
    chroma.columnDivisor = chroma.rowDivisor = 4;
  } else if (contains(model, "420")) {
    chroma.columnDivisor = chroma.rowDivisor = 2;
    chroma.roundsUp = traits.halfSizeRoundsUp;
  } else if (contains(model, "422")) {
    chroma.columnDivisor = 2;
  } else if (contains(model, "411")) {
    chroma.columnDivisor = 4;
  }
  const bool packed = sample.bytes == 2 && (contains(model, "565") || contains(model, "555") || contains(model, "444"));
  const char family = format.layout[format.layout.size() - 2];
  const size_t count = format.layout.back() - '0';
  if (family == 'C') {
    full.samplesPerColumn = packed ? 1 : count;
    full.keepsAlpha = format.layout == "AC4" && traits.keepsAlpha;
    return {full};
  }
  if (count == 2) {
    chroma.samplesPerColumn = 2;
    return {full, chroma};
  }
  if (count == 3) return {full, chroma, chroma};
  return {full, full, full, full};
}

Function describe(const std::string& name, const std::vector<Kind>& kinds, const std::vector<size_t>& bytes,
                  std::function<ZumStatus(const Argument*)> invoke) {
  Function f{name, traitsOf(name), kinds, {}, std::move(invoke)};
  const Name parsed = parse(name);
  const std::vector<Plane> sides[2] = {
      planesOf(parsed.source, Role::kSource, f.traits),
      planesOf(parsed.destination, parsed.inPlace ? Role::kInPlace : Role::kDestination, f.traits)};
  size_t taken[2] = {};
  size_t unstepped = 0;  // the planes from here on have no step yet
  bool sized = false;
  for (size_t i = 0; i < kinds.size(); ++i) {
    const Kind kind = kinds[i];
    const bool array = kind == Kind::kSourcePlanes || kind == Kind::kDestinationPlanes;
    if (array || kind == Kind::kSource || kind == Kind::kDestination) {
      if (sized && !f.takesRectangle()) {
        if (kind == Kind::kSource) continue;  // a table of coefficients
        // Where the result of a reduction goes.
        Plane result{Role::kDestination, {'f', bytes[i]}, 0};
        result.pointer = i;
        f.planes.push_back(result);
        unstepped = f.planes.size();
        continue;
      }
      const int side = kind == Kind::kDestination || kind == Kind::kDestinationPlanes;
      const size_t count = array ? sides[side].size() : 1;
      for (size_t entry = 0; entry < count; ++entry) {
        Plane plane = sides[side].at(taken[side]++);
        plane.pointer = i;
        if (array) plane.pointerEntry = entry;
        if (plane.sample.bytes != bytes[i]) throw std::logic_error("the depth is not that of the declaration");
        f.planes.push_back(plane);
      }
    } else if ((kind == Kind::kInt || kind == Kind::kInts) && unstepped < f.planes.size()) {
      for (size_t entry = 0; unstepped < f.planes.size(); ++entry, ++unstepped) {
        f.planes[unstepped].step = i;
        if (kind == Kind::kInts) f.planes[unstepped].stepEntry = entry;
      }
    }
    sized |= kind == Kind::kSize;
  }
  for (int side = 0; side < 2; ++side)
    if (taken[side] != 0 && taken[side] != sides[side].size()) throw std::logic_error("a plane has no argument");
  return f;
}

template <class... T>
void add(std::vector<Function>& list, const char* name, ZumStatus (*function)(T...)) {
  if constexpr ((std::is_same_v<T, ZumiSize> || ...)) {
    try {
      list.push_back(describe(name, {kindOf<T>()...}, {sampleBytes<T>()...}, [function](const Argument* arguments) {
        return apply(function, arguments, std::index_sequence_for<T...>());
      }));
    } catch (const std::exception& error) {
      throw std::logic_error(std::string(name) + ": " + error.what());
    }
  }
}

// The services that take no image.
template <class Result, class... T>
void add(std::vector<Function>&, const char*, Result (*)(T...)) {}

size_t divide(int size, int divisor, bool up) { return size <= 0 ? 0 : (size + (up ? divisor - 1 : 0)) / divisor; }

}  // namespace

size_t Plane::rowBytes(ZumiSize size) const {
  if (samplesPerColumn == 0) return sample.bytes;
  return divide(size.width + columnsBehind(size.width), columnDivisor, roundsUp) * samplesPerColumn * sample.bytes;
}

size_t Plane::rows(ZumiSize size) const {
  return samplesPerColumn == 0 ? 1 : divide(size.height, rowDivisor, roundsUp);
}

bool Function::takesRectangle() const { return std::count(kinds.begin(), kinds.end(), Kind::kRect) != 0; }

bool Function::isParameter(size_t argument) const {
  return (kinds[argument] == Kind::kNumber || kinds[argument] == Kind::kInt) &&
         std::none_of(planes.begin(), planes.end(), [&](const Plane& plane) { return plane.step == argument; });
}

bool Function::takesSteps() const {
  return std::any_of(planes.begin(), planes.end(), [](const Plane& p) { return p.step != Plane::kNone; });
}

bool Function::worksInPlace() const {
  return planes.size() == 2 && !takesRectangle() && planes[0].role == Role::kSource &&
         planes[1].role == Role::kDestination && planes[0].sample.bytes == planes[1].sample.bytes &&
         planes[0].samplesPerColumn == planes[1].samplesPerColumn;
}

ZumiSize Function::accepted(ZumiSize size) const {
  const ZumiSize least = takesRectangle() ? ZumiSize{1, 1} : traits.minimum;
  const auto roundedUp = [](int value, int multiple) { return (value + multiple - 1) / multiple * multiple; };
  return {roundedUp(std::max({size.width, least.width, traits.narrowest}), traits.multiple.width),
          roundedUp(std::max({size.height, least.height, 1}), traits.multiple.height)};
}

const std::vector<Function>& functions() {
  static const std::vector<Function> list = [] {
    std::vector<Function> all;
#define ZUM_FUNCTION(name) add(all, #name, name);
#include "functions.def"
#undef ZUM_FUNCTION
    return all;
  }();
  return list;
}

}  // namespace zumtest
