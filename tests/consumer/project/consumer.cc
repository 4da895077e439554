// Memory of the library, its variables, and a demosaic: a flat mosaic gives a flat picture.
#include <zumcc.h>

#include <algorithm>
#include <cstdio>

int main() {
  constexpr int kSide = 8;
  Zum16u* mosaic = zumsMalloc_16u(kSide * kSide);
  Zum16u* rgb = zumsMalloc_16u(kSide * kSide * 3);
  if (!mosaic || !rgb || !i_malloc || !i_free || threads_omp_of_n_zum < 1) return 1;
  std::fill_n(mosaic, kSide * kSide, Zum16u{40000});
  const ZumStatus status =
      zumiCFAToRGB_16u_C1C3R(mosaic, {0, 0, kSide, kSide}, {kSide, kSide}, kSide * 2, rgb, kSide * 6, zumiBayerRGGB);
  const bool flat = std::count(rgb, rgb + kSide * kSide * 3, 40000) == kSide * kSide * 3;
  zumsFree(mosaic);
  zumsFree(rgb);
  if (status != zumOk || !flat) return 1;
  std::printf("C++: %s\n", zumccGetLibVersion()->name);
}
