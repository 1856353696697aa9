#pragma once
// Shaped windows in the simulator: a picture box over plain pixels, regions
// kept as sets of pixels, and a window of the simulated tree placed in
// pixels on a 1024 by 768 screen of 15 twips to the pixel.
#include <unordered_map>

#include "platform/shaped.h"
#include "platform/sim/sim_windows.h"

namespace v2::sim {

// The simulator's screen.
Screen SimScreen();

// A picture box of the given size in twips with the picture at its top left
// corner; the rest of the box shows back. By default the box is the
// picture's own size and its back is the picture's top left colour.
class SimPictureBox : public PictureBox {
 public:
  explicit SimPictureBox(Pixels picture);
  SimPictureBox(Pixels picture, float width_twips, float height_twips,
                ColorRef back);
  float Width() const override { return width_twips_; }
  float Height() const override { return height_twips_; }
  ColorRef GetPixel(int x, int y) override;
  void GetPixelRow(int y, int x, int count, ColorRef* out) override;

 private:
  Pixels picture_;
  float width_twips_, height_twips_;
  int box_w_, box_h_;
  ColorRef back_;
};

class SimRegions : public Regions {
 public:
  explicit SimRegions(SimWindows& windows) : windows_(windows) {}
  Hrgn CreateRectRgn(int left, int top, int right, int bottom) override;
  int CombineRgn(Hrgn dest, Hrgn a, Hrgn b, int mode) override;
  bool DeleteObject(Hrgn region) override;
  int SetWindowRgn(Hwnd window, Hrgn region, bool redraw) override;
  RegionBands RegionOf(Hrgn region) override;
  bool WindowRegionOf(Hwnd window, RegionBands& out) override;

  // Regions made and not yet deleted nor given to a window.
  std::size_t live() const { return regions_.size(); }
  // How many times a window was redrawn for a new outline.
  int redraws() const { return redraws_; }

 private:
  SimWindows& windows_;
  std::unordered_map<Hrgn, RegionBands> regions_;
  std::unordered_map<Hwnd, RegionBands> outlines_;
  Hrgn next_ = 0x04040010;
  int redraws_ = 0;
};

// A top-level window of the simulated tree, as one of the program's own.
class SimShapedWindow : public ShapedWindow {
 public:
  // Makes a hidden window of that size in twips.
  SimShapedWindow(SimWindows& windows, SimRegions& regions, float width_twips,
                  float height_twips);
  // Takes a window that is already there.
  SimShapedWindow(SimWindows& windows, SimRegions& regions, Hwnd h);

  Hwnd hWnd() const override { return h_; }
  float Left() override;
  float Top() override;
  float Width() override;
  float Height() override;
  void SetLeft(float twips) override;
  void SetTop(float twips) override;
  void SetWidth(float twips) override;
  void SetHeight(float twips) override;
  Screen screen() override { return SimScreen(); }
  Regions& regions() override { return regions_; }
  WindowServices& windows() override { return windows_; }

 private:
  void Place(int x, int y, int cx, int cy);

  SimWindows& windows_;
  SimRegions& regions_;
  Hwnd h_;
};

}  // namespace v2::sim
