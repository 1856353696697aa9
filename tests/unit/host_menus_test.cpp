// The client's menus as the host layer drives them: popups walked by posted
// keys while the thread is held, the pointer parked, the menu bar read, the
// time on line. A toolbar of the test's own shows what a popup receives.
#include "host/host_menus.h"

#include <gtest/gtest.h>

#include "aolsim/sim_window_host.h"
#include "host/host_windows.h"
#include "platform/sim/sim_loop.h"
#include "platform/sim/sim_windows.h"
#include "tests/unit/world.h"

namespace v2 {
namespace {

// A frame with a toolbar of three icons and nothing else. The 3rd icon's
// popup (opened at its click_to_open-th click) records each key message it
// gets; the icons record where the pointer was at each click.
struct Toolbar {
  Toolbar()
      : loop(sim::TimeMode::kVirtual, LocalTime{2001, 6, 15, 14, 3, 0, 0}),
        platform{windows, loop},
        host(windows, loop) {
    Hwnd frame = windows.Create(0, "AOL Frame25", "America  Online");
    strip = windows.Create(windows.Create(frame, "AOL Toolbar", ""),
                           "_AOL_Toolbar", "");
    for (int i = 1; i <= 3; ++i) {
      windows.Create(strip, "_AOL_Icon", "",
                     [this, i](Hwnd, std::uint32_t msg, WParam,
                               LParam) -> std::optional<LResult> {
                       if (msg != kWmLButtonUp) return std::nullopt;
                       Point at;
                       windows.GetCursorPos(at);
                       clicks.push_back({i, at, loop.clock().NowMs()});
                       if (i == 3 && ++opens == click_to_open) OpenPopup();
                       return std::nullopt;
                     });
    }
  }
  void OpenPopup() {
    windows.Create(
        0, "#32768", "",
        [this](Hwnd, std::uint32_t msg, WParam w,
               LParam) -> std::optional<LResult> {
          if (msg == kWmKeyDown || msg == kWmKeyUp) {
            keys.push_back((msg == kWmKeyDown ? "+" : "-") + std::to_string(w));
          }
          return 0;
        });
  }
  struct Click {
    int icon;
    Point pointer;
    std::int64_t at_ms;
  };
  sim::SimWindows windows;
  sim::SimLoop loop;
  Platform platform;
  aolsim::SimWindowHost host;  // delivers what is posted, as another process
  Hwnd strip = 0;
  int opens = 0, click_to_open = 1;
  std::vector<Click> clicks;
  std::vector<std::string> keys;
};

std::vector<std::string> Presses(std::initializer_list<int> vks) {
  std::vector<std::string> out;
  for (int k : vks) {
    out.push_back("+" + std::to_string(k));
    out.push_back("-" + std::to_string(k));
  }
  return out;
}

TEST(HostMenus, MailListsWalkThePopupWithThePointerParked) {
  struct Case {
    void (*op)(Platform&);
    std::vector<std::string> keys;
    std::int64_t pause_ms;
  };
  const Case cases[] = {
      {MailOpenNew, Presses({40, 40, 13}), 100},
      {MailOpenOld, Presses({40, 40, 40, 40, 13}), 100},
      {MailOpenSent, Presses({40, 40, 40, 40, 40, 13}), 100},
      {MailOpenFlashed, Presses({38, 38, 39, 13}), 0},
  };
  const std::size_t counts[] = {6, 10, 12, 8};
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    Toolbar t;
    t.windows.SetCursorPos(100, 200);
    int events = 0;
    t.loop.Post([&] { ++events; });
    const std::int64_t start = t.loop.clock().NowMs();
    cases[i].op(t.platform);
    const std::int64_t took = t.loop.clock().NowMs() - start;
    t.loop.Hold(10);  // the client takes the posted keys
    EXPECT_EQ(t.keys, cases[i].keys);
    EXPECT_EQ(t.keys.size(), counts[i]);
    ASSERT_EQ(t.clicks.size(), 1u);
    EXPECT_EQ(t.clicks[0].icon, 3);
    // Parked in the bottom right corner for the click, back afterwards.
    EXPECT_EQ(t.clicks[0].pointer.x, 1023);
    EXPECT_EQ(t.clicks[0].pointer.y, 767);
    Point now;
    t.windows.GetCursorPos(now);
    EXPECT_EQ(now.x, 100);
    EXPECT_EQ(now.y, 200);
    // Until the popup is up nothing of the program runs; flashed mail has no
    // pause after it, so nothing runs at all.
    EXPECT_GE(took, cases[i].pause_ms);
    EXPECT_LT(took, cases[i].pause_ms + 50);
    EXPECT_EQ(events, cases[i].pause_ms > 0 ? 1 : 0);
  }
}

TEST(HostMenus, APopupThatNeverComesEndsTheMailListAtTheBound) {
  Toolbar t;
  t.click_to_open = 0;  // never
  t.windows.SetCursorPos(7, 8);
  int events = 0;
  t.loop.Post([&] { ++events; });
  MailOpenNew(t.platform);
  EXPECT_EQ(t.loop.clock().NowMs(), 10000);  // kHostWaitBoundSeconds
  EXPECT_EQ(events, 0);                      // held all along
  EXPECT_TRUE(t.keys.empty());
  Point now;
  t.windows.GetCursorPos(now);
  EXPECT_EQ(now.x, 7);
  EXPECT_EQ(now.y, 8);
}

// The client hangs, vanishes or shows its dialog just as the mail list's
// click arrives: the thread is held to the bound and no longer, no key is
// pressed, the pointer is back, and the next mail list opens.
TEST(HostMenus, AMailListOutlivesAClientThatFailsAtTheClick) {
  using Fault = aolsim::AolClient::Fault;
  for (Fault::Kind kind :
       {Fault::Kind::kHang, Fault::Kind::kQuit, Fault::Kind::kDialog}) {
    testing::World w;
    std::vector<std::string> events;
    w.client.on_event = [&](const std::string& e) { events.push_back(e); };
    w.windows.SetCursorPos(7, 8);
    w.client.Arm(aolsim::AolClient::Moment::kPopup, {kind, 30000, {}});
    MailOpenNew(w.platform);
    EXPECT_EQ(w.loop.clock().NowMs(), 10000);  // kHostWaitBoundSeconds
    EXPECT_TRUE(events.empty());
    Point at;
    w.windows.GetCursorPos(at);
    EXPECT_EQ(at.x, 7);
    EXPECT_EQ(at.y, 8);
    w.loop.RunFor(w.host.HungForMs());
    if (kind == Fault::Kind::kQuit) w.client.Start();
    MailOpenNew(w.platform);
    w.loop.RunUntilIdle();
    EXPECT_EQ(events, std::vector<std::string>{"[client menu] Read New Mail"});
  }
}

TEST(HostMenus, ToolbarMenuPickClicksAgainUntilAPopupComesInTime) {
  {
    Toolbar t;
    ToolbarMenuPick(t.platform, 3, 0);  // a popup at once: one click, Return
    t.loop.Hold(10);
    EXPECT_EQ(t.clicks.size(), 1u);
    EXPECT_EQ(t.keys, Presses({13}));
  }
  {
    Toolbar t;
    t.click_to_open = 3;  // the client answers only the third click
    ToolbarMenuPick(t.platform, 3, 2);
    t.loop.Hold(10);
    ASSERT_EQ(t.clicks.size(), 3u);
    EXPECT_EQ(t.keys, Presses({40, 40, 13}));
    // About a second between the clicks.
    EXPECT_GT(t.clicks[1].at_ms - t.clicks[0].at_ms, 1000);
    EXPECT_LT(t.clicks[1].at_ms - t.clicks[0].at_ms, 1100);
  }
  {
    // An icon with no popup: clicked about once a second until the bound,
    // pumping between the clicks; then the operation ends, pointer back.
    Toolbar t;
    t.windows.SetCursorPos(1, 2);
    int events = 0;
    Timer timer(t.loop, 500);
    timer.OnTimer([&] { ++events; });
    timer.SetEnabled(true);
    ToolbarMenuPick(t.platform, 1, 4);
    EXPECT_GE(t.clicks.size(), 9u);
    EXPECT_LE(t.clicks.size(), 10u);
    EXPECT_GE(t.loop.clock().NowMs(), 10000);
    EXPECT_LT(t.loop.clock().NowMs(), 11200);
    EXPECT_TRUE(t.keys.empty());
    EXPECT_GE(events, 5);  // the program ran between the clicks
    Point now;
    t.windows.GetCursorPos(now);
    EXPECT_EQ(now.x, 1);
  }
}

TEST(HostMenus, RunHostMenuChoosesTheFirstItemThatHoldsTheText) {
  Toolbar t;
  sim::SimWindows& w = t.windows;
  Hwnd frame = w.FindWindowA("AOL Frame25", nullptr);
  std::vector<std::uint32_t> commands;
  // The frame answers its commands; a second frame has none.
  Hwnd real = w.Create(0, "AOL Frame25", "other",
                       [&](Hwnd, std::uint32_t msg, WParam id,
                           LParam) -> std::optional<LResult> {
                         if (msg == kWmCommand) commands.push_back(id);
                         return 0;
                       });
  w.Destroy(frame);
  Hmenu bar = w.CreateMenu(), file = w.CreateMenu(), sign = w.CreateMenu(),
        tools = w.CreateMenu();
  w.AppendMenu(bar, "&File", 0, file);
  w.AppendMenu(bar, "&Quick", 9);  // no submenu: passed over
  w.AppendMenu(bar, "&Sign Off", 0, sign);
  w.AppendMenu(bar, "&Tools", 0, tools);
  w.AppendMenu(file, "E&xit", 1);
  w.AppendMenu(sign, "", 0);  // a separator
  w.AppendMenu(sign, "&Sign Off", 2);
  w.AppendMenu(tools, "Sign Off Later", 3);
  w.SetMenu(real, bar);

  SignOff(t.platform);
  RunHostMenu(t.platform, "SIGN OFF");  // the case does not matter
  RunHostMenu(t.platform, "off later");
  RunHostMenu(t.platform, "Sign Off");  // a part of "&Sign Off"
  // The ampersands are part of the text compared.
  RunHostMenu(t.platform, "&Sign Off Later");
  RunHostMenu(t.platform, "nothing like it");
  EXPECT_EQ(commands, (std::vector<std::uint32_t>{2, 2, 3, 2}));
  w.Destroy(real);
  RunHostMenu(t.platform, "&Sign Off");  // no client: nothing
  EXPECT_EQ(commands.size(), 4u);
}

TEST(HostMenus, TheTimeOnLineFromTheClientsBox) {
  EXPECT_EQ(SessionTimeOf("You have been online for 2 hours and 5 minutes."),
            "2 hours and 5 minutes");
  EXPECT_EQ(SessionTimeOf("for 1.5 h. for 2"), "15 h for 2");
  EXPECT_EQ(SessionTimeOf("No time at all."), "time at all");
  EXPECT_EQ(SessionTimeOf("ab"), "");
  EXPECT_EQ(SessionTimeOf(""), "");

  testing::World w;
  std::vector<std::string> events;
  w.client.on_event = [&](const std::string& e) { events.push_back(e); };
  w.loop.RunFor((2 * 60 + 5) * 60000);
  EXPECT_EQ(SessionTime(w.platform), "2 hours and 5 minutes");
  w.loop.Hold(10);
  EXPECT_EQ(events, std::vector<std::string>{"[client menu] Time Online"});
  EXPECT_FALSE(w.windows.IsWindow(w.client.time_box()));  // closed behind

  // With the toolbar giving no popup, a modal box already open is taken
  // for the time box: its text is read, its first icon clicked.
  w.windows.Destroy(NthChild(w.platform, w.client.toolbar(), "_AOL_Icon", 6));
  w.client.Upload("pic.jpg", 5, 9);
  EXPECT_EQ(SessionTime(w.platform), " Uploading picjpg");
  EXPECT_TRUE(w.windows.IsWindow(w.client.upload()));  // it has no icon
  w.client.EndUpload();
  const std::int64_t start = w.loop.clock().NowMs();
  EXPECT_EQ(SessionTime(w.platform), "");  // nothing comes: bounded twice
  EXPECT_LE(w.loop.clock().NowMs() - start, 21000);
}

}  // namespace
}  // namespace v2
