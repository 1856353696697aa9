// vantrel2.exe: the program on Windows. It has no main window; a hidden
// window of its own class stands for it, so that it can be found and asked to
// close.
#include <windows.h>

#include "core/program.h"
#include "platform/platform.h"
#include "platform/win32/win32_loop.h"
#include "platform/win32/win32_media.h"
#include "platform/win32/win32_shell.h"
#include "platform/win32/win32_stores.h"
#include "platform/win32/win32_ui.h"
#include "platform/win32/win32_windows.h"

namespace {

constexpr const char* kWindowClass = "vantrel2";

LRESULT CALLBACK HiddenProc(HWND hwnd, UINT msg, WPARAM w, LPARAM l) {
  switch (msg) {
    case WM_CLOSE:
      DestroyWindow(hwnd);
      return 0;
    case WM_DESTROY:
      PostQuitMessage(0);
      return 0;
    default:
      return DefWindowProcA(hwnd, msg, w, l);
  }
}

}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int) {
  v2::win32::Win32Windows windows;
  v2::win32::Win32Loop loop;
  v2::win32::Win32UserStore user_store;
  v2::win32::Win32ProfileService profile;
  v2::win32::Win32FileSystem files;
  v2::win32::Win32Ui ui;
  v2::win32::Win32Shell shell;
  v2::win32::Win32Media media(loop.clock());
  v2::Platform platform{windows, loop, &user_store, &profile,
                        &files,  &ui,  &shell,      &media};
  v2::Program program(platform);
  program.Start();

  WNDCLASSEXA wc{};
  wc.cbSize = sizeof(wc);
  wc.lpfnWndProc = HiddenProc;
  wc.hInstance = instance;
  wc.lpszClassName = kWindowClass;
  RegisterClassExA(&wc);
  // Created after the start, so that whoever waits for it finds the program
  // already scanning.
  CreateWindowExA(0, kWindowClass, "vantrel2", WS_POPUP, 0, 0, 0, 0, nullptr,
                  nullptr, instance, nullptr);
  return loop.Run();
}
