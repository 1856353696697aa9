#include "reconnect/disconnect_watch.h"

#include "core/menu_items.h"
#include "core/program.h"
#include "host/ghosting.h"
#include "host/host_windows.h"
#include "host/instant_messages.h"
#include "host/keywords.h"
#include "reconnect/transfer_resume.h"

namespace v2 {

void ReconnectHost(Platform& p) {
  Hwnd mdi = FindMdiClient(p);
  Hwnd first = mdi ? p.windows.FindWindowExA(mdi, 0, "AOL Child", nullptr) : 0;
  Hwnd icon = first ? NthChild(p, first, "_AOL_Icon", 4) : 0;
  ClickIcon(p, icon);
  PressSpace(p, icon);
  ClickIcon(p, icon);
}

void Timer4_Timer(Program& prog) {
  Platform& p = prog.platform;
  Form2& f = prog.form2;
  const WindowWatch::Mark mark = prog.watch.Now();
  f.Timer5.SetEnabled(false);
  f.Reconnected = false;
  if (SignedOnName(p)) {
    prog.watch.SleepUnlessChanged(f.Timer4, mark);
    return;
  }
  // A member back within these seconds is pressed for all the same.
  Pause(p, 3);
  ReconnectHost(p);
  f.Timer5.SetEnabled(true);
  f.Timer4.SetEnabled(false);
}

void Timer5_Timer(Program& prog) {
  Platform& p = prog.platform;
  Form2& f = prog.form2;
  if (f.Reconnected || FindWelcome(p) == 0) return;
  // Each option is read when its step comes, the room too.
  Pause(p, 3);
  if (f.imzoff.Checked) IMsOff(p);
  Pause(p, 3);
  if (f.ghoztingon.Checked) GhostOn(p);
  Pause(p, 3);
  if (f.enterpr.Checked) EnterRoomRetry(p, f.Text4.Text.Get());
  if (f.enterjap.Checked) EnterJapanRoomRetry(p, f.Text4.Text.Get());
  Pause(p, 3);
  if (f.continueul.Checked) ContinueUploads(p);
  if (f.continuedl.Checked) ContinueDownloads(p);
  f.Reconnected = true;
  f.Timer4.SetEnabled(true);
}

void reconaol_Click(Program& prog) {
  ToggleTimerClick(prog, prog.form2.reconaol, prog.form2.Timer4, "dcp aol");
}

void enterpr_Click(Program& prog) {
  Form2& f = prog.form2;
  ExclusiveClick(prog, f.enterpr, "dcp pr", f.enterjap, "dcp jap");
}

void enterjap_Click(Program& prog) {
  Form2& f = prog.form2;
  ExclusiveClick(prog, f.enterjap, "dcp jap", f.enterpr, "dcp pr");
}

void continueul_Click(Program& prog) {
  Form2& f = prog.form2;
  ExclusiveClick(prog, f.continueul, "dcp ul", f.continuedl, "dcp dl");
}

void continuedl_Click(Program& prog) {
  Form2& f = prog.form2;
  ExclusiveClick(prog, f.continuedl, "dcp dl", f.continueul, "dcp ul");
}

void buildroom_Click(Program& prog) {
  ValueBoxClick(prog, "enter the room you would like to reconnect to",
                "dcp room", "idle", prog.form2.Text4);
}

}  // namespace v2
