#include "platform/sim/sim_shaped.h"

#include <algorithm>
#include <utility>

namespace v2::sim {
namespace {

constexpr std::uint32_t kNoZOrder = 4;

}  // namespace

Screen SimScreen() {
  Screen s;
  s.TwipsPerPixelX = 15;
  s.TwipsPerPixelY = 15;
  s.Width = SimWindows::kScreenWidth * 15.0f;
  s.Height = SimWindows::kScreenHeight * 15.0f;
  return s;
}

SimPictureBox::SimPictureBox(Pixels picture)
    : SimPictureBox(std::move(picture), 0, 0, 0) {
  width_twips_ = static_cast<float>(picture_.width) * 15;
  height_twips_ = static_cast<float>(picture_.height) * 15;
  box_w_ = picture_.width;
  box_h_ = picture_.height;
  back_ = picture_.At(0, 0);
}

SimPictureBox::SimPictureBox(Pixels picture, float width_twips,
                             float height_twips, ColorRef back)
    : picture_(std::move(picture)),
      width_twips_(width_twips),
      height_twips_(height_twips),
      box_w_(PixelsFromTwips(width_twips, SimScreen().TwipsPerPixelX)),
      box_h_(PixelsFromTwips(height_twips, SimScreen().TwipsPerPixelY)),
      back_(back) {}

ColorRef SimPictureBox::GetPixel(int x, int y) {
  if (x < 0 || y < 0 || x >= box_w_ || y >= box_h_) return kClrInvalid;
  if (x < picture_.width && y < picture_.height) return picture_.At(x, y);
  return back_;
}

void SimPictureBox::GetPixelRow(int y, int x, int count, ColorRef* out) {
  int i = 0;
  // The part of the row inside the picture, copied in one go.
  if (y >= 0 && y < picture_.height && y < box_h_) {
    int end = std::min(picture_.width, box_w_);
    const ColorRef* row =
        picture_.data.data() +
        static_cast<std::size_t>(y) * static_cast<std::size_t>(picture_.width);
    for (; i < count && x + i < 0; ++i) out[i] = kClrInvalid;
    for (; i < count && x + i < end; ++i) out[i] = row[x + i];
  }
  for (; i < count; ++i) out[i] = GetPixel(x + i, y);
}

Hrgn SimRegions::CreateRectRgn(int left, int top, int right, int bottom) {
  Hrgn h = next_;
  next_ += 4;
  regions_[h] = RegionBands::FromRect(left, top, right, bottom);
  return h;
}

int SimRegions::CombineRgn(Hrgn dest, Hrgn a, Hrgn b, int mode) {
  auto d = regions_.find(dest);
  auto ra = regions_.find(a);
  if (d == regions_.end() || ra == regions_.end()) return kRgnError;
  if (mode == kRgnCopy) {
    d->second = ra->second;
  } else {
    auto rb = regions_.find(b);
    if (mode < kRgnAnd || mode > kRgnDiff || rb == regions_.end()) {
      return kRgnError;
    }
    d->second = RegionBands::Combine(ra->second, rb->second, mode);
  }
  if (d->second.empty()) return kNullRegion;
  return d->second.Rects().size() == 1 ? kSimpleRegion : kComplexRegion;
}

bool SimRegions::DeleteObject(Hrgn region) {
  return regions_.erase(region) > 0;
}

int SimRegions::SetWindowRgn(Hwnd window, Hrgn region, bool redraw) {
  if (!windows_.IsWindow(window)) return 0;
  if (region == 0) {
    outlines_.erase(window);
  } else {
    auto it = regions_.find(region);
    if (it == regions_.end()) return 0;
    outlines_[window] = std::move(it->second);
    regions_.erase(it);
  }
  if (redraw) ++redraws_;
  return 1;
}

RegionBands SimRegions::RegionOf(Hrgn region) {
  auto it = regions_.find(region);
  return it == regions_.end() ? RegionBands{} : it->second;
}

bool SimRegions::WindowRegionOf(Hwnd window, RegionBands& out) {
  auto it = outlines_.find(window);
  if (it == outlines_.end()) return false;
  out = it->second;
  return true;
}

SimShapedWindow::SimShapedWindow(SimWindows& windows, SimRegions& regions,
                                 float width_twips, float height_twips)
    : windows_(windows), regions_(regions) {
  h_ = windows_.Create(0, "vantrel2 form", "", {}, false,
                       SimWindows::Owner::kProgram);
  Place(0, 0, PixelsFromTwips(width_twips, 15),
        PixelsFromTwips(height_twips, 15));
}

SimShapedWindow::SimShapedWindow(SimWindows& windows, SimRegions& regions,
                                 Hwnd h)
    : windows_(windows), regions_(regions), h_(h) {}

void SimShapedWindow::Place(int x, int y, int cx, int cy) {
  windows_.SetWindowPos(h_, 0, x, y, cx, cy, kNoZOrder);
}

float SimShapedWindow::Left() {
  return static_cast<float>(windows_.PlacementOf(h_).x) * 15;
}
float SimShapedWindow::Top() {
  return static_cast<float>(windows_.PlacementOf(h_).y) * 15;
}
float SimShapedWindow::Width() {
  return static_cast<float>(windows_.PlacementOf(h_).cx) * 15;
}
float SimShapedWindow::Height() {
  return static_cast<float>(windows_.PlacementOf(h_).cy) * 15;
}

void SimShapedWindow::SetLeft(float twips) {
  auto p = windows_.PlacementOf(h_);
  Place(PixelsFromTwips(twips, 15), p.y, p.cx, p.cy);
}
void SimShapedWindow::SetTop(float twips) {
  auto p = windows_.PlacementOf(h_);
  Place(p.x, PixelsFromTwips(twips, 15), p.cx, p.cy);
}
void SimShapedWindow::SetWidth(float twips) {
  auto p = windows_.PlacementOf(h_);
  Place(p.x, p.y, PixelsFromTwips(twips, 15), p.cy);
}
void SimShapedWindow::SetHeight(float twips) {
  auto p = windows_.PlacementOf(h_);
  Place(p.x, p.y, p.cx, PixelsFromTwips(twips, 15));
}

}  // namespace v2::sim
