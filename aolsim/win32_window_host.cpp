#include "aolsim/win32_window_host.h"

#include <windows.h>

#include <algorithm>
#include <set>
#include <vector>

#include "platform/win32/win32_handles.h"

namespace v2::aolsim {

struct Win32WindowHost::Window {
  std::string cls;
  std::string text;
  Handler handler;
  WNDPROC original = nullptr;  // set for the system's own classes
  bool caption = true;         // text shown as the window's title
  int children = 0;            // layout of the children
  int next_y = 8;
  int icons = 0;
  int icon_row_y = -1;
};

// The window procedure reaches the host through this.
struct HostAccess {
  static Win32WindowHost* host;
  static LRESULT CALLBACK Proc(HWND hwnd, UINT msg, WPARAM w, LPARAM l);
  static void CALLBACK TimerProc(HWND, UINT, UINT_PTR id, DWORD);
};
Win32WindowHost* HostAccess::host = nullptr;

namespace {

using win32::FromHwnd;
using win32::ToHwnd;

// Classes the system already has; the client's own are registered here.
bool SystemClass(const std::string& cls) {
  static const std::set<std::string> kSystem = {"Button", "Static", "#32770"};
  return kSystem.count(cls) != 0;
}

// Text controls keep their text to themselves, as an edit control does; the
// rest show it as their title, where GetWindowText finds it.
bool TextControlClass(const std::string& cls) {
  return cls == "RICHCNTL" || cls == "Edit";
}

bool ActingMessage(UINT msg) {
  switch (msg) {
    case WM_SETTEXT:
    case WM_CHAR:
    case WM_KEYDOWN:
    case WM_KEYUP:
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_CLOSE:
    case WM_COMMAND:
    case BM_SETCHECK:
      return true;
    default:
      return false;
  }
}

// EM_GETTEXTRANGE is WM_USER + 75.
bool ReadingMessage(UINT msg) {
  return msg == WM_GETTEXT || msg == WM_GETTEXTLENGTH || msg == WM_USER + 75;
}

void RegisterOnce(const std::string& cls) {
  static std::set<std::string> done;
  if (!done.insert(cls).second) return;
  WNDCLASSEXA wc{};
  wc.cbSize = sizeof(wc);
  wc.lpfnWndProc = HostAccess::Proc;
  wc.hInstance = GetModuleHandleA(nullptr);
  wc.hCursor = LoadCursor(nullptr, IDC_ARROW);
  wc.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(
      TextControlClass(cls) ? COLOR_WINDOW + 1 : COLOR_BTNFACE + 1));
  wc.lpszClassName = cls.c_str();
  RegisterClassExA(&wc);
}

struct Placement {
  DWORD style;
  int x, y, w, h;
  DWORD ex_style = 0;
};

// Where a new window goes, so that a person watching sees the client's
// layout: its windows tile the MDI area (the first made stays on top), a
// window's controls stack inside it.
Placement Place(HWND parent, Win32WindowHost::Window* p,
                const std::string& cls) {
  if (!parent) {
    if (cls == "#32770") {
      return {WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_VISIBLE, 320, 260, 340,
              150};
    }
    if (cls == "_AOL_Modal") {  // the upload's status, the time online
      return {WS_POPUP | WS_CAPTION | WS_VISIBLE, 280, 220, 400, 120};
    }
    if (cls == "_Oscar_BuddyListWin") {  // the other messenger, at the side
      return {WS_OVERLAPPEDWINDOW | WS_VISIBLE, 780, 20, 230, 420};
    }
    if (cls == "Shell_TrayWnd") {  // the task bar along the bottom
      const int w = GetSystemMetrics(SM_CXSCREEN);
      const int h = GetSystemMetrics(SM_CYSCREEN);
      return {WS_POPUP | WS_VISIBLE, 0, h - 30, w, 30, WS_EX_TOPMOST};
    }
    return {WS_OVERLAPPEDWINDOW | WS_VISIBLE, 20, 20, 900, 700};
  }
  RECT r{};
  GetClientRect(parent, &r);
  const int width = std::max<int>(r.right - 16, 60);
  DWORD child = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS;
  int n = p ? p->children++ : 0;
  constexpr int kBar = 32;  // the toolbar's height
  if (cls == "AOL Toolbar") return {child, 0, 0, r.right, kBar};
  if (cls == "_AOL_Toolbar") return {child, 0, 0, r.right, r.bottom};
  // The toolbar: its icons from the left, the keyword line behind them.
  // Their popups open below them, clear of the middle of the screen where
  // a pointer rests when nobody moved it.
  if (cls == "_AOL_Combobox") return {child, 540, 4, 250, 24};
  if (cls == "Edit") return {child, 0, 0, r.right, r.bottom};
  if (cls == "MDIClient") return {child, 0, kBar, r.right, r.bottom - kBar};
  if (cls == "AOL Child") {
    return {child | WS_CAPTION | WS_THICKFRAME | WS_CLIPCHILDREN,
            8 + (n % 2) * 432, 8 + (n / 2 % 2) * 316, 424, 308};
  }
  if (cls == "TrayNotifyWnd") return {child, r.right - 110, 2, 106, 26};
  if (cls == "TrayClockWClass") return {child, 0, 0, r.right, r.bottom};
  if (!p) return {child, 0, 0, 100, 24};
  if (p->cls == "_AOL_Toolbar") {
    if (cls == "_AOL_Glyph") return {child, r.right - 40, 2, 36, 28};
    if (cls == "_AOL_Icon") return {child, 8 + 40 * p->icons++, 3, 36, 26};
  }
  if (cls == "_AOL_Icon" || cls == "Button") {
    if (p->icon_row_y < 0) {
      p->icon_row_y = p->next_y;
      p->next_y += 32;
    }
    int i = p->icons++;
    return {child, 8 + 62 * i, p->icon_row_y, 56, 26};
  }
  int h = 24;
  if (cls == "RICHCNTL") h = p->next_y <= 8 ? 150 : 26;
  if (cls == "_AOL_Listbox") h = 40;
  if (cls == "_AOL_Tree") h = 120;
  Placement out{child, 8, p->next_y, width, h};
  p->next_y += h + 6;
  return out;
}

// The last lines of a transcript that fit, drawn as the member reads them.
void PaintText(HWND hwnd, const std::string& text, bool lines) {
  PAINTSTRUCT ps;
  HDC dc = BeginPaint(hwnd, &ps);
  RECT r{};
  GetClientRect(hwnd, &r);
  SetBkMode(dc, TRANSPARENT);
  HGDIOBJ old = SelectObject(dc, GetStockObject(DEFAULT_GUI_FONT));
  std::string shown = text;
  if (lines) {
    std::vector<std::string> all;
    std::size_t pos = 0;
    while (pos <= text.size()) {
      auto next = text.find('\r', pos);
      std::string line = text.substr(
          pos, next == std::string::npos ? std::string::npos : next - pos);
      if (!line.empty()) all.push_back(line);
      if (next == std::string::npos) break;
      pos = next + 1;
    }
    std::size_t fit =
        static_cast<std::size_t>(std::max<LONG>(r.bottom / 15, 1));
    shown.clear();
    for (std::size_t i = all.size() > fit ? all.size() - fit : 0;
         i < all.size(); ++i) {
      shown += all[i] + "\r\n";
    }
  }
  InflateRect(&r, -3, -2);
  DrawTextA(dc, shown.c_str(), static_cast<int>(shown.size()), &r,
            DT_LEFT | DT_NOPREFIX | DT_EXPANDTABS | DT_WORDBREAK);
  SelectObject(dc, old);
  EndPaint(hwnd, &ps);
}

}  // namespace

