#include "host/keywords.h"

#include <gtest/gtest.h>

#include "host/host_windows.h"
#include "tests/unit/world.h"

namespace v2 {
namespace {

Hwnd KeywordLine(testing::World& w) {
  Hwnd h = w.windows.FindWindowA("AOL Frame25", nullptr);
  for (const char* cls :
       {"AOL Toolbar", "_AOL_Toolbar", "_AOL_Combobox", "Edit"}) {
    h = w.windows.FindWindowExA(h, 0, cls, nullptr);
  }
  return h;
}

TEST(Keywords, TheKeywordLineRunsAddressesAsTyped) {
  testing::World w;
  std::vector<std::string> events;
  w.client.on_event = [&](const std::string& e) { events.push_back(e); };
  w.windows.SetText(KeywordLine(w), "what the member had");
  EnterPrivateRoom(w.platform, "two words");
  EXPECT_EQ(events,
            (std::vector<std::string>{"[keyword] aol://2719:2-2-two words",
                                      "[room] two words"}));
  EXPECT_EQ(w.client.RoomName(), "two words");
  EXPECT_EQ(FindChatRoom(w.platform), w.client.room());

  w.client.Quit();  // no client: nothing happens, nothing waits
  RunKeyword(w.platform, "Buddy");
  EXPECT_EQ(events.size(), 2u);
}

TEST(Keywords, EnterRoomRetryTypesAgainUntilTheRoomLetsTheMemberIn) {
  testing::World w;
  w.windows.Destroy(w.client.room());  // in no room at all
  w.client.SetRoomFull("busy", true);
  // The room frees up two seconds later.
  Timer free_up(w.loop, 2000);
  free_up.OnTimer([&] {
    w.client.SetRoomFull("busy", false);
    free_up.SetEnabled(false);
  });
  free_up.SetEnabled(true);
  std::int64_t start = w.loop.clock().NowMs();
  EnterRoomRetry(w.platform, "busy");
  EXPECT_EQ(w.client.RoomName(), "busy");
  EXPECT_GE(w.loop.clock().NowMs() - start, 2000);
  w.loop.RunUntilIdle();
  EXPECT_EQ(w.windows.FindWindowA("#32770", "America Online"), 0u);

  // A room that never lets anyone in: the retries end at the bound.
  w.windows.Destroy(w.client.room());
  w.client.SetRoomFull("never", true);
  start = w.loop.clock().NowMs();
  EnterJapanRoomRetry(w.platform, "never");
  std::int64_t took = w.loop.clock().NowMs() - start;
  EXPECT_GE(took, kHostWaitBoundSeconds * 1000);
  EXPECT_LT(took, kHostWaitBoundSeconds * 1000 + 1000);
  EXPECT_EQ(FindChatRoom(w.platform), 0u);
}

}  // namespace
}  // namespace v2
