#include "core/shaped_windows.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "core/pictures.h"
#include "platform/bmp.h"
#include "platform/sim/sim_loop.h"
#include "platform/sim/sim_shaped.h"
#include "platform/tray_icon.h"

namespace v2 {

void PrintTo(const RegionBands& r, std::ostream* os) {
  for (const PixelRect& p : r.Rects()) {
    *os << "(" << p.left << "," << p.top << ")-(" << p.right << "," << p.bottom
        << ") ";
  }
}

namespace {

constexpr ColorRef kRed = Rgb(255, 0, 0);
constexpr ColorRef kBlue = Rgb(0, 0, 255);

Pixels Filled(int w, int h, ColorRef c) {
  return {w, h, std::vector<ColorRef>(static_cast<std::size_t>(w * h), c)};
}
void Put(Pixels& p, int x, int y, ColorRef c) {
  p.data[static_cast<std::size_t>(y * p.width + x)] = c;
}

// Regions that note every run OR-ed in, to count the rectangles a scan makes.
struct CountingRegions : sim::SimRegions {
  using SimRegions::SimRegions;
  Hrgn CreateRectRgn(int l, int t, int r, int b) override {
    if (l != r) made.push_back({l, t, r, b});
    return SimRegions::CreateRectRgn(l, t, r, b);
  }
  std::vector<PixelRect> made;
};

// The scan done the slow way, one GetPixel per pixel.
RegionBands ReferenceScan(PictureBox& pic, ColorRef clear, int w, int h) {
  std::vector<PixelRect> runs;
  for (int y = 0; y < h; ++y) {
    for (int x = 0; x < w;) {
      if (pic.GetPixel(x, y) == clear) {
        ++x;
        continue;
      }
      int start = x;
      while (x < w && pic.GetPixel(x, y) != clear) ++x;
      runs.push_back({start, y, x, y + 1});
    }
  }
  return RegionBands::FromRects(runs);
}

struct Shaped : ::testing::Test {
  sim::SimWindows windows;
  CountingRegions regions{windows};
  sim::SimShapedWindow form{windows, regions, 2895, 3195};
  Screen screen = sim::SimScreen();
};

TEST_F(Shaped, RegionFromPictureMakesOneRectanglePerRun) {
  // A corner colour found nowhere else: one transparent pixel, H runs.
  Pixels p = Filled(5, 4, kBlue);
  Put(p, 0, 0, kRed);
  sim::SimPictureBox pic(p);
  std::int32_t colour = 0;
  Hrgn r = RegionFromPicture(regions, screen, pic, colour);
  EXPECT_EQ(colour, static_cast<std::int32_t>(kRed));  // written back
  ASSERT_EQ(regions.made.size(), 4u);
  EXPECT_EQ(regions.made[0], (PixelRect{1, 0, 5, 1}));
  EXPECT_EQ(regions.made[3], (PixelRect{0, 3, 5, 4}));  // ends at x = W
  EXPECT_EQ(regions.RegionOf(r), RegionBands::FromRects(regions.made));
  EXPECT_EQ(regions.live(), 1u);  // the runs were deleted

  // One colour: the empty region. A colour asked for is kept.
  sim::SimPictureBox plain(Filled(6, 3, kBlue));
  colour = static_cast<std::int32_t>(kBlue);
  EXPECT_TRUE(
      regions.RegionOf(RegionFromPicture(regions, screen, plain, colour))
          .empty());
  // Black can not be asked for, but a black corner gives it all the same.
  Pixels dark = Filled(4, 2, 0);
  Put(dark, 2, 1, kRed);
  sim::SimPictureBox dark_pic(dark);
  colour = 0;
  EXPECT_EQ(
      regions.RegionOf(RegionFromPicture(regions, screen, dark_pic, colour)),
      RegionBands::FromRect(2, 1, 3, 2));
  EXPECT_EQ(colour, 0);
}

TEST_F(Shaped, PictureSizeComesFromTwipsRoundedHalfToEven) {
  // 37.5 twips is 2.5 pixels: 2 of them. The box beyond the picture shows
  // its back colour, and past the box GetPixel fails, which is not clear.
  sim::SimPictureBox pic(Filled(1, 1, kBlue), 37.5f, 15, kRed);
  std::int32_t colour = static_cast<std::int32_t>(kRed);
  Hrgn r = RegionFromPicture(regions, screen, pic, colour);
  EXPECT_EQ(regions.RegionOf(r), RegionBands::FromRect(0, 0, 1, 1));
  Screen coarse = screen;
  coarse.TwipsPerPixelX = 7.5f;  // 5 pixels, three past the box
  r = RegionFromPicture(regions, coarse, pic, colour);
  EXPECT_EQ(regions.RegionOf(r),
            RegionBands::FromRects({{0, 0, 1, 1}, {2, 0, 5, 1}}));
  coarse.TwipsPerPixelX = 0;  // nothing to scan
  EXPECT_TRUE(regions.RegionOf(RegionFromPicture(regions, coarse, pic, colour))
                  .empty());
}

TEST_F(Shaped, ThePicturesOutlinesMatchAPixelByPixelScan) {
  for (auto [bytes, w] : {std::pair{Form3Bmp(), 300}, {Form4Bmp(), 400}}) {
    std::optional<Pixels> p = LoadBmp(bytes);
    ASSERT_TRUE(p);
    EXPECT_EQ(p->width, w);
    EXPECT_EQ(p->height, 250);
    EXPECT_EQ(p->At(0, 0), Rgb(255, 0, 255));
    sim::SimPictureBox pic(*p, static_cast<float>(w) * 15, 3750, kRed);
    std::int32_t colour = 0;
    RegionBands got =
        regions.RegionOf(RegionFromPicture(regions, screen, pic, colour));
    EXPECT_EQ(got, ReferenceScan(pic, Rgb(255, 0, 255), w, 250));
    EXPECT_FALSE(got.Contains(0, 0));
    EXPECT_TRUE(got.Contains(100, 100));  // inside the panel
  }
}

TEST_F(Shaped, ShapeFormGivesTheOutlineToTheWindow) {
  Pixels p = Filled(4, 3, kBlue);
  Put(p, 0, 0, kRed);
  sim::SimPictureBox pic(p);
  ShapeForm(form, pic);
  EXPECT_NE(WindowRegion, 0u);
  RegionBands outline;
  ASSERT_TRUE(regions.WindowRegionOf(form.hWnd(), outline));
  EXPECT_EQ(outline, RegionBands::FromRects({{1, 0, 4, 1}, {0, 1, 4, 3}}));
  EXPECT_EQ(regions.live(), 0u);  // the window owns it now
  EXPECT_EQ(regions.redraws(), 1);
}

TEST_F(Shaped, StayOnTopAndDragForm) {
  StayOnTop(form);
  EXPECT_TRUE(windows.PlacementOf(form.hWnd()).topmost);
  EXPECT_FALSE(windows.IsWindowVisible(form.hWnd()));  // not shown

  std::vector<WParam> commands;
  Hwnd h = windows.Create(
      0, "vantrel2 form", "",
      [&](Hwnd, std::uint32_t msg, WParam w, LParam) -> std::optional<LResult> {
        if (msg == kWmSysCommand) commands.push_back(w);
        return 0;
      });
  sim::SimShapedWindow dragged(windows, regions, h);
  windows.SetCapture(h);
  DragForm(dragged);
  EXPECT_EQ(windows.capture(), 0u);
  EXPECT_EQ(commands, std::vector<WParam>{0xF012});
}

TEST_F(Shaped, Picture1MouseMoveGrabsWithNoButtonAndDragsWithTheLeft) {
  form.SetLeft(1500);
  form.SetTop(3000);
  Grab grab;
  Picture1_MouseMove(form, grab, 0, 0, 300.4f, 449.6f);
  EXPECT_EQ(grab.GrabX, 300);
  EXPECT_EQ(grab.GrabY, 450);
  EXPECT_EQ(form.Left(), 1500);  // not moved

  Picture1_MouseMove(form, grab, 1, 0, 450, 420);  // 150 right, 30 up
  EXPECT_EQ(form.Left(), 1650);
  EXPECT_EQ(form.Top(), 2970);
  EXPECT_EQ(grab.GrabX, 300);  // held while the button is down

  for (std::int16_t other : {2, 3, 4}) {
    Picture1_MouseMove(form, grab, other, 0, 9000, 9000);
    EXPECT_EQ(form.Left(), 1650);
    EXPECT_EQ(form.Top(), 2970);
    EXPECT_EQ(grab.GrabX, 300);
    EXPECT_EQ(grab.GrabY, 450);
  }
  Picture1_MouseMove(form, grab, 0, 0, 1e9f, -1e9f);  // quietly bounded
  EXPECT_EQ(grab.GrabX, 32767);
  EXPECT_EQ(grab.GrabY, -32768);
}

TEST_F(Shaped, SlideAwayPumpsUntilPastTheScreenAndShowShapedBringsItBack) {
  form.SetLeft(3000);
  form.SetTop(1500);
  int pumps = 0;
  bool nested = false;
  SlideAway(form, [&] {
    ++pumps;
    // A second slide begun inside the first ends too.
    if (pumps == 3 && !nested) {
      nested = true;
      SlideAway(form, [&] { ++pumps; });
    }
  });
  EXPECT_GT(form.Left(), screen.Width);
  EXPECT_LT(form.Left(), screen.Width + 2 * 500);
  EXPECT_GE(pumps, (15360 - 3000) / 500);

  ShowShaped(form);
  EXPECT_EQ(form.Left(), 3000);  // where it stood before the slide
  EXPECT_EQ(form.Top(), 1500);
  EXPECT_TRUE(windows.IsWindowVisible(form.hWnd()));

  // With an event loop; a window put off the screen by other means comes
  // back to the middle.
  sim::SimLoop loop(sim::TimeMode::kVirtual, LocalTime{});
  int posted = 0;
  loop.Post([&] { ++posted; });
  SlideAway(form, loop);
  EXPECT_EQ(posted, 1);
  sim::SimShapedWindow other(windows, regions, 3000, 1500);
  other.SetLeft(20000);
  ShowShaped(other);
  EXPECT_EQ(other.Left(), (15360 - 3000) / 2);
  EXPECT_EQ(other.Top(), (11520 - 1500) / 2);

  // A window that is gone does not hold the slide forever.
  windows.Destroy(other.hWnd());
  SlideAway(other, [] {});
}

// The smallest BMP writer: 24 or 32 bits, bottom-up or top-down.
std::string Bmp(const Pixels& p, int bits, bool top_down) {
  auto u32 = [](std::string& s, std::uint32_t v) {
    for (int i = 0; i < 4; ++i) s += static_cast<char>(v >> (8 * i));
  };
  int stride = (p.width * bits + 31) / 32 * 4;
  std::string s = "BM";
  u32(s, 0);
  u32(s, 0);
  u32(s, 54);
  u32(s, 40);
  u32(s, static_cast<std::uint32_t>(p.width));
  u32(s, static_cast<std::uint32_t>(top_down ? -p.height : p.height));
  s += std::string("\x01\x00", 2) + static_cast<char>(bits) + '\0';
  for (int i = 0; i < 6; ++i) u32(s, 0);
  for (int r = 0; r < p.height; ++r) {
    int y = top_down ? r : p.height - 1 - r;
    std::string row;
    for (int x = 0; x < p.width; ++x) {
      ColorRef c = p.At(x, y);
      row += {static_cast<char>(c >> 16), static_cast<char>(c >> 8),
              static_cast<char>(c)};
      if (bits == 32) row += '\x7f';
    }
    row.resize(static_cast<std::size_t>(stride), '\0');
    s += row;
  }
  return s;
}

TEST(LoadBmp, ReadsEveryStoredFormAlikeAndRefusesTheRest) {
  Pixels p = Filled(3, 2, kBlue);  // 9 bytes a row: padded to 12
  Put(p, 0, 0, kRed);
  Put(p, 2, 1, Rgb(1, 2, 3));
  for (int bits : {24, 32}) {
    for (bool top_down : {false, true}) {
      std::optional<Pixels> got = LoadBmp(Bmp(p, bits, top_down));
      ASSERT_TRUE(got) << bits << top_down;
      EXPECT_EQ(got->data, p.data) << bits << top_down;
    }
  }
  std::string good = Bmp(p, 24, false);
  EXPECT_FALSE(LoadBmp(good.substr(0, good.size() - 1)));  // cut short
  EXPECT_FALSE(LoadBmp(""));
  std::string rle = good;
  rle[30] = 1;
  EXPECT_FALSE(LoadBmp(rle));
  std::string eight = good;
  eight[28] = 8;
  EXPECT_FALSE(LoadBmp(eight));
}

TEST(RegionBands, SamePixelsCompareEqualHoweverBuilt) {
  RegionBands rows = RegionBands::FromRects(
      {{0, 0, 2, 1}, {2, 0, 4, 1}, {0, 1, 4, 2}, {5, 1, 6, 2}});
  RegionBands blocks =
      RegionBands::FromRects({{5, 1, 6, 2}, {0, 0, 4, 2}, {1, 1, 3, 2}});
  EXPECT_EQ(rows, blocks);
  EXPECT_EQ(rows.Rects(),
            (std::vector<PixelRect>{{0, 0, 4, 1}, {0, 1, 4, 2}, {5, 1, 6, 2}}));
  RegionBands square = RegionBands::FromRect(4, 4, 0, 0);  // corners swapped
  EXPECT_EQ(square.Rects(), (std::vector<PixelRect>{{0, 0, 4, 4}}));
  RegionBands hole =
      RegionBands::Combine(square, RegionBands::FromRect(1, 1, 3, 3), kRgnDiff);
  EXPECT_FALSE(hole.Contains(1, 1));
  EXPECT_TRUE(hole.Contains(0, 1));
  EXPECT_EQ(
      RegionBands::Combine(hole, RegionBands::FromRect(1, 1, 3, 3), kRgnXor),
      square);
  EXPECT_TRUE(
      RegionBands::Combine(hole, RegionBands::FromRect(1, 1, 3, 3), kRgnAnd)
          .empty());
}

// The tray's picture, which is also the exe's icon: at 16 pixels a "v" of
// 2 by 2 strokes and a "2" of single ones, orange on dark, the corners cut.
TEST(TrayIcon, TheVAndTheTwoInOrangeOnDarkWithRoundedCorners) {
  const std::vector<std::uint32_t> icon = DrawTrayIcon(16);
  ASSERT_EQ(icon.size(), 256u);
  auto at = [&](int x, int y) { return icon[y * 16 + x]; };
  int orange = 0, dark = 0;
  for (std::uint32_t pixel : icon) {
    orange += pixel == 0xFFFF8000;
    dark += pixel == 0xFF1E2430;
  }
  EXPECT_EQ(orange, 36 + 11);
  EXPECT_EQ(at(0, 0), 0u);            // a cut corner lets the task bar through
  EXPECT_EQ(orange + dark, 256 - 4);  // one pixel off each corner
  EXPECT_EQ(at(1, 5), 0xFFFF8000u);   // the v's upper left stroke
  EXPECT_EQ(at(3, 5), 0xFF1E2430u);   // inside the v
  EXPECT_EQ(at(12, 1), 0xFFFF8000u);  // the 2's upper left
  EXPECT_EQ(at(12, 2), 0xFF1E2430u);
  EXPECT_TRUE(DrawTrayIcon(0).empty());
}

}  // namespace
}  // namespace v2
