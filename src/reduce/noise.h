// The field of noise that is mixed into dithers: the same for every call with the same range.
#ifndef ZUM_REDUCE_NOISE_H
#define ZUM_REDUCE_NOISE_H

#include "zumcc.h"

namespace zum {

class NoiseField {
 public:
  // Both columns and places in the table of values repeat after as many.
  static constexpr int kPeriod = 1024;

  NoiseField(float low, float high);
  ~NoiseField();
  NoiseField(const NoiseField&) = delete;
  NoiseField& operator=(const NoiseField&) = delete;

  // There was no memory. Nothing else may be asked then.
  bool missing() const { return !values_ || !places_; }

  // The noise at a pixel: the value at the place of its column plus twice its row.
  float at(int x, int y) const { return fromRow(y)[*placesFrom(x)]; }

  // The same in steps: a row's values, at the places of columns. Those of the three rows below follow. There are places
  // for the columns up to the next multiple of the period.
  const float* fromRow(int y) const { return values_ + static_cast<unsigned>(y) % (kPeriod / 2); }
  const Zum16s* placesFrom(int x) const { return places_ + static_cast<unsigned>(x) % kPeriod; }

 private:
  // Values of even places, and again, as far as four rows reach; then those of odd places.
  static constexpr int kHalf = kPeriod + 4;
  static int inHalves(int place) { return place % 2 * kHalf + place / 2; }

  Zum32f* const values_;
  Zum16s* const places_;
};

}  // namespace zum

#endif
