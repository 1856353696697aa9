// The Windows backend against real windows, run under Windows or Wine.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/host_windows.h"
#include "platform/controls.h"
#include "platform/platform.h"
#include "platform/win32/win32_loop.h"
#include "platform/win32/win32_windows.h"

namespace v2 {
namespace {

Hwnd H(HWND h) { return static_cast<Hwnd>(reinterpret_cast<UINT_PTR>(h)); }

HWND MakeWindow(const char* cls, const char* title, HWND parent = nullptr) {
  static bool registered = false;
  if (!registered) {
    WNDCLASSEXA wc{};
    wc.cbSize = sizeof(wc);
    wc.lpfnWndProc = DefWindowProcA;
    wc.hInstance = GetModuleHandleA(nullptr);
    wc.lpszClassName = "V2 Test Window";
    RegisterClassExA(&wc);
    registered = true;
  }
  return CreateWindowExA(0, cls, title, parent ? WS_CHILD : WS_POPUP, 0, 0, 100,
                         100, parent, nullptr, GetModuleHandleA(nullptr),
                         nullptr);
}

TEST(Win32Windows, LookupsTextMenusAndStacking) {
  win32::Win32Windows w;
  win32::Win32Loop loop;
  Platform p{w, loop};
  HWND frame = MakeWindow("V2 Test Window", "V2 Frame");
  HWND a = MakeWindow("Static", "first", frame);
  HWND b = MakeWindow("Static", "second", frame);
  ASSERT_TRUE(frame && a && b);

  // Class names compare without case; children in creation order.
  EXPECT_EQ(w.FindWindowA("v2 test window", "V2 Frame"), H(frame));
  EXPECT_EQ(w.FindWindowExA(H(frame), 0, "STATIC", nullptr), H(a));
  EXPECT_EQ(w.FindWindowExA(H(frame), H(a), "Static", nullptr), H(b));
  EXPECT_EQ(w.FindWindowExA(H(frame), H(b), "Static", nullptr), 0u);
  EXPECT_EQ(GetText(p, H(b)), "second");
  w.SendMessageA(H(b), kWmSetText, 0, reinterpret_cast<LParam>("changed"));
  char title[32];
  EXPECT_EQ(w.GetWindowTextA(H(b), title, sizeof(title)), 7);
  EXPECT_STREQ(title, "changed");
  EXPECT_EQ(w.SendMessageA(0, kWmGetTextLength, 0, 0), 0);
  // A text cannot be posted: it travels by pointer.
  EXPECT_FALSE(
      w.PostMessageA(H(b), kWmSetText, 0, reinterpret_cast<LParam>("posted")));

  // The stacking order is the lookup order.
  EXPECT_TRUE(w.SetWindowPos(H(a), 1, 0, 0, 0, 0, kSwpNoMove | kSwpNoSize));
  EXPECT_EQ(w.FindWindowExA(H(frame), 0, "Static", nullptr), H(b));
  EXPECT_TRUE(w.SetWindowPos(H(frame), kHwndTopmost, 0, 0, 0, 0,
                             kSwpNoMove | kSwpNoSize));
  EXPECT_TRUE(GetWindowLongA(frame, GWL_EXSTYLE) & WS_EX_TOPMOST);

  HMENU bar = CreateMenu(), file = CreatePopupMenu();
  AppendMenuA(file, MF_STRING, 0x101, "&Open");
  AppendMenuA(file, MF_STRING, 0x301, "&Sign Off");
  AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(file), "&File");
  HWND top = CreateWindowExA(0, "V2 Test Window", "V2 Menu",
                             WS_OVERLAPPEDWINDOW, 0, 0, 200, 200, nullptr, bar,
                             GetModuleHandleA(nullptr), nullptr);
  Hmenu m = w.GetMenu(H(top));
  ASSERT_NE(m, 0u);
  EXPECT_EQ(w.GetMenuItemCount(m), 1);
  Hmenu sub = w.GetSubMenu(m, 0);
  EXPECT_EQ(w.GetMenuItemCount(sub), 2);
  EXPECT_EQ(w.GetMenuItemID(sub, 1), 0x301u);
  EXPECT_EQ(w.GetMenuItemID(m, 0), 0xFFFFFFFFu);
  char item[100];
  EXPECT_EQ(w.GetMenuStringA(sub, 0x301, item, 100, 1), 9);
  EXPECT_STREQ(item, "&Sign Off");
  EXPECT_EQ(w.GetMenuItemCount(0), -1);

  // Far past the screen, the pointer stops in its corner.
  EXPECT_TRUE(w.SetCursorPos(1000000, 1000000));
  Point at;
  EXPECT_TRUE(w.GetCursorPos(at));
  EXPECT_EQ(at.x, GetSystemMetrics(SM_CXSCREEN) - 1);
  EXPECT_EQ(at.y, GetSystemMetrics(SM_CYSCREEN) - 1);

