#pragma once
// The simulated event loop and clock. In virtual time the clock moves only
// when the program waits or the runner lets time pass, so a scenario that
// spans hours runs in milliseconds with every timer firing at its due time.
// In real time it waits on the clock and, optionally, on one input file.
#include <chrono>
#include <memory>
#include <vector>

#include "platform/event_loop.h"
#include "platform/loop_core.h"

namespace v2::sim {

enum class TimeMode { kVirtual, kReal };

class SimClock : public Clock {
 public:
  SimClock(TimeMode mode, LocalTime start);
  std::int64_t NowMs() override;
  LocalTime LocalNow() override;
  std::string ShortDate() override;  // M/d/yyyy
  // Counts from the machine's start, which was uptime_ms before the clock's
  // start (0 unless SetUptime says otherwise); wraps at 2^32 as Windows'
  // counter does.
  std::uint32_t TickCount() override;
  void SetUptime(std::uint32_t uptime_ms) { uptime_ms_ = uptime_ms; }
  void Advance(std::int64_t ms);  // virtual time only
  TimeMode mode() const { return mode_; }

 private:
  TimeMode mode_;
  LocalTime start_;
  std::int64_t virtual_ms_ = 0;
  std::uint32_t uptime_ms_ = 0;
  std::chrono::steady_clock::time_point real_start_;
};

// The current local time of this machine.
LocalTime MachineLocalTime();
// Parses "YYYY-MM-DD HH:MM:SS"; false when it is not a valid date and time.
bool ParseLocalTime(const std::string& text, LocalTime& out);

class SimLoop : public EventLoop {
 public:
  SimLoop(TimeMode mode, LocalTime start);
  Clock& clock() override { return clock_; }
  SimClock& sim_clock() { return clock_; }

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
  void WaitUntil(std::int64_t deadline_ms) override;
  void Hold(std::int64_t ms) override;

  // Work of the other process (the simulated client): it runs at every pump
  // and before every wait; it returns whether it did anything.
  void AddForeign(std::function<bool()> work);
  // A timer of the other process, which the program's end leaves running.
  TimerId CreateForeignTimer(std::function<void()> tick);
  // Work of the world outside both processes (a person's hands), done once
  // ms from now: also while the program holds its thread, when nothing of
  // the program's runs (virtual time only; in real time at the hold's end).
  void AfterOutside(int ms, std::function<void()> work);
  // Whether the program is holding its thread now (Hold).
  bool holding() const { return holding_; }
  // The program's process has ended, as a machine ends it: none of its
  // timers, events or watchers runs again, and a new program can start on
  // the same clock beside the same client.
  void EndProgram();
  // Real time only: a wait also ends when fd is readable, and ready() runs.
  void SetInput(int fd, std::function<void()> ready);

  // Handles everything that is ready now, without moving the clock.
  void RunUntilIdle();
  // Lets ms pass with the program running.
  void RunFor(std::int64_t ms);
  // The program has ended: from now on nothing of it runs, and its waits
  // (in virtual time) pass at once.
  void Halt() { halted_ = true; }
  bool halted() const { return halted_; }

 private:
  bool RunForeign();

  SimClock clock_;
  LoopCore core_;
  // The outside world's one-shot timers; one whose work is done is used
  // again (a loop's timers are never taken back).
  struct Outside {
    TimerId timer = 0;
    std::function<void()> work;
    bool busy = false;
  };
  std::vector<std::unique_ptr<Outside>> outside_;
  std::vector<std::function<bool()>> foreign_;
  bool halted_ = false;
  bool holding_ = false;
  int input_fd_ = -1;
  std::function<void()> input_ready_;
};

}  // namespace v2::sim
