#pragma once
// The client's menus: its toolbar icons open popup menus, walked here by
// posted key presses with the pointer parked out of the way, and its menu
// bar holds the sign-off, chosen here by the item's text. Also the time on
// line, read from the box that one such popup item opens.
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/platform.h"

namespace v2 {

// After a click, a popup that is not up within this long does not count:
// the icon is clicked again.
inline constexpr double kPopupClickSeconds = 1.0;

// The toolbar strip (_AOL_Toolbar in AOL Toolbar in the frame), and its
// n-th _AOL_Icon by the NthChild chain; 0 when there is none.
Hwnd FindToolbar(Platform& p);
Hwnd ToolbarIcon(Platform& p, int n);

// The pointer park: the pointer's place is saved and the pointer sent to
// the screen's width and height in twips, far past the last pixel, where
// it stops in the bottom right corner, away from any popup. PutPointerBack
// returns it to the place saved.
Point ParkPointer(Platform& p);
void PutPointerBack(Platform& p, Point saved);

// The click pair an icon gets, posted.
void PostClick(Platform& p, Hwnd icon);
// Waits, holding the thread (no event of the program runs, nothing is
// pumped), for the topmost popup menu window (#32768) to be visible;
// gives the handle of the lookup that saw it, or 0 after the bound.
Hwnd HoldForPopup(Platform& p);
// One key press in a popup: WM_KEYDOWN and WM_KEYUP, posted.
void PressPopupKey(Platform& p, Hwnd popup, WParam key);

// The mail lists through the 3rd icon's popup: new (Down, Down, Return),
// old (Down 4 times, Return), sent (Down 5 times, Return), flashed (Up, Up,
// Right, Return). The pointer is parked meanwhile and back where the
// member had it afterwards. A popup that does not come within the bound
// ends the operation there.
void MailOpenNew(Platform& p);
void MailOpenOld(Platform& p);
void MailOpenSent(Platform& p);
void MailOpenFlashed(Platform& p);

// The n-th icon's popup, then Down downs times and Return. The icon is
// clicked again whenever its popup is not up kPopupClickSeconds after a
// click, for at most kHostWaitBoundSeconds in all; then the operation ends
// with no key pressed.
void ToolbarMenuPick(Platform& p, std::int32_t icon, std::int32_t downs);

// Chooses the first item of the frame's menu bar, left to right and top to
// bottom, whose text (ampersands included, without regard to case)
// contains text; no match does nothing.
void RunHostMenu(Platform& p, const std::string& text);
void SignOff(Platform& p);

// The time on line: the 6th icon's 10th item opens the client's box
// (_AOL_Modal), whose first _AOL_Static is read and first _AOL_Icon
// clicked to close it. A box that does not come within the bound gives "".
std::string SessionTime(Platform& p);
// The reading of the box's text: everything behind the first "for ", every
// "." taken out (with no "for ", from the 4th character).
std::string SessionTimeOf(std::string_view text);

}  // namespace v2
