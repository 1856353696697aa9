#include <windows.h>
// After windows.h, which it needs.
#include <shellapi.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "platform/tray_icon.h"
#include "platform/win32/win32_bitmap.h"
#include "platform/win32/win32_loop.h"
#include "platform/win32/win32_ui.h"
#include "platform/win32/win32_ui_parts.h"

// The tray entry of the program, its hidden owner window, the popup menu
// opened from it, and the program's end.
namespace v2::win32 {
namespace {

constexpr UINT_PTR kMenuPumpTimer = 1;
// How often the program's loop runs while a popup menu is open.
constexpr UINT kMenuPumpMs = 20;

// ---- The tray's icon, drawn as the executable's icon is ----

HICON MakeTrayIcon() {
  const int size = std::max(16, GetSystemMetrics(SM_CXSMICON));
  const std::vector<std::uint32_t> drawn = DrawTrayIcon(size);
  void* bits = nullptr;
  HBITMAP colour = MakePixelBitmap(size, size, bits);
  if (!colour) return nullptr;
  std::copy(drawn.begin(), drawn.end(), static_cast<std::uint32_t*>(bits));
  // The mask's rows are whole 16-bit words; a set bit is a transparent
  // pixel.
  const int mask_stride = (size + 15) / 16 * 2;
  std::vector<BYTE> mask(static_cast<std::size_t>(mask_stride * size), 0);
  for (int y = 0; y < size; ++y) {
    for (int x = 0; x < size; ++x) {
      if (drawn[static_cast<std::size_t>(y * size + x)] != 0) continue;
      mask[static_cast<std::size_t>(y * mask_stride + x / 8)] |=
          static_cast<BYTE>(0x80 >> (x % 8));
    }
  }
  HBITMAP and_mask = CreateBitmap(size, size, 1, 1, mask.data());
  ICONINFO icon{};
  icon.fIcon = TRUE;
  icon.hbmMask = and_mask;
  icon.hbmColor = colour;
  HICON made = and_mask ? CreateIconIndirect(&icon) : nullptr;
  if (and_mask) DeleteObject(and_mask);
  DeleteObject(colour);
  return made;
}

// ---- The popup menu ----

HMENU BuildMenu(const MenuItem& head, std::vector<MenuItem*>& commands) {
  HMENU menu = CreatePopupMenu();
  if (!menu) return nullptr;
  for (MenuItem* item : head.Items) {
    if (!item || !item->Visible) continue;
    if (item->IsSeparator()) {
      AppendMenuA(menu, MF_SEPARATOR, 0, nullptr);
      continue;
    }
    UINT flags = MF_STRING | (item->Checked ? MF_CHECKED : MF_UNCHECKED) |
                 (item->Enabled ? MF_ENABLED : MF_GRAYED);
    if (!item->Items.empty()) {
      HMENU sub = BuildMenu(*item, commands);
      if (sub &&
          !AppendMenuA(menu, flags | MF_POPUP, reinterpret_cast<UINT_PTR>(sub),
                       item->Caption.c_str())) {
        DestroyMenu(sub);
      }
      continue;
    }
    commands.push_back(item);
    AppendMenuA(menu, flags, commands.size(), item->Caption.c_str());
  }
  return menu;
}

}  // namespace

Hmenu BuildPopupMenu(const MenuItem& root, std::vector<MenuItem*>& commands) {
  return static_cast<Hmenu>(
      reinterpret_cast<UINT_PTR>(BuildMenu(root, commands)));
}

namespace {

LRESULT CALLBACK OwnerProc(HWND hwnd, UINT msg, WPARAM w, LPARAM l) {
  if (msg == WM_NCCREATE) {
    auto* create = reinterpret_cast<CREATESTRUCTA*>(l);
    SetWindowLongPtrA(hwnd, GWLP_USERDATA,
                      reinterpret_cast<LONG_PTR>(create->lpCreateParams));
  }
  auto* o =
      reinterpret_cast<Win32Ui::Owner*>(GetWindowLongPtrA(hwnd, GWLP_USERDATA));
  if (!o) return DefWindowProcA(hwnd, msg, w, l);
  if (msg == kTrayCallbackMessage) {
    std::int16_t button = 0;
    switch (static_cast<UINT>(l)) {
      case WM_LBUTTONUP:
        button = 1;
        break;
      case WM_RBUTTONUP:
        button = 2;
        break;
      case WM_MBUTTONUP:
        button = 4;
        break;
      default:
        break;
    }
    if (button && o->mouse_up) {
      // The handler may remove the entry, and with it itself.
      Win32Ui::TrayMouseUp handler = o->mouse_up;
      Guarded([&] { handler(button); });
    }
    return 0;
  }
  if (o->taskbar_created && msg == o->taskbar_created) {
    o->ShellRestarted();
    return 0;
  }
  if (msg == WM_TIMER && w == kMenuPumpTimer) {
    // A handler that waits pumps the loop itself; this pass is for the
    // time the menu's own loop has the thread.
    if (o->menu_loop && !o->pumping) {
      o->pumping = true;
      // The member's keys and clicks are the menu's.
      auto* real = dynamic_cast<Win32Loop*>(o->menu_loop);
      Guarded([&] {
        if (real) {
          real->PumpEventsLeavingInput();
        } else {
          o->menu_loop->PumpEvents();
        }
      });
      o->pumping = false;
    }
    return 0;
  }
  if (msg == WM_DESTROY) SetWindowLongPtrA(hwnd, GWLP_USERDATA, 0);
  return DefWindowProcA(hwnd, msg, w, l);
}

}  // namespace

void RegisterTrayClass(HINSTANCE instance) {
  WNDCLASSEXA owner{};
  owner.cbSize = sizeof(owner);
  owner.lpfnWndProc = OwnerProc;
  owner.hInstance = instance;
  owner.lpszClassName = kTrayWindowClass;
  RegisterClassExA(&owner);
}

bool Win32Ui::EnsureOwner() {
  if (owner_ && IsWindow(owner_->hwnd)) return true;
  if (!owner_) {
    owner_ = std::make_unique<Owner>();
    owner_->ui = this;
    owner_->icon = MakeTrayIcon();
    owner_->taskbar_created = RegisterWindowMessageA("TaskbarCreated");
  }
  // A top-level window, not a message-only one: the shell's restart is
  // told to top-level windows only.
  owner_->hwnd = CreateWindowExA(
      WS_EX_TOOLWINDOW, kTrayWindowClass, "vantrel2 tray", WS_POPUP, 0, 0, 0, 0,
      nullptr, nullptr, GetModuleHandleA(nullptr), owner_.get());
  return owner_->hwnd != nullptr;
}

Hwnd Win32Ui::TrayWindow() const { return owner_ ? FromHwnd(owner_->hwnd) : 0; }

bool Win32Ui::Notify(unsigned message) {
  if (!owner_ || !owner_->hwnd) return false;
  NOTIFYICONDATAA data{};
  // The size every shell since Windows 2000 knows: a tip of 127 bytes.
  data.cbSize = NOTIFYICONDATAA_V2_SIZE;
  data.hWnd = owner_->hwnd;
  data.uID = 1;
  data.uFlags = NIF_MESSAGE | NIF_ICON | NIF_TIP;
  data.uCallbackMessage = kTrayCallbackMessage;
  data.hIcon = owner_->icon;
  owner_->tip.copy(data.szTip, sizeof(data.szTip) - 1);
  return Shell_NotifyIconA(message, &data) != FALSE;
}

void Win32Ui::TrayAdd(const std::string& tip, TrayMouseUp handler) {
  if (!EnsureOwner()) return;
  owner_->tip = tip;
  owner_->mouse_up = std::move(handler);
  tray_wanted_ = true;
  if (tray_shown_ && Notify(NIM_MODIFY)) return;
  tray_shown_ = Notify(NIM_ADD);
  ShowBalloon();
}

void Win32Ui::TrayBalloon(const std::string& title, const std::string& text) {
  balloon_.emplace(title, text);
  ShowBalloon();
}

void Win32Ui::ShowBalloon() {
  if (!balloon_ || !tray_shown_ || !owner_ || !owner_->hwnd) return;
  NOTIFYICONDATAA data{};
  // Windows 2000's size, which every shell since knows: balloons of a
  // title of 63 bytes and a text of 255.
  data.cbSize = NOTIFYICONDATAA_V2_SIZE;
  data.hWnd = owner_->hwnd;
  data.uID = 1;
  data.uFlags = NIF_INFO;
  balloon_->first.copy(data.szInfoTitle, sizeof(data.szInfoTitle) - 1);
  balloon_->second.copy(data.szInfo, sizeof(data.szInfo) - 1);
  // Windows XP keeps a balloon up this long while the member is at the
  // machine (10 to 30 s); later shells follow the accessibility setting.
  data.uTimeout = 20000;
  data.dwInfoFlags = NIIF_WARNING;
  if (Shell_NotifyIconA(NIM_MODIFY, &data)) balloon_.reset();
}

void Win32Ui::TrayRemove() {
  tray_wanted_ = false;
  if (tray_shown_) Notify(NIM_DELETE);
  tray_shown_ = false;
  if (owner_) owner_->mouse_up = nullptr;
}

void Win32Ui::PopupMenu(EventLoop& loop, const MenuItem& root) {
  if (!EnsureOwner()) return;
  std::vector<MenuItem*> commands;
  HMENU menu = ToHmenu(BuildPopupMenu(root, commands));
  if (!menu) return;
  HWND owner = owner_->hwnd;
  EventLoop* outer = owner_->menu_loop;
  owner_->menu_loop = &loop;
  ::SetTimer(owner, kMenuPumpTimer, kMenuPumpMs, nullptr);
  POINT at{};
  GetCursorPos(&at);
  // Unless its owner is in the foreground, the menu stays open when the
  // member clicks elsewhere; the posted message after it lets the menu go
  // away at once when the member clicks the tray again.
  SetForegroundWindow(owner);
  UINT chosen = static_cast<UINT>(
      TrackPopupMenu(menu, TPM_RETURNCMD | TPM_NONOTIFY | TPM_RIGHTBUTTON, at.x,
                     at.y, 0, owner, nullptr));
  PostMessageA(owner, WM_NULL, 0, 0);
  owner_->menu_loop = outer;
  if (!outer) KillTimer(owner, kMenuPumpTimer);
  DestroyMenu(menu);
  if (chosen >= 1 && chosen <= commands.size()) {
    MenuItem* item = commands[chosen - 1];
    if (item->Enabled && item->Click) item->Click();
  }
}

void Win32Ui::EndProgram() {
  TrayRemove();
  ExitProcess(0);
}

}  // namespace v2::win32
