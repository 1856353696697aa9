#pragma once
// Small one-shot acts on the client and the desktop: showing and hiding the
// client and its Welcome window, removing the toolbar's glyph, the time box
// and a modal box, opening an address or a file, and reading a few values
// around the client (the other messenger's screen name, the task bar
// clock, the time since the machine started). None of them waits.
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/platform.h"

namespace v2 {

void ShowHost(Platform& p);
void HideHost(Platform& p);
void ShowWelcome(Platform& p);
// Finds the Welcome window shown or hidden, as FindWelcome does.
void HideWelcome(Platform& p);
// Closes the _AOL_Glyph of the toolbar of the frame titled
// "America  Online".
void KillGlyph(Platform& p);
// Clicks the first icon of the topmost _AOL_Modal (the time box's OK).
void KillClock(Platform& p);
// Closes the topmost _AOL_Modal.
void KillModal(Platform& p);

// The system opens target ("Open") from the program's own folder.
void OpenWeb(Platform& p, const std::string& address);
void OpenFile(Platform& p, const std::string& path);
void OpenCharmap(Platform& p);
inline constexpr const char* kCharmapPath = "c:\\windows\\charmap.exe";

// The screen name in the other messenger's buddy list window
// (_Oscar_BuddyListWin, "NAME's Buddy List"), or "" without it.
std::string AimName(Platform& p);
// The title as read: the text before its first "'", when it says "'s Buddy
// List" at all.
std::string AimNameOf(std::string_view title);
// The task bar clock's text (shell_traywnd > traynotifywnd >
// trayclockwclass), or "" without one.
std::string TrayClockTime(Platform& p);
// The first length characters of the buffer the clock filled, as read.
std::string TrayClockTimeOf(std::string_view buffer, int length);

// Whole days, hours beyond the days and minutes beyond the hours since the
// machine started, each rounded down and written with no leading zeros.
// Each reads the tick count by itself.
std::string UptimeDays(Platform& p);
std::string UptimeHours(Platform& p);
std::string UptimeMinutes(Platform& p);
// The same of a tick count in milliseconds. The count is taken as unsigned
// 32 bits, so that from 24.8 days on it still gives the true time (not a
// negative one) until it wraps to 0 after 49.7 days, as the machine's
// counter does.
std::string UptimeDaysOf(std::uint32_t ms);
std::string UptimeHoursOf(std::uint32_t ms);
std::string UptimeMinutesOf(std::uint32_t ms);

}  // namespace v2
