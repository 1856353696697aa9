// Room lines at the terminal: the markup as the client shows it.
#include <gtest/gtest.h>

#include "app/room_render.h"
#include "app/runner.h"

namespace v2 {
namespace {

constexpr const char* kOrange = "\x1b[0;38;2;255;128;0m";
constexpr const char* kGrey = "\x1b[0;38;2;192;192;192m";
constexpr const char* kReset = "\x1b[0m";

TEST(RoomRender, AStyledLineShowsItsColoursAndNoTags) {
  const std::string line =
      "<font face=\"arial narrow\" color=#ff8000>\x8B\xA1'\x95 <font "
      "face=\"arial narrow\" color=#c0c0c0>todays date: 6/15/2001 <font "
      "face=\"arial narrow\" color=#ff8000>";
  EXPECT_EQ(RenderMarkup(line), std::string(kOrange) + "\xE2\x80\xB9\xC2\xA1'" +
                                    "\xE2\x80\xA2 " + kGrey +
                                    "todays date: 6/15/2001 " + kReset);
  // The name stays as it is; a line with no markup gets no attributes.
  EXPECT_EQ(RenderRoomLine("Bob:\thello <3, a < b & c"),
            "Bob:\thello <3, a < b & c");
  EXPECT_EQ(RenderRoomLine("no separator"), "no separator");
}

TEST(RoomRender, BoldUnderlineAndLinksNestAndClose) {
  EXPECT_EQ(RenderMarkup("a<b>1</b> <u>Bob</u>"),
            "a\x1b[0;1m1\x1b[0m \x1b[0;4mBob\x1b[0m");
  // The link of adv, written with a blank behind each bracket, is shown
  // as its underlined name.
  EXPECT_EQ(RenderMarkup("dl < a HREF=\"http://x.example/\">site< /a>!"),
            "dl \x1b[0;4msite\x1b[0m!\x1b[0m");
  // Nested marks last until the outer one closes; a stray close is
  // nothing; tag names ignore case.
  EXPECT_EQ(RenderMarkup("<B><b>x</b>y</B></b>z"),
            "\x1b[0;1mxy\x1b[0mz\x1b[0m");
  // A closed font tag gives back the colour before it; a colour the
  // client cannot read keeps the one in force.
  EXPECT_EQ(RenderMarkup("<font color=\"#0000ff\">a<font color=zz>b</font>"
                         "c</font>d"),
            "\x1b[0;38;2;0;0;255mabc\x1b[0md\x1b[0m");
}

TEST(RoomRender, TextIsNeverATerminalControl) {
  // Escape, other controls, and bytes with no character of their own show
  // as the replacement character; references too.
  const std::string replacement = "\xEF\xBF\xBD";
  EXPECT_EQ(RenderMarkup("a\x1b[31mb\x07\x9D"),
            "a" + replacement + "[31mb" + replacement + replacement);
  EXPECT_EQ(RenderMarkup("&#27;&#x9b;&#233;&lt;b&gt;&amp;&bogus;"),
            replacement + replacement + "\xC3\xA9<b>&&bogus;");
  EXPECT_EQ(RenderRoomLine("\x1b\x5d:\tx"), replacement + "]:\tx");
  // A tag that never closes is text; so is an unknown one after a blank.
  EXPECT_EQ(RenderMarkup("<font color=#ff0000"), "<font color=#ff0000");
  EXPECT_EQ(RenderMarkup("x < y > z"), "x < y > z");
  EXPECT_EQ(RenderMarkup("<blink>x<br>y"), "x y");
}

TEST(RoomRender, AnImShowsItsLinesUnderItsHeading) {
  // The answering machine's reply: a CR, a line, a CR LF, a line. No CR
  // reaches the terminal, and no tag; the colour goes on across the break.
  EXPECT_EQ(RenderImEvent("[im to Bob] \r<font color=#ff8000>away\r\n"
                          "<b>back</b> soon"),
            std::string("[im to Bob]\n  ") + kOrange + "away\n  " +
                "\x1b[0;1;38;2;255;128;0mback" + kOrange + " soon" + kReset);
  EXPECT_EQ(RenderImEvent("[im to Ann] hi"), "[im to Ann] hi");
  // Anything else is one line, as a room line's text.
  EXPECT_EQ(RenderImEvent("[ims] off\r"), "[ims] off ");
}

TEST(RoomRender, TheRunnerKeepsThePrintedFormWhenAskedFor) {
  const char* argv[] = {"vantrel2-sim", "--raw", "--screen-name", "Bob"};
  RunnerOptions options;
  std::string error;
  ASSERT_TRUE(ParseRunnerArgs(4, argv, options, error)) << error;
  EXPECT_TRUE(options.raw);
  EXPECT_EQ(options.screen_name, "Bob");
  const char* plain[] = {"vantrel2-sim", "--script", "-"};
  RunnerOptions scripted;
  ASSERT_TRUE(ParseRunnerArgs(3, plain, scripted, error));
  EXPECT_FALSE(scripted.raw);
}

}  // namespace
}  // namespace v2
