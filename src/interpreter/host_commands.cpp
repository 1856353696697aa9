#include "interpreter/host_commands.h"

#include "config/style_window.h"
#include "core/program.h"
#include "core/settings.h"
#include "core/styled_line.h"
#include "host/ghosting.h"
#include "host/host_windows.h"
#include "host/instant_messages.h"
#include "host/keywords.h"
#include "platform/text.h"

namespace v2 {

void SetHandle(Program& prog, const std::string& CommandArg) {
  prog.form2.Text5.Text.Set(CommandArg);
  SaveSetting(prog.platform, "handle", prog.form2.Text5.Text.Get());
  prog.form2.user.Caption = "user [" + prog.form2.Text5.Text.Get() + "]";
  Reply(prog, "handle now '" + CommandArg + "'");
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

void ViewCustom(Program& prog, const std::string&) {
  ShowForm4(prog);
  Reply(prog, "viewing custom settings");
}

void Keyword(Program& prog, const std::string& CommandArg) {
  Reply(prog, "opening keyword: <u>" + LCase(CommandArg) + "</u>");
  RunKeyword(prog.platform, CommandArg);
}

void ImsOffCommand(Program& prog, const std::string&) {
  IMsOff(prog.platform);
  Reply(prog, "inst msg's off");
}

void ImsOnCommand(Program& prog, const std::string&) {
  IMsOn(prog.platform);
  Reply(prog, "inst msg's on");
}

void GhostOnCommand(Program& prog, const std::string&) {
  GhostOn(prog.platform);
  Reply(prog, "ghosting on");
}

void GhostOffCommand(Program& prog, const std::string&) {
  GhostOff(prog.platform);
  Reply(prog, "ghosting off");
}

void CheckImCommand(Program& prog, const std::string& CommandArg) {
  if (CheckIM(prog.platform, CommandArg) == kVbTrue) {
    Reply(prog, "<u>" + CommandArg + "</u> has ims on");
    return;
  }
  // A second exchange with the client before saying no.
  if (CheckIM(prog.platform, CommandArg) == kVbFalse) {
    Reply(prog, "<u>" + CommandArg + "</u> has ims off");
  }
}

void SendImCommand(Program& prog, const std::string& CommandArg) {
  auto comma = CommandArg.find(',');
  if (comma == std::string::npos) return;
  Form1& f = prog.form1;
  f.IMTarget = CommandArg.substr(0, comma);
  f.IMBody = CommandArg.substr(comma + 1);
  if (f.IMBody.empty()) return;
  SendIM(prog.platform, f.IMTarget, f.IMBody);
  Reply(prog, "inst msg sent to <u>" + f.IMTarget + "</u>");
}

}  // namespace v2
