// The unattended guards against the simulated client, on the virtual clock:
// auto-upchat, the answering machine, the disconnect watch and the
// transfers taken up again; the client vanishing in the middle of each.
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
  // The room lines that hold part.
  int Said(const std::string& part) {
    int n = 0;
    for (const std::string& line : room) n += line.find(part) != npos;
    return n;
  }
  // When the client first did what begins with part; -1 if it never did.
  std::int64_t When(const std::string& part) {
    for (std::size_t i = 0; i < events.size(); ++i) {
      if (events[i].rfind(part, 0) == 0) return at[i];
    }
    return -1;
  }
  // The member says text; true when the program answered in the room.
  bool Answered(const std::string& text) {
    const std::size_t before = room.size();
    client.MemberTypes(text);
    client.MemberPressesReturn();
    loop.RunUntilIdle();
    return room.size() > before + 1;
  }
  static constexpr auto npos = std::string::npos;
  Program prog;
  std::vector<std::string> events;
  std::vector<std::int64_t> at;
};

// Calls act once, the first time test holds after a window changed.
void OnceWhen(testing::World& w, std::function<bool()> test,
              std::function<void()> act) {
  auto done = std::make_shared<bool>(false);
  w.windows.WatchChanges([done, test, act] {
    if (*done || !test()) return;
    *done = true;
    act();
  });
}

TEST(AutoUpchat, OneAnnouncementPerUploadWhateverBoxStandsInFront) {
  Guarded w;
  const std::string line = " : auto upchat";
  w.client.Upload("a.zip", 1, 20);
  w.loop.RunFor(1000);
  EXPECT_EQ(w.Said(line), 1);
  EXPECT_EQ(w.client.UploadShowing(), "minimized");
  w.client.Upload("a.zip", 60, 5);
  w.loop.RunFor(600000);
  EXPECT_EQ(w.Said(line), 1);

  // The time box in front: the upload behind it is not taken for gone.
  w.client.MenuCommand(35);  // Time Online
  w.loop.RunFor(5000);
  EXPECT_TRUE(w.prog.form2.UpChatAnnounced);
  ClickIcon(w.platform, NthChild(w.platform, w.client.time_box(), "_AOL_Icon",
                                 1));  // OK
  w.loop.RunFor(1000);
  EXPECT_EQ(w.Said(line), 1);

  // An upload that began behind the box is hidden and announced when the
  // box goes, and once.
  w.client.EndUpload();
  w.loop.RunFor(1000);
  EXPECT_FALSE(w.prog.form2.UpChatAnnounced);
  w.client.Upload("b.zip", 1, 20);
  w.client.MenuCommand(35);
  w.loop.RunFor(5000);
  EXPECT_EQ(w.client.UploadShowing(), "normal");
  EXPECT_EQ(w.Said(line), 1);
  ClickIcon(w.platform,
            NthChild(w.platform, w.client.time_box(), "_AOL_Icon", 1));
  w.loop.RunFor(5000);
  EXPECT_EQ(w.client.UploadShowing(), "minimized");
  EXPECT_EQ(w.Said(line), 2);

  // By hand: nothing to act on does nothing; a window brought back stays.
  UnUpChat(w.platform);
  EXPECT_EQ(w.client.UploadShowing(), "normal");
  w.loop.RunFor(5000);
  EXPECT_EQ(w.client.UploadShowing(), "normal");
  w.client.EndUpload();
  UpChat(w.platform);
  UnUpChat(w.platform);
  EXPECT_EQ(w.client.UploadShowing(), "none");
}

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

TEST(AutoUpchat, TheClientGoneInTheMiddleOfATick) {
  Guarded w;
  // The client quits right after the tick hid the upload, before the line.
  OnceWhen(
      w, [&] { return w.client.UploadShowing() == "hidden"; },
      [&] { w.client.Quit(); });
  w.client.Upload("a.zip", 1, 20);
  w.loop.RunFor(1000);
  EXPECT_EQ(w.client.upload(), 0u);
  w.loop.RunFor(1000);
  EXPECT_FALSE(w.prog.form2.UpChatAnnounced);  // no upload seen since
  w.client.Start();
  w.loop.RunUntilIdle();  // the scanner finds the new room
  EXPECT_TRUE(w.Answered("date"));
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

  // The client quits while the tick waits: it ends quietly, and the program
  // goes on.
  w.client.ReceiveIm("Cy", "yo");
  w.host.After(1000, [&] { w.client.Quit(); });
  w.loop.RunFor(5000);
  EXPECT_EQ(w.events.size(), 1u);
  w.client.Start();
  w.loop.RunUntilIdle();  // the scanner finds the new room
  EXPECT_TRUE(w.Answered("date"));
  w.client.ReceiveIm("Dee", "back?");
  w.loop.RunFor(5000);
  ASSERT_EQ(w.events.size(), 2u);  // the new client's IM is answered too
  EXPECT_EQ(w.events[1].rfind("[im to Dee] ", 0), 0u);
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

TEST(DisconnectWatch, TheClientGoneInTheMiddleOfTheSequence) {
  Guarded w;
  // The client quits a second into the pause behind IMs off.
  w.client.on_event = [&](const std::string& e) {
    w.events.push_back(e);
    if (e == "[ims] off") w.host.After(1000, [&] { w.client.Quit(); });
  };
  w.client.SignOff();
  w.loop.RunFor(15000);
  ASSERT_FALSE(w.client.frame() != 0 && w.client.SignedOn());
  // Each step after it finds nothing and passes; the watch starts over and
  // waits again for as long as it takes.
  w.loop.RunFor(60000);
  EXPECT_FALSE(w.prog.form2.Timer4.Enabled());
  EXPECT_TRUE(w.prog.form2.Timer5.Enabled());
  w.client.on_event = [&](const std::string& e) { w.events.push_back(e); };
  w.events.clear();
  w.client.Start();
  w.loop.RunUntilIdle();  // the scanner finds the new room
  EXPECT_TRUE(w.Answered("date"));
  w.loop.RunFor(30000);
  EXPECT_EQ(w.client.RoomName(), "idle");
  EXPECT_EQ(std::count(w.events.begin(), w.events.end(), "[room] idle"), 1);
}

TEST(TransferResume, PointerListsAndTheirStartIcons) {
  Guarded w;
  Platform& p = w.platform;
  w.windows.SetCursorPos(100, 200);
  ContinueUploads(p);  // nothing waits: the list is closed unpressed
  Point at;
  w.windows.GetCursorPos(at);
  EXPECT_EQ(at.x, 100);
  EXPECT_EQ(at.y, 200);
  EXPECT_EQ(w.events, std::vector<std::string>{"[client menu] Upload Queue"});
  EXPECT_EQ(TreeCountUploads(p), 0);  // the list is gone: no tree
  w.client.queued_downloads = 2;
  ContinueDownloads(p);
  w.windows.GetCursorPos(at);
  EXPECT_EQ(at.x, 0);
  EXPECT_EQ(at.y, 0);
  EXPECT_EQ(w.events.back(), "[client] downloads started");
  EXPECT_EQ(w.client.queued_downloads, 0);
  // The list and, after it, the window then in front (the download's).
  EXPECT_EQ(w.client.WindowTitles(),
            (std::vector<std::string>{"Welcome, Member!", "Lobby 1"}));
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
