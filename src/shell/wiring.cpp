// The start's wiring: the Program's forms bound to every handler of the
// program, and its start. The one place that knows them all.
#include "answering/answering_machine.h"
#include "config/menu_tree.h"
#include "config/style_window.h"
#include "core/program.h"
#include "idle/idle_tick.h"
#include "interpreter/chat_event.h"
#include "player/play_modes.h"
#include "reconnect/disconnect_watch.h"
#include "shell/start.h"
#include "transfers/upchat.h"

namespace v2 {

Program::Program(Platform& platform_in)
    : platform(platform_in),
      form1(platform_in),
      form2(platform_in.loop),
      watch(platform_in) {
  // The items as the window defines them, before the stores are read.
  BuildMenuTree(*this);
  form1.Chat1.OnChatMsg(
      [this](const std::string& name, const std::string& said) {
        Chat1_ChatMsg(*this, name, said);
      });
  form1.Chat2.OnChatMsg(
      [this](const std::string& name, const std::string& said) {
        Chat2_ChatMsg(*this, name, said);
      });
  form1.Timer1.OnTimer([this] { Timer1_Timer(*this); });
  form1.Timer2.OnTimer([this] { Timer2_Timer(*this); });
  form2.Timer2.OnTimer([this] { Form2_Timer2_Timer(*this); });
  form2.Timer4.OnTimer([this] { Timer4_Timer(*this); });
  form2.Timer5.OnTimer([this] { Timer5_Timer(*this); });
  form2.Timer6.OnTimer([this] { Timer6_Timer(*this); });
  // What the control reads can change with a call: the end-of-track test
  // looks again.
  platform.media().OnChange([this] { form1.Timer2.Wake(); });
  form4.OnFirstTouch = [this] { EnsureForm4(*this); };
  AddControls();
}

void Program::Start() {
  // The end-of-track test runs from the load on.
  form1.Timer2.SetEnabled(true);
  Form1_Load(*this);
}

}  // namespace v2
