#pragma once
// The entry of every chat command: the member's own line, cut into a command
// word and its argument, looked up in the command table.
#include <array>
#include <string>

namespace v2 {

class Program;

enum class ArgRule {
  kNone,    // acts only when nothing follows the word
  kNeeded,  // acts only with an argument
  kFree,    // takes whatever follows, the empty text too
  kOnOff,   // empty, "on" or "off"; anything else is ignored
  kP,       // the row cuts its own argument: the line behind its first two
};

using CommandAction = void (*)(Program& prog, const std::string& CommandArg);

struct CommandRow {
  const char* word;
  int start;  // 1-based position where the argument begins
  ArgRule rule;
  CommandAction action;  // null while the command has no action yet
};

inline constexpr std::size_t kCommandCount = 51;
const std::array<CommandRow, kCommandCount>& CommandTable();

void Chat1_ChatMsg(Program& prog, const std::string& Screen_Name,
                   const std::string& What_Said);

// The one word heard while commands are off: `on` (anything may follow it)
// brings them back.
void Chat2_ChatMsg(Program& prog, const std::string& Screen_Name,
                   const std::string& What_Said);
// `off`: every command but `on` goes unheard until then.
void CommandsOff(Program& prog, const std::string& CommandArg);

// The first word and the argument as a row would see them; false when the
// line holds no command word. Exposed for tests and fuzzing.
bool CutCommand(const std::string& What_Said, const CommandRow*& row,
                std::string& CommandArg);

// The row `date`: today's date in the system's short date form.
void PostDate(Program& prog, const std::string& CommandArg);

}  // namespace v2
