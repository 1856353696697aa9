#pragma once
// The client realised with real windows of the real class names, for
// aolhost.exe: another program finds them with FindWindow and drives them
// with the messages it would send to the client.
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "aolsim/window_host.h"

namespace v2::aolsim {

class Win32WindowHost : public WindowHost {
 public:
  // One per process: the window procedure finds it through a global.
  Win32WindowHost();
  ~Win32WindowHost() override;

  Hwnd Create(Hwnd parent, const std::string& cls, const std::string& title,
              Handler handler) override;
  void Destroy(Hwnd h) override;
  bool Exists(Hwnd h) override;
  std::string_view Text(Hwnd h) override;
  void SetText(Hwnd h, std::string text) override;
  void AppendText(Hwnd h, std::string_view more) override;
  void EraseFront(Hwnd h, std::size_t count) override;
  std::vector<Hwnd> Children(Hwnd parent) override;
  // The top-level windows of this host, and the popups of the system's
  // menus it opens, in the system's order (front to back).
  std::vector<Hwnd> TopLevel() override;
  std::string ClassName(Hwnd h) override;
  void After(int ms, std::function<void()> work) override;
  // Really stops the thread: it sleeps, and its queue waits.
  void Hang(int ms) override;
  void Raise(Hwnd h) override;
  bool Shown(Hwnd h) override;
  bool Minimized(Hwnd h) override;
  std::int64_t NowMs() override;
  // The machine's local time, or the simulated system's once SetClock set
  // it.
  LocalTime LocalNow() override;
  Point Pointer() override;
  void MovePointer(int x, int y) override;
  // Real menus: a menu bar of the window, and a popup tracked by the system
  // (TrackPopupMenu), which returns when the menu closes.
  void SetMenuBar(Hwnd window, const std::vector<MenuEntry>& menus) override;
  void TrackPopup(Hwnd at, const std::vector<MenuEntry>& items,
                  std::function<void(std::uint32_t)> chosen) override;

  // From now on the simulated system's local time runs on from start.
  void SetClock(const LocalTime& start);

  // Milliseconds on the system's tick counter at the last message from
  // outside that changed something (reads do not count): the driving
  // program's activity, by which a runner sees it settle.
  std::uint64_t last_action_ms() const { return last_action_ms_; }
  // When a program last read the window's text from outside (0: never).
  std::uint64_t last_read_ms(Hwnd h) const {
    auto it = last_read_ms_.find(h);
    return it == last_read_ms_.end() ? 0 : it->second;
  }

  // Handles messages until ms have passed.
  static void PumpFor(int ms);

  // Milliseconds of a monotonic clock that never wraps, from the
  // performance counter (GetTickCount64 is not on Windows XP).
  static std::uint64_t MonotonicMs();

  struct Window;  // defined with the window procedure

 private:
  friend struct HostAccess;
  Window* Find(Hwnd h);
  void Changed(Hwnd h);

  std::map<Hwnd, Window*> windows_;
  std::map<std::uintptr_t, std::function<void()>> timers_;
  std::uint64_t last_action_ms_ = 0;
  std::map<Hwnd, std::uint64_t> last_read_ms_;
  bool clock_set_ = false;
  LocalTime clock_start_;
  std::uint64_t clock_set_at_ms_ = 0;
  int internal_ = 0;  // depth of the host's own calls into its windows
};

}  // namespace v2::aolsim
