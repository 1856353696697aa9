#pragma once
// The scenario runner: the real program against the simulated client, played
// by a script or by a person at the terminal.
#include <deque>
#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "aolsim/aol_client.h"
#include "aolsim/desktop.h"
#include "aolsim/sim_window_host.h"
#include "app/script.h"
#include "app/track_file.h"
#include "core/program.h"
#include "platform/sim/sim_loop.h"
#include "platform/sim/sim_media.h"
#include "platform/sim/sim_shell.h"
#include "platform/sim/sim_stores.h"
#include "platform/sim/sim_ui.h"
#include "platform/sim/sim_windows.h"

namespace v2 {

struct RunnerOptions {
  std::optional<std::string> script;  // "-" for standard input
  std::string screen_name = "Member";
  std::optional<LocalTime> clock;
  std::string program_dir;
  std::string user_store;
  // Room lines as the protocol prints them, also at the terminal (where
  // they are otherwise shown as the client renders them).
  bool raw = false;
  // How long the machine has been running at the start, in milliseconds.
  std::uint32_t uptime_ms = 0;
  // When the program ends itself (`exit`), the process ends with it, as on
  // Windows; otherwise the runner only stops playing (tests, fuzzing).
  bool end_process = true;
};

// The per-user store as every run of the program keeps it on a member's
// machine (Visual Basic's settings of "vantrel2", section "settings"): the
// runner reads and writes it by these names, not by the program's own.
inline constexpr const char* kStoreApp = "vantrel2";
inline constexpr const char* kStoreSection = "settings";

// Parses the command line; false (with a message in error) when it is wrong.
bool ParseRunnerArgs(int argc, const char* const* argv, RunnerOptions& options,
                     std::string& error);

// One run of the program, as the machine runs it: its own windows and
// toolkit, its media control and the Program. It ends with its process;
// the client, the stores, the files and the clock stay.
struct ProgramProcess {
  ProgramProcess(sim::SimWindows& windows, sim::SimLoop& loop,
                 sim::SimUserStore& user_store, sim::SimProfileService& profile,
                 sim::SimFileSystem& files, sim::SimShell& shell);
  sim::SimUi ui;
  sim::SimMedia media;
  Platform platform;
  Program program;
};

class Runner {
 public:
  Runner(const RunnerOptions& options, std::ostream& out, std::ostream& err);
  ~Runner();

  // Starts the program (once): the splash, the settings, the first-start
  // question, the two lines, the tray entry. The commands start it by
  // themselves; answers queued before it are there for its question.
  void Start();

  // Virtual time: 0 when the script ran to its end, 2 for a line that is not
  // understood. Answers at its top are queued before the program starts.
  int RunScript(std::istream& script);
  // Real time on standard input until it ends.
  int RunInteractive();

  // One command line (UTF-8); false when it is not understood.
  bool Execute(const std::string& line);

  // Whether the program has ended itself (and not started again).
  bool ended() const { return state_ == State::kEnded; }
  sim::SimLoop& loop() { return loop_; }
  aolsim::AolClient& client() { return client_; }
  aolsim::Desktop& desktop() { return desktop_; }
  sim::SimMedia& media() { return process_->media; }
  Program& program() { return process_->program; }

 private:
  // kDone: played; kNotUnderstood: the run ends with status 2; kEnd: the
  // run ends (a line that needs the program after its end).
  enum class Outcome { kDone, kNotUnderstood, kEnd };
  // kFresh: not started yet, and started by the first command that needs
  // it; kHeld: started only by `start`; kEnded: the program ended itself.
  enum class State { kFresh, kHeld, kRunning, kEnded };
  // Thrown from within the program to end its process at once, as a
  // machine ends it: by `exit`, or by a `restart` that comes while the
  // program waits for an input box's answer.
  struct ProcessEnd {
    bool restart;
  };
  // Thrown to end the whole run from within the program's wait for an
  // answer: the script ran out, or a line was not understood.
  struct RunEnd {
    int status;
  };

  // A new process of the program, wired to the runner's output, with the
  // answers queued before it; it starts at Start().
  void NewProcess();
  // The process is gone: nothing of it runs again, and nothing it did not
  // write already is written; its windows, timers and hooks go with it.
  void EndProcess();
  // The process is ended at once ("[restart]"), and a new one starts as at
  // the run's start.
  void Restart();
  // Runs work that may end the program's process, and handles that end.
  Outcome Guarded(const std::function<Outcome()>& work);

  // One line: understood, played at once, then everything the program was
  // given handled (runner_play.cpp).
  Outcome Run(const std::string& line);
  // What a line does, also when `after` plays it in the middle of the
  // program's work.
  Outcome Act(const ScriptCommand& command);
  bool NeedsProgram(const ScriptCommand& command) const;
  bool PlaysAfterEnd(const ScriptCommand& command) const;
  void PlayOnProgram(const ScriptCommand& command);
  void PlayOnForm4(const ScriptCommand& command);
  void QueueAnswer(const ScriptCommand& command);
  Outcome Store(const ScriptCommand& command);
  // `after`: the line plays ms from now (from `start`, while held).
  void After(const ScriptCommand& command);
  void ScheduleAfter(int ms, const std::string& line);
  // Time passes until the moment until, with the program running; in the
  // wait of an input box held open, it stops early when the box is answered
  // and the rest is waited by the line after the box (wait_until_).
  void WaitTill(std::int64_t until);

  // `show` (runner_show.cpp); false for an object nobody shows.
  bool Show(const std::string& object);
  void ShowSettingsFile();
  void ShowSent();

  // The script's lines (runner_script.cpp).
  std::optional<std::string> NextScriptLine();
  // Plays the next line inside a wait for an answer; ends the run (RunEnd)
  // when there is none or it is not understood.
  void PlayWaiting();

  // What the terminal has now, into pending_ (its end sets input_done_).
  void ReadTerminal();
  // A whole line from pending_, if one is there.
  std::optional<std::string> TakeTerminalLine();
  // The next whole line from the terminal, waiting for it; nullopt at its
  // end.
  std::optional<std::string> ReadTerminalLine();
  void Print(const std::string& text);

  RunnerOptions options_;
  std::ostream& out_;
  std::ostream& err_;
  sim::SimWindows windows_;
  sim::SimLoop loop_;
  sim::SimUserStore user_store_;
  sim::SimProfileService profile_;
  sim::SimFileSystem files_;
  sim::SimShell shell_;
  aolsim::SimWindowHost host_;
  aolsim::AolClient client_;
  aolsim::Desktop desktop_;
  std::unique_ptr<ProgramProcess> process_;
  State state_ = State::kFresh;
  bool played_ = false;   // a command has been played
  bool started_ = false;  // the process's start has run
  // Answers given while no program runs, for the next start's boxes.
  std::deque<sim::SimUi::Answer> answers_;
  // `after` lines given while held, with their delays: played from `start`.
  std::vector<std::pair<int, std::string>> held_after_;
  // A wait that an answered box broke off, finished by the next line.
  std::int64_t wait_until_ = 0;
  // The script's lines, and the number of the last one read.
  std::vector<std::string> script_lines_;
  int line_number_ = 0;
  std::string pending_;  // what the terminal gave and nobody took yet
  bool input_done_ = false;
  TrackTagging track_tags_;  // what the next `track` lines write
  // At the terminal: a box the program opens takes the next line typed.
  std::function<std::optional<std::string>()> ui_ask_;
};

}  // namespace v2
