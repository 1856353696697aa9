// What cutting a window's outline from its picture costs in the simulator:
// Form3's picture (300 by 250) and Form4's (400 by 250), read a line at a
// time as the scan does, and a pixel at a time through GetPixel for
// comparison. The outline is made once, at a window's load.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string_view>

#include "core/pictures.h"
#include "core/shaped_windows.h"
#include "platform/bmp.h"
#include "platform/sim/sim_shaped.h"

namespace v2 {
namespace {

// The same picture box with no line read of its own, so every pixel is one
// GetPixel call.
class PixelAtATime : public PictureBox {
 public:
  explicit PixelAtATime(PictureBox& box) : box_(box) {}
  float Width() const override { return box_.Width(); }
  float Height() const override { return box_.Height(); }
  ColorRef GetPixel(int x, int y) override { return box_.GetPixel(x, y); }

 private:
  PictureBox& box_;
};

void Outline(benchmark::State& state, std::string_view bmp, bool by_pixel) {
  sim::SimWindows windows;
  sim::SimRegions regions(windows);
  sim::SimPictureBox box(*LoadBmp(bmp));
  PixelAtATime slow(box);
  PictureBox& picture = by_pixel ? static_cast<PictureBox&>(slow) : box;
  for (auto _ : state) {
    std::int32_t colour = 0;
    Hrgn r = RegionFromPicture(regions, sim::SimScreen(), picture, colour);
    benchmark::DoNotOptimize(r);
    regions.DeleteObject(r);
  }
  state.SetItemsProcessed(state.iterations() *
                          static_cast<std::int64_t>(box.Width() / 15) *
                          static_cast<std::int64_t>(box.Height() / 15));
}

void BM_RegionFromPicture_Form3(benchmark::State& s) {
  Outline(s, Form3Bmp(), false);
}
void BM_RegionFromPicture_Form4(benchmark::State& s) {
  Outline(s, Form4Bmp(), false);
}
void BM_RegionFromPicture_Form4_PixelAtATime(benchmark::State& s) {
  Outline(s, Form4Bmp(), true);
}
BENCHMARK(BM_RegionFromPicture_Form3);
BENCHMARK(BM_RegionFromPicture_Form4);
BENCHMARK(BM_RegionFromPicture_Form4_PixelAtATime);

}  // namespace
}  // namespace v2
