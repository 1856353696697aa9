#include "platform/shaped.h"

#include <cmath>

namespace v2 {

int PixelsFromTwips(float twips, float twips_per_pixel) {
  constexpr double kBound = 1 << 24;
  if (!(twips_per_pixel > 0)) return 0;
  double px = static_cast<double>(twips) / twips_per_pixel;
  if (std::isnan(px)) return 0;
  if (px > kBound) px = kBound;
  if (px < -kBound) px = -kBound;
  return static_cast<int>(std::nearbyint(px));  // half to even
}

void PictureBox::GetPixelRow(int y, int x, int count, ColorRef* out) {
  for (int i = 0; i < count; ++i) out[i] = GetPixel(x + i, y);
}

}  // namespace v2
