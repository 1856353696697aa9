#include <gtest/gtest.h>

#include "core/program.h"
#include "core/styled_line.h"
#include "interpreter/chat_event.h"
#include "tests/unit/world.h"

namespace v2 {
namespace {

const std::string kMainLine =
    "<font face=\"arial narrow\" color=#ff8000>\x8B\xA1'\x95 <font "
    "face=\"arial narrow\" color=#c0c0c0>ghosting on <font face=\"arial "
    "narrow\" color=#ff8000>";

TEST(StyledLine, DefaultsMakeTheEighteenPieces) {
  // With nothing stored; the first line loads the style window, whose
  // load empties the tails it was drawn with.
  testing::World w;
  Program prog(w.platform);
  EXPECT_EQ(StyledLine(prog.form4, Pair::kMain, "ghosting on"), kMainLine);
  std::string tight = kMainLine;
  tight.erase(tight.find("on <font") + 2, 1);
  EXPECT_EQ(StyledLineTight(prog.form4, Pair::kMain, "ghosting on"), tight);
}

TEST(StyledLine, PairsPickTheirDecorationsAndLiveValuesCount) {
  Form4 f;
  f.Text20.Text.Set("[t20]");
  f.Text21.Text.Set("[t21]");
  f.Text22.Text.Set("[t22]");
  auto ends = [&](Pair p, const char* lead, const char* tail) {
    std::string line = StyledLine(f, p, "m");
    EXPECT_NE(line.find(std::string(">") + lead + " <font"), std::string::npos);
    EXPECT_EQ(line.substr(line.size() - 5), tail);
  };
  ends(Pair::kMain, "\x8B\xA1'\x95", "[t20]");
  ends(Pair::kSecond, "\x8B\xA1\xCC\x9B", "[t21]");
  ends(Pair::kThird, " \x8B\xCC\xA1", "[t21]");
  ends(Pair::kStat, "\x8B\xA1\xCC\x9B", "[t20]");
  ends(Pair::kTest, " \x8B\xCC\xA1", "[t22]");

  // Emptied decorations keep the three font tags and the blank before the
  // body; markup in a value goes in unchanged.
  f.Text11.Text.Set("");
  f.Text20.Text.Set("");
  f.Text2.Text.Set("x\"<b>");
  EXPECT_EQ(StyledLine(f, Pair::kMain, "<u>Bob's</u>"),
            "<font face=\"arial narrow\" color=#ff8000> <font face=\"x\"<b>\" "
            "color=#c0c0c0><u>Bob's</u> <font face=\"arial narrow\" "
            "color=#ff8000>");
}

TEST(CommandTable, HoldsEveryWordInOrderWithItsStart) {
  const auto& table = CommandTable();
  const char* words[] = {
      "ioff",    "ion",    "ghoston", "ghostoff", "hwelc", "swelc",  "idleon",
      "idleoff", "vcus",   "vrea",    "glyph",    "exit",  "brag",   "handle",
      "pr",      "off",    "cmds",    "soff",     "new",   "old",    "sent",
      "flash",   "boot",   "kw",      "web",      "ck",    "time",   "charmap",
      "date",    "aotime", "cdir",    "r",        "next",  "prev",   "dir",
      "unpause", "stop",   "vol",     "pause",    "p",     "cancel", "cont",
      "rep",     "ord",    "ref",     "im",       "adv",   "sinfo",  "length",
      "aim",     "stats"};
  ASSERT_EQ(std::size(words), table.size());
  for (std::size_t i = 0; i < table.size(); ++i) {
    std::string w = table[i].word;
    EXPECT_EQ(w, words[i]);
    int len = static_cast<int>(w.size());
    bool keeps_blank = w == "vcus" || w == "vrea" || w == "charmap";
    EXPECT_EQ(table[i].start, keeps_blank ? len + 1 : len + 2) << w;
  }
}

TEST(CommandTable, CutsAndRulesRefuseWhatTheyShould) {
  auto cut = [](const std::string& line, std::string* arg = nullptr) {
    const CommandRow* row = nullptr;
    std::string a;
    bool ok = CutCommand(line, row, a);
    if (arg) *arg = a;
    return ok ? std::string(row->word) : std::string("-");
  };
  std::string arg = "?";
  EXPECT_EQ(cut("ioff"), "ioff");
  EXPECT_EQ(cut("ioff "), "ioff");  // one trailing blank is swallowed
  EXPECT_EQ(cut("ioff  "), "-");
  EXPECT_EQ(cut("ioff x"), "-");
  EXPECT_EQ(cut(" ioff"), "-");
  EXPECT_EQ(cut("IOFF"), "-");
  EXPECT_EQ(cut("Ioff"), "-");
  EXPECT_EQ(cut("ioff\tx"), "-");  // a tab does not end the word
  EXPECT_EQ(cut(""), "-");
  EXPECT_EQ(cut("vcus"), "vcus");
  EXPECT_EQ(cut("vcus "), "-");  // its argument keeps the blank
  EXPECT_EQ(cut("charmap "), "-");
  EXPECT_EQ(cut("swelc "), "swelc");
  EXPECT_EQ(cut("kw"), "-");
  EXPECT_EQ(cut("kw "), "-");
  EXPECT_EQ(cut("kw  x", &arg), "kw");
  EXPECT_EQ(arg, " x");
  EXPECT_EQ(cut("handle", &arg), "handle");
  EXPECT_EQ(arg, "");
  EXPECT_EQ(cut("handle <b>me</b>", &arg), "handle");
  EXPECT_EQ(arg, "<b>me</b>");
  EXPECT_EQ(cut("cont", &arg), "cont");
  EXPECT_EQ(cut("cont on"), "cont");
  EXPECT_EQ(cut("rep off"), "rep");
  EXPECT_EQ(cut("ord maybe"), "-");
  EXPECT_EQ(cut("cont On"), "-");
  EXPECT_EQ(cut("p  two blanks", &arg), "p");
  EXPECT_EQ(arg, " two blanks");
  EXPECT_EQ(cut("p", &arg), "p");
  EXPECT_EQ(arg, "");
  EXPECT_EQ(cut("on"), "-");
  EXPECT_EQ(cut("stop it"), "-");
}

struct Live : testing::World {
  explicit Live(std::string name = "Member")
      : World(std::move(name)), prog(platform) {
    prog.Start();
    loop.RunUntilIdle();
    room.clear();  // the start's own two lines
  }
  void Say(const std::string& text) {
    client.MemberTypes(text);
    client.MemberPressesReturn();
    loop.RunUntilIdle();
  }
  Program prog;
};

TEST(ChatEvent, RepliesComeBackAsOwnLinesAndAreNoCommands) {
  Live w;
  std::vector<std::string> seen;
  w.prog.form1.Chat1.OnChatMsg([&](const std::string& n, const std::string& s) {
    seen.push_back(s);
    Chat1_ChatMsg(w.prog, n, s);
  });
  w.Say("date");
  ASSERT_EQ(seen.size(), 2u);
  EXPECT_EQ(seen[1], "\x8B\xA1'\x95 todays date: 6/15/2001 ");
  // A lead that is a command word makes the reply start with it; date then
  // has text behind it and refuses.
  w.prog.form4.Text11.Text.Set("date");
  w.Say("date");
  EXPECT_EQ(seen.back(), "date todays date: 6/15/2001 ");
  EXPECT_EQ(w.room.size(), 4u);
}

TEST(ChatEvent, OnlyTheSignedOnMemberCommands) {
  Live w("Bob");
  w.client.OtherSays("bob", "date");  // the name's case must match too
  w.client.OtherSays("Ann", "date");
  w.loop.RunUntilIdle();
  EXPECT_EQ(w.room.size(), 2u);
  w.client.CloseWelcome();
  w.Say("date");
  EXPECT_EQ(w.room.size(), 3u);
  w.client.OtherSays("", "date");  // nobody signed on matches no name
  w.loop.RunUntilIdle();
  EXPECT_EQ(w.room.size(), 4u);
  w.client.OpenWelcome();
  w.Say("date");
  EXPECT_EQ(w.room.size(), 6u);
}

TEST(ChatEvent, HalfTypedTextIsBackAfterTheReply) {
  Live w;
  w.client.MemberTypes("date");
  w.client.MemberPressesReturn();
  w.client.MemberTypes("I was sayi");  // typed before the program saw the line
  w.loop.RunUntilIdle();
  ASSERT_EQ(w.room.size(), 2u);
  EXPECT_NE(w.room[1].find("todays date: 6/15/2001"), std::string::npos);
  EXPECT_EQ(w.client.InputText(), "I was sayi");
}

}  // namespace
}  // namespace v2