LRESULT CALLBACK HostAccess::Proc(HWND hwnd, UINT msg, WPARAM w, LPARAM l) {
  Win32WindowHost* self = host;
  Hwnd h = FromHwnd(hwnd);
  Win32WindowHost::Window* win = self ? self->Find(h) : nullptr;
  if (!win) return DefWindowProcA(hwnd, msg, w, l);
  if (self->internal_ == 0) {
    if (ActingMessage(msg))
      self->last_action_ms_ = Win32WindowHost::MonotonicMs();
    if (ReadingMessage(msg))
      self->last_read_ms_[h] = Win32WindowHost::MonotonicMs();
  }
  if (win->handler) {
    auto handler = win->handler;  // it may destroy its own window
    if (auto r = handler(h, msg, w, l)) return *r;
    win = self->Find(h);
    if (!win) return 0;
  }
  if (msg == WM_SETTEXT) {
    win->text = l ? reinterpret_cast<const char*>(l) : "";
    InvalidateRect(hwnd, nullptr, TRUE);
    if (!win->caption && !win->original) return TRUE;
  }
  if (win->original) {
    WNDPROC original = win->original;
    if (msg == WM_NCDESTROY) {
      self->windows_.erase(h);
      delete win;
    }
    return CallWindowProcA(original, hwnd, msg, w, l);
  }
  switch (msg) {
    case WM_GETTEXTLENGTH:
      return static_cast<LRESULT>(win->text.size());
    case WM_GETTEXT: {
      if (w == 0 || !l) return 0;
      std::size_t n = std::min<std::size_t>(win->text.size(), w - 1);
      char* out = reinterpret_cast<char*>(l);
      std::copy_n(win->text.data(), n, out);
      out[n] = '\0';
      return static_cast<LRESULT>(n);
    }
    case WM_PAINT:
      PaintText(hwnd,
                win->cls == "RICHCNTL" || win->cls == "_AOL_Static" ||
                        win->cls == "_AOL_Icon"
                    ? win->text
                    : std::string(),
                win->cls == "RICHCNTL");
      return 0;
    case WM_SIZE:
      if (win->cls == "AOL Frame25") {
        // The MDI area fills the frame.
        HWND mdi = FindWindowExA(hwnd, nullptr, "MDIClient", nullptr);
        if (mdi) MoveWindow(mdi, 0, 32, LOWORD(l), HIWORD(l) - 32, TRUE);
      }
      break;
    case WM_NCDESTROY:
      self->windows_.erase(h);
      delete win;
      break;
    default:
      break;
  }
  return DefWindowProcA(hwnd, msg, w, l);
}

