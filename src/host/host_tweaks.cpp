#include "host/host_tweaks.h"

#include <cmath>

#include "host/host_windows.h"
#include "platform/text.h"

namespace v2 {
namespace {

constexpr std::uint32_t kDayMs = 86400000;
constexpr std::uint32_t kHourMs = 3600000;
constexpr std::uint32_t kMinuteMs = 60000;

// The modal box on top, found anew each time.
Hwnd FindModal(Platform& p) {
  return p.windows.FindWindowA("_AOL_Modal", nullptr);
}

}  // namespace

void ShowHost(Platform& p) {
  p.windows.ShowWindow(p.windows.FindWindowA("AOL Frame25", nullptr), kSwShow);
}

void HideHost(Platform& p) {
  p.windows.ShowWindow(p.windows.FindWindowA("AOL Frame25", nullptr), kSwHide);
}

void ShowWelcome(Platform& p) { p.windows.ShowWindow(FindWelcome(p), kSwShow); }

void HideWelcome(Platform& p) {
  Hwnd welcome = FindWelcome(p);
  if (welcome) p.windows.ShowWindow(welcome, kSwHide);
}

void KillGlyph(Platform& p) {
  Hwnd h = p.windows.FindWindowA("AOL Frame25", "America  Online");
  for (const char* cls : {"AOL Toolbar", "_AOL_Toolbar", "_AOL_Glyph"}) {
    if (h == 0) return;
    h = p.windows.FindWindowExA(h, 0, cls, nullptr);
  }
  if (h) CloseWindow(p, h);
}

void KillClock(Platform& p) {
  // Neither handle is tested: with no box the click goes to handle 0.
  Hwnd modal = FindModal(p);
  Hwnd icon =
      modal ? p.windows.FindWindowExA(modal, 0, "_AOL_Icon", nullptr) : 0;
  p.windows.PostMessageA(icon, kWmLButtonDown, 0, 0);
  p.windows.PostMessageA(icon, kWmLButtonUp, 0, 0);
}

void KillModal(Platform& p) {
  Hwnd modal = FindModal(p);
  if (modal) CloseWindow(p, modal);
}

void OpenFile(Platform& p, const std::string& path) {
  const std::string folder = p.files().ProgramDir();
  p.shell().ShellExecuteA(0, "Open", path.c_str(), "", folder.c_str(),
                          kSwShowNormal);
}

void OpenWeb(Platform& p, const std::string& address) { OpenFile(p, address); }

void OpenCharmap(Platform& p) { OpenFile(p, kCharmapPath); }

std::string AimNameOf(std::string_view title) {
  if (InStr(1, title, "'s Buddy List") == 0) return {};
  return Left(title, InStr(1, title, "'") - 1);
}

std::string AimName(Platform& p) {
  return AimNameOf(
      GetText(p, p.windows.FindWindowA("_Oscar_BuddyListWin", nullptr)));
}

std::string TrayClockTimeOf(std::string_view buffer, int length) {
  return Left(buffer, length);
}

std::string TrayClockTime(Platform& p) {
  Hwnd h = p.windows.FindWindowA("shell_traywnd", nullptr);
  for (const char* cls : {"traynotifywnd", "trayclockwclass"}) {
    if (h == 0) return {};
    h = p.windows.FindWindowExA(h, 0, cls, nullptr);
  }
  if (h == 0) return {};
  const auto n = p.windows.SendMessageA(h, kWmGetTextLength, 0, 0);
  if (n <= 0) return {};
  // A buffer of n + 1 blanks, of which the first n count, whatever the
  // clock wrote into them.
  std::string buffer(static_cast<std::size_t>(n) + 1, ' ');
  p.windows.SendMessageA(h, kWmGetText, buffer.size(),
                         reinterpret_cast<LParam>(buffer.data()));
  return TrayClockTimeOf(buffer, static_cast<int>(n));
}

std::string UptimeDaysOf(std::uint32_t ms) {
  return std::to_string(
      static_cast<std::int32_t>(std::floor(ms / double{kDayMs})));
}

std::string UptimeHoursOf(std::uint32_t ms) {
  return std::to_string(
      static_cast<std::int16_t>(std::floor((ms % kDayMs) / double{kHourMs})));
}

std::string UptimeMinutesOf(std::uint32_t ms) {
  return std::to_string(static_cast<std::int16_t>(
      std::floor((ms % kHourMs) / double{kMinuteMs})));
}

std::string UptimeDays(Platform& p) {
  return UptimeDaysOf(p.clock().TickCount());
}

std::string UptimeHours(Platform& p) {
  return UptimeHoursOf(p.clock().TickCount());
}

std::string UptimeMinutes(Platform& p) {
  return UptimeMinutesOf(p.clock().TickCount());
}

}  // namespace v2
