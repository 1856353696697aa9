#pragma once
// A bitmap of the program's own pixels, for the tray icon and the pictures
// of the shaped windows.
#include <windows.h>

namespace v2::win32 {

// A top-down 32-bit bitmap of width by height pixels, drawn into directly
// through bits; null (and bits null) when none could be made.
inline HBITMAP MakePixelBitmap(int width, int height, void*& bits) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof(info.bmiHeader);
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = -height;  // top-down
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  bits = nullptr;
  HBITMAP bitmap =
      CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  if (bitmap && bits) return bitmap;
  if (bitmap) DeleteObject(bitmap);
  bits = nullptr;
  return nullptr;
}

}  // namespace v2::win32
