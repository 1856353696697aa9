#include "platform/chat_scanner.h"

#include <gtest/gtest.h>

#include "host/host_windows.h"
#include "tests/unit/world.h"

namespace v2 {
namespace {

struct Scanned : testing::World {
  Scanned() : scanner(platform, [this] { return FindTranscript(platform); }) {
    scanner.OnChatMsg([this](const std::string& n, const std::string& s) {
      got.push_back(n + "|" + s);
    });
  }
  // One look, then the events it raised.
  std::vector<std::string> Look() {
    got.clear();
    scanner.Look();
    loop.PumpEvents();
    return got;
  }
  ChatScanner scanner;
  std::vector<std::string> got;
};

using Lines = std::vector<std::string>;

TEST(ChatScanner, DeliversEveryNewLineOnceInOrder) {
  Scanned s;
  s.client.OtherSays("Old", "said before the scan began");
  s.scanner.ScanOn();
  EXPECT_EQ(s.Look(), Lines{});
  s.client.OtherSays("Bob", "hi: there\tyou");
  s.client.MemberTypes("date");
  s.client.MemberPressesReturn();
  s.client.OtherSays("Bob", "");
  EXPECT_EQ(s.Look(), (Lines{"Bob|hi: there\tyou", "Member|date", "Bob|"}));
  EXPECT_EQ(s.Look(), Lines{});
  // The same words again are a new line.
  s.client.OtherSays("Bob", "");
  EXPECT_EQ(s.Look(), Lines{"Bob|"});

  s.scanner.ScanOff();
  s.got.clear();
  s.client.OtherSays("Bob", "unheard");
  s.loop.RunUntilIdle();
  EXPECT_TRUE(s.got.empty());
}

TEST(ChatScanner, ATranscriptTrimmedAtTheTopDoesNotConfuseIt) {
  Scanned s;
  s.client.max_lines = 20;  // beyond it the client drops the oldest lines
  s.scanner.ScanOn();
  Lines all;
  for (int i = 0; i < 200; ++i) {
    std::string text = "line " + std::to_string(i);
    s.client.OtherSays("Bob", text);
    if (i % 7 == 0) {  // several lines and a trim between two looks
      for (auto& l : s.Look()) all.push_back(l);
    }
  }
  for (auto& l : s.Look()) all.push_back(l);
  ASSERT_EQ(all.size(), 200u);
  for (int i = 0; i < 200; ++i)
    EXPECT_EQ(all[i], "Bob|line " + std::to_string(i));

  // A trim that cuts the anchor right behind its first character, the last
  // of a line: the transcript then begins with the rest of the anchor, from
  // the line break at its second character. (Each line is CR, "Bob:", TAB
  // and the text: the last two lines here are 127 characters.)
  Scanned cut;
  cut.client.max_lines = 3;
  cut.scanner.ScanOn();
  const std::string b(57, 'b'), c(58, 'c');
  for (const std::string& text : {std::string("aaa"), b, c}) {
    cut.client.OtherSays("Bob", text);
  }
  EXPECT_EQ(cut.Look().size(), 3u);
  cut.client.OtherSays("Bob", "d");  // the "aaa" line goes
  EXPECT_EQ(cut.Look(), (Lines{"Bob|d"}));
}

TEST(ChatScanner, RepeatedIdenticalLinesAcrossATrimAreAllDelivered) {
  Scanned s;
  s.client.max_lines = 10;
  s.scanner.ScanOn();
  for (int i = 0; i < 9; ++i)
    s.client.OtherSays("Bob", "x" + std::to_string(i));
  s.Look();
  s.client.OtherSays("Bob", "same");
  s.client.OtherSays("Bob", "same");  // the eleventh line trims two
  EXPECT_EQ(s.Look(), (Lines{"Bob|same", "Bob|same"}));
}

TEST(ChatScanner, AnotherRoomStartsAfresh) {
  Scanned s;
  s.scanner.ScanOn();
  s.client.OtherSays("Bob", "one");
  EXPECT_EQ(s.Look(), Lines{"Bob|one"});
  s.client.Quit();
  EXPECT_EQ(s.Look(), Lines{});
  s.client.Start();
  s.client.OtherSays("Ann", "history of the new room");
  EXPECT_EQ(s.Look(), Lines{});  // not news: said before we looked
  s.client.OtherSays("Ann", "now");
  EXPECT_EQ(s.Look(), Lines{"Ann|now"});
  // Cleared and refilled: the anchor is gone, so it starts from the end.
  s.windows.SetText(s.client.transcript(), "\rZed:\tunrelated");
  EXPECT_EQ(s.Look(), Lines{});
  s.client.OtherSays("Ann", "after");
  EXPECT_EQ(s.Look(), Lines{"Ann|after"});
}

// A client whose transcript hands out no ranges (the whole text is read), as
// one in another process; it counts what the program asks of it. Windows
// made are told where asked for.
class NoRanges : public WindowServices {
 public:
  explicit NoRanges(WindowServices& inner, bool tell_made = false)
      : in_(inner), tell_made_(tell_made) {}
  Hwnd FindWindowA(const char* c, const char* t) override {
    ++lookups;
    return in_.FindWindowA(c, t);
  }
  Hwnd FindWindowExA(Hwnd p, Hwnd a, const char* c, const char* t) override {
    ++lookups;
    return in_.FindWindowExA(p, a, c, t);
  }
  std::optional<LResult> SendMessageTimeoutA(Hwnd h, std::uint32_t m, WParam w,
                                             LParam l) override {
    ++messages;
    if (m == kWmGetText && w > 200) ++whole_reads;  // not just the head
    return in_.SendMessageTimeoutA(h, m, w, l);
  }
  bool WatchCreations(std::function<void()> made) override {
    return tell_made_ && in_.WatchCreations(std::move(made));
  }
  bool PostMessageA(Hwnd h, std::uint32_t m, WParam w, LParam l) override {
    return in_.PostMessageA(h, m, w, l);
  }
  int GetWindowTextA(Hwnd h, char* b, int n) override {
    return in_.GetWindowTextA(h, b, n);
  }
  int GetWindowTextLengthA(Hwnd h) override {
    return in_.GetWindowTextLengthA(h);
  }
  bool IsWindowVisible(Hwnd h) override { return in_.IsWindowVisible(h); }
  bool ShowWindow(Hwnd h, int c) override { return in_.ShowWindow(h, c); }
  bool IsWindow(Hwnd h) override {
    ++lookups;
    return in_.IsWindow(h);
  }
  bool SetWindowPos(Hwnd h, Hwnd a, int x, int y, int cx, int cy,
                    std::uint32_t f) override {
    return in_.SetWindowPos(h, a, x, y, cx, cy, f);
  }
  Hmenu GetMenu(Hwnd h) override { return in_.GetMenu(h); }
  int GetMenuItemCount(Hmenu m) override { return in_.GetMenuItemCount(m); }
  Hmenu GetSubMenu(Hmenu m, int p) override { return in_.GetSubMenu(m, p); }
  std::uint32_t GetMenuItemID(Hmenu m, int p) override {
    return in_.GetMenuItemID(m, p);
  }
  int GetMenuStringA(Hmenu m, std::uint32_t i, char* b, int n,
                     std::uint32_t f) override {
    return in_.GetMenuStringA(m, i, b, n, f);
  }
  Screen GetScreen() override { return in_.GetScreen(); }
  bool GetCursorPos(Point& at) override { return in_.GetCursorPos(at); }
  bool SetCursorPos(int x, int y) override { return in_.SetCursorPos(x, y); }
  bool ReleaseCapture() override { return in_.ReleaseCapture(); }
  std::optional<std::string> GetTextRange(Hwnd, int, int) override {
    return std::nullopt;
  }
  int whole_reads = 0, messages = 0, lookups = 0;

