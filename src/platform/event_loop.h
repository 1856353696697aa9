#pragma once
// The event loop and clock of the program's one thread.
#include <cstdint>
#include <functional>
#include <limits>
#include <string>

namespace v2 {

struct LocalTime {
  int year = 2001, month = 1, day = 1;
  int hour = 0, minute = 0, second = 0, millisecond = 0;
};

class Clock {
 public:
  virtual ~Clock() = default;
  // Monotonic milliseconds; all waits and timers are measured on it.
  virtual std::int64_t NowMs() = 0;
  virtual LocalTime LocalNow() = 0;
  // The system's short date form of today.
  virtual std::string ShortDate() = 0;
  // Milliseconds since the machine started (32-bit, wraps).
  virtual std::uint32_t TickCount() = 0;
  double SecondsSinceMidnight();
};

using TimerId = int;
using WatcherId = int;

// A time that never comes: a sleeping timer waits for its wake call.
inline constexpr std::int64_t kNeverMs =
    std::numeric_limits<std::int64_t>::max();

class EventLoop {
 public:
  virtual ~EventLoop() = default;
  virtual Clock& clock() = 0;

  // A timer fires every interval ms while enabled; a handler never starts
  // again while it is still running. Changing either setting restarts the
  // countdown.
  virtual TimerId CreateTimer(std::function<void()> tick) = 0;
  virtual void SetTimer(TimerId id, int interval_ms, bool enabled) = 0;
  // A timer whose handler knows that its next passes would find nothing to
  // do before until_ms (kNeverMs: before something calls WakeTimer) lets
  // them be skipped. WakeTimer ends the sleep at once. Either way the ticks
  // that follow fall on the timer's usual beat, so sleeping is the same as
  // running passes that do nothing, at no cost.
  virtual void SleepTimer(TimerId id, std::int64_t until_ms) = 0;
  virtual void WakeTimer(TimerId id) = 0;

  // Queues work for the next pump.
  virtual void Post(std::function<void()> event) = 0;

  // Something that watches another program by looking at it now and then (the
  // chat scanner). Under real time it looks every interval_ms, moved by at
  // most a quarter of that to share the loop's wakes with the timers:
  // earlier, when the loop is awake anyway, or later, when a timer is due
  // soon after; under virtual time it looks whenever the loop would
  // otherwise wait.
  virtual WatcherId AddWatcher(std::function<void()> look, int interval_ms) = 0;
  // A watcher that knows its looks would find nothing until something tells
  // it otherwise sleeps: it does not look, and the loop does not wake for it,
  // until WakeWatcher, which also has it look at the next pass.
  virtual void SleepWatcher(WatcherId id) = 0;
  virtual void WakeWatcher(WatcherId id) = 0;
  // How often it looks from now on: a shorter interval counts from now.
  virtual void SetWatcherInterval(WatcherId id, int interval_ms) = 0;

  // One pass: every event and due timer waiting now is handled.
  virtual void PumpEvents() = 0;
  // Blocks (without handling anything) until an event may be waiting or the
  // clock reaches deadline_ms. Virtual time moves the clock instead.
  virtual void WaitUntil(std::int64_t deadline_ms) = 0;
  // Lets ms pass while the thread is held: none of the program's events,
  // timers or watchers runs, however long, and the processor is not spun
  // (the thread sleeps). Other programs go on meanwhile; in the simulator the
  // simulated client's pending work runs and virtual time moves by ms. For
  // the few waits that must not let any other handler in.
  virtual void Hold(std::int64_t ms) = 0;
};

}  // namespace v2
