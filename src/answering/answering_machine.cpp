#include "answering/answering_machine.h"

#include "core/menu_items.h"
#include "core/program.h"
#include "core/styled_line.h"
#include "host/host_windows.h"
#include "host/instant_messages.h"

namespace v2 {

std::string AwayReply(Program& prog) {
  std::string reply = "\r";
  reply += StyledLine(prog.form4, Pair::kMain,
                      std::string(kBanner) + " : auto response");
  reply += '\r';
  reply += StyledLine(prog.form4, Pair::kStat,
                      "msg: " + prog.form2.Text6.Text.Get());
  return reply;
}

void Timer6_Timer(Program& prog) {
  Platform& p = prog.platform;
  const WindowWatch::Mark mark = prog.watch.Now();
  if (FindIM(p) == 0) {
    // An IM comes in a window of its own: only a new window can change that.
    prog.watch.SleepUntilMade(prog.form2.Timer6, mark);
    return;
  }
  // The member may read it meanwhile; a window closed now costs nothing.
  Pause(p, 2);
  IMReply(p, AwayReply(prog));
  Pause(p, 1);
  CloseAllIMs(p);
}

void immachine_Click(Program& prog) {
  ToggleTimerClick(prog, prog.form2.immachine, prog.form2.Timer6, "machine");
}

void buildafk_Click(Program& prog) {
  ValueBoxClick(prog, "enter the IM answering machine message", "machine msg",
                "im afk", prog.form2.Text6);
}

}  // namespace v2
