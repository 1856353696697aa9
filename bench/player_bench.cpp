// The end-of-track timer, Form1.Timer2, runs every millisecond the platform
// gives it: what one pass costs with nothing to do and while a track plays,
// and how long a day of a repeating track takes in virtual time, when the
// timer sleeps between the ends.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <filesystem>
#include <sstream>

#include "app/runner.h"
#include "app/track_file.h"
#include "player/play_modes.h"

namespace {

namespace fs = std::filesystem;

struct Bench {
  explicit Bench(const char* name)
      : dir(fs::temp_directory_path() /
            (std::string("v2-") + name + "-" + std::to_string(getpid()))) {
    fs::create_directories(dir);
    options.script = "-";  // virtual time
    options.clock = v2::LocalTime{2001, 6, 15, 14, 3, 0, 0};
    options.user_store = (dir / "user-store").string();
    options.program_dir = dir.string();
  }
  ~Bench() { fs::remove_all(dir); }
  bool Track(const std::string& name, double seconds) {
    std::string error;
    return v2::WriteTrack((dir / name).string(), seconds, {}, error);
  }
  std::unique_ptr<v2::Runner> Start() {
    auto runner = std::make_unique<v2::Runner>(options, out, err);
    runner->Start();
    return runner;
  }
  fs::path dir;
  v2::RunnerOptions options;
  std::ostringstream out, err;
};

// With nothing open and no mode on: eight reads of the control.
void BM_Timer2PassNoMode(benchmark::State& state) {
  Bench bench("timer2-idle");
  auto runner = bench.Start();
  v2::Program& prog = runner->program();
  for (auto _ : state) v2::Timer2_Timer(prog);
}
BENCHMARK(BM_Timer2PassNoMode);

// While a track plays (with repeat on, as it would be for a room's music):
// eight reads of a position that moves with the clock.
void BM_Timer2PassPlaying(benchmark::State& state) {
  Bench bench("timer2-playing");
  if (!bench.Track("music/a.mp3", 600)) {
    state.SkipWithError("no track");
    return;
  }
  auto runner = bench.Start();
  runner->Execute("say dir " + (bench.dir / "music").string());
  runner->Execute("say rep on");
  runner->Execute("say next");
  runner->Execute("wait 1");
  v2::Program& prog = runner->program();
  for (auto _ : state) v2::Timer2_Timer(prog);
  if (runner->media().Describe() != "playing a.mp3") {
    state.SkipWithError("the track is not playing");
  }
}
BENCHMARK(BM_Timer2PassPlaying);

// A day with a 20-minute track repeating: 72 ends, each seen on its tick.
void BM_RepeatingDay(benchmark::State& state) {
  Bench bench("repeating-day");
  if (!bench.Track("music/a.mp3", 1200)) {
    state.SkipWithError("no track");
    return;
  }
  for (auto _ : state) {
    state.PauseTiming();
    bench.out.str("");
    auto runner = bench.Start();
    runner->Execute("say dir " + (bench.dir / "music").string());
    runner->Execute("say rep on");
    runner->Execute("say next");
    state.ResumeTiming();
    runner->Execute("wait 86400");
    state.PauseTiming();
    const std::string text = bench.out.str();
    std::size_t repeats = 0;
    for (auto at = text.find("repeating: "); at != std::string::npos;
         at = text.find("repeating: ", at + 1)) {
      ++repeats;
    }
    if (repeats != 72) {
      state.SkipWithError("a day did not repeat the track 72 times");
      break;
    }
    runner.reset();
    state.ResumeTiming();
  }
}
BENCHMARK(BM_RepeatingDay)->Unit(benchmark::kMillisecond);

}  // namespace
