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

}  // namespace
}  // namespace v2
