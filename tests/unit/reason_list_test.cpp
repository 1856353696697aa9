#include "idle/reason_list.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "core/list_files.h"
#include "core/program.h"
#include "platform/sim/sim_stores.h"
#include "platform/sim/sim_ui.h"
#include "tests/unit/world.h"

namespace v2 {
namespace {

namespace fs = std::filesystem;
using Items = std::vector<std::string>;

TEST(ReasonList, ItemsAreReadByCommasQuotesAndLines) {
  EXPECT_EQ(ReadListItems("gone, back soon\r\nbrb\r\n"),
            (Items{"gone", "back soon", "brb"}));
  EXPECT_EQ(ReadListItems("\"a, b\"  , c\n  d \n"), (Items{"a, b", "c", "d "}));
  EXPECT_EQ(ReadListItems("\r\n\r\nx"), (Items{"", "", "x"}));  // empty lines
  EXPECT_EQ(ReadListItems("a,\r\nb"), (Items{"a", "", "b"}));
  EXPECT_EQ(ReadListItems("\"open ended\r\nnext"),
            (Items{"open ended", "next"}));
  EXPECT_EQ(ReadListItems("\"q\"tail,after"), (Items{"q", "after"}));
  EXPECT_EQ(ReadListItems(""), Items{});
}

struct ListWorld {
  ListWorld()
      : dir(fs::temp_directory_path() / ("v2-list-" + std::to_string(getpid()) +
                                         "-" + std::to_string(counter++))),
        files((fs::create_directories(dir), dir.string())),
        platform{world.windows, world.loop, nullptr, nullptr, &files},
        program(platform),
        file((dir / "vantrel2.lst").string()) {}
  ~ListWorld() { fs::remove_all(dir); }
  std::string Read() {
    std::ifstream in(file, std::ios::binary);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
  }
  static inline int counter = 0;
  testing::World world;
  fs::path dir;
  sim::SimFileSystem files;
  Platform platform;
  Program program;
  std::string file;
};

TEST(ReasonList, SavedAsLinesLoadedByItemsWithEventsBetween) {
  ListWorld w;
  ListBox list;
  list.AddItem("gone, back soon");
  list.AddItem("");
  SaveList(w.platform, w.file, list);
  EXPECT_EQ(w.Read(), "gone, back soon\r\n\r\n");
  EXPECT_TRUE(FileExists(w.platform, w.file));
  EXPECT_FALSE(FileExists(w.platform, ""));
  EXPECT_FALSE(FileExists(w.platform, w.dir.string()));  // a directory

  ListBox loaded;
  loaded.AddItem("kept");  // loading appends
  int events = 0;
  w.world.loop.Post([&] { ++events; });
  LoadList(w.platform, w.file, loaded);
  EXPECT_EQ(loaded.items, (Items{"kept", "gone", "back soon", ""}));
  EXPECT_EQ(events, 1);  // events ran while the list filled

  ListBox empty;
  SaveList(w.platform, w.file, empty);
  EXPECT_EQ(w.Read(), "");
  LoadList(w.platform, (w.dir / "missing.lst").string(), empty);
  EXPECT_EQ(empty.ListCount(), 0);
}

TEST(ReasonList, TheWindowsEvents) {
  ListWorld w;
  const fs::path before = fs::current_path();
  fs::current_path(w.dir);  // the list file is the working directory's
  Form3& f = w.program.form3;
  Form3_List1_DblClick(w.program);  // an empty list: nothing
  EXPECT_EQ(f.Text1.Text.Get(), "");

  f.Text1.Text.Set("one");
  Form3_Text1_KeyPress(w.program, 'x');  // only Enter adds
  EXPECT_EQ(f.List1.ListCount(), 0);
  Form3_Text1_KeyPress(w.program, 13);
  f.Text1.Text.Set("two");
  Form3_Text1_KeyPress(w.program, 13);
  EXPECT_EQ(f.List1.items, (Items{"one", "two"}));
  EXPECT_EQ(f.Text1.Text.Get(), "");

  // Cancel with no file: the list is empty and no file is made.
  Form3_Label2_Click(w.program);
  EXPECT_EQ(f.List1.ListCount(), 0);
  EXPECT_FALSE(fs::exists(w.file));

  f.Text1.Text.Set("a, b");
  Form3_Text1_KeyPress(w.program, 13);
  Form3_Label1_Click(w.program);  // save
  EXPECT_EQ(w.Read(), "a, b\r\n");
  f.Text1.Text.Set("unsaved");
  Form3_Text1_KeyPress(w.program, 13);
  Form3_Label2_Click(w.program);  // cancel: the file as read, written back
  EXPECT_EQ(f.List1.items, (Items{"a", "b"}));
  EXPECT_EQ(w.Read(), "a\r\nb\r\n");

  f.List1.ListIndex = 0;
  Form3_List1_DblClick(w.program);
  EXPECT_EQ(f.Text1.Text.Get(), "a");
  EXPECT_EQ(f.List1.items, (Items{"b"}));
  Form3_List1_DblClick(w.program);  // nothing selected now: nothing
  EXPECT_EQ(f.List1.items, (Items{"b"}));

  // The next start finds the file in the working directory.
  Program next(w.platform);
  next.Start();
  EXPECT_TRUE(next.form3.loaded);
  EXPECT_EQ(next.form3.List1.items, (Items{"a", "b"}));
  fs::current_path(before);
}

TEST(ReasonList, TheWindowIsShapedSlidesAwayAndComesBack) {
  testing::World w;
  sim::SimUi ui(w.windows);
  Platform p{w.windows, w.loop, nullptr, nullptr, nullptr, &ui};
  Program prog(p);
  EnsureForm3(prog);
  Form3& f = prog.form3;
  ASSERT_NE(f.hwnd, 0u);
  EXPECT_FALSE(w.windows.IsWindowVisible(f.hwnd));  // made hidden
  RegionBands outline;
  ASSERT_TRUE(ui.regions().WindowRegionOf(f.hwnd, outline));
  EXPECT_FALSE(outline.empty());
  EXPECT_FALSE(outline.Contains(0, 0));  // the picture's corner is see-through
  EXPECT_TRUE(w.windows.PlacementOf(f.hwnd).topmost);

  const fs::path before = fs::current_path();
  fs::current_path(fs::temp_directory_path());
  int events = 0;
  w.loop.Post([&] { ++events; });
  Form3_Label2_Click(prog);  // cancel: slides away, pumping on the way
  fs::current_path(before);
  EXPECT_GT(f.window->Left(), f.window->screen().Width);
  EXPECT_EQ(events, 1);
  ShowForm3(prog);
  EXPECT_LT(f.window->Left(), f.window->screen().Width);
  EXPECT_TRUE(w.windows.IsWindowVisible(f.hwnd));
}

TEST(ReasonList, RandomPickIsOneToNReseededFromTheClock) {
  testing::World w;
  std::set<double> seen;
  for (int i = 0; i < 200; ++i) {
    EXPECT_EQ(RandomPick(w.platform, 1), 1);
    EXPECT_EQ(RandomPick(w.platform, 0), 1);
    double r = RandomPick(w.platform, 3);
    EXPECT_EQ(RandomPick(w.platform, 3), r);  // same clock, same draw
    EXPECT_TRUE(r == 1 || r == 2 || r == 3) << r;
    seen.insert(r);
    w.loop.RunFor(37);
  }
  EXPECT_EQ(seen.size(), 3u);
}

}  // namespace
}  // namespace v2
