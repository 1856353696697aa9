#include "platform/bmp.h"

#include <cstdint>

namespace v2 {
namespace {

std::uint32_t U32(std::string_view b, std::size_t at) {
  return static_cast<std::uint32_t>(static_cast<unsigned char>(b[at])) |
         static_cast<std::uint32_t>(static_cast<unsigned char>(b[at + 1]))
             << 8 |
         static_cast<std::uint32_t>(static_cast<unsigned char>(b[at + 2]))
             << 16 |
         static_cast<std::uint32_t>(static_cast<unsigned char>(b[at + 3]))
             << 24;
}

std::uint32_t U16(std::string_view b, std::size_t at) {
  return static_cast<std::uint32_t>(static_cast<unsigned char>(b[at])) |
         static_cast<std::uint32_t>(static_cast<unsigned char>(b[at + 1])) << 8;
}

constexpr std::size_t kFileHeader = 14;
constexpr std::uint32_t kBiRgb = 0;
constexpr std::uint32_t kBiBitfields = 3;

}  // namespace

std::optional<Pixels> LoadBmp(std::string_view bytes) {
  if (bytes.size() < kFileHeader + 40 || bytes[0] != 'B' || bytes[1] != 'M') {
    return std::nullopt;
  }
  const std::uint32_t offset = U32(bytes, 10);
  const std::uint32_t header = U32(bytes, kFileHeader);
  if (header < 40 || header > bytes.size() - kFileHeader) return std::nullopt;
  const auto width = static_cast<std::int32_t>(U32(bytes, kFileHeader + 4));
  const auto height = static_cast<std::int32_t>(U32(bytes, kFileHeader + 8));
  const std::uint32_t planes = U16(bytes, kFileHeader + 12);
  const std::uint32_t bits = U16(bytes, kFileHeader + 14);
  const std::uint32_t compression = U32(bytes, kFileHeader + 16);
  if (planes != 1 || (bits != 24 && bits != 32)) return std::nullopt;
  if (compression == kBiBitfields && bits == 32) {
    // The masks follow a 40-byte header, or sit inside a larger one.
    std::size_t masks = kFileHeader + 40;
    if (masks + 12 > bytes.size()) return std::nullopt;
    if (U32(bytes, masks) != 0x00FF0000 ||
        U32(bytes, masks + 4) != 0x0000FF00 ||
        U32(bytes, masks + 8) != 0x000000FF) {
      return std::nullopt;
    }
  } else if (compression != kBiRgb) {
    return std::nullopt;
  }
  if (width <= 0 || width > kMaxPictureSide || height == 0 ||
      height < -kMaxPictureSide || height > kMaxPictureSide) {
    return std::nullopt;
  }
  const bool top_down = height < 0;
  const int rows = top_down ? -height : height;
  const std::size_t bytes_per_pixel = bits / 8;
  const std::size_t stride =
      (static_cast<std::size_t>(width) * bits + 31) / 32 * 4;
  const std::size_t need = stride * static_cast<std::size_t>(rows);
  if (offset > bytes.size() || bytes.size() - offset < need) {
    return std::nullopt;
  }

  Pixels out;
  out.width = width;
  out.height = rows;
  out.data.resize(static_cast<std::size_t>(width) *
                  static_cast<std::size_t>(rows));
  for (int y = 0; y < rows; ++y) {
    const int stored = top_down ? y : rows - 1 - y;
    const unsigned char* row = reinterpret_cast<const unsigned char*>(
        bytes.data() + offset + stride * static_cast<std::size_t>(stored));
    ColorRef* to = out.data.data() + static_cast<std::size_t>(y) *
                                         static_cast<std::size_t>(width);
    for (int x = 0; x < width; ++x) {
      const unsigned char* p = row + bytes_per_pixel * static_cast<unsigned>(x);
      to[x] = Rgb(p[2], p[1], p[0]);
    }
  }
  return out;
}

}  // namespace v2
