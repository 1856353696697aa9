#pragma once
// Ghosting, a choice in the client's privacy preferences: nobody sees the
// member come and go. Turned on and off by walking the client's own windows
// from the buddy list. Every wait is bounded at kHostWaitBoundSeconds; past
// it the operation ends quietly.
#include "platform/platform.h"

namespace v2 {

void GhostOn(Platform& p);
void GhostOff(Platform& p);

}  // namespace v2
