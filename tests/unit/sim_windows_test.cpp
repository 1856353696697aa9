#include "platform/sim/sim_windows.h"

#include <gtest/gtest.h>

#include <string>

#include "host/host_windows.h"
#include "tests/unit/world.h"

namespace v2 {
namespace {

TEST(SimWindows, LookupFollowsTheWindowManagersRules) {
  sim::SimWindows w;
  Hwnd frame = w.Create(0, "AOL Frame25", "America  Online");
  Hwnd a = w.Create(frame, "_AOL_Icon", "a");
  Hwnd list = w.Create(frame, "_AOL_Listbox", "");
  Hwnd b = w.Create(frame, "_AOL_Icon", "b");
  Hwnd inner = w.Create(list, "_AOL_Icon", "deep");

  EXPECT_EQ(w.FindWindowA("aol frame25", nullptr), frame);
  EXPECT_EQ(w.FindWindowA("AOL Frame25", "America Online"), 0u);  // one blank
  EXPECT_EQ(w.FindWindowExA(frame, 0, "_aol_icon", nullptr), a);
  EXPECT_EQ(w.FindWindowExA(frame, a, "_AOL_Icon", nullptr), b);
  EXPECT_EQ(w.FindWindowExA(frame, b, "_AOL_Icon", nullptr), 0u);
  EXPECT_EQ(w.FindWindowExA(frame, 0, "_AOL_Icon", "b"), b);
  EXPECT_EQ(w.FindWindowExA(frame, 0, nullptr, "deep"), 0u);  // direct only
  EXPECT_EQ(w.FindWindowExA(list, 0, nullptr, nullptr), inner);
  EXPECT_EQ(w.FindWindowExA(frame, inner, nullptr, nullptr),
            0u);  // not a child
}

TEST(SimWindows, NthChildStartsAgainBehindZero) {
  testing::World world;
  auto& w = world.windows;
  Hwnd parent = w.Create(0, "AOL Child", "");
  Hwnd i1 = w.Create(parent, "_AOL_Icon", "");
  Hwnd i2 = w.Create(parent, "_AOL_Icon", "");
  EXPECT_EQ(NthChild(world.platform, parent, "_AOL_Icon", 1), i1);
  EXPECT_EQ(NthChild(world.platform, parent, "_AOL_Icon", 2), i2);
  EXPECT_EQ(NthChild(world.platform, parent, "_AOL_Icon", 3), 0u);
  // Behind the 0 the chain begins again at the first child.
  EXPECT_EQ(NthChild(world.platform, parent, "_AOL_Icon", 4), i1);
}

TEST(SimWindows, SentMessagesRunAtOncePostedOnesWhenTheThreadYields) {
  sim::SimWindows w;
  std::string seen;
  Hwnd h = w.Create(
      0, "RICHCNTL", "",
      [&](Hwnd, std::uint32_t msg, WParam c, LParam) -> std::optional<LResult> {
        if (msg == kWmChar) seen += static_cast<char>(c);
        return std::nullopt;
      });
  w.SendMessageA(h, kWmChar, 'a', 0);
  EXPECT_EQ(seen, "a");
  EXPECT_TRUE(w.PostMessageA(h, kWmChar, 'b', 0));
  w.SendMessageA(h, kWmChar, 'c', 0);
  EXPECT_EQ(seen, "ac");  // the sent message overtakes the posted one
  EXPECT_TRUE(w.DeliverPosted());
  EXPECT_EQ(seen, "acb");
  EXPECT_FALSE(w.DeliverPosted());
  EXPECT_FALSE(w.PostMessageA(0, kWmChar, 'x', 0));
  // Text travels by pointer, which no queue can hold.
  const char* text = "posted";
  EXPECT_FALSE(
      w.PostMessageA(h, kWmSetText, 0, reinterpret_cast<LParam>(text)));
  EXPECT_FALSE(w.DeliverPosted());
}

TEST(SimWindows, TextMessagesCloseAndVisibility) {
  sim::SimWindows w;
  Hwnd dlg = w.Create(0, "#32770", "America Online");
  Hwnd edit = w.Create(dlg, "RICHCNTL", "");
  w.SendMessageA(edit, kWmSetText, 0, reinterpret_cast<LParam>("hello"));
  EXPECT_EQ(w.SendMessageA(edit, kWmGetTextLength, 0, 0), 5);
  char buf[4];
  EXPECT_EQ(w.SendMessageA(edit, kWmGetText, sizeof buf,
                           reinterpret_cast<LParam>(buf)),
            3);
  EXPECT_STREQ(buf, "hel");
  EXPECT_EQ(w.GetTextRange(edit, 1, 4).value_or("?"), "ell");
  EXPECT_EQ(w.GetWindowTextLengthA(dlg), 14);

  EXPECT_TRUE(w.IsWindowVisible(edit));
  w.ShowWindow(dlg, kSwHide);
  EXPECT_FALSE(w.IsWindowVisible(edit));  // hidden with its parent
  w.ShowWindow(dlg, kSwShow);

  w.PostMessageA(dlg, kWmClose, 0, 0);
  EXPECT_TRUE(w.IsWindow(dlg));
  w.DeliverPosted();
  EXPECT_FALSE(w.IsWindow(dlg));
  EXPECT_FALSE(w.IsWindow(edit));
  EXPECT_EQ(w.SendMessageA(edit, kWmGetTextLength, 0, 0), 0);
}

namespace v2 {
namespace {

TEST(SimWindows, MenusStackingOrderAndThePointer) {
  sim::SimWindows w;
  Hwnd frame = w.Create(0, "AOL Frame25", "America  Online");
  Hmenu bar = w.CreateMenu(), file = w.CreateMenu(), sign = w.CreateMenu();
  w.AppendMenu(sign, "&Sign Off", 0x301);
  w.AppendMenu(file, "&Open", 0x101);
  w.AppendMenu(file, "More", 0, sign);
  w.AppendMenu(bar, "&File", 0, file);
  w.SetMenu(frame, bar);

  EXPECT_EQ(w.GetMenu(frame), bar);
  EXPECT_EQ(w.GetMenuItemCount(bar), 1);
  EXPECT_EQ(w.GetMenuItemCount(0), -1);  // no menu: the walk does nothing
  EXPECT_EQ(w.GetSubMenu(bar, 0), file);
  EXPECT_EQ(w.GetMenuItemID(file, 0), 0x101u);
  EXPECT_EQ(w.GetMenuItemID(file, 1), 0xFFFFFFFFu);  // opens a submenu
  char buffer[100];
  // By command number, nested submenus included; ampersands kept.
  EXPECT_EQ(w.GetMenuStringA(bar, 0x301, buffer, 100, 1), 9);
  EXPECT_STREQ(buffer, "&Sign Off");
  EXPECT_EQ(w.GetMenuStringA(file, 0, buffer, 4, kMfByPosition), 3);
  EXPECT_STREQ(buffer, "&Op");
  EXPECT_EQ(w.GetMenuStringA(file, 0x999, buffer, 100, 0), 0);

  // Lookups walk the stacking order, which SetWindowPos changes.
  Hwnd a = w.Create(frame, "AOL Child", "a");
  Hwnd b = w.Create(frame, "AOL Child", "b");
  EXPECT_EQ(w.FindWindowExA(frame, 0, "AOL Child", nullptr), a);
  EXPECT_TRUE(w.SetWindowPos(a, 1, 0, 0, 0, 0, kSwpNoMove | kSwpNoSize));
  EXPECT_EQ(w.FindWindowExA(frame, 0, "AOL Child", nullptr), b);
  EXPECT_FALSE(w.SetWindowPos(frame, 0x777, 1, 1, 1, 1, 0));  // no sibling
  EXPECT_TRUE(w.SetWindowPos(frame, 0, 10, 20, 300, 200, 0));
  EXPECT_TRUE(
      w.SetWindowPos(frame, kHwndTopmost, 0, 0, 0, 0, kSwpNoMove | kSwpNoSize));
  auto at = w.PlacementOf(frame);
  EXPECT_EQ(at.cx, 300);
  EXPECT_EQ(at.y, 20);
  EXPECT_TRUE(at.topmost);

  // Far past the screen, the pointer stops in its corner.
  EXPECT_TRUE(w.SetCursorPos(1024 * 15, 768 * 15));
  Point p;
  EXPECT_TRUE(w.GetCursorPos(p));
  EXPECT_EQ(p.x, sim::SimWindows::kScreenWidth - 1);
  EXPECT_EQ(p.y, sim::SimWindows::kScreenHeight - 1);
  w.SetCapture(frame);
  EXPECT_TRUE(w.ReleaseCapture());
  EXPECT_EQ(w.capture(), 0u);
}

TEST(SimWindows, ShowStatesAsWindowsKeepsThem) {
  sim::SimWindows w;
  Hwnd box = w.Create(0, "_AOL_Modal", "File Transfer - 5%");
  EXPECT_FALSE(w.IsIconic(box));
  // Hidden, then minimized: shown again, minimized.
  w.ShowWindow(box, kSwHide);
  EXPECT_FALSE(w.IsWindowVisible(box));
  w.ShowWindow(box, kSwMinimize);
  EXPECT_TRUE(w.IsWindowVisible(box));
  EXPECT_TRUE(w.IsIconic(box));
  // Hiding keeps the state it will show in; showing plainly keeps it too.
  w.ShowWindow(box, kSwHide);
  EXPECT_TRUE(w.IsIconic(box));
  w.ShowWindow(box, kSwShow);
  EXPECT_TRUE(w.IsIconic(box));
  w.ShowWindow(box, kSwRestore);
  EXPECT_TRUE(w.IsWindowVisible(box));
  EXPECT_FALSE(w.IsIconic(box));
  w.ShowWindow(box, kSwShowMinimized);
  EXPECT_TRUE(w.IsIconic(box));
  w.ShowWindow(box, kSwShowNormal);
  EXPECT_FALSE(w.IsIconic(box));
}

TEST(SimWindows, EveryChangeALookupCouldSeeIsTold) {
  sim::SimWindows w;
  int told = 0;
  ASSERT_TRUE(w.WatchChanges([&] { ++told; }));
  auto changes = [&](const std::function<void()>& act) {
    const int before = told;
    act();
    return told - before;
  };
  Hwnd a = 0, b = 0, label = 0;
  EXPECT_GE(changes([&] { a = w.Create(0, "_AOL_Modal", "one"); }), 1);
  EXPECT_GE(changes([&] { b = w.Create(0, "_AOL_Modal", "two"); }), 1);
  EXPECT_GE(changes([&] { label = w.Create(a, "_AOL_Static", ""); }), 1);
  EXPECT_GE(changes([&] {
              w.SendMessageA(label, kWmSetText, 0,
                             reinterpret_cast<LParam>("Now Uploading x"));
            }),
            1);
  EXPECT_GE(changes([&] { w.SetText(a, "File Transfer - 1%"); }), 1);
  EXPECT_GE(changes([&] { w.AppendText(label, "y"); }), 1);
  EXPECT_GE(changes([&] { w.EraseFront(label, 1); }), 1);
  EXPECT_GE(changes([&] { w.ShowWindow(a, kSwMinimize); }), 1);
  EXPECT_GE(changes([&] {
              w.SetWindowPos(b, 0, 0, 0, 0, 0, kSwpNoMove | kSwpNoSize);
            }),
            1);
  EXPECT_EQ(w.FindWindowA("_AOL_Modal", nullptr), b);
  EXPECT_GE(changes([&] { w.Destroy(b); }), 1);
  // Reads and a show that changes nothing are no change.
  EXPECT_EQ(changes([&] {
              w.FindWindowA("_AOL_Modal", nullptr);
              SendGetText(w, label);
              w.IsWindowVisible(a);
              w.ShowWindow(a, kSwShow);
            }),
            0);
}

}  // namespace
}  // namespace v2

// The client's thread stopped, as a hung program's is: a message sent waits
// for it at most the bound and, when it has not pumped again by then, is
// never handled; what is posted, and the client's timed work, wait for it.
TEST(SimWindows, AHungClientTakesNothingSentAndKeepsWhatIsPosted) {
  testing::World w;
  std::string seen;
  Hwnd h = w.windows.Create(
      w.client.room(), "_AOL_Static", "",
      [&](Hwnd, std::uint32_t msg, WParam c, LParam) -> std::optional<LResult> {
        if (msg != kWmChar) return std::nullopt;
        seen += static_cast<char>(c);
        if (c == 'h') w.client.Hang(20000);  // stops while it handles this
        return 7;
      });
  bool timed = false;
  w.host.After(1000, [&] { timed = true; });

  w.client.Hang(20000);
  EXPECT_FALSE(w.windows.SendMessageTimeoutA(h, kWmChar, 'a', 0));
  EXPECT_EQ(w.loop.clock().NowMs(), kSendBoundMs);
  EXPECT_EQ(w.windows.SendMessageA(h, kWmChar, 'b', 0), 0);
  EXPECT_TRUE(w.windows.PostMessageA(h, kWmChar, 'p', 0));
  w.loop.RunFor(9000);
  EXPECT_EQ(seen, "");  // not even what was posted
  EXPECT_FALSE(timed);
  // It pumps again at 20 s: the posted message and the timed work then.
  w.loop.RunFor(w.host.HungForMs());
  EXPECT_EQ(w.loop.clock().NowMs(), 20000);
  EXPECT_EQ(seen, "p");
  EXPECT_TRUE(timed);

  // A hang shorter than the bound: the sender waits it out and is answered.
  w.client.Hang(3000);
  EXPECT_EQ(w.windows.SendMessageTimeoutA(h, kWmChar, 'c', 0), 7);
  EXPECT_EQ(w.loop.clock().NowMs(), 23000);
  // A handler that stops its thread keeps the sender waiting to the bound:
  // the message was handled, the answer never came.
  EXPECT_FALSE(w.windows.SendMessageTimeoutA(h, kWmChar, 'h', 0));
  EXPECT_EQ(w.loop.clock().NowMs(), 28000);
  EXPECT_EQ(seen, "pch");
  // The program's own windows and missing ones answer at once.
  Hwnd own = w.windows.Create(0, "vantrel2 form", "", {}, false,
                              sim::SimWindows::Owner::kProgram);
  EXPECT_EQ(w.windows.SendMessageTimeoutA(own, kWmGetTextLength, 0, 0), 0);
  EXPECT_EQ(w.windows.SendMessageTimeoutA(0xDEAD, kWmChar, 'x', 0), 0);
  EXPECT_EQ(w.loop.clock().NowMs(), 28000);
}

}  // namespace
}  // namespace v2
