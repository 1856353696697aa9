#pragma once
// The program's own borderless windows whose outline is cut from a picture:
// the picture box read pixel by pixel, the region calls that build an
// outline, and the window's place in twips on a screen measured in twips.
#include <cstdint>

#include "platform/bmp.h"
#include "platform/region_bands.h"
#include "platform/types.h"

namespace v2 {

class WindowServices;

// A region handle: a 32-bit integer, 0 for none.
using Hrgn = std::uint32_t;

// CombineRgn modes and results.
inline constexpr int kRgnAnd = 1;
inline constexpr int kRgnOr = 2;
inline constexpr int kRgnXor = 3;
inline constexpr int kRgnDiff = 4;
inline constexpr int kRgnCopy = 5;
inline constexpr int kRgnError = 0;
inline constexpr int kNullRegion = 1;
inline constexpr int kSimpleRegion = 2;
inline constexpr int kComplexRegion = 3;

// Twips to whole pixels, to the nearest (half to even); a figure too large for
// the screen stops at a bound, and one that is not a number gives 0.
int PixelsFromTwips(float twips, float twips_per_pixel);

// A picture box holding a picture at its top left corner. Its pixels are
// readable whether or not any window shows it.
class PictureBox {
 public:
  virtual ~PictureBox() = default;
  // The box's size in twips.
  virtual float Width() const = 0;
  virtual float Height() const = 0;
  // The colour at (x, y) in pixels of the box; kClrInvalid outside it.
  virtual ColorRef GetPixel(int x, int y) = 0;
  // out[i] = GetPixel(x + i, y) for i below count, in one go where the
  // backend can.
  virtual void GetPixelRow(int y, int x, int count, ColorRef* out);
};

// The region calls. A region given to a window with SetWindowRgn belongs to
// the window from then on and its handle is no longer the caller's.
class Regions {
 public:
  virtual ~Regions() = default;
  virtual Hrgn CreateRectRgn(int left, int top, int right, int bottom) = 0;
  // dest = a (mode) b; gives the kind of region made, or kRgnError.
  virtual int CombineRgn(Hrgn dest, Hrgn a, Hrgn b, int mode) = 0;
  virtual bool DeleteObject(Hrgn region) = 0;
  // 0 as the region takes the window's outline away. Nonzero on success.
  virtual int SetWindowRgn(Hwnd window, Hrgn region, bool redraw) = 0;

  // Reading back, for checks: the pixels a region covers (none for a
  // handle that is not a region), and a window's outline (false where the
  // window has none).
  virtual RegionBands RegionOf(Hrgn region) = 0;
  virtual bool WindowRegionOf(Hwnd window, RegionBands& out) = 0;
};

// A top-level window of the program's own. Places and sizes are in twips;
// a place set is kept in whole pixels, so reading it back may give a little
// less or more than was set.
class ShapedWindow {
 public:
  virtual ~ShapedWindow() = default;
  virtual Hwnd hWnd() const = 0;
  virtual float Left() = 0;
  virtual float Top() = 0;
  virtual float Width() = 0;
  virtual float Height() = 0;
  virtual void SetLeft(float twips) = 0;
  virtual void SetTop(float twips) = 0;
  virtual void SetWidth(float twips) = 0;
  virtual void SetHeight(float twips) = 0;

  virtual Screen screen() = 0;
  virtual Regions& regions() = 0;
  virtual WindowServices& windows() = 0;

  // Where the window stood when it last began to slide off the screen, so
  // that it can come back there; kept by the shell, not by the backend.
  struct Place {
    float left = 0, top = 0;
  };
  bool has_home = false;
  Place home;
  int sliding = 0;  // slides under way (a slide may start inside another)
};

}  // namespace v2
