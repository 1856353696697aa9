// Fuzz target: BMP pictures. Any bytes either give pixels that fit the size
// the file states or nothing; a small picture read is then cut into an
// outline that holds exactly its pixels of another colour than the corner.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/shaped_windows.h"
#include "fuzz/fuzz_check.h"
#include "platform/bmp.h"
#include "platform/sim/sim_shaped.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  std::string_view bytes(reinterpret_cast<const char*>(data), size);
  std::optional<v2::Pixels> p = v2::LoadBmp(bytes);
  if (!p) return 0;
  V2_FUZZ_CHECK(p->width > 0 && p->height > 0 &&
                    p->width <= v2::kMaxPictureSide &&
                    p->height <= v2::kMaxPictureSide,
                "a picture read has a size within bounds");
  V2_FUZZ_CHECK(p->data.size() == static_cast<std::size_t>(p->width) *
                                      static_cast<std::size_t>(p->height),
                "one colour per pixel");
  V2_FUZZ_CHECK(p->data.size() * 3 <= size, "pixels come from the file");
  for (v2::ColorRef c : p->data) {
    V2_FUZZ_CHECK(c <= 0xFFFFFF, "a colour has no fourth byte");
  }
  if (p->data.size() > 4096) return 0;

  v2::sim::SimWindows windows;
  v2::sim::SimRegions regions(windows);
  v2::sim::SimPictureBox box(*p);
  std::int32_t colour = 0;
  v2::Hrgn r =
      v2::RegionFromPicture(regions, v2::sim::SimScreen(), box, colour);
  v2::RegionBands outline = regions.RegionOf(r);
  for (int y = 0; y < p->height; ++y) {
    for (int x = 0; x < p->width; ++x) {
      bool clear = p->At(x, y) == static_cast<v2::ColorRef>(colour);
      V2_FUZZ_CHECK(outline.Contains(x, y) != clear,
                    "the outline is the pixels not of the clear colour");
    }
  }
  V2_FUZZ_CHECK(
      !outline.Contains(p->width, 0) && !outline.Contains(0, p->height),
      "nothing outside the picture");
  V2_FUZZ_CHECK(regions.live() == 1, "every run region was deleted");
  return 0;
}
