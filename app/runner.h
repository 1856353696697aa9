#pragma once
// The scenario runner: the real program against the simulated client, played
// by a script or by a person at the terminal.
#include <deque>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>

#include "aolsim/aol_client.h"
#include "aolsim/desktop.h"
#include "aolsim/sim_window_host.h"
#include "app/script.h"
#include "app/track_file.h"
#include "platform/sim/sim_loop.h"
#include "platform/sim/sim_media.h"
#include "platform/sim/sim_shell.h"
#include "platform/sim/sim_stores.h"
#include "platform/sim/sim_ui.h"
#include "platform/sim/sim_windows.h"
#include "shell/program.h"

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

  // Whether the program has ended itself; a runner then plays nothing more.
  bool ended() const { return loop_.halted(); }
  sim::SimLoop& loop() { return loop_; }
  aolsim::AolClient& client() { return client_; }
  aolsim::Desktop& desktop() { return desktop_; }
  sim::SimMedia& media() { return process_->media; }
  Program& program() { return process_->program; }

 private:
  enum class Outcome { kDone, kNotUnderstood };
  // A new process of the program, wired to the runner's output, with the
  // answers queued before it; it starts at Start().
  void NewProcess(std::deque<std::optional<std::string>> answers = {});
  // The process is ended at once, as a machine ends it ("[restart]"), and a
  // new one starts as at the run's start.
  void Restart();
  Outcome Run(const std::string& line);
  void PlayOnProgram(const ScriptCommand& command);
  void PlayOnForm4(const ScriptCommand& command);
  void ShowSettingsFile();
  void QueueAnswer(const ScriptCommand& command);
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
  bool started_ = false;
  std::string pending_;  // what the terminal gave and nobody took yet
  bool input_done_ = false;
  TrackTagging track_tags_;  // what the next `track` lines write
  // At the terminal: a box the program opens takes the next line typed.
  std::function<std::optional<std::string>()> ui_ask_;
};

}  // namespace v2
