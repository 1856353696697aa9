#include "host/ghosting.h"

#include <gtest/gtest.h>

#include "core/program.h"
#include "host/host_windows.h"
#include "interpreter/chat_event.h"
#include "tests/unit/world.h"

namespace v2 {
namespace {

Hwnd Child(testing::World& w, const std::string& title) {
  Hwnd mdi = FindMdiClient(w.platform);
  return w.windows.FindWindowExA(mdi, 0, "AOL Child", title.c_str());
}

TEST(Ghosting, EitherBuddyListShapeIsUsedAndClosed) {
  testing::World w;
  // A list of the other shape only, open before: it is the one used, and
  // closed after.
  Hwnd mdi = FindMdiClient(w.platform);
  Hwnd many = w.windows.Create(mdi, "AOL Child", "Member's Buddy Lists");
  for (int i = 0; i < 5; ++i) w.windows.Create(many, "_AOL_Icon", "");
  Hwnd fifth = NthChild(w.platform, many, "_AOL_Icon", 5);
  int opened = 0;
  w.windows.Destroy(fifth);
  w.windows.Create(
      many, "_AOL_Icon", "",
      [&](Hwnd, std::uint32_t msg, WParam, LParam) -> std::optional<LResult> {
        if (msg == kWmLButtonUp) ++opened;
        return std::nullopt;
      });
  // The client's own list comes from the keyword too; both shapes are open
  // then, the one without the s is taken, and both are closed.
  GhostOn(w.platform);
  w.loop.RunUntilIdle();
  EXPECT_TRUE(w.client.Ghosting());
  EXPECT_EQ(opened, 0);
  EXPECT_EQ(Child(w, "Member's Buddy List"), 0u);
  EXPECT_EQ(Child(w, "Member's Buddy Lists"), 0u);
  EXPECT_NE(Child(w, "Privacy Preferences"), 0u);  // left open

  EXPECT_EQ(w.client.PrivacyChoice(), 5);
  GhostOff(w.platform);
  w.loop.RunUntilIdle();
  EXPECT_FALSE(w.client.Ghosting());
  EXPECT_EQ(w.client.PrivacyChoice(), 1);
  EXPECT_EQ(w.windows.FindWindowA("#32770", "America Online"), 0u);
}

TEST(Ghosting, TheClientGoneMidwayEndsWithinTheBoundAndCommandsGoOn) {
  testing::World w;
  Program prog(w.platform);
  prog.Start();
  // The member quits the client while the operation waits on it.
  Timer quit(w.loop, 200);
  quit.OnTimer([&] {
    w.client.Quit();
    quit.SetEnabled(false);
  });
  quit.SetEnabled(true);
  std::int64_t start = w.loop.clock().NowMs();
  GhostOn(w.platform);
  EXPECT_LE(w.loop.clock().NowMs() - start, 3 * kHostWaitBoundSeconds * 1000);
  EXPECT_FALSE(w.client.Ghosting());

  // Started again, the client is driven and the member answered.
  w.client.Start();
  w.loop.RunUntilIdle();  // the scanner finds the new room
  w.room.clear();
  w.client.MemberTypes("date");
  w.client.MemberPressesReturn();
  w.loop.RunUntilIdle();
  ASSERT_EQ(w.room.size(), 2u);
  EXPECT_NE(w.room[1].find("todays date"), std::string::npos);
}

}  // namespace
}  // namespace v2