void CALLBACK HostAccess::TimerProc(HWND, UINT, UINT_PTR id, DWORD) {
  KillTimer(nullptr, id);
  if (!host) return;
  auto it = host->timers_.find(id);
  if (it == host->timers_.end()) return;
  auto work = std::move(it->second);
  host->timers_.erase(it);
  if (work) work();
}

Win32WindowHost::Win32WindowHost() { HostAccess::host = this; }

Win32WindowHost::~Win32WindowHost() {
  std::vector<Hwnd> left;
  for (const auto& [h, win] : windows_) left.push_back(h);
  for (Hwnd h : left) Destroy(h);
  for (auto& [h, win] : windows_) delete win;
  HostAccess::host = nullptr;
}

Win32WindowHost::Window* Win32WindowHost::Find(Hwnd h) {
  auto it = windows_.find(h);
  return it == windows_.end() ? nullptr : it->second;
}

Hwnd Win32WindowHost::Create(Hwnd parent, const std::string& cls,
                             const std::string& title, Handler handler) {
  const bool system = SystemClass(cls);
  if (!system) RegisterOnce(cls);
  HWND parent_hwnd = ToHwnd(parent);
  Placement at = Place(parent_hwnd, Find(parent), cls);
  HWND hwnd = CreateWindowExA(at.ex_style, cls.c_str(), title.c_str(), at.style,
                              at.x, at.y, at.w, at.h, parent_hwnd, nullptr,
                              GetModuleHandleA(nullptr), nullptr);
  if (!hwnd) return 0;
  auto* win = new Window;
  win->cls = cls;
  win->text = title;
  win->handler = std::move(handler);
  win->caption = !TextControlClass(cls);
  const Hwnd h = FromHwnd(hwnd);
  windows_[h] = win;
  if (system) {
    win->original = reinterpret_cast<WNDPROC>(SetWindowLongPtrA(
        hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&HostAccess::Proc)));
  }
  return h;
}

void Win32WindowHost::Destroy(Hwnd h) {
  last_read_ms_.erase(h);
  if (!Find(h)) return;
  ++internal_;
  DestroyWindow(ToHwnd(h));
  --internal_;
}

bool Win32WindowHost::Exists(Hwnd h) {
  return h != 0 && Find(h) != nullptr && IsWindow(ToHwnd(h));
}

std::string_view Win32WindowHost::Text(Hwnd h) {
  Window* win = Find(h);
  return win ? std::string_view(win->text) : std::string_view();
}

void Win32WindowHost::SetText(Hwnd h, std::string text) {
  if (!Find(h)) return;
  ++internal_;
  SendMessageA(ToHwnd(h), WM_SETTEXT, 0,
               reinterpret_cast<LPARAM>(text.c_str()));
  --internal_;
}

void Win32WindowHost::Changed(Hwnd h) {
  Window* win = Find(h);
  if (!win) return;
  if (win->caption) {
    ++internal_;
    DefWindowProcA(ToHwnd(h), WM_SETTEXT, 0,
                   reinterpret_cast<LPARAM>(win->text.c_str()));
    --internal_;
  }
  InvalidateRect(ToHwnd(h), nullptr, TRUE);
}

void Win32WindowHost::AppendText(Hwnd h, std::string_view more) {
  Window* win = Find(h);
  if (!win) return;
  win->text.append(more);
  Changed(h);
}

void Win32WindowHost::EraseFront(Hwnd h, std::size_t count) {
  Window* win = Find(h);
  if (!win) return;
  win->text.erase(0, std::min(count, win->text.size()));
  Changed(h);
}

std::vector<Hwnd> Win32WindowHost::Children(Hwnd parent) {
  std::vector<Hwnd> out;
  if (!Find(parent)) return out;
  for (HWND h = GetWindow(ToHwnd(parent), GW_CHILD); h;
       h = GetWindow(h, GW_HWNDNEXT)) {
    out.push_back(FromHwnd(h));
  }
  return out;
}

void Win32WindowHost::After(int ms, std::function<void()> work) {
  UINT_PTR id = SetTimer(nullptr, 0, static_cast<UINT>(std::max(ms, 1)),
                         &HostAccess::TimerProc);
  if (id) timers_[id] = std::move(work);
}

}  // namespace v2::aolsim
