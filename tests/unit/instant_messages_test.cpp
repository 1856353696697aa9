#include "host/instant_messages.h"

#include <gtest/gtest.h>

#include "host/host_windows.h"
#include "tests/unit/world.h"

namespace v2 {
namespace {

TEST(InstantMessages, ReceivedOnesAreFoundAnsweredAndClosed) {
  testing::World w;
  std::vector<std::string> events;
  w.client.on_event = [&](const std::string& e) { events.push_back(e); };
  EXPECT_EQ(FindIM(w.platform), 0u);  // a member signs on to no IM
  w.client.ReceiveIm("Guide", "welcome");
  w.client.ReceiveIm("Ann", "hi");
  // The first received one is found and answered.
  Hwnd guide = FindIM(w.platform);
  ASSERT_NE(guide, 0u);
  EXPECT_EQ(GetCaption(w.platform, guide), "Instant Message From: Guide");
  IMReply(w.platform, "brb");
  EXPECT_EQ(events, (std::vector<std::string>{"[im to Guide] brb"}));

  CloseAllIMs(w.platform);
  EXPECT_EQ(FindIM(w.platform), 0u);
  EXPECT_EQ(w.client.WindowTitles(),
            (std::vector<std::string>{"Welcome, Member!", "Lobby 1"}));
  // With none open: nothing is done, and no pump is needed.
  IMReply(w.platform, "nobody");
  EXPECT_EQ(events.size(), 1u);
}

TEST(InstantMessages, AnAnswerTooShortIsWaitedForWithinTheBound) {
  testing::World w;
  // Another program's dialog with the title, and a short second text: the
  // check waits for the text to fill in, and gives up at the bound.
  Hwnd dialog = w.windows.Create(0, "#32770", "America Online");
  w.windows.Create(dialog, "Button", "OK");
  w.windows.Create(dialog, "Static", "");
  w.windows.Create(dialog, "Static", "fifteen chars..");
  std::int64_t start = w.loop.clock().NowMs();
  EXPECT_EQ(CheckIM(w.platform, "Bob"), kVbFalse);
  EXPECT_GE(w.loop.clock().NowMs() - start, kHostWaitBoundSeconds * 1000);
}

TEST(InstantMessages, WithTheClientGoneEveryOperationEndsWithinItsBound) {
  testing::World w;
  w.client.Quit();
  std::int64_t start = w.loop.clock().NowMs();
  SendIM(w.platform, "Bob", "hello");
  EXPECT_EQ(CheckIM(w.platform, "Bob"), kVbFalse);
  IMsOff(w.platform);
  CloseAllIMs(w.platform);
  std::int64_t took = w.loop.clock().NowMs() - start;
  EXPECT_LE(took, 4 * (kHostWaitBoundSeconds * 1000 + 100));
  // And the client that comes back is driven as before.
  w.client.Start();
  std::vector<std::string> events;
  w.client.on_event = [&](const std::string& e) { events.push_back(e); };
  SendIM(w.platform, "Bob", "back");
  EXPECT_EQ(events.back(), "[im to Bob] back");
}

}  // namespace
}  // namespace v2
