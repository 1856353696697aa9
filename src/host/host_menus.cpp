#include "host/host_menus.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

#include "host/host_windows.h"
#include "platform/text.h"

namespace v2 {
namespace {

// The mail lists' procedure on the 3rd icon.
void MailOpen(Platform& p, double pause, std::initializer_list<WParam> keys) {
  Hwnd icon = ToolbarIcon(p, 3);
  const Point saved = ParkPointer(p);
  PostClick(p, icon);
  Hwnd popup = HoldForPopup(p);
  if (popup != 0) {
    if (pause > 0) {
      Pause(p, pause);
      // No handle outlives a wait: the topmost popup is looked up again.
      popup = p.windows.FindWindowA("#32768", nullptr);
    }
    for (WParam key : keys) PressPopupKey(p, popup, key);
  }
  PutPointerBack(p, saved);
}

}  // namespace

Hwnd FindToolbar(Platform& p) {
  Hwnd h = p.windows.FindWindowA("AOL Frame25", nullptr);
  for (const char* cls : {"AOL Toolbar", "_AOL_Toolbar"}) {
    if (h == 0) return 0;
    h = p.windows.FindWindowExA(h, 0, cls, nullptr);
  }
  return h;
}

Hwnd ToolbarIcon(Platform& p, int n) {
  Hwnd strip = FindToolbar(p);
  return strip ? NthChild(p, strip, "_AOL_Icon", n) : 0;
}

Point ParkPointer(Platform& p) {
  Point saved;
  p.windows.GetCursorPos(saved);
  const Screen screen = p.windows.GetScreen();
  p.windows.SetCursorPos(static_cast<int>(screen.Width),
                         static_cast<int>(screen.Height));
  return saved;
}

void PutPointerBack(Platform& p, Point saved) {
  p.windows.SetCursorPos(saved.x, saved.y);
}

void PostClick(Platform& p, Hwnd icon) {
  p.windows.PostMessageA(icon, kWmLButtonDown, 0, 0);
  p.windows.PostMessageA(icon, kWmLButtonUp, 0, 0);
}

Hwnd HoldForPopup(Platform& p) {
  Hwnd popup = 0;
  bool up = HoldForHost(p, [&] {
    popup = p.windows.FindWindowA("#32768", nullptr);
    return p.windows.IsWindowVisible(popup);
  });
  return up ? popup : 0;
}

void PressPopupKey(Platform& p, Hwnd popup, WParam key) {
  p.windows.PostMessageA(popup, kWmKeyDown, key, 0);
  p.windows.PostMessageA(popup, kWmKeyUp, key, 0);
}

void MailOpenNew(Platform& p) {
  MailOpen(p, 0.1, {kVkDown, kVkDown, kVkReturn});
}

void MailOpenOld(Platform& p) {
  MailOpen(p, 0.1, {kVkDown, kVkDown, kVkDown, kVkDown, kVkReturn});
}

void MailOpenSent(Platform& p) {
  MailOpen(p, 0.1, {kVkDown, kVkDown, kVkDown, kVkDown, kVkDown, kVkReturn});
}

void MailOpenFlashed(Platform& p) {
  MailOpen(p, 0, {kVkUp, kVkUp, kVkRight, kVkReturn});
}

void ToolbarMenuPick(Platform& p, std::int32_t icon, std::int32_t downs) {
  Clock& clock = p.clock();
  const std::int64_t click_ms = std::llround(kPopupClickSeconds * 1000.0);
  const std::int64_t give_up =
      clock.NowMs() + std::llround(kHostWaitBoundSeconds * 1000.0);
  const Point saved = ParkPointer(p);
  Hwnd popup = 0;
  for (;;) {
    const std::int64_t t0 = clock.NowMs();
    // The icon is looked up for each click: no handle outlives the pause.
    PostClick(p, ToolbarIcon(p, icon));
    Pause(p, 0.09);
    // Without a pump: only the popup, or the second running out, ends it.
    HoldForHost(p, [&] {
      popup = p.windows.FindWindowA("#32768", nullptr);
      return p.windows.IsWindowVisible(popup) || clock.NowMs() - t0 > click_ms;
    });
    // Asked anew: a popup that came after the second does not count.
    if (clock.NowMs() - t0 <= click_ms) break;
    if (clock.NowMs() >= give_up) {
      PutPointerBack(p, saved);
      return;
    }
  }
  for (std::int32_t i = 0; i < downs; ++i) PressPopupKey(p, popup, kVkDown);
  PressPopupKey(p, popup, kVkReturn);
  PutPointerBack(p, saved);
}

void RunHostMenu(Platform& p, const std::string& text) {
  WindowServices& w = p.windows;
  Hwnd frame = w.FindWindowA("AOL Frame25", nullptr);
  Hmenu menu = w.GetMenu(frame);
  const std::string wanted = LCase(text);
  const int menus = w.GetMenuItemCount(menu);
  for (int i = 0; i < menus; ++i) {
    Hmenu sub = w.GetSubMenu(menu, i);
    const int items = w.GetMenuItemCount(sub);
    for (int j = 0; j < items; ++j) {
      const std::uint32_t id = w.GetMenuItemID(sub, j);
      // The whole buffer counts: the text, its end and the blanks behind.
      std::string buffer(100, ' ');
      w.GetMenuStringA(sub, id, buffer.data(), 100, 1);
      if (InStr(1, LCase(buffer), wanted) > 0) {
        w.SendMessageA(frame, kWmCommand, id, 0);
        return;
      }
    }
  }
}

void SignOff(Platform& p) { RunHostMenu(p, "&Sign Off"); }

std::string SessionTimeOf(std::string_view text) {
  std::string time = Mid(text, InStr(1, text, "for ") + 4);
  std::erase(time, '.');
  return time;
}

std::string SessionTime(Platform& p) {
  ToolbarMenuPick(p, 6, 10);
  Hwnd modal = 0, st = 0;
  WaitForHost(p, [&] {
    p.loop.PumpEvents();
    modal = p.windows.FindWindowA("_AOL_Modal", nullptr);
    st = modal ? p.windows.FindWindowExA(modal, 0, "_AOL_Static", nullptr) : 0;
    // Another program makes the box before its text: a box without its
    // text is not there yet.
    return modal != 0 && st != 0;
  });
  if (modal == 0 || st == 0) return {};
  const std::string time = SessionTimeOf(GetText(p, st));
  Pause(p, 0.5);
  // The box is looked up again after the pause, and closed by its first
  // icon.
  modal = p.windows.FindWindowA("_AOL_Modal", nullptr);
  if (modal) {
    PostClick(p, p.windows.FindWindowExA(modal, 0, "_AOL_Icon", nullptr));
  }
  return time;
}

}  // namespace v2
