#pragma once
// The shell in the simulator: nothing is started; each request is reported
// as "[shell] VERB TARGET", so that scenarios can see it.
#include <functional>
#include <string>

#include "platform/shell.h"

namespace v2::sim {

class SimShell : public ShellService {
 public:
  std::intptr_t ShellExecuteA(Hwnd owner, const char* verb, const char* file,
                              const char* parameters, const char* directory,
                              int show) override;
  std::function<void(const std::string&)> on_event;
};

}  // namespace v2::sim
