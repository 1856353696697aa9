#pragma once
// The event loop of the program's thread over its Windows message queue, and
// the system clock. Waiting blocks on the queue until a message comes or the
// next timer falls due; it never spins.
#include "platform/event_loop.h"
#include "platform/loop_core.h"

namespace v2::win32 {

class Win32Clock : public Clock {
 public:
  Win32Clock();
  std::int64_t NowMs() override;
  LocalTime LocalNow() override;
  std::string ShortDate() override;  // the member's own short date form
  std::uint32_t TickCount() override;

 private:
  std::int64_t frequency_;
  std::int64_t start_;
};

class Win32Loop : public EventLoop {
 public:
  Clock& clock() override { return clock_; }
  TimerId CreateTimer(std::function<void()> tick) override;
  void SetTimer(TimerId id, int interval_ms, bool enabled) override;
  void SleepTimer(TimerId id, std::int64_t until_ms) override;
  void WakeTimer(TimerId id) override;
  void Post(std::function<void()> event) override;
  WatcherId AddWatcher(std::function<void()> look, int interval_ms) override;
  void SleepWatcher(WatcherId id) override;
  void WakeWatcher(WatcherId id) override;
  void SetWatcherInterval(WatcherId id, int interval_ms) override;
  void PumpEvents() override;
  // The same, leaving the keyboard's and the mouse's messages in the queue:
  // while a popup menu is open its own loop must see them.
  void PumpEventsLeavingInput();
  void WaitUntil(std::int64_t deadline_ms) override;
  // Sleeps: messages stay in the queue until the thread pumps again.
  void Hold(std::int64_t ms) override;

  // Runs until WM_QUIT reaches the thread; gives its exit code.
  int Run();
  bool quitting() const { return quitting_; }

 private:
  // Handles the waiting messages numbered first to last.
  void Drain(unsigned first, unsigned last);
  void RunLoopWork();

  Win32Clock clock_;
  LoopCore core_;
  bool quitting_ = false;
  bool timed_out_ = false;  // the last wait ran out with nothing come
  int exit_code_ = 0;
};

}  // namespace v2::win32
