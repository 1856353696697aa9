// The style window in the simulator: its model of a shaped window, the
// first touch that loads it, and what a later start reads of what it saved.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <memory>

#include "config/style_window.h"
#include "core/program.h"
#include "core/shaped_windows.h"
#include "core/styled_line.h"
#include "platform/sim/sim_stores.h"
#include "platform/sim/sim_ui.h"
#include "tests/unit/world.h"

namespace v2 {
namespace {

namespace fs = std::filesystem;

// One run of the program: a client, stores in dir, the simulator's windows.
struct Session {
  explicit Session(const fs::path& dir)
      : users((dir / "user-store").string()),
        files(dir.string()),
        ui(world.windows),
        platform{world.windows, world.loop, &users, &profiles, &files, &ui},
        program(platform) {}
  testing::World world;
  sim::SimUserStore users;
  sim::SimProfileService profiles;
  sim::SimFileSystem files;
  sim::SimUi ui;
  Platform platform;
  Program program;
};

struct StyleTest : ::testing::Test {
  StyleTest()
      : dir(fs::temp_directory_path() /
            ("v2-style-" + std::to_string(getpid()) + "-" +
             ::testing::UnitTest::GetInstance()->current_test_info()->name())) {
    fs::create_directories(dir);
  }
  ~StyleTest() override { fs::remove_all(dir); }
  Session& Start() {
    run.reset();  // the program before has ended
    run = std::make_unique<Session>(dir);
    run->program.Start();
    run->world.loop.RunUntilIdle();
    return *run;
  }
  fs::path dir;
  std::unique_ptr<Session> run;
};

TEST_F(StyleTest, TheNextStartReadsWhatWasSavedWithItsFallbacks) {
  Form4& f = Start().program.form4;
  f.Text7.Text.Set("");
  f.Text20.Text.Set("*");
  f.Text3.Text.Set("00ff00");
  f.Text13.Text.Set(" lead");
  Form4_Label8_Click(run->program);

  Session& again = Start();
  const Form4& g = again.program.form4;
  // An emptied word reads as nothing and comes back as its fallback; the
  // colour came back as saved and styles the start's own lines.
  EXPECT_EQ(g.Text7.Text.Get(), ": idle :");
  EXPECT_EQ(g.Text20.Text.Get(), "*");
  EXPECT_EQ(g.Text3.Text.Get(), "00ff00");
  ASSERT_EQ(again.world.room.size(), 2u);
  EXPECT_EQ(again.world.room[0].rfind("Member:\t<font face=\"arial narrow\" "
                                      "color=#00ff00>\x8B\xA1'\x95 ",
                                      0),
            0u);
  // A leading blank does not survive the file, as with the profile
  // service of Windows.
  EXPECT_EQ(g.Text13.Text.Get(), "lead");

  // An end ornament has no fallback: emptied, it stays empty.
  again.program.form4.Text20.Text.Set("");
  Form4_Label8_Click(again.program);
  EXPECT_EQ(Start().program.form4.Text20.Text.Get(), "");
}

TEST_F(StyleTest, TheFirstLineLoadsTheWindowWithTheStoredStyle) {
  // Written by hand: a key in lower case, blanks around the value.
  std::ofstream(dir / "settings.dat", std::ios::binary)
      << "[vantrel2]\r\nacolor = 0000ff \r\nmid=\r\n";
  Session r(dir);  // not started: nothing has touched Form4 yet
  EXPECT_FALSE(r.program.form4.loaded);
  EXPECT_EQ(WindowState(r.program.form4.window.get()), "hidden");
  const std::string line = StyledLine(r.program.form4, Pair::kMain, "m");
  EXPECT_TRUE(r.program.form4.loaded);
  EXPECT_NE(line.find("color=#0000ff>"), std::string::npos);
  EXPECT_EQ(r.program.form4.Text7.Text.Get(), ": idle :");
  // Loaded hidden, on top, cut to its picture.
  Form4& f = r.program.form4;
  ASSERT_TRUE(f.window);
  EXPECT_EQ(WindowState(f.window.get()), "hidden");
  EXPECT_TRUE(r.world.windows.PlacementOf(f.hwnd).topmost);
  RegionBands outline;
  ASSERT_TRUE(r.ui.regions().WindowRegionOf(f.hwnd, outline));
  EXPECT_FALSE(outline.Contains(0, 0));  // the picture's corner
  EXPECT_TRUE(outline.Contains(190, 108));
  // No file is written by a load.
  std::ifstream in(dir / "settings.dat", std::ios::binary);
  std::string text((std::istreambuf_iterator<char>(in)), {});
  EXPECT_EQ(text, "[vantrel2]\r\nacolor = 0000ff \r\nmid=\r\n");
}

TEST_F(StyleTest, DraggedSlidAwayAndBackWhereItStood) {
  Program& prog = Start().program;
  Form4& f = prog.form4;
  ShowForm4(prog);
  ASSERT_TRUE(f.window);
  EXPECT_EQ(WindowState(f.window.get()), "shown");
  // The middle of the 1024 by 768 screen, in whole pixels.
  EXPECT_EQ(f.window->Left(), (1024 - 380) / 2 * 15.0f);
  EXPECT_EQ(f.window->Top(), (768 - 216) / 2 * 15.0f);
  const float left = f.window->Left(), top = f.window->Top();
  // The pointer over the picture with no button, then with the left one.
  Picture1_MouseMove(*f.window, f.grab, 0, 0, 300, 300);
  Picture1_MouseMove(*f.window, f.grab, 1, 0, 450, 600);
  EXPECT_EQ(f.window->Left(), left + 150);
  EXPECT_EQ(f.window->Top(), top + 300);
  // The scroll test leaves it; cancel slides it off the screen to the right.
  Form4_Label9_Click(prog);
  EXPECT_EQ(WindowState(f.window.get()), "shown");
  Form4_Label10_Click(prog);
  EXPECT_EQ(WindowState(f.window.get()), "off screen");
  EXPECT_GT(f.window->Left(), 1024 * 15.0f);
  ShowForm4(prog);
  EXPECT_EQ(WindowState(f.window.get()), "shown");
  EXPECT_EQ(f.window->Left(), left + 150);
  EXPECT_EQ(f.window->Top(), top + 300);
}

}  // namespace
}  // namespace v2
