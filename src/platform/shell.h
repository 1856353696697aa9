#pragma once
// The system's shell: opening a document, a program or a web address the way
// the member's double click would.
#include <cstdint>

#include "platform/types.h"

namespace v2 {

class ShellService {
 public:
  virtual ~ShellService() = default;
  // Carries out verb ("Open") on file with the program the system has for
  // it, in directory; show is how the new window shows (kSwShowNormal).
  // Greater than 32 when the system took the request. Returns at once: it
  // does not wait for what it started.
  virtual std::intptr_t ShellExecuteA(Hwnd owner, const char* verb,
                                      const char* file, const char* parameters,
                                      const char* directory, int show) = 0;
};

// A platform with no shell opens nothing.
class NoShell : public ShellService {
 public:
  std::intptr_t ShellExecuteA(Hwnd, const char*, const char*, const char*,
                              const char*, int) override {
    return 0;
  }
  static NoShell& Instance() {
    static NoShell none;
    return none;
  }
};

}  // namespace v2
