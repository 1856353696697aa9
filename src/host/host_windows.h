#pragma once
// The front door to the client's windows: reading their text, pressing and
// closing things, waiting while the program stays responsive, finding the
// chat room and the signed-on name, and putting one line into the room.
// No handle is kept from one operation to the next.
#include <functional>
#include <string>

#include "platform/platform.h"

namespace v2 {

// Every wait on the client ends after this long at most: the client can be
// gone or stuck, and the program must go on as if the window had not come.
inline constexpr double kHostWaitBoundSeconds = 10.0;
// Between two passes of a waiting loop the thread sleeps on its queue this
// long at most instead of spinning.
inline constexpr int kHostRetryMs = 10;

// Runs pass until it gives true or bound_seconds have gone by; between passes
// the thread waits for events. True when pass succeeded.
bool WaitForHost(Platform& p, const std::function<bool()>& pass,
                 double bound_seconds = kHostWaitBoundSeconds);
// The same, holding the thread: none of the program's events runs between
// the passes (no chat line is served, no timer fires), the thread sleeps
// instead of spinning, and the client goes on. For the waits on a popup
// menu, which must not let another handler move the pointer or open a
// window in between.
bool HoldForHost(Platform& p, const std::function<bool()>& pass,
                 double bound_seconds = kHostWaitBoundSeconds);

std::string GetCaption(Platform& p, Hwnd h);
std::string GetText(Platform& p, Hwnd h);
// Puts the text into a window of the client (WM_SETTEXT); false when the
// client did not answer (hung), so took no text.
bool SetText(Platform& p, Hwnd h, const std::string& text);
void PressSpace(Platform& p, Hwnd h);
void ClickIcon(Platform& p, Hwnd h);
void CloseWindow(Platform& p, Hwnd h);
void Pause(Platform& p, double seconds);
void PumpEvents(Platform& p);
Hwnd NthChild(Platform& p, Hwnd parent, const char* cls, int n);

// The client's MDI area, and each of its AOL Child windows in sibling order.
Hwnd FindMdiClient(Platform& p);
void ForEachHostChild(Platform& p, const std::function<bool(Hwnd)>& visit);

Hwnd FindChatRoom(Platform& p);
// The room's transcript: its first RICHCNTL.
Hwnd FindTranscript(Platform& p);
void ChatSend(Platform& p, const std::string& line);
Hwnd FindWelcome(Platform& p);
std::string GetUser(Platform& p);
VbBool SignedOnName(Platform& p);
void DismissHostError(Platform& p);
void WaitHostOK(Platform& p);

}  // namespace v2
