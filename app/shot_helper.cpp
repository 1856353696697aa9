// shothelper.exe: puts the program's windows in front of the camera for
// tools/make-screenshots, from outside, as a member would: it finds windows,
// clicks the tray entry and a label, and types keys into an open popup.
// Every wait is bounded; on a timeout it says what it was waiting for and
// ends with status 1.
//
//   shothelper window TITLE        wait for the top-level window TITLE to be
//                                  shown on the screen and still; print its
//                                  rectangle "X Y WIDTH HEIGHT"
//   shothelper click TITLE LABEL   click the label LABEL of the window TITLE
//   shothelper popup X Y KEY...    the pointer to X,Y, a right click on the
//                                  tray entry, then the keys (down, up, left,
//                                  right, enter, esc) into the popup; print
//                                  the rectangle of every menu then open
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "platform/win32/win32_ui.h"

namespace {

constexpr DWORD kBoundMs = 20000;
constexpr DWORD kStepMs = 100;
constexpr DWORD kKeyGapMs = 400;

template <typename F>
bool WaitFor(F&& ready) {
  for (DWORD waited = 0; waited < kBoundMs; waited += kStepMs) {
    if (ready()) return true;
    Sleep(kStepMs);
  }
  return ready();
}

int Fail(const char* what) {
  std::fprintf(stderr, "shothelper: no %s in %lu s\n", what, kBoundMs / 1000);
  return 1;
}

void PrintRect(const RECT& r) {
  std::printf("%ld %ld %ld %ld\n", r.left, r.top, r.right - r.left,
              r.bottom - r.top);
}

BOOL CALLBACK AddMenu(HWND h, LPARAM l) {
  char cls[16] = {};
  GetClassNameA(h, cls, sizeof(cls));
  if (IsWindowVisible(h) && std::string(cls) == "#32768") {
    reinterpret_cast<std::vector<HWND>*>(l)->push_back(h);
  }
  return TRUE;
}

std::vector<HWND> OpenMenus() {
  std::vector<HWND> menus;
  EnumWindows(AddMenu, reinterpret_cast<LPARAM>(&menus));
  return menus;
}

int Window(const char* title) {
  HWND h = nullptr;
  RECT last{};
  int still = 0;
  // On the screen, and in the same place for a few looks (not sliding).
  bool ok = WaitFor([&] {
    h = FindWindowA(nullptr, title);
    RECT r{};
    if (!h || !IsWindowVisible(h) || !GetWindowRect(h, &r) ||
        r.left >= GetSystemMetrics(SM_CXSCREEN)) {
      still = 0;
      return false;
    }
    still = EqualRect(&r, &last) ? still + 1 : 0;
    last = r;
    return still >= 3;
  });
  if (!ok) return Fail(title);
  PrintRect(last);
  return 0;
}

int Click(const char* title, const char* label) {
  HWND form = nullptr, control = nullptr;
  if (!WaitFor([&] {
        form = FindWindowA(nullptr, title);
        control =
            form ? FindWindowExA(form, nullptr, "Static", label) : nullptr;
        return control != nullptr;
      })) {
    return Fail(label);
  }
  PostMessageA(form, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(control), STN_CLICKED),
               reinterpret_cast<LPARAM>(control));
  return 0;
}

int Popup(int x, int y, const std::vector<std::string>& keys) {
  HWND tray = nullptr;
  if (!WaitFor([&] {
        tray = FindWindowA(v2::win32::kTrayWindowClass, nullptr);
        return tray != nullptr;
      })) {
    return Fail("tray entry");
  }
  SetCursorPos(x, y);
  PostMessageA(tray, v2::win32::kTrayCallbackMessage, 1, WM_RBUTTONUP);
  if (!WaitFor([] { return !OpenMenus().empty(); })) return Fail("popup");
  std::size_t wanted = 1;
  for (const std::string& key : keys) {
    Sleep(kKeyGapMs);
    WPARAM vk = key == "down"    ? VK_DOWN
                : key == "up"    ? VK_UP
                : key == "left"  ? VK_LEFT
                : key == "right" ? VK_RIGHT
                : key == "enter" ? VK_RETURN
                                 : VK_ESCAPE;
    if (vk == VK_RIGHT) ++wanted;
    std::vector<HWND> menus = OpenMenus();
    if (menus.empty()) return Fail("popup");
    // The menu's own loop takes the keys of its thread, whichever of its
    // windows they are posted to.
    PostMessageA(menus.front(), WM_KEYDOWN, vk, 0);
    PostMessageA(menus.front(), WM_KEYUP, vk, 0);
  }
  std::vector<HWND> menus;
  if (!WaitFor([&] {
        menus = OpenMenus();
        return menus.size() >= wanted;
      })) {
    return Fail("submenu");
  }
  Sleep(kKeyGapMs);  // drawn
  RECT all{};
  for (HWND h : OpenMenus()) {
    RECT r{};
    GetWindowRect(h, &r);
    UnionRect(&all, &all, &r);
  }
  PrintRect(all);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string what = argc > 1 ? argv[1] : "";
  if (what == "window" && argc == 3) return Window(argv[2]);
  if (what == "click" && argc == 4) return Click(argv[2], argv[3]);
  if (what == "popup" && argc >= 4) {
    return Popup(std::atoi(argv[2]), std::atoi(argv[3]),
                 std::vector<std::string>(argv + 4, argv + argc));
  }
  std::fprintf(stderr,
               "usage: shothelper window TITLE | click TITLE LABEL | "
               "popup X Y KEY...\n");
  return 2;
}
