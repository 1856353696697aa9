#include "platform/sim/sim_loop.h"

#include <poll.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <ctime>
#include <limits>

namespace v2::sim {
namespace {

constexpr int kTimerMinimumMs = 10;  // as the real window manager clamps
constexpr std::uint32_t kTicksAtStart = 2 * 3600 * 1000;  // booted 2 h before

std::time_t ToEpoch(const LocalTime& t) {
  std::tm tm{};
  tm.tm_year = t.year - 1900;
  tm.tm_mon = t.month - 1;
  tm.tm_mday = t.day;
  tm.tm_hour = t.hour;
  tm.tm_min = t.minute;
  tm.tm_sec = t.second;
  return timegm(&tm);  // plain calendar arithmetic: no time zone, no DST
}

}  // namespace

LocalTime MachineLocalTime() {
  std::time_t now = std::time(nullptr);
  std::tm tm{};
  localtime_r(&now, &tm);
  return {tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_mday, tm.tm_hour,
          tm.tm_min,         tm.tm_sec,     0};
}

bool ParseLocalTime(const std::string& text, LocalTime& out) {
  LocalTime t;
  char tail = 0;
  if (std::sscanf(text.c_str(), "%4d-%2d-%2d %2d:%2d:%2d%c", &t.year, &t.month,
                  &t.day, &t.hour, &t.minute, &t.second, &tail) != 6) {
    return false;
  }
  std::tm tm{};
  std::time_t e = ToEpoch(t);
  gmtime_r(&e, &tm);
  if (tm.tm_year + 1900 != t.year || tm.tm_mon + 1 != t.month ||
      tm.tm_mday != t.day || t.hour > 23 || t.minute > 59 || t.second > 59) {
    return false;
  }
  out = t;
  return true;
}

SimClock::SimClock(TimeMode mode, LocalTime start)
    : mode_(mode),
      start_(start),
      real_start_(std::chrono::steady_clock::now()) {}

std::int64_t SimClock::NowMs() {
  if (mode_ == TimeMode::kVirtual) return virtual_ms_;
  return std::chrono::duration_cast<std::chrono::milliseconds>(
             std::chrono::steady_clock::now() - real_start_)
      .count();
}

LocalTime SimClock::LocalNow() {
  std::int64_t ms = NowMs();
  std::time_t e = ToEpoch(start_) + static_cast<std::time_t>(ms / 1000);
  std::tm tm{};
  gmtime_r(&e, &tm);
  return {tm.tm_year + 1900,
          tm.tm_mon + 1,
          tm.tm_mday,
          tm.tm_hour,
          tm.tm_min,
          tm.tm_sec,
          static_cast<int>(ms % 1000)};
}

std::string SimClock::ShortDate() {
  LocalTime t = LocalNow();
  return std::to_string(t.month) + "/" + std::to_string(t.day) + "/" +
         std::to_string(t.year);
}

std::uint32_t SimClock::TickCount() {
  return kTicksAtStart + static_cast<std::uint32_t>(NowMs());
}

void SimClock::Advance(std::int64_t ms) {
  if (mode_ == TimeMode::kVirtual && ms > 0) virtual_ms_ += ms;
}

SimLoop::SimLoop(TimeMode mode, LocalTime start) : clock_(mode, start) {}

TimerId SimLoop::CreateTimer(std::function<void()> tick) {
  auto t = std::make_unique<Timer>();
  t->tick = std::move(tick);
  timers_.push_back(std::move(t));
  return static_cast<TimerId>(timers_.size() - 1);
}

void SimLoop::SetTimer(TimerId id, int interval_ms, bool enabled) {
  if (id < 0 || static_cast<std::size_t>(id) >= timers_.size()) return;
  Timer& t = *timers_[static_cast<std::size_t>(id)];
  t.interval = interval_ms <= 0 ? 0 : std::max(interval_ms, kTimerMinimumMs);
  t.enabled = enabled && t.interval > 0;
  t.due = clock_.NowMs() + t.interval;
}

void SimLoop::Post(std::function<void()> event) {
  posted_.push_back(std::move(event));
}

void SimLoop::AddWatcher(std::function<void()> look, int interval_ms) {
  watchers_.push_back({std::move(look), std::max(interval_ms, 1),
                       clock_.NowMs() + interval_ms});
}

void SimLoop::AddForeign(std::function<bool()> work) {
  foreign_.push_back(std::move(work));
}

void SimLoop::SetInput(int fd, std::function<void()> ready) {
  input_fd_ = fd;
  input_ready_ = std::move(ready);
}

bool SimLoop::RunForeign() {
  bool any = false;
  for (std::size_t i = 0; i < foreign_.size(); ++i) any |= foreign_[i]();
  return any;
}

bool SimLoop::RunWatchers(bool all) {
  std::size_t before = posted_.size();
  std::int64_t now = clock_.NowMs();
  for (std::size_t i = 0; i < watchers_.size(); ++i) {
    if (!all && watchers_[i].due > now) continue;
    watchers_[i].due = now + watchers_[i].interval;
    watchers_[i].look();
  }
  return posted_.size() != before;
}

bool SimLoop::FireDueTimers() {
  bool any = false;
  std::int64_t now = clock_.NowMs();
  for (std::size_t i = 0; i < timers_.size(); ++i) {
    Timer& t = *timers_[i];
    if (!t.enabled || t.running || t.due > now) continue;
    t.due += t.interval;
    if (t.due <= now) t.due = now + t.interval;  // missed ticks coalesce
    t.running = true;
    auto tick = t.tick;
    tick();
    timers_[i]->running = false;
    any = true;
  }
  return any;
}

void SimLoop::PumpEvents() {
  RunForeign();
  if (clock_.mode() == TimeMode::kReal) RunWatchers(false);
  // Only what was waiting when the pass began; a handler that pumps again
  // takes its share from the same queue.
  for (std::size_t n = posted_.size(); n > 0 && !posted_.empty(); --n) {
    auto event = std::move(posted_.front());
    posted_.pop_front();
    event();
  }
  FireDueTimers();
  RunForeign();
}

bool SimLoop::Ready(std::int64_t at) {
  if (!posted_.empty()) return true;
  for (const auto& t : timers_) {
    if (t->enabled && !t->running && t->due <= at) return true;
  }
  return false;
}

std::int64_t SimLoop::NextDue() {
  std::int64_t next = std::numeric_limits<std::int64_t>::max();
  for (const auto& t : timers_) {
    if (t->enabled && !t->running) next = std::min(next, t->due);
  }
  if (clock_.mode() == TimeMode::kReal) {
    for (const auto& w : watchers_) next = std::min(next, w.due);
  }
  return next;
}

void SimLoop::WaitUntil(std::int64_t deadline_ms) {
  // The other process gets its turn, but its work does not wake this thread:
  // only events of the program's own end a wait early.
  RunForeign();
  if (clock_.mode() == TimeMode::kVirtual) {
    if (RunWatchers(true) || Ready(clock_.NowMs())) return;
    std::int64_t target = std::min(deadline_ms, NextDue());
    clock_.Advance(target - clock_.NowMs());
    return;
  }
  if (Ready(clock_.NowMs())) return;
  std::int64_t now = clock_.NowMs();
  std::int64_t target = std::min(deadline_ms, NextDue());
  auto timeout =
      static_cast<int>(std::clamp<std::int64_t>(target - now, 0, INT_MAX));
  if (input_fd_ >= 0) {
    pollfd p{input_fd_, POLLIN, 0};
    if (poll(&p, 1, timeout) > 0 && input_ready_) input_ready_();
  } else {
    poll(nullptr, 0, timeout);
  }
}

void SimLoop::RunUntilIdle() {
  // Timers count as ready only if they were due when this began: a handler
  // that waits longer than its own interval would otherwise never let go.
  const std::int64_t began = clock_.NowMs();
  for (;;) {
    PumpEvents();
    bool more = RunForeign();
    if (clock_.mode() == TimeMode::kVirtual) more |= RunWatchers(true);
    if (!more && !Ready(began)) return;
  }
}

void SimLoop::RunFor(std::int64_t ms) {
  std::int64_t deadline = clock_.NowMs() + ms;
  for (;;) {
    RunUntilIdle();
    if (clock_.NowMs() >= deadline) return;
    WaitUntil(deadline);
  }
}

}  // namespace v2::sim
