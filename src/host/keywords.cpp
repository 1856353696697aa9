#include "host/keywords.h"

#include "host/host_windows.h"

namespace v2 {
namespace {

void EnterWithRetry(Platform& p, const std::string& address) {
  RunKeyword(p, address);
  DismissHostError(p);
  WaitForHost(p, [&] {
    p.loop.PumpEvents();
    if (p.windows.FindWindowA("#32770", "America Online")) {
      // The new address goes in first, then the old refusal is pressed away.
      RunKeyword(p, address);
      DismissHostError(p);
      Pause(p, 0.5);
    }
    return FindChatRoom(p) != 0;
  });
}

}  // namespace

void RunKeyword(Platform& p, const std::string& keyword) {
  Hwnd h = p.windows.FindWindowA("AOL Frame25", nullptr);
  for (const char* cls :
       {"AOL Toolbar", "_AOL_Toolbar", "_AOL_Combobox", "Edit"}) {
    if (!h) return;  // no client, or no toolbar: nothing to type into
    h = p.windows.FindWindowExA(h, 0, cls, nullptr);
  }
  if (!h) return;
  SetText(p, h, "");
  SetText(p, h, keyword);
  p.windows.SendMessageA(h, kWmChar, kVkSpace, 0);
  p.windows.SendMessageA(h, kWmChar, kVkReturn, 0);
}

void EnterPrivateRoom(Platform& p, const std::string& room) {
  RunKeyword(p, kPrivateRoomPrefix + room);
}

void EnterRoomRetry(Platform& p, const std::string& room) {
  EnterWithRetry(p, kPrivateRoomPrefix + room);
}

void EnterJapanRoomRetry(Platform& p, const std::string& room) {
  EnterWithRetry(p, kJapanRoomPrefix + room);
}

}  // namespace v2
