#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

#include "platform/win32/win32_loop.h"
#include "platform/win32/win32_ui.h"
#include "platform/win32/win32_ui_parts.h"

// The input box: a window of its own class that keeps the program's loop
// running while it waits for the member.
namespace v2::win32 {
namespace {

constexpr const char* kOriginalProcProp = "vantrel2.original";

struct InputBoxState {
  HWND box = nullptr;
  HWND edit = nullptr;
  HWND cancel = nullptr;
  HWND focus = nullptr;  // the control to give the focus back to
  bool done = false;     // the window is gone
  bool answered = false;
  std::string answer;
};

InputBoxState* BoxStateOf(HWND box) {
  return reinterpret_cast<InputBoxState*>(
      GetWindowLongPtrA(box, GWLP_USERDATA));
}

void CloseBox(InputBoxState& s, bool ok) {
  if (s.done) return;
  if (ok) {
    s.answer = WindowText(s.edit).Read();
    s.answered = true;
  }
  DestroyWindow(s.box);
}

LRESULT CALLBACK InputBoxProc(HWND hwnd, UINT msg, WPARAM w, LPARAM l) {
  if (msg == WM_NCCREATE) {
    auto* create = reinterpret_cast<CREATESTRUCTA*>(l);
    SetWindowLongPtrA(hwnd, GWLP_USERDATA,
                      reinterpret_cast<LONG_PTR>(create->lpCreateParams));
  }
  InputBoxState* s = BoxStateOf(hwnd);
  if (!s) return DefWindowProcA(hwnd, msg, w, l);
  switch (msg) {
    case WM_COMMAND:
      if (HIWORD(w) == BN_CLICKED &&
          (LOWORD(w) == IDOK || LOWORD(w) == IDCANCEL)) {
        CloseBox(*s, LOWORD(w) == IDOK);
        return 0;
      }
      break;
    case WM_ACTIVATE:
      if (LOWORD(w) != WA_INACTIVE && s->focus && IsWindow(s->focus)) {
        SetFocus(s->focus);
        return 0;
      }
      break;
    case WM_CLOSE:
      CloseBox(*s, false);
      return 0;
    case WM_DESTROY:
      s->done = true;
      SetWindowLongPtrA(hwnd, GWLP_USERDATA, 0);
      break;
    default:
      break;
  }
  return DefWindowProcA(hwnd, msg, w, l);
}

// The box's edit and buttons: without a dialog manager, Enter, Esc and Tab
// are theirs to handle. Enter presses the button that has the focus, or OK.
LRESULT CALLBACK BoxFieldProc(HWND hwnd, UINT msg, WPARAM w, LPARAM l) {
  auto original = reinterpret_cast<WNDPROC>(GetPropA(hwnd, kOriginalProcProp));
  if (!original) return DefWindowProcA(hwnd, msg, w, l);
  HWND box = GetParent(hwnd);
  InputBoxState* s = box ? BoxStateOf(box) : nullptr;
  if (s) {
    switch (msg) {
      case WM_KEYDOWN:
        if (w == VK_RETURN || w == VK_ESCAPE) {
          // The window goes here; nothing of it may be touched after.
          CloseBox(*s, w == VK_RETURN && hwnd != s->cancel);
          return 0;
        }
        if (w == VK_TAB) {
          HWND next = GetNextDlgTabItem(box, hwnd, GetKeyState(VK_SHIFT) < 0);
          if (next) {
            SetFocus(next);
            if (next == s->edit) SendMessageA(next, EM_SETSEL, 0, -1);
          }
          return 0;
        }
        break;
      case WM_CHAR:
        if (w == '\r' || w == '\t' || w == 27) return 0;  // no beep
        break;
      case WM_SETFOCUS:
        s->focus = hwnd;
        break;
      default:
        break;
    }
  }
  if (msg == WM_NCDESTROY) {
    RemovePropA(hwnd, kOriginalProcProp);
    SetWindowLongPtrA(hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(original));
  }
  return CallWindowProcA(original, hwnd, msg, w, l);
}

HWND BoxChild(HWND box, DWORD ex_style, const char* cls, const char* text,
              DWORD style, int id, int left, int top, int width, int height) {
  HWND h =
      CreateWindowExA(ex_style, cls, text, WS_CHILD | WS_VISIBLE | style,
                      Px(left), Px(top, false), Px(width), Px(height, false),
                      box, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                      GetModuleHandleA(nullptr), nullptr);
  if (!h) return nullptr;
  SendMessageA(h, WM_SETFONT,
               reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)),
               FALSE);
  if (style & WS_TABSTOP) {
    SetPropA(h, kOriginalProcProp,
             reinterpret_cast<HANDLE>(SetWindowLongPtrA(
                 h, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&BoxFieldProc))));
  }
  return h;
}

