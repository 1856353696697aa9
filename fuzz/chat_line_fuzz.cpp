// Fuzz target: a line said in the room, as the command entry cuts it. The
// line comes from the room, so it can hold any bytes at all.
#include <cstddef>
#include <cstdint>
#include <string>

#include "core/program.h"
#include "fuzz/fuzz_check.h"
#include "fuzz/fuzz_world.h"
#include "host/host_windows.h"
#include "interpreter/chat_event.h"

namespace {

bool InTable(const v2::CommandRow* row) {
  const auto& table = v2::CommandTable();
  return row >= table.data() && row < table.data() + table.size();
}

// What CutCommand answers must follow from the line and the table alone.
const v2::CommandRow* CheckCut(const std::string& line) {
  const v2::CommandRow* row = nullptr;
  std::string arg = "left over";
  if (!v2::CutCommand(line, row, arg)) return nullptr;
  V2_FUZZ_CHECK(row != nullptr && InTable(row), "the row is the table's");
  const std::string word = row->word;
  V2_FUZZ_CHECK(line.compare(0, word.size(), word) == 0,
                "the row's word starts the line");
  V2_FUZZ_CHECK(line.size() == word.size() || line[word.size()] == ' ',
                "the row's word is the line's whole first word");
  // The argument is the line's own tail from the row's start position (p
  // cuts behind its first two characters).
  std::size_t from = row->rule == v2::ArgRule::kP
                         ? 2
                         : static_cast<std::size_t>(row->start - 1);
  std::string tail = from < line.size() ? line.substr(from) : std::string();
  V2_FUZZ_CHECK(arg == tail, "the argument is the line's tail");
  switch (row->rule) {
    case v2::ArgRule::kNone:
      V2_FUZZ_CHECK(arg.empty(), "a bare command has no argument");
      break;
    case v2::ArgRule::kNeeded:
      V2_FUZZ_CHECK(!arg.empty(), "a command that needs an argument has one");
      break;
    case v2::ArgRule::kOnOff:
      V2_FUZZ_CHECK(arg.empty() || arg == "on" || arg == "off",
                    "an on/off command has empty, on or off");
      break;
    case v2::ArgRule::kFree:
    case v2::ArgRule::kP:
      break;
  }
  return row;
}

// The whole entry, with the program behind it: only the signed-on member
// commands, and only a command answers in the room.
void CheckEntry(const std::string& line, const v2::CommandRow* row) {
  v2::fuzz::World world;
  v2::Program program(world.platform);
  int said = 0;
  world.client.on_line = [&said](const std::string& shown) {
    V2_FUZZ_CHECK(shown.rfind("Member:\t", 0) == 0,
                  "only the member speaks in this room");
    ++said;
  };

  v2::Chat1_ChatMsg(program, "Guide", line);
  world.loop.RunUntilIdle();
  V2_FUZZ_CHECK(said == 0, "someone else's line commands nothing");

  v2::Chat1_ChatMsg(program, "Member", line);
  world.loop.RunUntilIdle();
  // A row answers with up to four lines (stats: two for each transfer), or
  // with none where its argument asks for nothing (im without a comma).
  if (row && row->action) {
    V2_FUZZ_CHECK(said <= 4, "a command answers with a few lines at most");
  } else {
    V2_FUZZ_CHECK(said == 0, "a line that is no command is not answered");
  }
  V2_FUZZ_CHECK(world.client.InputText().empty(),
                "the member's half-typed line is given back");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  std::string line(reinterpret_cast<const char*>(data), size);
  const v2::CommandRow* row = CheckCut(line);
  CheckEntry(line, row);
  return 0;
}
