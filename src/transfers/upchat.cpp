#include "transfers/upchat.h"

#include "core/menu_items.h"
#include "core/program.h"
#include "core/styled_line.h"
#include "host/host_windows.h"
#include "transfers/transfer_monitors.h"

namespace v2 {

void UpChat(Platform& p) {
  Hwnd modal = p.windows.FindWindowA("_AOL_MODAL", nullptr);
  p.windows.ShowWindow(modal, kSwHide);
  p.windows.ShowWindow(modal, kSwMinimize);
}

void UnUpChat(Platform& p) {
  Hwnd modal = p.windows.FindWindowA("_AOL_MODAL", nullptr);
  if (modal == 0) return;
  p.windows.ShowWindow(modal, kSwHide);
  p.windows.ShowWindow(modal, kSwRestore);
}

void Form2_Timer2_Timer(Program& prog) {
  Platform& p = prog.platform;
  Form2& f = prog.form2;
  const WindowWatch::Mark mark = prog.watch.Now();
  switch (LookForUpload(p)) {
    case ModalLook::kNone:
      f.UpChatAnnounced = false;
      // No box of the kind at all: only a new window can change that.
      prog.watch.SleepUntilMade(f.Timer2, mark);
      return;
    case ModalLook::kOther:
      break;
    case ModalLook::kUpload:
      if (f.UpChatAnnounced) break;
      UpChat(p);
      // This timer does not tick again before the line is out (its handler
      // is still running), so the flag can wait for it.
      ChatSend(p, StyledLine(prog.form4, Pair::kMain,
                             std::string(kBanner) + " : auto upchat"));
      f.UpChatAnnounced = true;
      break;
  }
  prog.watch.SleepUnlessChanged(f.Timer2, mark);
}

void autoup_Click(Program& prog) {
  ToggleTimerClick(prog, prog.form2.autoup, prog.form2.Timer2, "autoup");
}

}  // namespace v2
