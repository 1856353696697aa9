// The command rows on the client's menus and the facts around it, through
// the member's own lines, and the command list for the members.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>
#include <sstream>

#include "aolsim/desktop.h"
#include "core/program.h"
#include "host/host_windows.h"
#include "interpreter/chat_event.h"
#include "platform/text.h"
#include "tests/unit/world.h"

namespace v2 {
namespace {

// The middle of a styled line: its text between the second segment's font
// and the third's.
std::string Middle(const std::string& line) {
  auto tab = line.find('\t');
  std::string text = line.substr(tab + 1);
  auto second = text.find("<font", 1);
  auto open = text.find('>', second) + 1;
  auto third = text.find(" <font", open);
  return text.substr(open, third - open);
}

struct Live : testing::World {
  Live() : prog(platform) {
    prog.Start();
    loop.RunUntilIdle();
    room.clear();
  }
  std::vector<std::string> Say(const std::string& text) {
    room.clear();
    client.MemberTypes(text);
    client.MemberPressesReturn();
    loop.RunUntilIdle();
    std::vector<std::string> replies;
    for (std::size_t i = 1; i < room.size(); ++i) {
      replies.push_back(Middle(room[i]));
    }
    return replies;
  }
  Program prog;
};

TEST(ClientCommands, AimIsLowerCaseWithoutBlanks) {
  Live w;
  aolsim::Desktop desktop(w.host);
  desktop.AimSignOn("Some Body\tX");
  EXPECT_EQ(w.Say("aim"), std::vector<std::string>{"current aim: somebody\tx"});
  desktop.AimQuit();
  EXPECT_EQ(w.Say("aim"), std::vector<std::string>{"current aim: "});
  EXPECT_TRUE(w.Say("aim ").size() == 1);  // one blank behind: still aim
  EXPECT_TRUE(w.Say("aim x").empty());
}

TEST(ClientCommands, AToolbarWithNoPopupStillLetsTheProgramGoOn) {
  Live w;
  // The My AOL icon gone, the 6th is one that opens nothing.
  w.windows.Destroy(NthChild(w.platform, w.client.toolbar(), "_AOL_Icon", 6));
  w.prog.form2.Text5.Text.Set("MiRRiK");
  const std::int64_t start = w.loop.clock().NowMs();
  std::vector<std::string> said = w.Say("aotime");
  // The clicks went on for the bound, the box was waited for as long, and
  // the line says what was there: nothing.
  EXPECT_EQ(said, std::vector<std::string>{"MiRRiK has been on aol for "});
  EXPECT_GE(w.loop.clock().NowMs() - start, 20000);
  EXPECT_LE(w.loop.clock().NowMs() - start, 22000);
  EXPECT_EQ(w.Say("date"), std::vector<std::string>{"todays date: 6/15/2001"});
}

TEST(CommandList, EveryCommandIsExplainedForTheMembers) {
  std::ifstream in(V2_COMMANDS_TXT, std::ios::binary);
  ASSERT_TRUE(in) << V2_COMMANDS_TXT;
  const std::string text((std::istreambuf_iterator<char>(in)),
                         std::istreambuf_iterator<char>());
  // Windows text: CR LF only, and Windows-1252 characters only.
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto c = static_cast<unsigned char>(text[i]);
    if (c == '\n') {
      ASSERT_TRUE(i > 0 && text[i - 1] == '\r') << "bare LF at " << i;
    } else if (c == '\r') {
      ASSERT_TRUE(i + 1 < text.size() && text[i + 1] == '\n') << i;
    } else {
      ASSERT_TRUE(c >= 32 && c != 127) << "control character at " << i;
      ASSERT_TRUE(c != 0x81 && c != 0x8D && c != 0x8F && c != 0x90 && c != 0x9D)
          << "no Windows-1252 character at " << i;
    }
  }
  EXPECT_NE(text.find("vantrel\xB2"), std::string::npos);
  // Each command, and on, has an entry: a line that starts with the word.
  std::set<std::string> entries;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    if (line.empty() || line[0] == ' ') continue;
    entries.insert(line.substr(0, line.find_first_of(" \r")));
  }
  for (const CommandRow& row : CommandTable()) {
    EXPECT_TRUE(entries.count(row.word)) << row.word;
  }
  EXPECT_TRUE(entries.count("on"));
}

}  // namespace
}  // namespace v2
