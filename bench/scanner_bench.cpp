// What one look of the chat scanner costs, with a short and a long room
// transcript. The scanner reads only what is new (plus a short anchor), so
// an idle look and a look with one new line should cost the same at 100 lines
// as at 10,000. After the client trims its top the scanner must find its
// anchor again; that search covers the trimmed stretch.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <memory>
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

// A signed-on client with a room of `lines` lines and a scanner watching it.
struct Room {
  explicit Room(std::int64_t lines, std::size_t max_lines = 1'000'000)
      : loop(sim::TimeMode::kVirtual, LocalTime{2001, 6, 15, 14, 3, 0, 0}),
        platform{windows, loop},
        host(windows, loop),
        client(host, "Member"),
        scanner(platform, [this] { return FindTranscript(platform); }) {
    client.max_lines = max_lines;
    client.Start();
    for (std::int64_t i = 0; i < lines; ++i) Say();
    scanner.OnChatMsg(
        [this](const std::string&, const std::string&) { ++delivered; });
    scanner.ScanOn();
  }

  // One line of ordinary length, never the same twice; gives its length in
  // the transcript.
  std::size_t Say() {
    std::string name = "Guest" + std::to_string(said % 7);
    std::string text =
        "and this is what I have to say, number " + std::to_string(said);
    client.OtherSays(name, text);
    ++said;
    return 1 + name.size() + 2 + text.size();
  }

  // One look, and the ChatMsg events it posted handled.
  void Look() {
    scanner.Look();
    loop.PumpEvents();
  }

  std::size_t TranscriptBytes() {
    return windows.TextView(client.transcript()).size();
  }

  sim::SimWindows windows;
  sim::SimLoop loop;
  Platform platform;
  aolsim::SimWindowHost host;
  aolsim::AolClient client;
  ChatScanner scanner;
  std::int64_t said = 0;
  std::int64_t delivered = 0;
};

// Benchmarks that add lines start over with a fresh room (untimed) this
// often, so the transcript stays within N and N + 64 lines: the argument is
// the room's real size, not where a long run happened to grow it to.
constexpr std::int64_t kRoundsPerRoom = 64;

class Rooms {
 public:
  explicit Rooms(benchmark::State& state)
      : state_(state), room_(std::make_unique<Room>(state.range(0))) {}
  Room& Next() {
    if (++rounds_ > kRoundsPerRoom) {
      state_.PauseTiming();
      delivered_ += room_->delivered;
      room_ = std::make_unique<Room>(state_.range(0));
      rounds_ = 1;
      state_.ResumeTiming();
    }
    return *room_;
  }
  std::int64_t delivered() const { return delivered_ + room_->delivered; }
  Room& room() { return *room_; }

 private:
  benchmark::State& state_;
  std::unique_ptr<Room> room_;
  std::int64_t rounds_ = 0;
  std::int64_t delivered_ = 0;
};

void Report(benchmark::State& state, std::size_t bytes, std::int64_t got,
            std::int64_t want) {
  state.counters["transcript_bytes"] = static_cast<double>(bytes);
  if (got != want) {
    state.SkipWithError("the scanner did not deliver every new line");
  }
}

void BM_ScannerIdleLook(benchmark::State& state) {
  Room room(state.range(0));
  for (auto _ : state) {
    room.scanner.Look();
  }
  Report(state, room.TranscriptBytes(), room.delivered, 0);
}
BENCHMARK(BM_ScannerIdleLook)->Arg(100)->Arg(10000);

// The client appending a line, alone: the part of the next benchmark that is
// not the scanner's.
void BM_ClientAddLine(benchmark::State& state) {
  Rooms rooms(state);
  for (auto _ : state) {
    rooms.Next().Say();
  }
  Report(state, rooms.room().TranscriptBytes(), rooms.delivered(), 0);
}
BENCHMARK(BM_ClientAddLine)->Arg(100)->Arg(10000);

// One new line, then the look that delivers it (the add is timed too: it is
// cheap, see BM_ClientAddLine).
void BM_ScannerLookWithNewLine(benchmark::State& state) {
  Rooms rooms(state);
  std::int64_t lines = 0;
  for (auto _ : state) {
    Room& room = rooms.Next();
    room.Say();
    room.Look();
    ++lines;
  }
  Report(state, rooms.room().TranscriptBytes(), rooms.delivered(), lines);
}
BENCHMARK(BM_ScannerLookWithNewLine)->Arg(100)->Arg(10000);

// The client keeps at most N lines; the line that goes over makes it drop
// the oldest tenth at once. Each iteration fills the room back to N lines
// and lets the scanner catch up (untimed), adds the line that trims (also
// untimed: that is the client's work), then times the one look that must
// find its anchor again after the trim.
void BM_ScannerLookAfterTrim(benchmark::State& state) {
  const auto n = static_cast<std::size_t>(state.range(0));
  Room room(state.range(0), n);
  std::int64_t lines = 0;
  std::size_t trimmed = 0;
  for (auto _ : state) {
    state.PauseTiming();
    // Back to exactly N lines: one line short of a trim.
    std::size_t in_room = 0;
    for (char c : room.windows.TextView(room.client.transcript())) {
      in_room += c == '\r';
    }
    for (; in_room < n; ++in_room, ++lines) room.Say();
    room.Look();
    std::size_t before = room.TranscriptBytes();
    std::size_t line = room.Say();  // line N + 1: the oldest tenth goes
    ++lines;
    trimmed = before + line - room.TranscriptBytes();
    state.ResumeTiming();
    room.Look();
  }
  state.counters["trimmed_bytes"] = static_cast<double>(trimmed);
  Report(state, room.TranscriptBytes(), room.delivered, lines);
}
BENCHMARK(BM_ScannerLookAfterTrim)->Arg(100)->Arg(10000);

}  // namespace
}  // namespace v2
