// A day with everything on at once, in virtual time: an idle session that
// scrolls every line, the answering machine with IMs coming, auto-upchat
// with uploads coming and going, the player in continuous play over a
// folder of short tracks, two lost connections, the member and others
// talking. What the day said is counted, and the heap in use after its
// first hour and at its end shows whether anything grows:
//   build/bench/benchmarks --benchmark_filter=SoakDay
#include <benchmark/benchmark.h>
#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <map>
#include <sstream>
#include <streambuf>

#include "app/runner.h"
#include "app/track_file.h"

#if defined(__SANITIZE_ADDRESS__)
#define V2_HEAP_READABLE 0
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define V2_HEAP_READABLE 0
#endif
#endif
#ifndef V2_HEAP_READABLE
#define V2_HEAP_READABLE 1
#endif

namespace v2 {
namespace {

namespace fs = std::filesystem;

// The runner's output, taken a line at a time and kept nowhere: a day of it
// must not be what grows.
class LineSink : public std::streambuf {
 public:
  explicit LineSink(std::function<void(const std::string&)> take)
      : take_(std::move(take)) {}

 protected:
  int_type overflow(int_type c) override {
    if (c == traits_type::eof()) return c;
    if (c == '\n') {
      take_(line_);
      line_.clear();
    } else {
      line_ += static_cast<char>(c);
    }
    return c;
  }

 private:
  std::function<void(const std::string&)> take_;
  std::string line_;
};

// What the day said, by kind.
struct Tally {
  void Take(const std::string& line) {
    ++lines;
    auto has = [&](const char* part) {
      return line.find(part) != std::string::npos;
    };
    if (line.rfind("[", 0) == 0) {
      // The bracket and what follows it, up to any text of the member's.
      const std::string tag = line.substr(0, line.find(']') + 1);
      ++events[tag];
      if (line != tag) ++events[line];
      if (line == "[keyword] aol://2719:2-2-idle") ++room_entries;
      return;
    }
    if (has(" : idle : ")) ++idle_lines;
    if (has("reason: ")) ++reason_lines;
    if (has("ul file: ")) ++upload_lines;
    if (has(" : auto upchat")) ++upchats;
    if (has("todays date: ")) ++dates;
    if (has("random: <u>")) ++random_tracks;
  }
  long lines = 0, idle_lines = 0, reason_lines = 0, upload_lines = 0,
       upchats = 0, dates = 0, random_tracks = 0, room_entries = 0;
  std::map<std::string, long> events;
};

std::size_t HeapInUse() {
#if V2_HEAP_READABLE
  return mallinfo2().uordblks;
#else
  return 0;
#endif
}

// One hour of the day, 3600 s of virtual time.
std::vector<std::string> Hour(int hour) {
  std::vector<std::string> h = {
      "other Bob hey all",
      "wait 300",
      "say date",
      "wait 300",
      "im Ann are you there " + std::to_string(hour),
      "wait 600",
      "upload Mix " + std::to_string(hour) + ".mp3 10 20",
      "wait 900",
      "end upload",
      "other Cy see you",
  };
  if (hour == 6 || hour == 15) {
    // The connection goes; once the member is back in the room the IMs the
    // sequence switched off are switched on again.
    for (const char* line :
         {"disconnect", "wait 120", "say ion", "wait 1380"}) {
      h.push_back(line);
    }
  } else {
    h.push_back("wait 1500");
  }
  return h;
}

void BM_SoakDay(benchmark::State& state) {
  const fs::path dir =
      fs::temp_directory_path() / ("v2-soak-" + std::to_string(getpid()));
  fs::create_directories(dir / "music");
  for (int i = 1; i <= 4; ++i) {
    std::string error;
    if (!WriteTrack(
            (dir / "music" / ("t" + std::to_string(i) + ".mp3")).string(),
            15.0 + 10.0 * i, TrackTags{}, error)) {
      state.SkipWithError(error.c_str());
      return;
    }
  }
  RunnerOptions options;
  options.script = "-";
  options.clock = LocalTime{2001, 6, 15, 14, 3, 0, 0};
  options.user_store = (dir / "user-store").string();
  options.program_dir = dir.string();
  options.end_process = false;
  // The reason list is the working directory's.
  const fs::path before = fs::current_path();
  fs::current_path(dir);
  for (auto _ : state) {
    Tally tally;
    LineSink sink([&](const std::string& line) { tally.Take(line); });
    std::ostream out(&sink);
    std::ostringstream err;
    std::size_t heap_hour1 = 0, heap_most = 0;
    Runner runner(options, out, err);
    bool ok = true;
    auto run = [&](const std::string& line) {
      if (ok && !runner.Execute(line)) {
        state.SkipWithError(("not played: " + line).c_str());
        ok = false;
      }
    };
    // The client keeps its room's last 200 lines (a real one keeps more):
    // full within the first hour, so that what grows after it is the
    // program's.
    runner.client().max_lines = 200;
    for (const char* line :
         {"answer soaker", "reasons add gone fishing", "reasons add at lunch",
          "reasons save", "menu chatsendtrans", "menu immachine"}) {
      run(line);
    }
    run("say dir " + (dir / "music").string());
    for (const char* line : {"say p t1", "say cont on", "say idleon"}) {
      run(line);
    }
    for (int hour = 0; hour < 24 && ok; ++hour) {
      for (const std::string& line : Hour(hour)) run(line);
      if (hour == 0) heap_hour1 = HeapInUse();
      heap_most = std::max(heap_most, HeapInUse());
    }
    const std::size_t heap_day = HeapInUse();
    state.counters["virtual_hours"] = runner.loop().clock().NowMs() / 3600000.0;
    state.counters["lines"] = tally.lines;
    state.counters["idle_minutes"] = tally.idle_lines;
    state.counters["tracks"] = tally.random_tracks;
    state.counters["im_answers"] = tally.events["[im to Ann]"];
    state.counters["reconnections"] = tally.room_entries;
    if (V2_HEAP_READABLE) {
      state.counters["heap_hour1_B"] = heap_hour1;
      state.counters["heap_day_B"] = heap_day;
      state.counters["heap_most_B"] = heap_most;
    }
  }
  fs::current_path(before);
  fs::remove_all(dir);
}
BENCHMARK(BM_SoakDay)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace v2
