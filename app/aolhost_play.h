#pragma once
// aolhost.exe's side of a script: each line played on the real-window
// client, the desktop, the program's input boxes and start, and the stores
// and files the program finds at its next start, in real time.
#include <optional>
#include <string>
#include <vector>

#include "aolsim/aol_client.h"
#include "aolsim/desktop.h"
#include "aolsim/win32_window_host.h"
#include "app/aolhost_program.h"
#include "app/script.h"

namespace v2 {

class ScriptPlayer {
 public:
  ScriptPlayer(aolsim::AolClient& client, aolsim::Desktop& desktop,
               aolsim::Win32WindowHost& host, ProgramWatch& watch,
               std::string run, int settle_ms)
      : client_(client),
        desktop_(desktop),
        host_(host),
        watch_(watch),
        run_(std::move(run)),
        settle_ms_(settle_ms) {}

  // Plays the script from line first on; 0 when it ran to its end or ended
  // at a line that needs the program after its end, 2 for a line it cannot
  // play, 3 when the program could not be started.
  int Play(const std::vector<std::string>& lines, std::size_t first);
  // Queues an answer (or a wait, or answers the box that waits).
  void Queue(const ScriptCommand& c);
  // Starts the program at the run's start; false when it did not come up.
  bool StartProgram() { return Start(0) == Outcome::kDone; }
  // Waits until the program has left the client alone for a while, and
  // has read the room since its last line.
  void Settle();
  // A line has appeared in the room.
  void LineShown() { line_ms_ = aolsim::Win32WindowHost::MonotonicMs(); }
  // Whether the script holds the program until `start`.
  bool held = false;

 private:
  enum class Outcome { kDone, kNotUnderstood, kEnd, kFailed };
  Outcome PlayLine(const ScriptCommand& c, std::size_t number);
  Outcome Start(std::size_t number);
  // What an earlier run left in the stores, while no program runs.
  bool Store(const ScriptCommand& c);
  // `after`: the line plays ms from now (from `start`, while held).
  void After(const ScriptCommand& c);
  void Schedule(int ms, const std::string& line);
  bool Running() const;
  // The per-user store and settings.dat, as the program finds them.
  std::optional<std::string> Stored(const std::string& key);
  void ShowSettingsFile();

  aolsim::AolClient& client_;
  aolsim::Desktop& desktop_;
  aolsim::Win32WindowHost& host_;
  ProgramWatch& watch_;
  std::string run_;
  int settle_ms_;
  bool started_ = false;
  std::uint64_t line_ms_ = 0;  // when the room last showed a line
  std::vector<std::pair<int, std::string>> held_after_;
};

}  // namespace v2
