#include "platform/win32/win32_windows.h"

#include <windows.h>

namespace v2::win32 {
namespace {

// Window handles are 32 bits wide on every Windows, 64-bit included.
HWND ToHwnd(Hwnd h) { return reinterpret_cast<HWND>(static_cast<UINT_PTR>(h)); }
Hwnd FromHwnd(HWND h) {
  return static_cast<Hwnd>(reinterpret_cast<UINT_PTR>(h));
}

}  // namespace

Hwnd Win32Windows::FindWindowA(const char* cls, const char* title) {
  return FromHwnd(::FindWindowA(cls, title));
}

Hwnd Win32Windows::FindWindowExA(Hwnd parent, Hwnd after, const char* cls,
                                 const char* title) {
  return FromHwnd(::FindWindowExA(ToHwnd(parent), ToHwnd(after), cls, title));
}

LResult Win32Windows::SendMessageA(Hwnd h, std::uint32_t msg, WParam w,
                                   LParam l) {
  if (h == 0) return 0;
  DWORD_PTR result = 0;
  if (!::SendMessageTimeoutA(ToHwnd(h), msg, w, l, SMTO_ABORTIFHUNG,
                             kSendBoundMs, &result)) {
    return 0;
  }
  return static_cast<LResult>(result);
}

bool Win32Windows::PostMessageA(Hwnd h, std::uint32_t msg, WParam w, LParam l) {
  if (h == 0) return false;
  return ::PostMessageA(ToHwnd(h), msg, w, l) != 0;
}

int Win32Windows::GetWindowTextA(Hwnd h, char* buffer, int max_count) {
  if (h == 0) return 0;
  return ::GetWindowTextA(ToHwnd(h), buffer, max_count);
}

int Win32Windows::GetWindowTextLengthA(Hwnd h) {
  if (h == 0) return 0;
  return ::GetWindowTextLengthA(ToHwnd(h));
}

bool Win32Windows::IsWindowVisible(Hwnd h) {
  return h != 0 && ::IsWindowVisible(ToHwnd(h));
}

bool Win32Windows::ShowWindow(Hwnd h, int cmd) {
  return h != 0 && ::ShowWindow(ToHwnd(h), cmd);
}

bool Win32Windows::IsWindow(Hwnd h) { return h != 0 && ::IsWindow(ToHwnd(h)); }

}  // namespace v2::win32
