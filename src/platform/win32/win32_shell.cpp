#include "platform/win32/win32_shell.h"

#include <windows.h>
// After windows.h, which it needs.
#include <shellapi.h>

namespace v2::win32 {

std::intptr_t Win32Shell::ShellExecuteA(Hwnd owner, const char* verb,
                                        const char* file,
                                        const char* parameters,
                                        const char* directory, int show) {
  HWND hwnd = reinterpret_cast<HWND>(
      static_cast<INT_PTR>(static_cast<std::int32_t>(owner)));
  HINSTANCE r = ::ShellExecuteA(hwnd, verb, file, parameters, directory, show);
  return reinterpret_cast<std::intptr_t>(r);
}

}  // namespace v2::win32
