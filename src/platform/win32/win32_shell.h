#pragma once
// The shell on Windows: shell32's ShellExecuteA.
#include "platform/shell.h"

namespace v2::win32 {

class Win32Shell : public ShellService {
 public:
  std::intptr_t ShellExecuteA(Hwnd owner, const char* verb, const char* file,
                              const char* parameters, const char* directory,
                              int show) override;
};

}  // namespace v2::win32
