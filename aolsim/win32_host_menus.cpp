// The client's real menus, its top-level windows, and its clock and pointer,
// for aolhost.exe: a menu bar of the frame, popups tracked by the system's
// own menu loop, the simulated system's time, the pointer.
#include <windows.h>

#include <string>

#include "aolsim/win32_window_host.h"
#include "platform/win32/win32_handles.h"

namespace v2::aolsim {
using win32::FromHwnd;
using win32::ToHwnd;

std::vector<Hwnd> Win32WindowHost::TopLevel() {
  std::vector<Hwnd> out;
  const DWORD thread = GetCurrentThreadId();
  for (HWND h = GetWindow(GetDesktopWindow(), GW_CHILD); h;
       h = GetWindow(h, GW_HWNDNEXT)) {
    // The host's own windows, and the menus the system opens for it (not
    // the system's helpers of the thread, such as the IME's window).
    if (GetWindowThreadProcessId(h, nullptr) != thread) continue;
    char cls[16] = {};
    GetClassNameA(h, cls, sizeof(cls));
    if (Find(FromHwnd(h)) || std::string(cls) == "#32768") {
      out.push_back(FromHwnd(h));
    }
  }
  return out;
}

std::string Win32WindowHost::ClassName(Hwnd h) {
  char name[256] = {};
  GetClassNameA(ToHwnd(h), name, sizeof(name));
  return name;
}

void Win32WindowHost::Raise(Hwnd h) {
  if (!Find(h)) return;
  ++internal_;
  SetWindowPos(ToHwnd(h), HWND_TOP, 0, 0, 0, 0,
               SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  --internal_;
}

bool Win32WindowHost::Shown(Hwnd h) {
  return Find(h) &&
         (GetWindowLongA(ToHwnd(h), GWL_STYLE) & WS_VISIBLE) == WS_VISIBLE;
}

bool Win32WindowHost::Minimized(Hwnd h) {
  return Find(h) && IsIconic(ToHwnd(h));
}

std::int64_t Win32WindowHost::NowMs() {
  return static_cast<std::int64_t>(MonotonicMs());
}

void Win32WindowHost::SetClock(const LocalTime& start) {
  clock_set_ = true;
  clock_start_ = start;
  clock_set_at_ms_ = MonotonicMs();
}

LocalTime Win32WindowHost::LocalNow() {
  SYSTEMTIME t{};
  if (!clock_set_) {
    GetLocalTime(&t);
  } else {
    SYSTEMTIME start{};
    start.wYear = static_cast<WORD>(clock_start_.year);
    start.wMonth = static_cast<WORD>(clock_start_.month);
    start.wDay = static_cast<WORD>(clock_start_.day);
    start.wHour = static_cast<WORD>(clock_start_.hour);
    start.wMinute = static_cast<WORD>(clock_start_.minute);
    start.wSecond = static_cast<WORD>(clock_start_.second);
    FILETIME f{};
    SystemTimeToFileTime(&start, &f);
    ULARGE_INTEGER n;
    n.LowPart = f.dwLowDateTime;
    n.HighPart = f.dwHighDateTime;
    n.QuadPart += (MonotonicMs() - clock_set_at_ms_) * 10000;  // 100 ns
    f.dwLowDateTime = n.LowPart;
    f.dwHighDateTime = n.HighPart;
    FileTimeToSystemTime(&f, &t);
  }
  return {t.wYear,   t.wMonth,  t.wDay,         t.wHour,
          t.wMinute, t.wSecond, t.wMilliseconds};
}

Point Win32WindowHost::Pointer() {
  POINT p{};
  GetCursorPos(&p);
  return {static_cast<std::int32_t>(p.x), static_cast<std::int32_t>(p.y)};
}

void Win32WindowHost::MovePointer(int x, int y) { SetCursorPos(x, y); }

namespace {

// A real menu of the items; a submenu is a popup menu of its own.
HMENU BuildMenu(HMENU menu, const std::vector<MenuEntry>& items) {
  for (const MenuEntry& item : items) {
    if (item.IsSeparator()) {
      AppendMenuA(menu, MF_SEPARATOR, 0, nullptr);
    } else if (!item.items.empty()) {
      HMENU sub = BuildMenu(CreatePopupMenu(), item.items);
      AppendMenuA(menu, MF_POPUP | MF_STRING, reinterpret_cast<UINT_PTR>(sub),
                  item.text.c_str());
    } else {
      AppendMenuA(menu, MF_STRING, item.id, item.text.c_str());
    }
  }
  return menu;
}

}  // namespace

void Win32WindowHost::SetMenuBar(Hwnd window,
                                 const std::vector<MenuEntry>& menus) {
  if (!Find(window)) return;
  HWND hwnd = ToHwnd(window);
  HMENU old = GetMenu(hwnd);
  SetMenu(hwnd, BuildMenu(CreateMenu(), menus));
  if (old) DestroyMenu(old);
  DrawMenuBar(hwnd);
}

void Win32WindowHost::TrackPopup(Hwnd at, const std::vector<MenuEntry>& items,
                                 std::function<void(std::uint32_t)> chosen) {
  if (!Find(at)) return;
  HWND anchor = ToHwnd(at);
  RECT r{};
  GetWindowRect(anchor, &r);
  HMENU menu = BuildMenu(CreatePopupMenu(), items);
  // The system's own menu loop has the thread until the menu closes; keys
  // posted to the menu's window are taken by it.
  UINT id = TrackPopupMenu(menu,
                           TPM_RETURNCMD | TPM_NONOTIFY | TPM_LEFTALIGN |
                               TPM_TOPALIGN | TPM_LEFTBUTTON,
                           r.left, r.bottom, 0, GetAncestor(anchor, GA_ROOT),
                           nullptr);
  DestroyMenu(menu);
  if (id != 0 && chosen) chosen(id);
}

}  // namespace v2::aolsim
