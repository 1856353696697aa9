// The icon's drawing, on a grid of 16 by 16 cells scaled to the size asked
// for: a "v" of 2 by 2 cell strokes at the lower left, a small "2" at the
// upper right, and the square's corners rounded by three cells.
#include "platform/tray_icon.h"

#include <algorithm>
#include <cstddef>

namespace v2 {
namespace {

constexpr std::uint32_t kOrange = 0xFFFF8000;
constexpr std::uint32_t kDark = 0xFF1E2430;
constexpr int kGrid = 16;

bool GlyphAt(const char* const rows[], int columns, int count, int x, int y) {
  return x >= 0 && y >= 0 && x < columns && y < count && rows[y][x] == '#';
}

}  // namespace

std::vector<std::uint32_t> DrawTrayIcon(int size) {
  static const char* const kV[] = {"#...#", "#...#", ".#.#.", ".#.#.", "..#.."};
  static const char* const kTwo[] = {"###", "..#", "###", "#..", "###"};
  if (size <= 0) return {};
  std::vector<std::uint32_t> argb(
      static_cast<std::size_t>(size) * static_cast<std::size_t>(size), 0);
  const double radius = 3.0 * size / kGrid;
  for (int y = 0; y < size; ++y) {
    for (int x = 0; x < size; ++x) {
      // The pixel's middle against the nearest point of the square shrunk
      // by the radius: farther than the radius is a cut-off corner.
      const double px = x + 0.5, py = y + 0.5;
      const double cx = std::clamp(px, radius, size - radius);
      const double cy = std::clamp(py, radius, size - radius);
      if ((px - cx) * (px - cx) + (py - cy) * (py - cy) > radius * radius) {
        continue;
      }
      // The cell of the grid the pixel lies in.
      const int gx = x * kGrid / size, gy = y * kGrid / size;
      const bool v =
          gx >= 1 && gy >= 5 && GlyphAt(kV, 5, 5, (gx - 1) / 2, (gy - 5) / 2);
      const bool two =
          gx >= 12 && gy >= 1 && GlyphAt(kTwo, 3, 5, gx - 12, gy - 1);
      argb[static_cast<std::size_t>(y) * static_cast<std::size_t>(size) +
           static_cast<std::size_t>(x)] = v || two ? kOrange : kDark;
    }
  }
  return argb;
}

}  // namespace v2
