#pragma once
// The client's keyword line, the way into every feature that has an
// address, and the room entries built on it.
#include <string>

#include "platform/platform.h"

namespace v2 {

inline constexpr const char* kPrivateRoomPrefix = "aol://2719:2-2-";
inline constexpr const char* kJapanRoomPrefix = "aol://2719:73-2-";

// Types the keyword or address into the toolbar's keyword line and presses
// Return; it does not wait for what the client does with it.
void RunKeyword(Platform& p, const std::string& keyword);
void EnterPrivateRoom(Platform& p, const std::string& room);
// Types the room's address until a chat room is open, typing it again and
// pressing the refusal away each time the client refuses. Bounded at
// kHostWaitBoundSeconds; past it the operation ends as if a room had come.
void EnterRoomRetry(Platform& p, const std::string& room);
void EnterJapanRoomRetry(Platform& p, const std::string& room);

}  // namespace v2
