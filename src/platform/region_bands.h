#pragma once
// A set of pixels kept the way the window system keeps a region: bands of
// rows, top to bottom, each with its runs left to right. The form is unique
// for a set of pixels (touching runs are one run, and a band the same as
// the one right above it joins it), so two regions covering the same pixels
// compare equal whatever built them.
#include <utility>
#include <vector>

namespace v2 {

// Right and bottom exclusive.
struct PixelRect {
  int left = 0, top = 0, right = 0, bottom = 0;
  bool operator==(const PixelRect&) const = default;
};

class RegionBands {
 public:
  RegionBands() = default;
  // The corners may come in any order; an empty rectangle gives no pixels.
  static RegionBands FromRect(int left, int top, int right, int bottom);
  // The union of the rectangles.
  static RegionBands FromRects(const std::vector<PixelRect>& rects);
  // a (mode) b with the CombineRgn modes AND, OR, XOR, DIFF and COPY; any
  // other mode gives a unchanged.
  static RegionBands Combine(const RegionBands& a, const RegionBands& b,
                             int mode);

  // One rectangle per run of each band, top to bottom and left to right.
  std::vector<PixelRect> Rects() const;
  bool empty() const { return bands_.empty(); }
  bool Contains(int x, int y) const;
  bool operator==(const RegionBands&) const = default;

 private:
  using Spans = std::vector<std::pair<int, int>>;
  struct Band {
    int top = 0, bottom = 0;
    Spans spans;
    bool operator==(const Band&) const = default;
  };
  void Append(int top, int bottom, Spans spans);

  std::vector<Band> bands_;
};

}  // namespace v2
