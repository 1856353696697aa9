#include "interpreter/host_commands.h"

#include "config/settings.h"
#include "host/host_windows.h"
#include "host/keywords.h"
#include "interpreter/styled_line.h"
#include "platform/text.h"
#include "shell/program.h"

namespace v2 {

void SetHandle(Program& prog, const std::string& CommandArg) {
  prog.form2.Text5.Text.Set(CommandArg);
  SaveSetting(prog.platform, "handle", prog.form2.Text5.Text.Get());
  prog.form2.user.Caption = "user [" + prog.form2.Text5.Text.Get() + "]";
  ChatSend(prog.platform, StyledLine(prog.form4, Pair::kMain,
                                     "handle now '" + CommandArg + "'"));
}

void PrivateRoom(Program& prog, const std::string& CommandArg) {
  Platform& p = prog.platform;
  EnterPrivateRoom(p, CommandArg);
  Pause(p, 1);
  Hwnd dialog = p.windows.FindWindowA("#32770", "America Online");
  Hwnd ok = dialog ? p.windows.FindWindowExA(dialog, 0, "Button", "OK") : 0;
  if (dialog) {
    p.windows.PostMessageA(ok, kWmKeyDown, kVkSpace, 0);
    p.windows.PostMessageA(ok, kWmKeyUp, kVkSpace, 0);
    ChatSend(p, StyledLineTight(prog.form4, Pair::kMain,
                                "'" + CommandArg + "' is full or invalid"));
  } else if (FindChatRoom(p)) {
    ChatSend(p, StyledLineTight(prog.form4, Pair::kMain,
                                "entered room '" + CommandArg + "'"));
  }
}

void Keyword(Program& prog, const std::string& CommandArg) {
  ChatSend(prog.platform,
           StyledLine(prog.form4, Pair::kMain,
                      "opening keyword: <u>" + LCase(CommandArg) + "</u>"));
  RunKeyword(prog.platform, CommandArg);
}

}  // namespace v2