// The program's windows that the member could work in while a box is up.
struct Disabled {
  HWND box;
  std::vector<HWND> windows;
};

BOOL CALLBACK DisableOne(HWND h, LPARAM l) {
  auto* d = reinterpret_cast<Disabled*>(l);
  if (h != d->box && IsWindowVisible(h) && IsWindowEnabled(h)) {
    d->windows.push_back(h);
  }
  return TRUE;
}

}  // namespace

void RegisterInputBoxClass(const WNDCLASSEXA& form_class) {
  WNDCLASSEXA box = form_class;
  box.lpfnWndProc = InputBoxProc;
  box.lpszClassName = kInputBoxClass;
  RegisterClassExA(&box);
}

std::string Win32Ui::InputBox(EventLoop& loop, const std::string& prompt,
                              const std::string& title,
                              const std::string& preset) {
  // The classic box: the prompt at the top left, OK and Cancel beside it,
  // the line to answer in across the bottom.
  const DWORD style = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
  const DWORD ex_style = WS_EX_DLGMODALFRAME | WS_EX_TOPMOST;
  RECT frame{0, 0, Px(372), Px(126, false)};
  AdjustWindowRectEx(&frame, style, FALSE, ex_style);
  const int width = frame.right - frame.left;
  const int height = frame.bottom - frame.top;
  InputBoxState s;
  s.box =
      CreateWindowExA(ex_style, kInputBoxClass, title.c_str(), style,
                      (GetSystemMetrics(SM_CXSCREEN) - width) / 2,
                      (GetSystemMetrics(SM_CYSCREEN) - height) / 2, width,
                      height, nullptr, nullptr, GetModuleHandleA(nullptr), &s);
  if (!s.box) return {};
  BoxChild(s.box, 0, "STATIC", prompt.c_str(), SS_LEFT | SS_NOPREFIX, 100, 10,
           10, 270, 76);
  HWND ok = BoxChild(s.box, 0, "BUTTON", "OK", BS_DEFPUSHBUTTON | WS_TABSTOP,
                     IDOK, 290, 10, 72, 24);
  s.cancel = BoxChild(s.box, 0, "BUTTON", "Cancel", BS_PUSHBUTTON | WS_TABSTOP,
                      IDCANCEL, 290, 40, 72, 24);
  s.edit = BoxChild(s.box, WS_EX_CLIENTEDGE, "EDIT", preset.c_str(),
                    ES_AUTOHSCROLL | WS_TABSTOP, 101, 10, 94, 352, 22);
  if (!ok || !s.cancel || !s.edit) {
    DestroyWindow(s.box);
    return {};
  }

  Disabled others{s.box, {}};
  EnumThreadWindows(GetCurrentThreadId(), DisableOne,
                    reinterpret_cast<LPARAM>(&others));
  for (HWND h : others.windows) EnableWindow(h, FALSE);

  ShowWindow(s.box, SW_SHOWNORMAL);
  SetForegroundWindow(s.box);
  SetFocus(s.edit);
  SendMessageA(s.edit, EM_SETSEL, 0, -1);

  // Waits for the member, as long as it takes, with the program's events
  // going on. Once the thread has been told to quit nobody can answer.
  auto* real = dynamic_cast<Win32Loop*>(&loop);
  while (!s.done && !(real && real->quitting())) {
    loop.PumpEvents();
    if (s.done) break;
    // The box goes by a message, which ends the wait as a due timer does.
    loop.WaitUntil(kNeverMs);
  }
  if (!s.done) DestroyWindow(s.box);

  for (HWND h : others.windows) {
    if (IsWindow(h)) EnableWindow(h, TRUE);
  }
  return s.answered ? s.answer : std::string();
}

}  // namespace v2::win32
