#include "reconnect/transfer_resume.h"

#include "host/host_menus.h"
#include "host/host_windows.h"

namespace v2 {
namespace {

// Where the two operations differ.
struct Resume {
  int toolbar_icon;
  bool park;  // the pointer parked and put back; else left top left
  int downs;
  std::int32_t (*count)(Platform&);
  int list_icon;
  bool close_first_after;
};

constexpr Resume kUploads{3, true, 15, TreeCountUploads, 4, false};
constexpr Resume kDownloads{5, false, 4, TreeCountDownloads, 2, true};

Hwnd FirstHostChild(Platform& p) {
  Hwnd mdi = FindMdiClient(p);
  return mdi ? p.windows.FindWindowExA(mdi, 0, "AOL Child", nullptr) : 0;
}

std::int32_t TreeCount(Platform& p) {
  Hwnd child = FirstHostChild(p);
  Hwnd tree =
      child ? p.windows.FindWindowExA(child, 0, "_AOL_Tree", nullptr) : 0;
  return static_cast<std::int32_t>(
      p.windows.SendMessageA(tree, kLbGetCount, 0, 0));
}

void ContinueTransfers(Platform& p, const Resume& r) {
  Hwnd icon = ToolbarIcon(p, r.toolbar_icon);
  const Point saved = r.park ? ParkPointer(p) : Point{};
  auto pointer_step = [&] {
    if (r.park) {
      PutPointerBack(p, saved);
    } else {
      p.windows.SetCursorPos(0, 0);
    }
  };
  // Nothing to click: no popup can come, and nothing waits for one.
  Hwnd popup = 0;
  if (icon != 0) {
    PostClick(p, icon);
    popup = HoldForPopup(p);
  }
  if (popup == 0) {
    pointer_step();
    return;
  }
  Pause(p, 0.1);
  // No handle outlives a wait: the topmost popup is looked up again.
  popup = p.windows.FindWindowA("#32768", nullptr);
  for (int i = 0; i < r.downs; ++i) PressPopupKey(p, popup, kVkDown);
  PressPopupKey(p, popup, kVkReturn);
  pointer_step();
  // The client opens the list in front of its windows.
  Pause(p, 1.5);
  if (r.count(p) <= 0) {
    CloseFirstChild(p);
    return;
  }
  // Asked again: a list that emptied meanwhile is left open.
  if (r.count(p) <= 0) return;
  Hwnd list = FirstHostChild(p);
  Hwnd start = NthChild(p, list, "_AOL_Icon", r.list_icon);
  p.windows.SendMessageA(start, kWmLButtonDown, 0, 0);
  p.windows.SendMessageA(start, kWmLButtonUp, 0, 0);
  p.windows.SendMessageA(list, kWmClose, 0, 0);
  Pause(p, 0.5);
  if (r.close_first_after) CloseFirstChild(p);
}

}  // namespace

void ContinueUploads(Platform& p) { ContinueTransfers(p, kUploads); }

void ContinueDownloads(Platform& p) { ContinueTransfers(p, kDownloads); }

std::int32_t TreeCountUploads(Platform& p) { return TreeCount(p); }

std::int32_t TreeCountDownloads(Platform& p) { return TreeCount(p); }

void CloseFirstChild(Platform& p) {
  p.windows.SendMessageA(FirstHostChild(p), kWmClose, 0, 0);
}

}  // namespace v2
