#include "host/host_windows.h"

#include <gtest/gtest.h>

#include "app/script.h"
#include "host/keywords.h"
#include "tests/unit/world.h"

namespace v2 {
namespace {

using testing::World;

void Title(World& w, const std::string& title) {
  w.windows.SetText(w.client.welcome(), title);
}

TEST(Host, GetUserReadsTheWelcomeTitle) {
  World w("Bob");
  EXPECT_EQ(GetUser(w.platform), "Bob");
  EXPECT_EQ(SignedOnName(w.platform), kVbTrue);
  Title(w, "Welcome, Bob!!");
  EXPECT_EQ(GetUser(w.platform), "Bob");
  Title(w, "Welcome, Mr X!");
  EXPECT_EQ(GetUser(w.platform), "Mr X");
  Title(w, "Welcome, !");
  EXPECT_EQ(GetUser(w.platform), "");
  Title(w, "Welcome, Bob");  // no "!": no name to trust
  EXPECT_EQ(GetUser(w.platform), "");
  EXPECT_NE(FindWelcome(w.platform), 0u);
  for (const char* other : {"Welcome", "Welcome Bob!", "Hi Welcome, Bob!"}) {
    Title(w, other);
    EXPECT_EQ(GetUser(w.platform), "") << other;
    EXPECT_EQ(FindWelcome(w.platform), 0u) << other;
    EXPECT_EQ(SignedOnName(w.platform), kVbFalse) << other;
  }
  w.client.Quit();
  EXPECT_EQ(GetUser(w.platform), "");
  EXPECT_EQ(FindChatRoom(w.platform), 0u);
}

TEST(Host, FindChatRoomPassesOverWindowsWithoutAPeopleList) {
  World w;
  // An IM window has everything of a room but the people list: standing
  // ahead of the rooms, it is passed over.
  w.client.ReceiveIm("Ann", "hi");
  w.windows.Destroy(w.client.room());
  EXPECT_EQ(FindChatRoom(w.platform), 0u);
  Hwnd mdi = FindMdiClient(w.platform);
  auto room = [&](const char* title) {
    Hwnd h = w.windows.Create(mdi, "AOL Child", title);
    for (const char* cls :
         {"RICHCNTL", "RICHCNTL", "_AOL_Listbox", "_AOL_Icon", "_AOL_Static"}) {
      w.windows.Create(h, cls, "");
    }
    return h;
  };
  Hwnd second = room("Room 2");
  Hwnd third = room("Room 3");
  EXPECT_EQ(FindChatRoom(w.platform), second);  // first in order
  w.windows.Destroy(second);
  EXPECT_EQ(FindChatRoom(w.platform), third);
}

TEST(Host, ChatSendKeepsWhatTheMemberHalfTyped) {
  World w;
  w.client.MemberTypes("hel");
  ChatSend(w.platform, "a line");
  EXPECT_EQ(w.room, (std::vector<std::string>{"Member:\ta line"}));
  EXPECT_EQ(w.client.InputText(), "hel");
  w.loop.RunUntilIdle();  // nothing posted is left to send it
  EXPECT_EQ(w.room.size(), 1u);
  EXPECT_EQ(w.client.InputText(), "hel");
}

TEST(Host, ChatSendOfNothingAndWithNoRoom) {
  World w;
  int returns = 0;
  // An input line that counts the Returns it gets and takes every line.
  w.windows.Destroy(w.client.input());
  Hwnd counted = w.windows.Create(w.client.room(), "RICHCNTL", "",
                                  [&](Hwnd h, std::uint32_t msg, WParam c,
                                      LParam) -> std::optional<LResult> {
                                    if (msg == kWmChar && c == kVkReturn) {
                                      ++returns;
                                      w.windows.SetText(h, "");
                                    }
                                    return std::nullopt;
                                  });
  ASSERT_EQ(NthChild(w.platform, w.client.room(), "RICHCNTL", 2), counted);
  ChatSend(w.platform, "");
  EXPECT_EQ(returns, 1);
  EXPECT_EQ(w.loop.clock().NowMs(), 0);

  w.windows.Destroy(w.client.room());
  ChatSend(w.platform, "lost");
  EXPECT_TRUE(w.room.empty());
  EXPECT_EQ(w.loop.clock().NowMs(), 0);
}

TEST(Host, ChatSendGivesUpOnAClientThatNeverTakesTheLine) {
  World w;
  Hwnd stuck = w.windows.Create(
      w.client.room(), "RICHCNTL", "",
      [](Hwnd, std::uint32_t msg, WParam, LParam) -> std::optional<LResult> {
        if (msg == kWmChar) return 0;  // swallows Return, keeps the text
        return std::nullopt;
      });
  w.windows.Destroy(w.client.input());
  ASSERT_EQ(NthChild(w.platform, w.client.room(), "RICHCNTL", 2), stuck);
  w.windows.SetText(stuck, "typed");
  ChatSend(w.platform, "never taken");
  EXPECT_EQ(w.loop.clock().NowMs(), 10000);
  EXPECT_EQ(w.windows.TextView(stuck), "typed");
}

// A client that stops answering before or during a send: the program comes
// back within its bounds, never presses Return on what the member left in
// the input line, puts that text back once the client answers, and sends
// as before afterwards.
TEST(Host, ChatSendComesBackFromAHungClient) {
  using Fault = aolsim::AolClient::Fault;
  {
    World w;  // hung before the send begins: nothing is touched
    w.client.MemberTypes("hel");
    w.client.Hang(30000);
    ChatSend(w.platform, "lost");
    EXPECT_EQ(w.loop.clock().NowMs(), kSendBoundMs);
    w.loop.RunFor(w.host.HungForMs());
    EXPECT_EQ(w.client.InputText(), "hel");
    ChatSend(w.platform, "after");
    EXPECT_EQ(w.room, (std::vector<std::string>{"Member:\tafter"}));
  }
  {
    World w;  // stops for 8 s as the line goes in
    w.client.MemberTypes("hel");
    w.client.Arm(aolsim::AolClient::Moment::kReply,
                 {Fault::Kind::kHang, 8000, {}});
    ChatSend(w.platform, "lost");
    EXPECT_EQ(w.loop.clock().NowMs(), 8000);
    EXPECT_TRUE(w.room.empty());  // neither the line nor the member's text
    EXPECT_EQ(w.client.InputText(), "hel");
  }
  {
    World w;  // stops for longer than every bound
    w.client.Arm(aolsim::AolClient::Moment::kReply,
                 {Fault::Kind::kHang, 60000, {}});
    ChatSend(w.platform, "lost");
    EXPECT_LE(w.loop.clock().NowMs(),
              kSendBoundMs + kHostWaitBoundSeconds * 1000 + kSendBoundMs);
    w.loop.RunFor(w.host.HungForMs());
    ChatSend(w.platform, "after");
    EXPECT_EQ(w.room, (std::vector<std::string>{"Member:\tafter"}));
  }
}

// The script lines that hang the client or arm a fault, played through the
// parser both runners share; a fault is set off once.
TEST(Host, FaultScriptLines) {
  World w;
  std::vector<std::string> events;
  w.client.on_event = [&](const std::string& e) { events.push_back(e); };
  using Kind = ScriptCommand::Kind;
  ScriptCommand hang = ParseScriptLine("hang 2.5");
  EXPECT_EQ(hang.kind, Kind::kHang);
  EXPECT_EQ(hang.seconds, 2.5);
  for (const char* refused : {"hang",
                              "hang -1",
                              "hang 3601",
                              "hang 1 s",
                              "at",
                              "at reply",
                              "at reply hang",
                              "at reply room",
                              "at popup room ",
                              "at now dialog",
                              "at reply close",
                              "at popup dialog now",
                              "at reply hang x",
                              "at keyword",
                              "after",
                              "after 2",
                              "after x dialog",
                              "after 3601 dialog",
                              "after 2 hang",
                              "after 2  dialog",
                              "after -1 close client"}) {
    EXPECT_EQ(ParseScriptLine(refused).kind, Kind::kNotUnderstood) << refused;
  }
  ScriptCommand room = ParseScriptLine("at reply room The Den");
  ASSERT_EQ(room.kind, Kind::kClient);
  PlayOnClient(w.client, room);
  ChatSend(w.platform, "lost with the room");
  ChatSend(w.platform, "in the new room");
  EXPECT_EQ(events, std::vector<std::string>{"[room] The Den"});
  EXPECT_EQ(w.room, std::vector<std::string>{"Member:\tin the new room"});
}

TEST(Host, AChatSendInsideAnotherSendsFirstAndLosesNothing) {
  World w;
  w.client.MemberTypes("half");
  bool inner_done = false;
  // An event that is waiting when the outer send pumps: a timer tick, say.
  w.loop.Post([&] {
    ChatSend(w.platform, "inner");
    inner_done = true;
  });
  ChatSend(w.platform, "outer");
  EXPECT_TRUE(inner_done);
  EXPECT_EQ(w.room,
            (std::vector<std::string>{"Member:\tinner", "Member:\touter"}));
  EXPECT_EQ(w.client.InputText(), "half");
}

TEST(Host, TheOkDialogIsPressedAndTheWaitForItIsBounded) {
  World w;
  WaitHostOK(w.platform);  // no dialog: gives up after the bound
  EXPECT_EQ(w.loop.clock().NowMs(), 10000);

  w.client.ShowDialog("You are not allowed.");
  EXPECT_NE(w.windows.FindWindowA("#32770", "America Online"), 0u);
  WaitHostOK(w.platform);
  EXPECT_EQ(w.windows.FindWindowA("#32770", "America Online"), 0u);
  EXPECT_EQ(w.loop.clock().NowMs(), 10000);

  w.client.ShowDialog("again");
  DismissHostError(w.platform);
  EXPECT_EQ(w.windows.FindWindowA("#32770", "America Online"), 0u);
  DismissHostError(w.platform);  // nothing there: nothing happens
}

TEST(Host, CloseWindowPostsAndTheClientClosesWhenTheThreadYields) {
  World w;
  Hwnd welcome = FindWelcome(w.platform);
  CloseWindow(w.platform, welcome);
  EXPECT_TRUE(w.windows.IsWindow(welcome));
  PumpEvents(w.platform);
  EXPECT_FALSE(w.windows.IsWindow(welcome));
  EXPECT_EQ(GetUser(w.platform), "");
  EXPECT_EQ(GetText(w.platform, 0), "");
  EXPECT_EQ(GetCaption(w.platform, 0), "");
}

TEST(Host, ClickIconSendsTheButtonPairWithoutAPosition) {
  World w;
  std::vector<std::pair<std::uint32_t, LParam>> got;
  Hwnd icon = w.windows.Create(
      w.client.room(), "_AOL_Icon", "",
      [&](Hwnd, std::uint32_t msg, WParam, LParam l) -> std::optional<LResult> {
        got.emplace_back(msg, l);
        return std::nullopt;
      });
  ClickIcon(w.platform, icon);
  EXPECT_EQ(got, (std::vector<std::pair<std::uint32_t, LParam>>{
                     {kWmLButtonDown, 0}, {kWmLButtonUp, 0}}));
  ClickIcon(w.platform, 0);  // nothing there: nothing happens
}

}  // namespace
}  // namespace v2
