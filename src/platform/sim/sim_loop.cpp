#include "platform/sim/sim_loop.h"

#include <poll.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <ctime>

namespace v2::sim {
namespace {

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
  return uptime_ms_ + static_cast<std::uint32_t>(NowMs());
}

void SimClock::Advance(std::int64_t ms) {
  if (mode_ == TimeMode::kVirtual && ms > 0) virtual_ms_ += ms;
}

SimLoop::SimLoop(TimeMode mode, LocalTime start) : clock_(mode, start) {}

TimerId SimLoop::CreateTimer(std::function<void()> tick) {
  return core_.CreateTimer(std::move(tick));
}

void SimLoop::SetTimer(TimerId id, int interval_ms, bool enabled) {
  core_.SetTimer(id, interval_ms, enabled, clock_.NowMs());
}

void SimLoop::SleepTimer(TimerId id, std::int64_t until_ms) {
  core_.SleepTimer(id, until_ms);
}

void SimLoop::WakeTimer(TimerId id) { core_.WakeTimer(id, clock_.NowMs()); }

void SimLoop::Post(std::function<void()> event) {
  core_.Post(std::move(event));
}

WatcherId SimLoop::AddWatcher(std::function<void()> look, int interval_ms) {
  return core_.AddWatcher(std::move(look), interval_ms, clock_.NowMs());
}

void SimLoop::SleepWatcher(WatcherId id) { core_.SleepWatcher(id); }

void SimLoop::WakeWatcher(WatcherId id) {
  core_.WakeWatcher(id, clock_.NowMs());
}

void SimLoop::SetWatcherInterval(WatcherId id, int interval_ms) {
  core_.SetWatcherInterval(id, interval_ms, clock_.NowMs());
}

TimerId SimLoop::CreateForeignTimer(std::function<void()> tick) {
  return core_.CreateTimer(std::move(tick), LoopCore::Owner::kOther);
}

void SimLoop::AfterOutside(int ms, std::function<void()> work) {
  Outside* o = nullptr;
  for (auto& free : outside_) {
    if (!free->busy) o = free.get();
  }
  if (!o) {
    outside_.push_back(std::make_unique<Outside>());
    o = outside_.back().get();
    o->timer = core_.CreateTimer(
        [this, o] {
          core_.SetTimer(o->timer, 0, false, clock_.NowMs());  // once
          auto due = std::move(o->work);
          o->work = nullptr;
          o->busy = false;
          if (due) due();
        },
        LoopCore::Owner::kOutside);
  }
  o->busy = true;
  o->work = std::move(work);
  core_.SetTimer(o->timer, std::max(ms, 1), true, clock_.NowMs());
}

void SimLoop::EndProgram() {
  core_.EndProgram();
  halted_ = false;
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

void SimLoop::PumpEvents() {
  if (halted_) return;
  RunForeign();
  if (clock_.mode() == TimeMode::kReal)
    core_.RunWatchers(clock_.NowMs(), false);
  core_.RunPosted();
  core_.FireDueTimers(clock_.NowMs());
  RunForeign();
}

void SimLoop::WaitUntil(std::int64_t deadline_ms) {
  // The other process gets its turn, but its work does not wake this thread:
  // only events of the program's own end a wait early.
  if (halted_) {
    if (clock_.mode() == TimeMode::kVirtual) {
      clock_.Advance(std::max<std::int64_t>(deadline_ms - clock_.NowMs(), 0));
    }
    return;
  }
  RunForeign();
  if (clock_.mode() == TimeMode::kVirtual) {
    if (core_.RunWatchers(clock_.NowMs(), true) ||
        core_.Ready(clock_.NowMs())) {
      return;
    }
    std::int64_t target = std::min(deadline_ms, core_.NextDue(false));
    clock_.Advance(target - clock_.NowMs());
    return;
  }
  if (core_.Ready(clock_.NowMs())) return;
  std::int64_t now = clock_.NowMs();
  std::int64_t target = std::min(deadline_ms, core_.NextDue(true));
  auto timeout =
      static_cast<int>(std::clamp<std::int64_t>(target - now, 0, INT_MAX));
  if (input_fd_ >= 0) {
    pollfd p{input_fd_, POLLIN, 0};
    if (poll(&p, 1, timeout) > 0 && input_ready_) input_ready_();
  } else {
    poll(nullptr, 0, timeout);
  }
}

void SimLoop::Hold(std::int64_t ms) {
  ms = std::max<std::int64_t>(ms, 0);
  if (halted_) {
    clock_.Advance(ms);
    return;
  }
  // The other process runs before and after; nothing of the program's does.
  // A person's hands go on meanwhile.
  RunForeign();
  if (clock_.mode() == TimeMode::kVirtual) {
    const std::int64_t end = clock_.NowMs() + ms;
    holding_ = true;
    for (std::int64_t next; (next = core_.NextDue(false, true)) <= end;) {
      clock_.Advance(next - clock_.NowMs());
      core_.FireDueTimers(clock_.NowMs(), true);
      RunForeign();
    }
    holding_ = false;
    clock_.Advance(end - clock_.NowMs());
  } else if (ms > 0) {
    poll(nullptr, 0, static_cast<int>(std::min<std::int64_t>(ms, INT_MAX)));
  }
  RunForeign();
}

void SimLoop::RunUntilIdle() {
  // Timers count as ready only if they were due when this began: a handler
  // that waits longer than its own interval would otherwise never let go.
  const std::int64_t began = clock_.NowMs();
  for (;;) {
    if (halted_) return;
    PumpEvents();
    bool more = RunForeign();
    if (clock_.mode() == TimeMode::kVirtual) {
      more |= core_.RunWatchers(clock_.NowMs(), true);
    }
    if (!more && !core_.Ready(began)) return;
  }
}

void SimLoop::RunFor(std::int64_t ms) {
  std::int64_t deadline = clock_.NowMs() + ms;
  for (;;) {
    RunUntilIdle();
    if (halted_ || clock_.NowMs() >= deadline) return;
    WaitUntil(deadline);
  }
}

}  // namespace v2::sim
