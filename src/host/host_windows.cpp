#include "host/host_windows.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "platform/text.h"

namespace v2 {
namespace {

constexpr const char* kWelcomePrefix = "Welcome, ";
// Room for the titles of the client's windows, read at one go.
constexpr int kCaptionGuess = 256;

void SendKeyPair(Platform& p, Hwnd h, WParam key) {
  p.windows.SendMessageA(h, kWmKeyDown, key, 0);
  p.windows.SendMessageA(h, kWmKeyUp, key, 0);
}

}  // namespace

bool SetText(Platform& p, Hwnd h, const std::string& text) {
  return p.windows
      .SendMessageTimeoutA(h, kWmSetText, 0,
                           reinterpret_cast<LParam>(text.c_str()))
      .has_value();
}

namespace {

// The one bounded loop behind both kinds of wait; between passes the thread
// either waits for events (and runs them) or is held (and runs none).
bool BoundedWait(Platform& p, const std::function<bool()>& pass,
                 double bound_seconds, bool hold) {
  Clock& clock = p.clock();
  std::int64_t deadline = clock.NowMs() + std::llround(bound_seconds * 1000.0);
  for (;;) {
    if (pass()) return true;
    std::int64_t now = clock.NowMs();
    if (now >= deadline) return false;
    std::int64_t step = std::min<std::int64_t>(deadline - now, kHostRetryMs);
    if (hold) {
      p.loop.Hold(step);
    } else {
      p.loop.WaitUntil(now + step);
    }
  }
}

}  // namespace

bool WaitForHost(Platform& p, const std::function<bool()>& pass,
                 double bound_seconds) {
  return BoundedWait(p, pass, bound_seconds, false);
}

bool HoldForHost(Platform& p, const std::function<bool()>& pass,
                 double bound_seconds) {
  return BoundedWait(p, pass, bound_seconds, true);
}

std::string GetCaption(Platform& p, Hwnd h) {
  if (h == 0) return {};
  // A title of another program's window is a question to the system for
  // each call: most fit a buffer at once, and only one that fills it is
  // read again after its length.
  char first[kCaptionGuess] = {};
  const int once = p.windows.GetWindowTextA(h, first, kCaptionGuess);
  if (once < kCaptionGuess - 1) return std::string(first, std::max(once, 0));
  int n = p.windows.GetWindowTextLengthA(h);
  if (n <= 0) return {};
  std::string buffer(static_cast<std::size_t>(n) + 1, '\0');
  int got = p.windows.GetWindowTextA(h, buffer.data(), n + 1);
  buffer.resize(static_cast<std::size_t>(std::clamp(got, 0, n)));
  return buffer;
}

std::string GetText(Platform& p, Hwnd h) { return SendGetText(p.windows, h); }

void PressSpace(Platform& p, Hwnd h) { SendKeyPair(p, h, kVkSpace); }

void ClickIcon(Platform& p, Hwnd h) {
  p.windows.SendMessageA(h, kWmLButtonDown, 0, 0);
  p.windows.SendMessageA(h, kWmLButtonUp, 0, 0);
}

void CloseWindow(Platform& p, Hwnd h) {
  p.windows.PostMessageA(h, kWmClose, 0, 0);
}

void PumpEvents(Platform& p) { p.loop.PumpEvents(); }

void Pause(Platform& p, double seconds) {
  // Measured on the monotonic clock, so a wait across midnight is as long as
  // any other.
  Clock& clock = p.clock();
  std::int64_t start = clock.NowMs();
  for (;;) {
    if (!((clock.NowMs() - start) / 1000.0 < seconds)) return;
    p.loop.PumpEvents();
    std::int64_t deadline = start + std::llround(seconds * 1000.0);
    if (clock.NowMs() < deadline) p.loop.WaitUntil(deadline);
  }
}

Hwnd NthChild(Platform& p, Hwnd parent, const char* cls, int n) {
  Hwnd h = p.windows.FindWindowExA(parent, 0, cls, nullptr);
  for (int i = 1; i < n; ++i)
    h = p.windows.FindWindowExA(parent, h, cls, nullptr);
  return h;
}

Hwnd FindMdiClient(Platform& p) {
  Hwnd frame = p.windows.FindWindowA("AOL Frame25", nullptr);
  return frame ? p.windows.FindWindowExA(frame, 0, "MDIClient", nullptr) : 0;
}

void ForEachHostChild(Platform& p, const std::function<bool(Hwnd)>& visit) {
  Hwnd mdi = FindMdiClient(p);
  if (mdi == 0) return;
  for (Hwnd child = p.windows.FindWindowExA(mdi, 0, "AOL Child", nullptr);
       child != 0;
       child = p.windows.FindWindowExA(mdi, child, "AOL Child", nullptr)) {
    if (!visit(child)) return;
  }
}

Hwnd FindChatRoom(Platform& p) {
  Hwnd room = 0;
  ForEachHostChild(p, [&](Hwnd child) {
    auto& w = p.windows;
    if (w.FindWindowExA(child, 0, "RICHCNTL", nullptr) &&
        w.FindWindowExA(child, 0, "_AOL_Listbox", nullptr) &&
        w.FindWindowExA(child, 0, "_AOL_Icon", nullptr) &&
        w.FindWindowExA(child, 0, "_AOL_Static", nullptr)) {
      room = child;
      return false;
    }
    return true;
  });
  return room;
}

Hwnd FindTranscript(Platform& p) {
  Hwnd room = FindChatRoom(p);
  return room ? p.windows.FindWindowExA(room, 0, "RICHCNTL", nullptr) : 0;
}

void ChatSend(Platform& p, const std::string& line) {
  Hwnd room = FindChatRoom(p);
  // Without a room input is 0 and every message below goes nowhere: the
  // line is lost, quietly.
  Hwnd input = room ? NthChild(p, room, "RICHCNTL", 2) : 0;
  // A client that does not answer (hung) takes no line: it is lost, and the
  // member's unfinished text stays untouched.
  std::optional<std::string> saved = ReadText(p.windows, input);
  if (!saved) return;
  // Return is pressed only on the program's own line: were it pressed on
  // what the member left there, the member's text would go out.
  if (SetText(p, input, "") && SetText(p, input, line)) {
    // The client empties the input line when it takes the line; that is the
    // only sign of success. Return is pressed again until it does; a Return
    // or a read that the client does not answer is no sign.
    WaitForHost(p, [&] {
      p.loop.PumpEvents();
      if (!p.windows.SendMessageTimeoutA(input, kWmChar, kVkReturn, 0)) {
        return false;
      }
      auto left = ReadText(p.windows, input);
      return left && left->empty();
    });
  }
  // The member's unfinished text goes back as soon as the client answers.
  WaitForHost(p, [&] { return SetText(p, input, *saved); });
}

Hwnd FindWelcome(Platform& p) {
  Hwnd found = 0;
  ForEachHostChild(p, [&](Hwnd child) {
    if (InStr(1, GetCaption(p, child), kWelcomePrefix) == 1) {
      found = child;
      return false;
    }
    return true;
  });
  return found;
}

std::string GetUser(Platform& p) {
  std::string name;
  ForEachHostChild(p, [&](Hwnd child) {
    std::string title = GetCaption(p, child);
    if (InStr(1, title, kWelcomePrefix) != 1) return true;
    // The name stands between "Welcome, " and the first "!". A title with no
    // "!" names nobody we could trust, so it gives no name.
    int bang = InStr(1, title, "!");
    if (bang >= 10) name = Mid(title, 10, bang - 10);
    return false;
  });
  return name;
}

VbBool SignedOnName(Platform& p) {
  return GetUser(p).empty() ? kVbFalse : kVbTrue;
}

void DismissHostError(Platform& p) {
  Hwnd dialog = p.windows.FindWindowA("#32770", "America Online");
  Hwnd button = p.windows.FindWindowExA(dialog, 0, "Button", nullptr);
  if (dialog && button) PressSpace(p, button);
}

void WaitHostOK(Platform& p) {
  Hwnd button = 0;
  bool came = WaitForHost(p, [&] {
    p.loop.PumpEvents();
    Hwnd dialog = p.windows.FindWindowA("#32770", "America Online");
    button = dialog ? p.windows.FindWindowExA(dialog, 0, "Button", "OK") : 0;
    return dialog && button;
  });
  if (came) PressSpace(p, button);
}

}  // namespace v2
