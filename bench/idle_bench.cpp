// A day of idle time in virtual time: how long the program takes to count
// and scroll 1371 idle minutes (ticks of 63 s), with the settings file
// written on every tick as the program does.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <filesystem>
#include <sstream>

#include "app/runner.h"

namespace {

namespace fs = std::filesystem;

void BM_IdleDay(benchmark::State& state) {
  const fs::path dir =
      fs::temp_directory_path() / ("v2-idle-bench-" + std::to_string(getpid()));
  fs::create_directories(dir);
  v2::RunnerOptions options;
  options.script = "-";  // virtual time
  options.clock = v2::LocalTime{2001, 6, 15, 14, 3, 0, 0};
  options.user_store = (dir / "user-store").string();
  options.program_dir = dir.string();
  std::int64_t lines = 0;
  for (auto _ : state) {
    state.PauseTiming();
    fs::remove(dir / "settings.dat");
    std::ostringstream out, err;
    auto runner = std::make_unique<v2::Runner>(options, out, err);
    runner->Execute("say idleon");
    state.ResumeTiming();
    runner->Execute("wait 86400");
    state.PauseTiming();
    if (runner->program().form2.Label1.Caption.Get() != "1371") {
      state.SkipWithError("a day did not count 1371 idle minutes");
      break;
    }
    std::string text = out.str();
    lines = std::count(text.begin(), text.end(), '\n');
    runner.reset();
    state.ResumeTiming();
  }
  state.counters["output_lines"] = static_cast<double>(lines);
  fs::remove_all(dir);
}
BENCHMARK(BM_IdleDay)->Unit(benchmark::kMillisecond);

}  // namespace
