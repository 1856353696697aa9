// How long a line said in the room waits until the program sees it, under
// real time: someone says a line at a moment anywhere between two of the
// scanner's looks, while the program sleeps as it does in a quiet room, and
// the time until its ChatMsg runs is timed. The mean is the benchmark's
// time; longest_ms is the longest wait of the run, which comes near the
// look interval (ChatScanner::kLookIntervalMs) in a run of some length:
//   build/bench/benchmarks --benchmark_filter=Latency --benchmark_min_time=20
// The client here hands out ranges and lives in the program's process; the
// time to the look is what a client in another process waits too.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <limits>
#include <random>
#include <string>

#include "aolsim/aol_client.h"
#include "aolsim/sim_window_host.h"
#include "host/host_windows.h"
#include "platform/chat_scanner.h"
#include "platform/platform.h"
#include "platform/sim/sim_loop.h"
#include "platform/sim/sim_windows.h"

namespace v2 {
namespace {

using Steady = std::chrono::steady_clock;

void BM_ScannerLatency(benchmark::State& state) {
  sim::SimWindows windows;
  sim::SimLoop loop(sim::TimeMode::kReal, LocalTime{2001, 6, 15, 14, 3, 0, 0});
  Platform platform{windows, loop};
  aolsim::SimWindowHost host(windows, loop);
  aolsim::AolClient client(host, "Member");
  client.Start();
  ChatScanner scanner(platform, [&] { return FindTranscript(platform); });
  Steady::time_point seen;
  int delivered = 0;
  scanner.OnChatMsg([&](const std::string&, const std::string&) {
    seen = Steady::now();
    ++delivered;
  });
  scanner.ScanOn();
  std::mt19937 random(26);
  std::uniform_int_distribution<int> phase(0, ChatScanner::kLookIntervalMs - 1);
  constexpr std::int64_t kFar = std::numeric_limits<std::int64_t>::max();
  double longest = 0;
  int said = 0;
  for (auto _ : state) {
    // The program goes on as it would (it wakes for its looks only) until
    // the moment of the line, which does not wake it.
    const std::int64_t at = loop.clock().NowMs() + phase(random);
    for (;;) {
      loop.WaitUntil(at);
      if (loop.clock().NowMs() >= at) break;
      loop.PumpEvents();
    }
    client.OtherSays("Bob", "line " + std::to_string(++said));
    const auto spoken = Steady::now();
    while (delivered < said) {
      loop.WaitUntil(kFar);
      loop.PumpEvents();
    }
    const double wait = std::chrono::duration<double>(seen - spoken).count();
    longest = std::max(longest, wait);
    state.SetIterationTime(wait);
  }
  state.counters["longest_ms"] = longest * 1000;
  state.counters["interval_ms"] = ChatScanner::kLookIntervalMs;
}
BENCHMARK(BM_ScannerLatency)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace v2
