#pragma once
// The program's icon, an orange "v²" on a dark rounded square, drawn at any
// size: the tray entry shows it, and the Windows build writes the same
// pixels into the executable's icon for Explorer, so the two never differ.
#include <cstdint>
#include <vector>

namespace v2 {

// size by size pixels, rows top to bottom, each 0xAARRGGBB: opaque inside
// the rounded square, 0 (fully transparent) outside it.
std::vector<std::uint32_t> DrawTrayIcon(int size);

}  // namespace v2
