// Shaped windows on real GDI regions and real windows, under Wine.
#include <windows.h>

#include <gtest/gtest.h>

#include <vector>

#include "core/pictures.h"
#include "core/shaped_windows.h"
#include "platform/bmp.h"
#include "platform/win32/win32_shaped.h"
#include "platform/win32/win32_ui.h"
#include "tests/win32/real_windows.h"

namespace v2 {
namespace {

using real::ToHwnd;

// The outline the simulator makes of the same pixels.
RegionBands Expected(const Pixels& p, ColorRef clear) {
  std::vector<PixelRect> runs;
  for (int y = 0; y < p.height; ++y) {
    for (int x = 0; x < p.width;) {
      if (p.At(x, y) == clear) {
        ++x;
        continue;
      }
      int start = x;
      while (x < p.width && p.At(x, y) != clear) ++x;
      runs.push_back({start, y, x, y + 1});
    }
  }
  return RegionBands::FromRects(runs);
}

TEST(Win32Shaped, RegionFromAMemoryBitmapIsTheSimulatorsRegion) {
  for (auto bytes : {Form3Bmp(), Form4Bmp()}) {
    std::optional<Pixels> p = LoadBmp(bytes);
    ASSERT_TRUE(p);
    win32::Win32PictureBox box(*p);
    ASSERT_NE(box.hDC(), 0u);
    // The memory DC answers GetPixel with the picture's own colours, and a
    // line read gives what GetPixel gives.
    EXPECT_EQ(box.GetPixel(0, 0), Rgb(255, 0, 255));
    EXPECT_EQ(box.GetPixel(p->width, 0), kClrInvalid);
    std::vector<ColorRef> line(static_cast<std::size_t>(p->width) + 2);
    for (int y : {0, 5, 120, p->height - 1}) {
      box.GetPixelRow(y, -1, p->width + 2, line.data());
      for (int x = -1; x <= p->width; ++x) {
        ASSERT_EQ(line[static_cast<std::size_t>(x + 1)], box.GetPixel(x, y))
            << x << "," << y;
      }
    }

    win32::Win32Regions regions;
    std::int32_t colour = 0;
    Hrgn r = RegionFromPicture(regions, win32::ScreenMetrics(), box, colour);
    RegionBands want = Expected(*p, Rgb(255, 0, 255));
    EXPECT_EQ(regions.RegionOf(r), want);
    // The system keeps the same bands as the simulator does.
    std::vector<PixelRect> raw = win32::RegionRects(r);
    EXPECT_EQ(raw.size(), want.Rects().size());
    EXPECT_TRUE(raw == want.Rects());
    EXPECT_TRUE(regions.DeleteObject(r));
  }
}

TEST(Win32Shaped, ARealWindowTakesItsOutlineStaysOnTopSlidesAndComesBack) {
  win32::Win32Ui ui;
  Hwnd h = ui.CreateForm("vantrel2 shaped test", 2895, 3195);
  ASSERT_NE(h, 0u);
  win32::Win32ShapedWindow form(h);
  std::optional<Pixels> p = LoadBmp(Form3Bmp());
  ASSERT_TRUE(p);
  win32::Win32PictureBox picture(*p, 4500, 3750, Rgb(255, 0, 255));

  ShapeForm(form, picture);
  RegionBands outline;
  ASSERT_TRUE(form.regions().WindowRegionOf(h, outline));
  EXPECT_EQ(outline, Expected(*p, Rgb(255, 0, 255)));

  StayOnTop(form);
  EXPECT_TRUE(GetWindowLongA(ToHwnd(h), GWL_EXSTYLE) & WS_EX_TOPMOST);
  EXPECT_FALSE(IsWindowVisible(ToHwnd(h)));  // not shown by it

  Screen s = form.screen();
  form.SetLeft(3 * s.TwipsPerPixelX * 100);
  form.SetTop(s.TwipsPerPixelY * 50);
  EXPECT_EQ(form.Left(), 3 * s.TwipsPerPixelX * 100);
  ShowShaped(form);
  EXPECT_TRUE(IsWindowVisible(ToHwnd(h)));

  // The picture reports the pointer; a move with the left button drags.
  Grab grab;
  picture.AttachTo(h, [&](std::int16_t b, std::int16_t sh, float x, float y) {
    Picture1_MouseMove(form, grab, b, sh, x, y);
  });
  SendMessageA(ToHwnd(h), WM_MOUSEMOVE, 0, MAKELPARAM(10, 20));
  EXPECT_EQ(grab.GrabX, static_cast<int>(10 * s.TwipsPerPixelX));
  SendMessageA(ToHwnd(h), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(14, 20));
  RECT r;
  GetWindowRect(ToHwnd(h), &r);
  EXPECT_EQ(r.left, 304);
  EXPECT_EQ(r.top, 50);

  int pumps = 0;
  SlideAway(form, [&] {
    ++pumps;
    MSG msg;
    while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
      DispatchMessageA(&msg);
    }
  });
  EXPECT_GT(form.Left(), s.Width);
  EXPECT_GT(pumps, 1);
  ShowShaped(form);
  GetWindowRect(ToHwnd(h), &r);
  EXPECT_EQ(r.left, 304);  // back where it stood
  DestroyWindow(ToHwnd(h));
}

}  // namespace
}  // namespace v2
