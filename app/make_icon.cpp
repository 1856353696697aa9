// make-icon: the executable's icon for Explorer, a Windows .ico holding the
// tray icon's drawing at the sizes Explorer shows (16 to 48 pixels), each as
// a 32-bit picture with its alpha and an AND mask, which every Windows since
// XP reads. The Windows build runs it on the build machine.
//
//   make-icon FILE
#include <cstdint>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "platform/tray_icon.h"

namespace {

constexpr int kSizes[] = {16, 24, 32, 48};

void Put16(std::string& out, std::uint32_t v) {
  out += static_cast<char>(v & 0xFF);
  out += static_cast<char>((v >> 8) & 0xFF);
}

void Put32(std::string& out, std::uint32_t v) {
  Put16(out, v & 0xFFFF);
  Put16(out, v >> 16);
}

// One picture as the icon file keeps it: a BITMAPINFOHEADER of twice the
// height (colours and mask), the BGRA rows bottom up, then the mask's rows
// (a set bit is transparent), each padded to 32 bits.
std::string IconImage(int size) {
  const std::vector<std::uint32_t> argb = v2::DrawTrayIcon(size);
  const auto side = static_cast<std::uint32_t>(size);
  const std::uint32_t mask_stride = (side + 31) / 32 * 4;
  std::string out;
  Put32(out, 40);
  Put32(out, side);
  Put32(out, side * 2);
  Put16(out, 1);   // planes
  Put16(out, 32);  // bits per pixel
  Put32(out, 0);   // BI_RGB
  Put32(out, side * side * 4 + mask_stride * side);
  for (int i = 0; i < 4; ++i) Put32(out, 0);  // resolution, palette
  for (int y = size - 1; y >= 0; --y) {
    for (int x = 0; x < size; ++x) Put32(out, argb[y * size + x]);
  }
  for (int y = size - 1; y >= 0; --y) {
    std::string row(mask_stride, '\0');
    for (int x = 0; x < size; ++x) {
      if (argb[y * size + x] == 0)
        row[x / 8] |= static_cast<char>(0x80 >> (x % 8));
    }
    out += row;
  }
  return out;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: make-icon FILE\n";
    return 2;
  }
  std::vector<std::string> images;
  for (int size : kSizes) images.push_back(IconImage(size));
  // ICONDIR, then one ICONDIRENTRY per picture, then the pictures.
  std::string file;
  Put16(file, 0);
  Put16(file, 1);  // an icon, not a cursor
  Put16(file, static_cast<std::uint32_t>(images.size()));
  std::uint32_t offset = 6 + 16 * static_cast<std::uint32_t>(images.size());
  for (std::size_t i = 0; i < images.size(); ++i) {
    file += static_cast<char>(kSizes[i]);  // width, height (256 would be 0)
    file += static_cast<char>(kSizes[i]);
    file += '\0';  // no palette
    file += '\0';
    Put16(file, 1);   // planes
    Put16(file, 32);  // bits per pixel
    Put32(file, static_cast<std::uint32_t>(images[i].size()));
    Put32(file, offset);
    offset += static_cast<std::uint32_t>(images[i].size());
  }
  for (const std::string& image : images) file += image;
  std::ofstream out(argv[1], std::ios::binary);
  if (!out.write(file.data(), static_cast<std::streamsize>(file.size()))) {
    std::cerr << "make-icon: cannot write " << argv[1] << "\n";
    return 1;
  }
  return 0;
}
