// The command list the members read (commands.txt, which `cmds` opens):
// Windows text, and an entry for every word the program answers.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>
#include <sstream>

#include "interpreter/chat_event.h"

namespace v2 {
namespace {

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
