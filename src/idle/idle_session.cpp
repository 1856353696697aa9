#include "idle/idle_session.h"

#include "core/menu_items.h"
#include "core/program.h"
#include "core/styled_line.h"
#include "host/ghosting.h"
#include "host/host_windows.h"
#include "host/instant_messages.h"
#include "idle/idle_tick.h"

namespace v2 {

void idleon_Click(Program& prog) {
  Platform& p = prog.platform;
  Form2& f2 = prog.form2;
  f2.idleon.Checked = true;
  f2.idleoff.Checked = false;
  f2.idleon.Enabled = false;
  f2.idleoff.Enabled = true;
  // The marks are read now: a change during a session counts next time.
  if (f2.imsoff.Checked) IMsOff(p);
  if (f2.ghostingon.Checked) GhostOn(p);
  // Enabling a running timer keeps its phase: a second start does not
  // push the next tick back.
  prog.form1.Timer1.SetEnabled(true);
  ChatSend(p, StyledLine(prog.form4, Pair::kMain,
                         std::string(kBanner) + " : activated"));
}

void idleoff_Click(Program& prog) {
  Platform& p = prog.platform;
  Form2& f2 = prog.form2;
  f2.idleoff.Checked = true;
  f2.idleon.Checked = false;
  f2.idleoff.Enabled = false;
  f2.idleon.Enabled = true;
  if (f2.imson.Checked) IMsOn(p);
  if (f2.ghostingoff.Checked) GhostOff(p);
  prog.form1.Timer1.SetEnabled(false);
  // Only the session's minutes start again; the ticks since the last
  // scroll carry over into the next session.
  prog.form1.Label1.Caption.Set("0");
  ChatSend(p, StyledLine(prog.form4, Pair::kMain,
                         std::string(kBanner) + " : de-activated"));
}

void brag_Click(Program& prog) {
  Platform& p = prog.platform;
  ChatSend(p, StyledLine(prog.form4, Pair::kMain,
                         std::string(kBanner) + " : " +
                             prog.form2.Text5.Text.Get() + "/brag"));
  ChatSend(p, StyledLine(prog.form4, Pair::kSecond,
                         GroupThousands(prog.form2.Label1.Caption.Get()) +
                             " total idle mins"));
}

void user_Click(Program& prog) {
  ValueBoxClick(prog, "enter your handle", "handle", "new user",
                prog.form2.Text5, [&prog] {
                  prog.form2.user.Caption =
                      "user [" + prog.form2.Text5.Text.Get() + "]";
                });
}

}  // namespace v2