  DestroyWindow(top);
  DestroyWindow(frame);
  EXPECT_FALSE(w.IsWindow(H(a)));
}

TEST(Win32Loop, TimersPostedEventsAndPause) {
  win32::Win32Windows w;
  win32::Win32Loop loop;
  Platform p{w, loop};
  Timer timer(loop, 50);
  int ticks = 0, depth = 0, deepest = 0;
  timer.OnTimer([&] {
    ++ticks;
    deepest = std::max(deepest, ++depth);
    Pause(p, 0.12);  // longer than its interval: it must not start again
    --depth;
  });
  int ran = 0;
  loop.Post([&] { ++ran; });
  Pause(p, 0);
  Pause(p, -1);
  EXPECT_EQ(ran, 0);  // no time, no pump
  timer.SetEnabled(true);
  std::int64_t start = loop.clock().NowMs();
  Pause(p, 0.6);
  EXPECT_GE(loop.clock().NowMs() - start, 600);
  timer.SetEnabled(false);
  EXPECT_EQ(ran, 1);
  EXPECT_EQ(deepest, 1);
  EXPECT_GE(ticks, 2);

  // Messages of the thread's queue are handled by a pump; the pump of an
  // open popup menu leaves keys and clicks to the menu.
  HWND h = MakeWindow("V2 Test Window", "V2 Queue");
  HWND menu = MakeWindow("V2 Test Window", "V2 Menu");
  PostMessageA(menu, WM_KEYDOWN, VK_DOWN, 0);
  PostMessageA(menu, WM_LBUTTONDOWN, 0, 0);
  loop.Post([&] { ++ran; });
  PostMessageA(h, WM_CLOSE, 0, 0);
  loop.PumpEventsLeavingInput();
  EXPECT_EQ(ran, 2);
  EXPECT_FALSE(IsWindow(h));  // closed all the same
  MSG left;
  EXPECT_TRUE(PeekMessageA(&left, menu, WM_KEYDOWN, WM_KEYDOWN, PM_NOREMOVE));
  EXPECT_TRUE(
      PeekMessageA(&left, menu, WM_LBUTTONDOWN, WM_LBUTTONDOWN, PM_NOREMOVE));
  PumpEvents(p);
  EXPECT_FALSE(PeekMessageA(&left, menu, 0, 0, PM_NOREMOVE));
  DestroyWindow(menu);

  LocalTime now = loop.clock().LocalNow();
  SYSTEMTIME st;
  GetLocalTime(&st);
  EXPECT_EQ(now.year, st.wYear);
  char date[80];
  GetDateFormatA(LOCALE_USER_DEFAULT, DATE_SHORTDATE, nullptr, nullptr, date,
                 sizeof(date));
  EXPECT_EQ(loop.clock().ShortDate(), date);
}

// A client whose thread stops answering: the program's sends give up.
DWORD WINAPI HungClient(LPVOID out) {
  HWND h = MakeWindow("V2 Test Window", "V2 Hung");
  *static_cast<HWND*>(out) = h;
  Sleep(6500);  // never looks at its queue, longer than the bound
  DestroyWindow(h);
  return 0;
}

TEST(Win32Windows, ASendToAHungClientComesBack) {
  win32::Win32Windows w;
  HWND hung = nullptr;
  HANDLE thread = CreateThread(nullptr, 0, HungClient, &hung, 0, nullptr);
  for (int i = 0; i < 200 && !hung; ++i) Sleep(10);
  ASSERT_NE(hung, nullptr);
  EXPECT_EQ(w.SendMessageA(H(hung), kWmGetTextLength, 0, 0), 0);
  EXPECT_EQ(WaitForSingleObject(thread, 0), WAIT_TIMEOUT);  // still hung
  WaitForSingleObject(thread, INFINITE);
  CloseHandle(thread);
}

DWORD WINAPI MakeOneWindow(void* made) {
  Sleep(100);
  HWND h = MakeWindow("V2 Test Window", "made elsewhere");
  *static_cast<HWND*>(made) = h;
  MSG msg;
  while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&msg);
  Sleep(200);
  DestroyWindow(h);
  return 0;
}

TEST(Win32Windows, AWindowMadeByAnotherThreadIsTold) {
  win32::Win32Windows w;
  win32::Win32Loop loop;
  int told = 0;  // the times it was told with that window there
  ASSERT_TRUE(w.WatchCreations([&] {
    if (::FindWindowA("V2 Test Window", "made elsewhere")) ++told;
  }));
  HWND made = nullptr;
  HANDLE thread = CreateThread(nullptr, 0, MakeOneWindow, &made, 0, nullptr);
  // Told on this thread while it takes its messages.
  const DWORD start = GetTickCount();
  while (told == 0 && GetTickCount() - start < 5000) {
    loop.PumpEvents();
    loop.WaitUntil(loop.clock().NowMs() + 50);
  }
  EXPECT_GE(told, 1);
  WaitForSingleObject(thread, INFINITE);
  EXPECT_NE(made, nullptr);
  CloseHandle(thread);
  // One hook to a process: a second watcher of another instance is refused.
  win32::Win32Windows other;
  EXPECT_FALSE(other.WatchCreations([] {}));
}

}  // namespace
}  // namespace v2
