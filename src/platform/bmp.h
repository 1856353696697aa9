#pragma once
// Pictures: pixels as colours, read from uncompressed BMP files.
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace v2 {

// A colour as GetPixel gives it: 0x00BBGGRR.
using ColorRef = std::uint32_t;
// What GetPixel gives for a point outside the picture.
inline constexpr ColorRef kClrInvalid = 0xFFFFFFFF;

constexpr ColorRef Rgb(int r, int g, int b) {
  return static_cast<ColorRef>((r & 0xFF) | (g & 0xFF) << 8 | (b & 0xFF) << 16);
}

// Rows top to bottom, each left to right.
struct Pixels {
  int width = 0;
  int height = 0;
  std::vector<ColorRef> data;
  ColorRef At(int x, int y) const {
    if (x < 0 || y < 0 || x >= width || y >= height) return kClrInvalid;
    return data[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                static_cast<std::size_t>(x)];
  }
};

// The largest side a picture may have; anything bigger is refused.
inline constexpr int kMaxPictureSide = 8192;

// A BMP file of 24 or 32 bits per pixel, uncompressed (32-bit pictures may
// state the usual masks), stored bottom-up or top-down. The fourth byte of a
// 32-bit pixel is ignored. Anything else, or a file cut short, gives nullopt.
std::optional<Pixels> LoadBmp(std::string_view bytes);

}  // namespace v2
