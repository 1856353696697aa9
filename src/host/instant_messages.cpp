#include "host/instant_messages.h"

#include "host/host_windows.h"
#include "host/keywords.h"
#include "platform/text.h"

namespace v2 {
namespace {

constexpr const char* kNewImTitle = "Send Instant Message";

struct NewIm {
  Hwnd im = 0, box = 0;
};

NewIm FindNewIm(Platform& p, Hwnd mdi) {
  NewIm n;
  n.im = mdi ? p.windows.FindWindowExA(mdi, 0, "AOL Child", kNewImTitle) : 0;
  n.box = n.im ? p.windows.FindWindowExA(n.im, 0, "RICHCNTL", nullptr) : 0;
  return n;
}

void SendClick(Platform& p, Hwnd h) {
  p.windows.SendMessageA(h, kWmLButtonDown, 0, 0);
  p.windows.SendMessageA(h, kWmLButtonUp, 0, 0);
}

}  // namespace

void SendIM(Platform& p, const std::string& name, const std::string& message) {
  Hwnd mdi = FindMdiClient(p);
  RunKeyword(p, kNewImAddress + name);
  NewIm n;
  Hwnd send = 0;
  if (!WaitForHost(p, [&] {
        p.loop.PumpEvents();
        n = FindNewIm(p, mdi);
        send = n.im ? NthChild(p, n.im, "_AOL_Icon", 9) : 0;
        return n.im && n.box && send;
      })) {
    return;
  }
  p.windows.SendMessageA(n.box, kWmSetText, 0,
                         reinterpret_cast<LParam>(message.c_str()));
  SendClick(p, send);
  Hwnd dialog = 0;
  WaitForHost(p, [&] {
    p.loop.PumpEvents();
    dialog = p.windows.FindWindowA("#32770", "America Online");
    n = FindNewIm(p, mdi);
    return dialog || !n.im;
  });
  if (!dialog) return;  // the IM went out, or nothing came within the bound
  Hwnd button = p.windows.FindWindowExA(dialog, 0, "Button", nullptr);
  p.windows.PostMessageA(button, kWmKeyDown, kVkSpace, 0);
  p.windows.PostMessageA(button, kWmKeyUp, kVkSpace, 0);
  p.windows.PostMessageA(n.im, kWmClose, 0, 0);
}

VbBool CheckIM(Platform& p, const std::string& name) {
  Hwnd mdi = FindMdiClient(p);
  RunKeyword(p, kNewImAddress + name);
  NewIm n;
  Hwnd tenth = 0;
  if (!WaitForHost(p, [&] {
        p.loop.PumpEvents();
        n = FindNewIm(p, mdi);
        if (!n.im || !n.box) return false;
        Hwnd icons[10] = {};
        icons[0] = p.windows.FindWindowExA(n.im, 0, "_AOL_Icon", nullptr);
        for (int i = 1; i < 10; ++i) {
          icons[i] =
              p.windows.FindWindowExA(n.im, icons[i - 1], "_AOL_Icon", nullptr);
        }
        tenth = icons[9];
        // A chain that ran out of icons starts again at the first.
        return tenth && tenth != icons[0] && tenth != icons[1] &&
               tenth != icons[2];
      })) {
    return kVbFalse;
  }
  p.loop.PumpEvents();
  SendClick(p, tenth);
  Hwnd dialog = 0, ok = 0;
  if (!WaitForHost(p, [&] {
        p.loop.PumpEvents();
        dialog = p.windows.FindWindowA("#32770", "America Online");
        ok = dialog ? p.windows.FindWindowExA(dialog, 0, "Button", "OK") : 0;
        return dialog && ok;
      })) {
    return kVbFalse;
  }
  std::string answer;
  WaitForHost(p, [&] {
    p.loop.PumpEvents();
    Hwnd st = NthChild(p, dialog, "Static", 2);
    answer = GetText(p, st);
    return st && answer.size() >= 16;
  });
  VbBool result = InStr(1, answer, "is online and able to receive") > 0
                      ? kVbTrue
                      : kVbFalse;
  p.windows.SendMessageA(ok, kWmKeyDown, kVkSpace, 0);
  p.windows.SendMessageA(ok, kWmKeyUp, kVkSpace, 0);
  p.windows.PostMessageA(n.im, kWmClose, 0, 0);
  return result;
}

void IMsOff(Platform& p) { SendIM(p, "$IM_OFF", kImSwitchText); }

void IMsOn(Platform& p) { SendIM(p, "$IM_ON", kImSwitchText); }

Hwnd FindIM(Platform& p) {
  Hwnd found = 0;
  ForEachHostChild(p, [&](Hwnd child) {
    const std::string title = GetCaption(p, child);
    const auto at = title.find("Instant Message");
    if (at != std::string::npos && at <= 2) {
      found = child;
      return false;
    }
    return true;
  });
  return found;
}

void IMReply(Platform& p, const std::string& message) {
  Hwnd im = FindIM(p);
  if (!im) return;
  Hwnd box = NthChild(p, im, "RICHCNTL", 2);
  Hwnd send = NthChild(p, im, "_AOL_Icon", 9);
  p.windows.SendMessageA(box, kWmSetText, 0,
                         reinterpret_cast<LParam>(message.c_str()));
  p.loop.PumpEvents();
  SendClick(p, send);
}

void CloseAllIMs(Platform& p) {
  WaitForHost(p, [&] {
    p.loop.PumpEvents();
    if (Hwnd im = FindIM(p)) {
      p.windows.PostMessageA(im, kWmClose, 0, 0);
      p.loop.PumpEvents();
    }
    return FindIM(p) == 0;
  });
}

}  // namespace v2
