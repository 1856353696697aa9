// The host's own time under Windows: the monotonic clock by which runners
// measure quiet and bounds, the pump that lets time pass with the windows
// answering, and a hang that lets none.
#include <windows.h>

#include "aolsim/win32_window_host.h"

namespace v2::aolsim {

void Win32WindowHost::Hang(int ms) {
  if (ms > 0) Sleep(static_cast<DWORD>(ms));
}

std::uint64_t Win32WindowHost::MonotonicMs() {
  LARGE_INTEGER frequency, now;
  QueryPerformanceFrequency(&frequency);
  QueryPerformanceCounter(&now);
  // Whole seconds and the rest apart, so that nothing overflows.
  const auto f = static_cast<std::uint64_t>(frequency.QuadPart);
  const auto n = static_cast<std::uint64_t>(now.QuadPart);
  return n / f * 1000 + n % f * 1000 / f;
}

void Win32WindowHost::PumpFor(int ms) {
  const ULONGLONG deadline = MonotonicMs() + static_cast<ULONGLONG>(ms);
  for (;;) {
    MSG msg;
    while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
      TranslateMessage(&msg);
      DispatchMessageA(&msg);
    }
    ULONGLONG now = MonotonicMs();
    if (now >= deadline) return;
    MsgWaitForMultipleObjectsEx(0, nullptr, static_cast<DWORD>(deadline - now),
                                QS_ALLINPUT, MWMO_INPUTAVAILABLE);
  }
}

}  // namespace v2::aolsim
