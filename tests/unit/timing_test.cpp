// When the unattended guards act, on the virtual clock: what a scenario's
// output cannot show, since it carries the order of things and not their
// times (the pauses inside the answering machine's and the watch's waits,
// the bound of a wait for a popup that never comes).
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "answering/answering_machine.h"
#include "core/program.h"
#include "core/styled_line.h"
#include "host/host_menus.h"
#include "host/host_windows.h"
#include "host/instant_messages.h"
#include "reconnect/disconnect_watch.h"
#include "reconnect/transfer_resume.h"
#include "tests/unit/world.h"
#include "transfers/upchat.h"

namespace v2 {
namespace {

// The program started on the client, with its switches at their defaults:
// auto-upchat and the watch on, the machine off.
struct Guarded : testing::World {
  Guarded() : prog(platform) {
    client.on_event = [this](const std::string& e) {
      events.push_back(e);
      at.push_back(Now());
    };
    prog.Start();
    loop.RunUntilIdle();
    room.clear();
    events.clear();
    at.clear();
  }
  std::int64_t Now() { return loop.clock().NowMs(); }
  // When the client first did what begins with part; -1 if it never did.
  std::int64_t When(const std::string& part) {
    for (std::size_t i = 0; i < events.size(); ++i) {
      if (events[i].rfind(part, 0) == 0) return at[i];
    }
    return -1;
  }
  Program prog;
  std::vector<std::string> events;
  std::vector<std::int64_t> at;
};

TEST(AutoUpchat, TheTimeOnLineComesAsSoonWithAnUploadTickingAsWithout) {
  // The tick runs inside the time box's wait and finds the box in front: it
  // must not hold that wait up.
  auto read = [](bool autoup) {
    Guarded w;
    if (!autoup) w.prog.ClickMenu("autoup");
    w.client.Upload("a.zip", 1, 20);
    w.loop.RunFor(1000);
    const std::int64_t start = w.Now();
    const std::string time = SessionTime(w.platform);
    return std::make_pair(time, w.Now() - start);
  };
  const auto with = read(true);
  EXPECT_EQ(with.first, "0 hours and 0 minutes");
  EXPECT_EQ(with, read(false));
}

TEST(AnsweringMachine, AnswersTwoSecondsAfterItFindsAnImAndClosesThemAll) {
  Guarded w;
  w.prog.ClickMenu("reconaol");  // the watch would act on the quit below
  w.prog.ClickMenu("immachine");
  w.loop.RunFor(5000);
  EXPECT_TRUE(w.events.empty());  // no IM, no answer

  w.at.clear();
  const std::int64_t sent = w.Now();
  w.client.ReceiveIm("Bob", "there?");
  w.client.ReceiveIm("Ann", "hi");
  w.loop.RunFor(5000);
  ASSERT_EQ(w.events.size(), 1u);
  // Found on the next tick, within the second; answered two seconds later.
  const std::int64_t replied = w.When("[im to Bob] \r");
  EXPECT_GT(replied, sent + 2000);
  EXPECT_LE(replied, sent + 3000);
  // A CR, the banner line, a CR, the away message's line.
  const std::string reply =
      w.events[0].substr(std::string("[im to Bob] ").size());
  const auto second = reply.find('\r', 1);
  ASSERT_EQ(std::count(reply.begin(), reply.end(), '\r'), 2);
  EXPECT_EQ(reply[0], '\r');
  EXPECT_EQ(
      reply.substr(1, second - 1),
      StyledLine(w.prog.form4, Pair::kMain, "vantrel\xB2 : auto response"));
  EXPECT_EQ(reply.substr(second + 1),
            StyledLine(w.prog.form4, Pair::kStat, "msg: afk"));
  EXPECT_EQ(FindIM(w.platform), 0u);
}

TEST(DisconnectWatch, PressesThreeSecondsAfterItSawNoSignOnAndOnlyOnce) {
  Guarded w;
  // A window of the test's own in front, whose 4th icon counts the presses.
  int clicks = 0, spaces = 0;
  Hwnd first = w.windows.Create(FindMdiClient(w.platform), "AOL Child", "");
  for (int i = 1; i <= 4; ++i) {
    w.windows.Create(first, "_AOL_Icon", "",
                     [&, i](Hwnd, std::uint32_t msg, WParam k,
                            LParam) -> std::optional<LResult> {
                       if (i == 4 && msg == kWmLButtonUp) ++clicks;
                       if (i == 4 && msg == kWmKeyUp && k == kVkSpace) ++spaces;
                       return std::nullopt;
                     });
  }
  w.host.Raise(first);
  const std::int64_t gone = w.Now();
  std::int64_t pressed = -1;
  w.client.CloseWelcome();
  // The tick that sees it comes within half a second; it pauses three
  // seconds, during which the watch's own timer does not start again.
  while (clicks == 0 && w.Now() < gone + 10000) {
    w.loop.RunFor(10);
    if (clicks) pressed = w.Now();
  }
  EXPECT_GE(pressed, gone + 3000);
  EXPECT_LE(pressed, gone + 3510);
  w.loop.RunFor(20000);
  EXPECT_EQ(clicks, 2);
  EXPECT_EQ(spaces, 1);
  EXPECT_FALSE(w.prog.form2.Timer4.Enabled());
  EXPECT_TRUE(w.prog.form2.Timer5.Enabled());
}

TEST(DisconnectWatch, TheSequenceActsInItsOrderOnceTheWelcomeWindowIsBack) {
  Guarded w;
  w.prog.ClickMenu("ghoztingon");
  w.client.signon_delay_ms = 1000;
  w.client.SignOff();
  w.loop.RunFor(60000);
  const std::int64_t on = w.When("[signed on]");
  ASSERT_GT(on, 0);
  // Timer5 finds the window within a second; three seconds later IMs go
  // off, three more ghosting, three more the room, three more the uploads.
  const std::int64_t ims = w.When("[keyword] aol://9293:$IM_OFF");
  EXPECT_GE(ims, on + 3000);
  EXPECT_LE(ims, on + 4000);
  EXPECT_GE(w.When("[keyword] Buddy"), ims + 3000);
  EXPECT_GE(w.When("[keyword] aol://2719:2-2-idle"),
            w.When("[ghosting] on") + 3000);
  EXPECT_GE(w.When("[client menu] Upload Queue"), w.When("[room] idle") + 3000);
  EXPECT_EQ(w.client.RoomName(), "idle");
  EXPECT_TRUE(w.prog.form2.Timer4.Enabled());
  EXPECT_FALSE(w.prog.form2.Timer5.Enabled());
  // Once: every step is in the record once.
  for (const std::string& e : w.events) {
    EXPECT_EQ(std::count(w.events.begin(), w.events.end(), e), 1) << e;
  }
}

TEST(TransferResume, WithNoToolbarOrNoPopupItEndsAtItsBound) {
  // A frame whose toolbar icons open nothing: the popup is held for until
  // the bound, with no key pressed and the pointer put back.
  testing::World bare;
  bare.client.Quit();
  Hwnd frame = bare.windows.Create(0, "AOL Frame25", "America  Online");
  Hwnd strip = bare.windows.Create(
      bare.windows.Create(frame, "AOL Toolbar", ""), "_AOL_Toolbar", "");
  for (int i = 0; i < 5; ++i) bare.windows.Create(strip, "_AOL_Icon", "");
  Platform& p = bare.platform;
  bare.windows.SetCursorPos(7, 8);
  std::int64_t start = bare.loop.clock().NowMs();
  ContinueUploads(p);
  EXPECT_EQ(bare.loop.clock().NowMs() - start,
            std::llround(kHostWaitBoundSeconds * 1000));
  Point at;
  bare.windows.GetCursorPos(at);
  EXPECT_EQ(at.x, 7);
  // No toolbar at all: nothing is clicked and nothing waited for.
  bare.windows.Destroy(frame);
  start = bare.loop.clock().NowMs();
  ContinueDownloads(p);
  EXPECT_EQ(bare.loop.clock().NowMs(), start);
  bare.windows.GetCursorPos(at);
  EXPECT_EQ(at.x, 0);
  EXPECT_EQ(TreeCountDownloads(p), 0);
  CloseFirstChild(p);  // nothing to close
}

}  // namespace
}  // namespace v2
