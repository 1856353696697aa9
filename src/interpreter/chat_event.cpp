#include "interpreter/chat_event.h"

#include "core/program.h"
#include "core/styled_line.h"
#include "host/host_windows.h"
#include "platform/text.h"

namespace v2 {

bool CutCommand(const std::string& What_Said, const CommandRow*& row,
                std::string& CommandArg) {
  if (What_Said.empty()) return false;
  // Only a blank separates the word; a tab is part of it.
  int blank = InStr(1, What_Said, " ");
  std::string CommandWord = blank == 0 ? What_Said : Left(What_Said, blank - 1);
  for (const CommandRow& r : CommandTable()) {
    if (CommandWord != r.word) continue;
    CommandArg =
        r.rule == ArgRule::kP ? Mid(What_Said, 3) : Mid(What_Said, r.start);
    switch (r.rule) {
      case ArgRule::kNone:
        if (!CommandArg.empty()) return false;
        break;
      case ArgRule::kNeeded:
        if (CommandArg.empty()) return false;
        break;
      case ArgRule::kOnOff:
        if (!CommandArg.empty() && CommandArg != "on" && CommandArg != "off") {
          return false;
        }
        break;
      case ArgRule::kFree:
      case ArgRule::kP:
        break;
    }
    row = &r;
    return true;
  }
  return false;
}

void Chat1_ChatMsg(Program& prog, const std::string& Screen_Name,
                   const std::string& What_Said) {
  // Only the signed-on member commands; with no Welcome window nobody does.
  std::string user = GetUser(prog.platform);
  if (user.empty() || Screen_Name != user) return;
  const CommandRow* row = nullptr;
  std::string CommandArg;
  if (!CutCommand(What_Said, row, CommandArg)) return;
  if (row->action) row->action(prog, CommandArg);
}

void Chat2_ChatMsg(Program& prog, const std::string& Screen_Name,
                   const std::string& What_Said) {
  std::string user = GetUser(prog.platform);
  if (user.empty() || Screen_Name != user || What_Said.empty()) return;
  int blank = InStr(1, What_Said, " ");
  if ((blank == 0 ? What_Said : Left(What_Said, blank - 1)) != "on") return;
  prog.form1.Chat1.ScanOn();
  prog.form1.Chat2.ScanOff();
  ChatSend(prog.platform,
           StyledLine(prog.form4, Pair::kMain,
                      std::string(kBanner) + " : ccom activated"));
}

void CommandsOff(Program& prog, const std::string& /*CommandArg*/) {
  // This runs inside Chat1's own event; the event ends normally.
  prog.form1.Chat1.ScanOff();
  prog.form1.Chat2.ScanOn();
  ChatSend(prog.platform, StyledLine(prog.form4, Pair::kMain,
                                     std::string(kBanner) + " : de-activated"));
}

void PostDate(Program& prog, const std::string& /*CommandArg*/) {
  ChatSend(
      prog.platform,
      StyledLine(prog.form4, Pair::kMain,
                 "todays date: " + LCase(prog.platform.clock().ShortDate())));
}

}  // namespace v2
