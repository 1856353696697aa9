#pragma once
// Instant messages through the client's IM windows: sending one, asking
// whether a member can receive one, switching the member's own off and on,
// and finding, answering and closing the ones that came in. Every wait is
// bounded at kHostWaitBoundSeconds; past it the operation ends quietly.
#include <string>

#include "platform/platform.h"

namespace v2 {

inline constexpr const char* kNewImAddress = "aol://9293:";
// What goes to the reserved names that switch incoming IMs.
inline constexpr const char* kImSwitchText = "vantrel\xB2 by mirrik";

void SendIM(Platform& p, const std::string& name, const std::string& message);
// True (-1) when the client's answer says the member is online and able to
// receive; false (0) for every other answer, and when none comes.
VbBool CheckIM(Platform& p, const std::string& name);
void IMsOff(Platform& p);
void IMsOn(Platform& p);
// The first received IM window, or 0.
Hwnd FindIM(Platform& p);
void IMReply(Platform& p, const std::string& message);
void CloseAllIMs(Platform& p);

}  // namespace v2
