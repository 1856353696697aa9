#include "platform/text.h"

#include <gtest/gtest.h>

namespace v2 {
namespace {

TEST(Text, LowerCaseFollowsTheAnsiCodePage) {
  EXPECT_EQ(LCase("ABC xyz 6/15/2001"), "abc xyz 6/15/2001");
  // Accented capitals and the four letters of the 0x80 block fold; the
  // multiplication sign and the ornaments of the default styles do not.
  EXPECT_EQ(LCase("\xC0\xC9\xDE\xD7\x8A\x8C\x8E\x9F"),
            "\xE0\xE9\xFE\xD7\x9A\x9C\x9E\xFF");
  EXPECT_EQ(LCase("\x8B\xA1'\x95"), "\x8B\xA1'\x95");
}

TEST(Text, PositionsAreOneBased) {
  EXPECT_EQ(InStr(1, "Welcome, Bob!", "Welcome, "), 1);
  EXPECT_EQ(InStr(1, "Hi Welcome, Bob!", "Welcome, "), 4);
  EXPECT_EQ(InStr(1, "abc", "x"), 0);
  EXPECT_EQ(InStr(3, "abcabc", "a"), 4);
  EXPECT_EQ(InStr(9, "abc", "a"), 0);
  EXPECT_EQ(Mid("date x", 6), "x");
  EXPECT_EQ(Mid("date", 6), "");
  EXPECT_EQ(Mid("Welcome, Bob!", 10, 3), "Bob");
  EXPECT_EQ(Left("abc", 0), "");
  EXPECT_EQ(Left("abc", 5), "abc");
}

TEST(Text, NumbersAsBasicReadsThem) {
  for (const char* yes : {"12", " 12 ", "\t-3", "+0.5", "1.", ".5", "1e3",
                          "2.5E-2", "1D2", "007"}) {
    EXPECT_TRUE(IsNumeric(yes)) << yes;
  }
  for (const char* no : {"", "   ", ".", "-", "1.2.3", "1e", "e3", "12a", "1 2",
                         "- 1", "minutes", "45%", "1e+"}) {
    EXPECT_FALSE(IsNumeric(no)) << no;
  }
}

TEST(Text, ConvertsAtTheEdges) {
  const std::string cp =
      "vantrel\xB2 lo\xE1"
      "d \x8B\xA1'\x95 \x80";
  const std::string utf8 = "vantrel² loád ‹¡'• €";
  EXPECT_EQ(Cp1252ToUtf8(cp), utf8);
  EXPECT_EQ(Utf8ToCp1252(utf8), cp);
  EXPECT_EQ(Utf8ToCp1252("日本"), "??");
  EXPECT_EQ(Utf8ToCp1252("\xE2\x82"), "?");  // cut short
}

}  // namespace
}  // namespace v2
