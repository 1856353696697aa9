#include "platform/win32/win32_loop.h"

#include <windows.h>

#include <algorithm>
#include <limits>

namespace v2::win32 {

Win32Clock::Win32Clock() {
  LARGE_INTEGER f, now;
  QueryPerformanceFrequency(&f);
  QueryPerformanceCounter(&now);
  frequency_ = f.QuadPart > 0 ? f.QuadPart : 1;
  start_ = now.QuadPart;
}

std::int64_t Win32Clock::NowMs() {
  LARGE_INTEGER now;
  QueryPerformanceCounter(&now);
  std::int64_t ticks = now.QuadPart - start_;
  return ticks / frequency_ * 1000 + ticks % frequency_ * 1000 / frequency_;
}

LocalTime Win32Clock::LocalNow() {
  SYSTEMTIME t;
  GetLocalTime(&t);
  return {t.wYear,   t.wMonth,  t.wDay,         t.wHour,
          t.wMinute, t.wSecond, t.wMilliseconds};
}

std::string Win32Clock::ShortDate() {
  char buffer[80] = {};
  int n = GetDateFormatA(LOCALE_USER_DEFAULT, DATE_SHORTDATE, nullptr, nullptr,
                         buffer, sizeof(buffer));
  return n > 0 ? std::string(buffer) : std::string();
}

std::uint32_t Win32Clock::TickCount() { return GetTickCount(); }

TimerId Win32Loop::CreateTimer(std::function<void()> tick) {
  return core_.CreateTimer(std::move(tick));
}

void Win32Loop::SetTimer(TimerId id, int interval_ms, bool enabled) {
  core_.SetTimer(id, interval_ms, enabled, clock_.NowMs());
}

void Win32Loop::SleepTimer(TimerId id, std::int64_t until_ms) {
  core_.SleepTimer(id, until_ms);
}

void Win32Loop::WakeTimer(TimerId id) { core_.WakeTimer(id, clock_.NowMs()); }

void Win32Loop::Post(std::function<void()> event) {
  core_.Post(std::move(event));
}

WatcherId Win32Loop::AddWatcher(std::function<void()> look, int interval_ms) {
  return core_.AddWatcher(std::move(look), interval_ms, clock_.NowMs());
}

void Win32Loop::SleepWatcher(WatcherId id) { core_.SleepWatcher(id); }

void Win32Loop::WakeWatcher(WatcherId id) {
  core_.WakeWatcher(id, clock_.NowMs());
}

void Win32Loop::SetWatcherInterval(WatcherId id, int interval_ms) {
  core_.SetWatcherInterval(id, interval_ms, clock_.NowMs());
}

void Win32Loop::Drain(unsigned first, unsigned last) {
  MSG msg;
  while (!quitting_ && PeekMessageA(&msg, nullptr, first, last, PM_REMOVE)) {
    if (msg.message == WM_QUIT) {
      quitting_ = true;
      exit_code_ = static_cast<int>(msg.wParam);
      break;
    }
    TranslateMessage(&msg);
    DispatchMessageA(&msg);
  }
}

void Win32Loop::PumpEvents() {
  Drain(0, 0);
  RunLoopWork();
}

void Win32Loop::PumpEventsLeavingInput() {
  Drain(0, WM_KEYFIRST - 1);
  Drain(WM_KEYLAST + 1, WM_MOUSEFIRST - 1);
  Drain(WM_MOUSELAST + 1, 0xFFFFFFFF);
  RunLoopWork();
}

void Win32Loop::RunLoopWork() {
  core_.RunWatchers(clock_.NowMs(), false);
  core_.RunPosted();
  core_.FireDueTimers(clock_.NowMs());
}

void Win32Loop::WaitUntil(std::int64_t deadline_ms) {
  std::int64_t now = clock_.NowMs();
  if (quitting_) {
    // The queue is closed for this run; a wait still takes its time, so
    // that a wait loop on the way out does not spin.
    if (deadline_ms > now) {
      Sleep(
          static_cast<DWORD>(std::min<std::int64_t>(deadline_ms - now, 1000)));
    }
    return;
  }
  if (core_.Ready(now)) return;
  std::int64_t target = std::min(deadline_ms, core_.NextDue(true));
  if (target <= now) return;
  DWORD timeout = target == std::numeric_limits<std::int64_t>::max()
                      ? INFINITE
                      : static_cast<DWORD>(
                            std::min<std::int64_t>(target - now, INFINITE - 1));
  // Wakes for anything in the queue, messages sent by other threads and
  // processes included.
  timed_out_ = MsgWaitForMultipleObjectsEx(0, nullptr, timeout, QS_ALLINPUT,
                                           MWMO_INPUTAVAILABLE) == WAIT_TIMEOUT;
}

void Win32Loop::Hold(std::int64_t ms) {
  if (ms <= 0) return;
  Sleep(static_cast<DWORD>(std::min<std::int64_t>(ms, INFINITE - 1)));
}

int Win32Loop::Run() {
  while (!quitting_) {
    // A wait that ran out found the queue empty, and whatever came since
    // cuts the next wait short: the queue is asked only when it has
    // something, one request to the system less at each wake.
    if (!timed_out_) Drain(0, 0);
    timed_out_ = false;
    RunLoopWork();
    WaitUntil(std::numeric_limits<std::int64_t>::max());
  }
  return exit_code_;
}

}  // namespace v2::win32
