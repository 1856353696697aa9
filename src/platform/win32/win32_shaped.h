#pragma once
// Shaped windows over GDI and user32: the picture in a memory device
// context (so its pixels can be read while no window shows it), real
// regions, and a real top-level window placed in twips at the screen's DPI.
#include <cstdint>
#include <functional>
#include <vector>

#include "platform/shaped.h"
#include "platform/win32/win32_windows.h"

namespace v2::win32 {

// The screen as it is now: twips per pixel from its logical DPI.
Screen ScreenMetrics();

// A region's rectangles exactly as GetRegionData gives them.
std::vector<PixelRect> RegionRects(Hrgn region);

class Win32PictureBox : public PictureBox {
 public:
  // The box's size is the picture's at the screen's DPI.
  explicit Win32PictureBox(const Pixels& picture);
  // A box of the given size in twips, the picture at its top left corner
  // and back everywhere else.
  Win32PictureBox(const Pixels& picture, float width_twips, float height_twips,
                  ColorRef back);
  ~Win32PictureBox() override;
  Win32PictureBox(const Win32PictureBox&) = delete;
  Win32PictureBox& operator=(const Win32PictureBox&) = delete;

  float Width() const override { return width_twips_; }
  float Height() const override { return height_twips_; }
  // Through the device context, as the system reads a pixel.
  ColorRef GetPixel(int x, int y) override;
  // Straight from the bitmap's memory.
  void GetPixelRow(int y, int x, int count, ColorRef* out) override;

  // The box's device context (a memory DC holding its bitmap), 0 if the
  // bitmap could not be made.
  std::uintptr_t hDC() const { return dc_; }

  // Shows the picture as the background of a window of the program's own,
  // at its top left corner, and reports the pointer moving over the parts
  // of it that no control covers: Button and Shift as bit sets (1 left,
  // 2 right, 4 middle; 1 shift, 2 ctrl, 4 alt), X and Y in twips. A press
  // of the left button keeps the pointer's moves coming to the window until
  // it is let go.
  using MouseMoveHandler = std::function<void(
      std::int16_t Button, std::int16_t Shift, float X, float Y)>;
  void AttachTo(Hwnd form, MouseMoveHandler MouseMove);

  struct Attached;  // the window it paints, and its handler

 private:
  void Make(const Pixels& picture, ColorRef back);

  float width_twips_ = 0, height_twips_ = 0;
  int box_w_ = 0, box_h_ = 0;
  std::uintptr_t dc_ = 0, bitmap_ = 0, old_ = 0;
  std::uint32_t* bits_ = nullptr;  // top-down rows of 0x00RRGGBB
  Attached* attached_ = nullptr;
};

class Win32Regions : public Regions {
 public:
  Hrgn CreateRectRgn(int left, int top, int right, int bottom) override;
  int CombineRgn(Hrgn dest, Hrgn a, Hrgn b, int mode) override;
  bool DeleteObject(Hrgn region) override;
  int SetWindowRgn(Hwnd window, Hrgn region, bool redraw) override;
  RegionBands RegionOf(Hrgn region) override;
  bool WindowRegionOf(Hwnd window, RegionBands& out) override;
};

// One of the program's own top-level windows (for instance one that the
// UI toolkit made).
class Win32ShapedWindow : public ShapedWindow {
 public:
  explicit Win32ShapedWindow(Hwnd h) : h_(h) {}
  Hwnd hWnd() const override { return h_; }
  float Left() override;
  float Top() override;
  float Width() override;
  float Height() override;
  void SetLeft(float twips) override;
  void SetTop(float twips) override;
  void SetWidth(float twips) override;
  void SetHeight(float twips) override;
  Screen screen() override { return ScreenMetrics(); }
  Regions& regions() override { return regions_; }
  WindowServices& windows() override { return windows_; }

 private:
  struct Rect {
    int x = 0, y = 0, cx = 0, cy = 0;
  };
  Rect Get();
  void Set(const Rect& r, bool move);

  Hwnd h_;
  Win32Windows windows_;
  Win32Regions regions_;
};

}  // namespace v2::win32
