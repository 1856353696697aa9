#include "host/ghosting.h"

#include "host/host_windows.h"
#include "host/keywords.h"

namespace v2 {
namespace {

void Post(Platform& p, Hwnd h, std::uint32_t msg) {
  p.windows.PostMessageA(h, msg, 0, 0);
}

// k: the check box to set, the 5th (nobody sees the member) or the 1st.
void Ghost(Platform& p, int k) {
  RunKeyword(p, "Buddy");
  Hwnd mdi = 0, one = 0, many = 0;
  auto wait = [&p](const std::function<bool()>& pass) {
    return WaitForHost(p, [&] {
      p.loop.PumpEvents();
      return pass();
    });
  };
  if (!wait([&] {
        Hwnd frame = p.windows.FindWindowA("AOL Frame25", "America  Online");
        mdi =
            frame ? p.windows.FindWindowExA(frame, 0, "MDIClient", nullptr) : 0;
        if (!mdi) return false;
        one = p.windows.FindWindowExA(mdi, 0, "AOL Child",
                                      (GetUser(p) + "'s Buddy List").c_str());
        many = p.windows.FindWindowExA(mdi, 0, "AOL Child",
                                       (GetUser(p) + "'s Buddy Lists").c_str());
        return one || many;
      })) {
    return;
  }
  Hwnd list = one ? one : many;
  Pause(p, 0.5);
  Hwnd icon = 0;
  if (!wait([&] { return (icon = NthChild(p, list, "_AOL_Icon", 5)) != 0; })) {
    return;
  }
  Post(p, icon, kWmLButtonDown);
  Post(p, icon, kWmLButtonUp);
  Hwnd prefs = 0;
  if (!wait([&] {
        prefs =
            p.windows.FindWindowExA(mdi, 0, "AOL Child", "Privacy Preferences");
        return prefs != 0;
      })) {
    return;
  }
  Pause(p, 0.5);
  Hwnd box = 0;
  if (!wait([&] {
        return (box = NthChild(p, prefs, "_AOL_Checkbox", k)) != 0;
      })) {
    return;
  }
  // The same message in both directions: the chosen box is set, no box is
  // ever cleared.
  p.windows.SendMessageA(box, kBmSetCheck, static_cast<WParam>(-1), 0);
  Hwnd save = 0;
  if (!wait([&] { return (save = NthChild(p, prefs, "_AOL_Icon", 4)) != 0; })) {
    return;
  }
  Post(p, save, kWmLButtonDown);
  Post(p, save, kWmLButtonUp);
  WaitHostOK(p);
  Pause(p, 0.5);
  if (one) CloseWindow(p, one);
  if (many) CloseWindow(p, many);
}

}  // namespace

void GhostOn(Platform& p) { Ghost(p, 5); }

void GhostOff(Platform& p) { Ghost(p, 1); }

}  // namespace v2
