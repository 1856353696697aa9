#pragma once
// What the Windows backend's tests ask of the real windows the program
// made: the system's window behind a handle of the program's, and its text.
#include <windows.h>

#include <string>

#include "platform/win32/win32_handles.h"

namespace v2::real {

using win32::ToHwnd;

inline std::string WindowText(HWND h) {
  char text[256] = {};
  GetWindowTextA(h, text, sizeof(text));
  return text;
}

}  // namespace v2::real
