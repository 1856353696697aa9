#pragma once
// Taking the member's file transfers up again after a reconnection: the
// client's list of waiting uploads (Mail Center's "Upload Queue") or
// downloads (My Files' "Download Manager") is opened through its toolbar
// popup, and if it holds anything its start icon is pressed.
#include <cstdint>

#include "platform/platform.h"

namespace v2 {

// Uploads: the 3rd toolbar icon with the pointer parked and back where the
// member had it afterwards, Down 15 times, the list's 4th icon. Downloads:
// the 5th toolbar icon, Down 4 times, the pointer left in the screen's top
// left corner, the list's 2nd icon, and after the list the child that is
// then in front is closed too. An empty list is closed without a press. A
// toolbar that is not there, or a popup that does not come within
// kHostWaitBoundSeconds (the thread held meanwhile), ends the operation
// with the pointer step and nothing else.
void ContinueUploads(Platform& p);
void ContinueDownloads(Platform& p);

// The items in the list of the client's first child (its _AOL_Tree), as
// the tree answers LB_GETCOUNT; 0 without a tree, whose message goes
// nowhere. One operation under two names.
std::int32_t TreeCountUploads(Platform& p);
std::int32_t TreeCountDownloads(Platform& p);

// Closes the client's first child, and returns when the client has done so.
void CloseFirstChild(Platform& p);

}  // namespace v2
