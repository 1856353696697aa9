// How long a line said in the room waits until the program sees it, under
// real time: someone says a line at a moment between two of the scanner's
// looks, the program meanwhile going on as it does (it wakes for its looks
// only), and the time until the line's ChatMsg runs is timed. The mean is
// the benchmark's time; longest_ms is the longest wait of the run.
//
// Two rooms: a quiet one, where each line comes after some seconds of
// silence (the first line of a member's command, as a rule), and a
// conversation, a line every second or two. Each line comes at a moment
// drawn at random within a second, so that over a run the lines fall at
// every phase of the looks. Thirty lines each, in real time (about four
// minutes, mostly the silences; the smoke run of make test, V2_BENCH_SMOKE
// set, says one line each):
//   build/bench/benchmarks --benchmark_filter=Latency
// The same file built against an older tree gives its figures. The client
// here lives in the program's process; the time to the look is what a
// client in another process waits too.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
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

// state.range(0): the silence before each line, in ms, before a moment
// drawn within the next second.
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
  std::uniform_int_distribution<int> phase(0, 999);
  constexpr std::int64_t kFar = std::numeric_limits<std::int64_t>::max();
  double longest = 0;
  int said = 0;
  // The room as it stands: a line has been said, and seen.
  client.OtherSays("Bob", "hello");
  ++said;
  while (delivered < said) {
    loop.WaitUntil(kFar);
    loop.PumpEvents();
  }
  for (auto _ : state) {
    // The program goes on as it would until the moment of the line, which
    // does not wake it.
    const std::int64_t at =
        loop.clock().NowMs() + state.range(0) + phase(random);
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
}
BENCHMARK(BM_ScannerLatency)
    ->ArgName("silence_ms")
    ->Arg(6000)
    ->Arg(1000)
    ->Iterations(std::getenv("V2_BENCH_SMOKE") ? 1 : 30)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace v2
