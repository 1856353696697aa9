#include "platform/win32/win32_windows.h"

#include <windows.h>

#include <cstdint>

#include "platform/win32/win32_handles.h"
#include "platform/win32/win32_shaped.h"

namespace v2::win32 {
namespace {

// The one instance whose hook is set: the system's callback carries no
// pointer of ours.
Win32Windows* hooked = nullptr;

void CALLBACK OnWinEvent(HWINEVENTHOOK, DWORD, HWND, LONG object, LONG, DWORD,
                         DWORD) {
  if (object != OBJID_WINDOW || !hooked) return;
  hooked->TellMade();
}

}  // namespace

Win32Windows::~Win32Windows() {
  if (hook_) UnhookWinEvent(static_cast<HWINEVENTHOOK>(hook_));
  if (hooked == this) hooked = nullptr;
}

bool Win32Windows::WatchCreations(std::function<void()> made) {
  if (!hook_) {
    if (hooked) return false;  // another instance has the hook
    // The program's own windows (all of its one thread's) are never what
    // it waits for, and would only wake it.
    hook_ = SetWinEventHook(EVENT_OBJECT_CREATE, EVENT_OBJECT_CREATE, nullptr,
                            OnWinEvent, 0, 0,
                            WINEVENT_OUTOFCONTEXT | WINEVENT_SKIPOWNTHREAD);
    if (!hook_) return false;
    hooked = this;
  }
  made_.push_back(std::move(made));
  return true;
}

void Win32Windows::TellMade() {
  for (std::size_t i = 0; i < made_.size(); ++i) made_[i]();
}

Hwnd Win32Windows::FindWindowA(const char* cls, const char* title) {
  return FromHwnd(::FindWindowA(cls, title));
}

Hwnd Win32Windows::FindWindowExA(Hwnd parent, Hwnd after, const char* cls,
                                 const char* title) {
  return FromHwnd(::FindWindowExA(ToHwnd(parent), ToHwnd(after), cls, title));
}

std::optional<LResult> Win32Windows::SendMessageTimeoutA(Hwnd h,
                                                         std::uint32_t msg,
                                                         WParam w, LParam l) {
  if (h == 0) return 0;
  DWORD_PTR result = 0;
  if (!::SendMessageTimeoutA(ToHwnd(h), msg, w, l, SMTO_ABORTIFHUNG,
                             kSendBoundMs, &result)) {
    // A window that is there and did not answer is hung; one that is gone
    // (or went while it was asked) answers nothing, as for a 0 handle.
    if (::IsWindow(ToHwnd(h))) return std::nullopt;
    return 0;
  }
  return static_cast<LResult>(result);
}

std::optional<LResult> Win32Windows::TextLengthW(Hwnd h) {
  if (h == 0) return 0;
  DWORD_PTR result = 0;
  if (!::SendMessageTimeoutW(ToHwnd(h), WM_GETTEXTLENGTH, 0, 0,
                             SMTO_ABORTIFHUNG, kSendBoundMs, &result)) {
    if (::IsWindow(ToHwnd(h))) return std::nullopt;
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

bool Win32Windows::SetWindowPos(Hwnd h, Hwnd after, int x, int y, int cx,
                                int cy, std::uint32_t flags) {
  return h != 0 &&
         ::SetWindowPos(ToHwnd(h), ToHwnd(after), x, y, cx, cy, flags) != 0;
}

Hmenu Win32Windows::GetMenu(Hwnd h) {
  return h == 0 ? 0 : FromHmenu(::GetMenu(ToHwnd(h)));
}

int Win32Windows::GetMenuItemCount(Hmenu menu) {
  return ::GetMenuItemCount(ToHmenu(menu));
}

Hmenu Win32Windows::GetSubMenu(Hmenu menu, int pos) {
  return FromHmenu(::GetSubMenu(ToHmenu(menu), pos));
}

std::uint32_t Win32Windows::GetMenuItemID(Hmenu menu, int pos) {
  return ::GetMenuItemID(ToHmenu(menu), pos);
}

int Win32Windows::GetMenuStringA(Hmenu menu, std::uint32_t item, char* buffer,
                                 int max_count, std::uint32_t flags) {
  return ::GetMenuStringA(ToHmenu(menu), item, buffer, max_count, flags);
}

Screen Win32Windows::GetScreen() { return ScreenMetrics(); }

bool Win32Windows::GetCursorPos(Point& at) {
  POINT p{};
  if (!::GetCursorPos(&p)) return false;
  at = {static_cast<std::int32_t>(p.x), static_cast<std::int32_t>(p.y)};
  return true;
}

bool Win32Windows::SetCursorPos(int x, int y) {
  return ::SetCursorPos(x, y) != 0;
}

bool Win32Windows::ReleaseCapture() { return ::ReleaseCapture() != 0; }

}  // namespace v2::win32
