#pragma once
// The bookkeeping both event loops share: timers, posted events and watchers,
// with the rules the program relies on (a timer never starts while its own
// handler still runs; missed ticks coalesce; a pump handles only what was
// waiting when it began). A backend adds the clock and the way it waits.
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <vector>

#include "platform/event_loop.h"

namespace v2 {

class LoopCore {
 public:
  // The window manager does not time anything shorter than this.
  static constexpr int kTimerMinimumMs = 10;

  // Whose a timer is: the program's, another program's (the simulated
  // client's), which the program's end leaves running, or the world's
  // outside both (a person's hands), which runs even while the program
  // holds its thread.
  enum class Owner { kProgram, kOther, kOutside };
  TimerId CreateTimer(std::function<void()> tick,
                      Owner owner = Owner::kProgram);
  void SetTimer(TimerId id, int interval_ms, bool enabled, std::int64_t now);
  void SleepTimer(TimerId id, std::int64_t until);
  void WakeTimer(TimerId id, std::int64_t now);
  void Post(std::function<void()> event);
  WatcherId AddWatcher(std::function<void()> look, int interval_ms,
                       std::int64_t now);
  void SleepWatcher(WatcherId id);
  void WakeWatcher(WatcherId id, std::int64_t now);
  void SetWatcherInterval(WatcherId id, int interval_ms, std::int64_t now);

  // The program's process has ended: its timers never fire again, and its
  // posted events and watchers are gone. Other programs' timers go on.
  void EndProgram();

  // Runs the events that were waiting when it began; true if there were any.
  bool RunPosted();
  // Fires every enabled timer due at now that is not already running (only
  // the outside world's, if asked).
  bool FireDueTimers(std::int64_t now, bool outside_only = false);
  // Runs the watchers that are awake and due at now, or within a quarter
  // interval of it (all that are awake when all is set); true when
  // they posted anything.
  bool RunWatchers(std::int64_t now, bool all);

  // Whether an event is waiting or a timer is due at the given time.
  bool Ready(std::int64_t at) const;
  // The earliest time a timer (and, if asked, a watcher) falls due; INT64_MAX
  // when nothing is scheduled. A watcher due a little before a timer counts
  // as due with it, so that the loop wakes once for both.
  std::int64_t NextDue(bool with_watchers, bool outside_only = false) const;

 private:
  struct Timer {
    std::function<void()> tick;
    int interval = 0;
    bool enabled = false;
    bool running = false;
    bool asleep = false;  // until woken; due keeps the beat meanwhile
    Owner owner = Owner::kProgram;
    std::int64_t due = 0;
    std::int64_t last = 0;  // when the last tick started
  };
  Timer* Find(TimerId id);
  // The first tick of t's beat at or after at.
  static std::int64_t OnBeat(const Timer& t, std::int64_t at);
  struct Watcher {
    std::function<void()> look;
    int interval;
    std::int64_t due;
    bool asleep = false;
  };

  std::vector<std::unique_ptr<Timer>> timers_;
  std::deque<std::function<void()>> posted_;
  // Ids are places here, as for timers: an ended program's stay taken.
  std::vector<Watcher> watchers_;
};

}  // namespace v2
