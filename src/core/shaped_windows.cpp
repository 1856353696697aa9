#include "core/shaped_windows.h"

#include <cmath>
#include <vector>

#include "platform/window_services.h"

namespace v2 {

Hrgn WindowRegion = 0;

namespace {

constexpr WParam kScDragMove = 0xF012;  // move, as from the caption
constexpr int kMaxSide = 32767;

// A size in twips as whole pixels, to the nearest (half to even).
int PixelCount(float twips, float twips_per_pixel) {
  if (!(twips_per_pixel > 0)) return 0;
  float n = std::nearbyint(twips / twips_per_pixel);
  if (!(n > 0)) return 0;
  return n > kMaxSide ? kMaxSide : static_cast<int>(n);
}

std::int16_t Round16(float v) {
  float n = std::nearbyint(v);
  if (!(n == n)) return 0;
  if (n > 32767) return 32767;
  if (n < -32768) return -32768;
  return static_cast<std::int16_t>(n);
}

}  // namespace

Hrgn RegionFromPicture(Regions& regions, const Screen& screen,
                       PictureBox& picture, std::int32_t& colour) {
  if (colour < 1) colour = static_cast<std::int32_t>(picture.GetPixel(0, 0));
  const auto clear = static_cast<ColorRef>(colour);
  const int h = PixelCount(picture.Height(), screen.TwipsPerPixelY);
  const int w = PixelCount(picture.Width(), screen.TwipsPerPixelX);
  Hrgn region = regions.CreateRectRgn(0, 0, 0, 0);
  // A line is read in one go; the runs are those a pixel-by-pixel walk
  // would find.
  std::vector<ColorRef> line(static_cast<std::size_t>(w));
  for (int y = 0; y < h; ++y) {
    picture.GetPixelRow(y, 0, w, line.data());
    int x = 0;
    while (x < w) {
      while (x < w && line[static_cast<std::size_t>(x)] == clear) ++x;
      if (x >= w) break;
      const int start = x;
      while (x < w && line[static_cast<std::size_t>(x)] != clear) ++x;
      Hrgn run = regions.CreateRectRgn(start, y, x, y + 1);
      regions.CombineRgn(region, region, run, kRgnOr);
      regions.DeleteObject(run);
    }
  }
  return region;
}

void ShapeForm(ShapedWindow& form, PictureBox& picture) {
  std::int32_t colour = 0;
  WindowRegion =
      RegionFromPicture(form.regions(), form.screen(), picture, colour);
  form.regions().SetWindowRgn(form.hWnd(), WindowRegion, true);
}

void StayOnTop(ShapedWindow& form) {
  form.windows().SetWindowPos(form.hWnd(), kHwndTopmost, 0, 0, 0, 0,
                              kSwpNoSize | kSwpNoMove);
}

void DragForm(ShapedWindow& form) {
  form.windows().ReleaseCapture();
  form.windows().SendMessageA(form.hWnd(), kWmSysCommand, kScDragMove, 0);
}

void SlideAway(ShapedWindow& form, const std::function<void()>& pump) {
  const float edge = form.screen().Width;
  if (form.sliding == 0 && form.Left() <= edge) {
    form.home = {form.Left(), form.Top()};
    form.has_home = true;
  }
  ++form.sliding;
  for (;;) {
    if (pump) pump();
    const float before = form.Left();
    form.SetLeft(std::floor(before) + 500);
    const float after = form.Left();
    if (after > edge) break;
    // A window that no longer moves (it is gone) would never get there.
    if (!(after > before)) break;
  }
  --form.sliding;
}

void SlideAway(ShapedWindow& form, EventLoop& loop) {
  SlideAway(form, [&loop] { loop.PumpEvents(); });
}

void Picture1_MouseMove(ShapedWindow& form, Grab& grab, std::int16_t Button,
                        std::int16_t /*Shift*/, float X, float Y) {
  if (Button == 0) {
    grab.GrabY = Round16(Y);
    grab.GrabX = Round16(X);
  } else if (Button == 1) {
    form.SetLeft(form.Left() - (grab.GrabX - X));
    form.SetTop(form.Top() - (grab.GrabY - Y));
  }
}

std::string WindowState(ShapedWindow* form) {
  if (!form || !form->windows().IsWindowVisible(form->hWnd())) return "hidden";
  return form->Left() >= form->screen().Width ? "off screen" : "shown";
}

void ShowShaped(ShapedWindow& form) {
  const Screen screen = form.screen();
  if (form.Left() >= screen.Width) {
    if (form.has_home && form.home.left < screen.Width) {
      form.SetLeft(form.home.left);
      form.SetTop(form.home.top);
    } else {
      form.SetLeft((screen.Width - form.Width()) / 2);
      form.SetTop((screen.Height - form.Height()) / 2);
    }
    form.has_home = false;
  }
  form.windows().ShowWindow(form.hWnd(), kSwShow);
}

}  // namespace v2
