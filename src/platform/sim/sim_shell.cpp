#include "platform/sim/sim_shell.h"

namespace v2::sim {

std::intptr_t SimShell::ShellExecuteA(Hwnd, const char* verb, const char* file,
                                      const char*, const char*, int) {
  if (on_event) {
    on_event(std::string("[shell] ") + (verb ? verb : "") + " " +
             (file ? file : ""));
  }
  return 42;  // taken, as the system says for a request it carries out
}

}  // namespace v2::sim
