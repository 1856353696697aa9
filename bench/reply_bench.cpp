// From a line the member types to the program's answer in the room, through
// the whole program: the client writes the line, the scanner delivers it,
// the command entry cuts it, and the answer is typed back into the room.
// Virtual time, so only the work is measured, never a wait.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <memory>
#include <sstream>
#include <string>

#include "app/runner.h"

namespace {

// A runner whose room already holds `lines` lines said by someone else.
struct Session {
  explicit Session(std::int64_t lines) : runner(Options(), out, err) {
    // No trims while measuring: the room keeps every line.
    runner.client().max_lines = 1'000'000;
    for (std::int64_t i = 0; i < lines; ++i) {
      runner.client().OtherSays(
          "Guide",
          "an earlier line of ordinary length, number " + std::to_string(i));
    }
    runner.loop().RunUntilIdle();
  }
  static v2::RunnerOptions Options() {
    v2::RunnerOptions options;
    options.script = "-";  // virtual time
    options.clock = v2::LocalTime{2001, 6, 15, 14, 3, 0, 0};
    return options;
  }
  // The member says `date`; runs until idle, so the reply is in the room.
  void SayDate() {
    out.str("");
    runner.Execute("say date");
  }
  bool Replied() const {
    return out.str().find("todays date: 6/15/2001") != std::string::npos;
  }

  std::ostringstream out, err;
  v2::Runner runner;
};

// Each iteration adds two lines (the member's and the reply); a fresh session
// (untimed) every 64 keeps the room at its stated size.
constexpr std::int64_t kRoundsPerSession = 64;

void BM_TypedLineToReply(benchmark::State& state) {
  auto session = std::make_unique<Session>(state.range(0));
  // The reply must really come, or the numbers mean nothing.
  session->SayDate();
  if (!session->Replied()) {
    state.SkipWithError("no reply to `date` in the room");
    return;
  }
  std::int64_t rounds = 0;
  for (auto _ : state) {
    if (++rounds > kRoundsPerSession) {
      state.PauseTiming();
      session = std::make_unique<Session>(state.range(0));
      rounds = 1;
      state.ResumeTiming();
    }
    session->SayDate();
  }
  if (!session->Replied()) state.SkipWithError("the last `date` got no reply");
  state.counters["transcript_bytes"] =
      static_cast<double>(session->runner.client().TranscriptText().size());
}
BENCHMARK(BM_TypedLineToReply)->Arg(100)->Arg(10000);

}  // namespace
