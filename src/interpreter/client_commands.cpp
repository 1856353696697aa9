#include "interpreter/client_commands.h"

#include "core/list_files.h"
#include "core/program.h"
#include "core/styled_line.h"
#include "host/host_menus.h"
#include "host/host_tweaks.h"
#include "idle/reason_list.h"
#include "interpreter/host_commands.h"
#include "platform/text.h"

namespace v2 {

void HideWelcomeCommand(Program& prog, const std::string&) {
  HideWelcome(prog.platform);
  Reply(prog, "welcome screen hidden");
}

void ShowWelcomeCommand(Program& prog, const std::string&) {
  ShowWelcome(prog.platform);
  Reply(prog, "welcome screen shown");
}

void GlyphCommand(Program& prog, const std::string&) {
  KillGlyph(prog.platform);
  Reply(prog, "glyph killed");
}

void ViewReasonsCommand(Program& prog, const std::string&) {
  ShowForm3(prog);
  Reply(prog, "viewing reasons");
}

void SignOffCommand(Program& prog, const std::string&) {
  // The goodbye reaches the room only while the client still has it open.
  SignOff(prog.platform);
  Reply(prog, "now signing off.. goodbye");
}

void NewMailCommand(Program& prog, const std::string&) {
  MailOpenNew(prog.platform);
  Reply(prog, "viewing new mail");
}

void OldMailCommand(Program& prog, const std::string&) {
  MailOpenOld(prog.platform);
  Reply(prog, "viewing old mail");
}

void SentMailCommand(Program& prog, const std::string&) {
  MailOpenSent(prog.platform);
  Reply(prog, "viewing sent mail");
}

void FlashMailCommand(Program& prog, const std::string&) {
  MailOpenFlashed(prog.platform);
  Reply(prog, "viewing flashed mail");
}

void CharmapCommand(Program& prog, const std::string&) {
  OpenCharmap(prog.platform);
  Reply(prog, "loading windows charmap");
}

void WebCommand(Program& prog, const std::string& CommandArg) {
  Reply(prog, "opening web: <u>" + LCase(CommandArg) + "</u>");
  // A scheme typed by the member stays: "http://" goes in front all the
  // same.
  OpenWeb(prog.platform, "http://" + CommandArg);
}

void CommandListCommand(Program& prog, const std::string&) {
  Platform& p = prog.platform;
  const std::string file = CommandListFile(p);
  if (FileExists(p, file)) {
    OpenFile(p, file);
    Reply(prog, "viewing commands");
  } else {
    Reply(prog, "error viewing commands");
  }
}

}  // namespace v2
