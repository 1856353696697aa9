#pragma once
// Basic window-system types and message numbers shared by both backends.
#include <cstdint>

namespace v2 {

// A window handle: a 32-bit integer, 0 for none.
using Hwnd = std::uint32_t;
// A menu handle, the same way.
using Hmenu = std::uint32_t;
using WParam = std::uintptr_t;
using LParam = std::intptr_t;
using LResult = std::intptr_t;

// The program's true and false (16-bit, true is -1).
using VbBool = std::int16_t;
inline constexpr VbBool kVbTrue = -1;
inline constexpr VbBool kVbFalse = 0;

inline constexpr std::uint32_t kWmSetText = 12;
inline constexpr std::uint32_t kWmGetText = 13;
inline constexpr std::uint32_t kWmGetTextLength = 14;
inline constexpr std::uint32_t kWmClose = 16;
inline constexpr std::uint32_t kWmKeyDown = 256;
inline constexpr std::uint32_t kWmKeyUp = 257;
inline constexpr std::uint32_t kWmChar = 258;
inline constexpr std::uint32_t kWmCommand = 273;
inline constexpr std::uint32_t kWmLButtonDown = 513;
inline constexpr std::uint32_t kWmLButtonUp = 514;
inline constexpr std::uint32_t kBmSetCheck = 241;
inline constexpr std::uint32_t kLbGetCount = 395;
// Rich edit range read: lParam points to a TextRange.
inline constexpr std::uint32_t kEmGetTextRange = 0x0400 + 75;

inline constexpr std::uint32_t kWmSysCommand = 274;

// SetWindowPos: the place in the stacking order, and flags.
inline constexpr Hwnd kHwndTopmost = 0xFFFFFFFF;    // -1
inline constexpr Hwnd kHwndNoTopmost = 0xFFFFFFFE;  // -2
inline constexpr std::uint32_t kSwpNoSize = 1;
inline constexpr std::uint32_t kSwpNoMove = 2;
inline constexpr std::uint32_t kSwpNoZOrder = 4;
// ShowWindow's commands.
inline constexpr int kSwHide = 0;
inline constexpr int kSwShowNormal = 1;
inline constexpr int kSwShowMinimized = 2;
inline constexpr int kSwMaximize = 3;
inline constexpr int kSwShow = 5;
inline constexpr int kSwMinimize = 6;
inline constexpr int kSwShowMinNoActive = 7;
inline constexpr int kSwRestore = 9;

// GetMenuStringA: the item by its position rather than its command number.
inline constexpr std::uint32_t kMfByPosition = 0x400;

inline constexpr WParam kVkReturn = 13;
inline constexpr WParam kVkEscape = 27;
inline constexpr WParam kVkSpace = 32;
inline constexpr WParam kVkLeft = 37;
inline constexpr WParam kVkUp = 38;
inline constexpr WParam kVkRight = 39;
inline constexpr WParam kVkDown = 40;

struct Point {
  std::int32_t x = 0;
  std::int32_t y = 0;
};

// How twips stand to the screen's pixels, and the screen's size in twips.
struct Screen {
  float TwipsPerPixelX = 15;
  float TwipsPerPixelY = 15;
  float Width = 1024 * 15;  // twips
  float Height = 768 * 15;  // twips
};

// Layout-compatible with the rich edit TEXTRANGEA structure.
struct TextRange {
  std::int32_t cpMin;
  std::int32_t cpMax;
  char* lpstrText;
};

}  // namespace v2