 private:
  WindowServices& in_;
  bool tell_made_;
};

TEST(ChatScanner, ReadsTheWholeTextWhereRangesAreNotOffered) {
  testing::World w;
  NoRanges plain(w.windows);
  Platform p{plain, w.loop};
  w.client.max_lines = 5;
  ChatScanner scanner(p, [&] { return FindTranscript(p); });
  Lines got;
  scanner.OnChatMsg([&](const std::string& n, const std::string& t) {
    got.push_back(n + "|" + t);
  });
  scanner.ScanOn();
  // Past five lines each line trims one as long as itself: the length
  // stands, and the first characters, compared every kCheckEveryMs, tell.
  const std::string pad(60, '.');
  for (int i = 0; i < 12; ++i) {
    w.client.OtherSays("Bob", pad + std::to_string(i % 10));
    if (i % 3 == 2) w.loop.RunFor(ChatScanner::kCheckEveryMs);
  }
  w.loop.RunFor(ChatScanner::kCheckEveryMs);
  ASSERT_EQ(got.size(), 12u);
  EXPECT_EQ(got.front(), "Bob|" + pad + "0");
  EXPECT_EQ(got.back(), "Bob|" + pad + "1");

  // One read of the whole text per look that finds news, however many
  // pieces it checks; a quiet look asks one message and looks nothing up.
  plain.whole_reads = 0;
  w.client.OtherSays("Bob", pad + "22");
  scanner.Look();
  EXPECT_EQ(plain.whole_reads, 1);
  plain.messages = plain.lookups = 0;
  for (int i = 0; i < 100; ++i) scanner.Look();
  EXPECT_EQ(plain.whole_reads, 1);
  EXPECT_EQ(plain.messages, 100);
  EXPECT_EQ(plain.lookups, 0);
  w.loop.RunUntilIdle();
  EXPECT_EQ(got.size(), 13u);
}

// The room's window is kept while it answers; a room closed, one opened
// ahead of it and the client gone are each seen at the next look, and with
// no room the scanner asks nothing until a window is made.
TEST(ChatScanner, KeepsItsRoomAndFindsItAgainAtTheNextLook) {
  testing::World w;
  NoRanges plain(w.windows, true);
  Platform p{plain, w.loop};
  ChatScanner scanner(p, [&] { return FindTranscript(p); });
  Lines got;
  scanner.OnChatMsg([&](const std::string& n, const std::string& t) {
    got.push_back(n + "|" + t);
  });
  scanner.ScanOn();
  auto look = [&] {
    got.clear();
    scanner.Look();
    w.loop.PumpEvents();
    return got;
  };
  // A second room, ahead of the first: the one the room walk finds.
  Hwnd mdi = FindMdiClient(w.platform);
  Hwnd ahead = w.windows.Create(mdi, "AOL Child", "Lobby 2");
  Hwnd text = w.windows.Create(ahead, "RICHCNTL", "\rOld:\tbefore");
  for (const char* c : {"RICHCNTL", "_AOL_Listbox", "_AOL_Icon", "_AOL_Static"})
    w.windows.Create(ahead, c, "");
  w.windows.SetWindowPos(ahead, 0, 0, 0, 0, 0, kSwpNoMove | kSwpNoSize);
  w.client.OtherSays("Bob", "in the first room");
  EXPECT_EQ(look(), Lines{});  // the new room from its end
  w.windows.AppendText(text, "\rAnn:\tahead");
  EXPECT_EQ(look(), Lines{"Ann|ahead"});
  // Closed: back to the first room, from its end.
  w.windows.Destroy(ahead);
  EXPECT_EQ(look(), Lines{});
  w.client.OtherSays("Bob", "back");
  EXPECT_EQ(look(), Lines{"Bob|back"});
  // Gone: the next look sees it, and the looks after ask nothing.
  w.client.Quit();
  EXPECT_EQ(look(), Lines{});
  plain.messages = plain.lookups = 0;
  for (int i = 0; i < 10; ++i) look();
  EXPECT_EQ(plain.messages + plain.lookups, 0);
  w.client.Start();
  w.client.OtherSays("Ann", "history of the new room");
  EXPECT_EQ(look(), Lines{});
  w.client.OtherSays("Ann", "now");
  EXPECT_EQ(look(), Lines{"Ann|now"});
}

// A hung client answers no read: its transcript is not taken for a cleared
// one (which would replay the whole room as news once it answers again),
// and nothing said meanwhile is lost. Both ways of reading.
TEST(ChatScanner, AHungClientIsNotTakenForAClearedRoom) {
  for (bool ranges : {true, false}) {
    SCOPED_TRACE(ranges ? "ranges" : "whole text");
    testing::World w;
    NoRanges plain(w.windows);
    Platform p{ranges ? static_cast<WindowServices&>(w.windows) : plain,
               w.loop};
    ChatScanner scanner(p, [&] { return FindTranscript(p); });
    Lines got;
    scanner.OnChatMsg([&](const std::string& n, const std::string& t) {
      got.push_back(n + "|" + t);
    });
    scanner.ScanOn();
    w.client.OtherSays("Bob", "before");
    scanner.Look();
    w.client.Hang(20000);
    for (int i = 0; i < 3; ++i) scanner.Look();  // each waits out the bound
    EXPECT_EQ(w.loop.clock().NowMs(), 3 * kSendBoundMs);
    w.client.OtherSays("Ann", "during");  // in the room, not yet readable
    w.loop.RunFor(w.host.HungForMs());
    scanner.Look();
    w.loop.RunUntilIdle();
    EXPECT_EQ(got, (Lines{"Bob|before", "Ann|during"}));
  }
}

TEST(ChatScanner, SplitsOnlyLinesWithASpeaker) {
  std::string n, t;
  EXPECT_TRUE(SplitChatLine("Bob:\ta:\tb", n, t));
  EXPECT_EQ(n, "Bob");
  EXPECT_EQ(t, "a:\tb");
  EXPECT_TRUE(SplitChatLine("\nBob:\t", n, t));  // a CR LF transcript
  EXPECT_EQ(n, "Bob");
  EXPECT_EQ(t, "");
  EXPECT_FALSE(SplitChatLine("Bob: hi", n, t));
  EXPECT_TRUE(SplitChatLine(
      "Me:\t<font face=\"a\" color=#ff8000>\x95 <b>date</b>", n, t));
  EXPECT_EQ(t, "\x95 date");
  EXPECT_EQ(StripMarkup("a < b > c <3 <u>x</u> <"), "a < b > c <3 x <");
  EXPECT_EQ(StripMarkup("<!-- said -->hi<!DOCTYPE html>"), "hi");
  EXPECT_EQ(StripMarkup("<unclosed"), "<unclosed");
  EXPECT_FALSE(SplitChatLine("", n, t));
}

}  // namespace
}  // namespace v2
