#include "platform/loop_core.h"

#include <algorithm>
#include <limits>

namespace v2 {

TimerId LoopCore::CreateTimer(std::function<void()> tick, Owner owner) {
  auto t = std::make_unique<Timer>();
  t->tick = std::move(tick);
  t->owner = owner;
  timers_.push_back(std::move(t));
  return static_cast<TimerId>(timers_.size() - 1);
}

LoopCore::Timer* LoopCore::Find(TimerId id) {
  if (id < 0 || static_cast<std::size_t>(id) >= timers_.size()) return nullptr;
  return timers_[static_cast<std::size_t>(id)].get();
}

std::int64_t LoopCore::OnBeat(const Timer& t, std::int64_t at) {
  // Whole intervals from due to at, rounded up (either way of due).
  std::int64_t gap = at - t.due;
  std::int64_t beats = gap / t.interval;
  if (gap > 0 && gap % t.interval != 0) ++beats;
  return t.due + beats * t.interval;
}

void LoopCore::SetTimer(TimerId id, int interval_ms, bool enabled,
                        std::int64_t now) {
  Timer* t = Find(id);
  if (!t) return;
  t->interval = interval_ms <= 0 ? 0 : std::max(interval_ms, kTimerMinimumMs);
  t->enabled = enabled && t->interval > 0;
  t->asleep = false;
  t->due = now + t->interval;
  t->last = now;
}

void LoopCore::SleepTimer(TimerId id, std::int64_t until) {
  Timer* t = Find(id);
  if (!t || !t->enabled) return;
  t->asleep = until == kNeverMs;
  if (!t->asleep && until > t->due) t->due = OnBeat(*t, until);
}

void LoopCore::WakeTimer(TimerId id, std::int64_t now) {
  Timer* t = Find(id);
  if (!t || !t->enabled) return;
  // Never a second tick in the millisecond of the last one: its next beat
  // is an interval later.
  std::int64_t beat = OnBeat(*t, std::max(now, t->last + 1));
  if (t->asleep || beat < t->due) t->due = beat;
  t->asleep = false;
}

void LoopCore::EndProgram() {
  // Ids are places in timers_: an ended program's stay taken, and dead.
  for (auto& t : timers_) {
    if (t->owner != Owner::kProgram) continue;
    t->enabled = false;
    t->tick = nullptr;
  }
  posted_.clear();
  for (auto& w : watchers_) {
    w.look = nullptr;
    w.asleep = true;
  }
}

void LoopCore::Post(std::function<void()> event) {
  posted_.push_back(std::move(event));
}

WatcherId LoopCore::AddWatcher(std::function<void()> look, int interval_ms,
                               std::int64_t now) {
  const int interval = std::max(interval_ms, 1);
  watchers_.push_back({std::move(look), interval, now + interval});
  return static_cast<WatcherId>(watchers_.size() - 1);
}

void LoopCore::SleepWatcher(WatcherId id) {
  if (id < 0 || static_cast<std::size_t>(id) >= watchers_.size()) return;
  watchers_[static_cast<std::size_t>(id)].asleep = true;
}

void LoopCore::WakeWatcher(WatcherId id, std::int64_t now) {
  if (id < 0 || static_cast<std::size_t>(id) >= watchers_.size()) return;
  Watcher& w = watchers_[static_cast<std::size_t>(id)];
  if (!w.look) return;  // its program has ended
  w.asleep = false;
  w.due = now;
}

void LoopCore::SetWatcherInterval(WatcherId id, int interval_ms,
                                  std::int64_t now) {
  if (id < 0 || static_cast<std::size_t>(id) >= watchers_.size()) return;
  Watcher& w = watchers_[static_cast<std::size_t>(id)];
  w.interval = std::max(interval_ms, 1);
  w.due = std::min(w.due, now + w.interval);
}

bool LoopCore::RunPosted() {
  // Only what was waiting when the pass began; a handler that pumps again
  // takes its share from the same queue.
  bool any = false;
  for (std::size_t n = posted_.size(); n > 0 && !posted_.empty(); --n) {
    auto event = std::move(posted_.front());
    posted_.pop_front();
    event();
    any = true;
  }
  return any;
}

bool LoopCore::FireDueTimers(std::int64_t now, bool outside_only) {
  bool any = false;
  for (std::size_t i = 0; i < timers_.size(); ++i) {
    Timer& t = *timers_[i];
    if (!t.enabled || t.running || t.asleep || t.due > now) continue;
    if (outside_only && t.owner != Owner::kOutside) continue;
    t.last = now;
    t.due += t.interval;
    if (t.due <= now) t.due = now + t.interval;  // missed ticks coalesce
    t.running = true;
    // The simulator ends a program's process by unwinding it from inside
    // a handler: the timer must be free to run again all the same.
    struct Done {
      Timer* timer;
      ~Done() { timer->running = false; }
    } done{timers_[i].get()};
    auto tick = t.tick;
    tick();
    any = true;
  }
  return any;
}

bool LoopCore::RunWatchers(std::int64_t now, bool all) {
  std::size_t before = posted_.size();
  for (std::size_t i = 0; i < watchers_.size(); ++i) {
    Watcher& w = watchers_[i];
    if (w.asleep) continue;
    // Awake anyway: a look due within a quarter interval comes now and
    // spares the loop a wake of its own a moment later.
    if (!all && w.due - now > w.interval / 4) continue;
    w.due = now + w.interval;
    auto look = w.look;  // the look may add watchers
    look();
  }
  return posted_.size() != before;
}

bool LoopCore::Ready(std::int64_t at) const {
  if (!posted_.empty()) return true;
  for (const auto& t : timers_) {
    if (t->enabled && !t->running && !t->asleep && t->due <= at) return true;
  }
  return false;
}

std::int64_t LoopCore::NextDue(bool with_watchers, bool outside_only) const {
  std::int64_t next = std::numeric_limits<std::int64_t>::max();
  for (const auto& t : timers_) {
    if (outside_only && t->owner != Owner::kOutside) continue;
    if (t->enabled && !t->running && !t->asleep) next = std::min(next, t->due);
  }
  if (!with_watchers) return next;
  const std::int64_t timer = next;
  for (const auto& w : watchers_) {
    if (w.asleep) continue;
    // A timer due soon after the look: the look waits for that wake (it
    // is overdue then), and from there on the two share their wakes.
    const bool share = timer >= w.due && timer - w.due <= w.interval / 4;
    next = std::min(next, share ? timer : w.due);
  }
  return next;
}

}  // namespace v2
