#pragma once
// The client realised over the in-process window tree and event loop.
#include <memory>
#include <vector>

#include "aolsim/window_host.h"
#include "platform/sim/sim_loop.h"
#include "platform/sim/sim_windows.h"

namespace v2::aolsim {

class SimWindowHost : public WindowHost, private sim::SimWindows::Thread {
 public:
  SimWindowHost(sim::SimWindows& windows, sim::SimLoop& loop);
  ~SimWindowHost() override;
  Hwnd Create(Hwnd parent, const std::string& cls, const std::string& title,
              Handler handler) override;
  void Destroy(Hwnd h) override { windows_.Destroy(h); }
  bool Exists(Hwnd h) override { return windows_.IsWindow(h); }
  std::string_view Text(Hwnd h) override { return windows_.TextView(h); }
  void SetText(Hwnd h, std::string text) override {
    windows_.SetText(h, std::move(text));
  }
  void AppendText(Hwnd h, std::string_view more) override {
    windows_.AppendText(h, more);
  }
  void EraseFront(Hwnd h, std::size_t count) override {
    windows_.EraseFront(h, count);
  }
  std::vector<Hwnd> Children(Hwnd parent) override {
    return windows_.Children(parent);
  }
  std::vector<Hwnd> TopLevel() override;
  std::string ClassName(Hwnd h) override { return windows_.ClassOf(h); }
  // The client's timed work is on the program's loop, as its timers: it
  // runs when the program pumps or waits, not while the program holds.
  void After(int ms, std::function<void()> work) override;
  // The thread is stopped from now on for ms, on the loop's clock; this
  // returns at once. The program's messages to the client wait as they
  // would for a hung program.
  void Hang(int ms) override;
  // How much longer the client stays hung; 0 while it answers.
  std::int64_t HungForMs() { return StoppedForMs(); }
  void Raise(Hwnd h) override;
  bool Shown(Hwnd h) override { return windows_.Shown(h); }
  bool Minimized(Hwnd h) override { return windows_.IsIconic(h); }
  std::int64_t NowMs() override { return loop_.clock().NowMs(); }
  LocalTime LocalNow() override { return loop_.clock().LocalNow(); }
  Point Pointer() override;
  void MovePointer(int x, int y) override { windows_.SetCursorPos(x, y); }
  void SetMenuBar(Hwnd window, const std::vector<MenuEntry>& menus) override;
  // The popup is a #32768 window whose keys MenuKeys interprets; it opens at
  // once, above every other window, and a popup still open closes first.
  void TrackPopup(Hwnd at, const std::vector<MenuEntry>& items,
                  std::function<void(std::uint32_t)> chosen) override;

 private:
  struct Pending {
    TimerId timer;
    std::function<void()> work;
  };
  Hmenu BuildMenu(const std::vector<MenuEntry>& items);
  std::int64_t StoppedForMs() override;
  // In virtual time the clock moves on; in real time the thread sleeps.
  void Block(std::int64_t ms) override;

  sim::SimWindows& windows_;
  sim::SimLoop& loop_;
  std::vector<std::shared_ptr<Pending>> pending_;
  // Done, their timers free for the next work: a loop's timers are never
  // taken back, so a day of the client's timed work reuses a few.
  std::vector<std::shared_ptr<Pending>> idle_;
  Hwnd popup_ = 0;
  std::int64_t stopped_until_ms_ = 0;
};

}  // namespace v2::aolsim
