// The runner's world: the client, the desktop, the stores and the clock,
// which last the whole run, and the program's process, which starts, ends
// and starts again.
#include "app/runner.h"

#include <cstdlib>
#include <ostream>

#include "app/room_render.h"
#include "platform/text.h"

namespace v2 {

ProgramProcess::ProgramProcess(sim::SimWindows& windows, sim::SimLoop& loop,
                               sim::SimUserStore& user_store,
                               sim::SimProfileService& profile,
                               sim::SimFileSystem& files, sim::SimShell& shell)
    : ui(windows),
      media(loop.clock(), files),
      platform{windows, loop, &user_store, &profile,
               &files,  &ui,  &shell,      &media},
      program(platform) {}

Runner::Runner(const RunnerOptions& options, std::ostream& out,
               std::ostream& err)
    : options_(options),
      out_(out),
      err_(err),
      loop_(options.script ? sim::TimeMode::kVirtual : sim::TimeMode::kReal,
            options.clock.value_or(sim::MachineLocalTime())),
      user_store_(options.user_store),
      files_(options.program_dir),
      host_(windows_, loop_),
      client_(host_, options.screen_name),
      desktop_(host_) {
  loop_.sim_clock().SetUptime(options.uptime_ms);
  // At the terminal a room line looks as the client shows it: colours,
  // bold and underline, and no tags; so does an IM the client delivers.
  const bool rendered = !options.script && !options.raw;
  client_.on_line = [this, rendered](const std::string& line) {
    if (!rendered) {
      Print(line);
      return;
    }
    out_ << RenderRoomLine(line) << '\n';
    out_.flush();
  };
  client_.on_event = [this, rendered](const std::string& event) {
    if (!rendered || event.rfind("[im to ", 0) != 0) {
      Print(event);
      return;
    }
    out_ << RenderImEvent(event) << '\n';
    out_.flush();
  };
  shell_.on_event = [this](const std::string& event) { Print(event); };
  client_.Start();
  desktop_.ShowTaskBar();
  NewProcess();
}

// The process goes first: its program's objects point into the world.
Runner::~Runner() { process_.reset(); }

void Runner::NewProcess() {
  process_ = std::make_unique<ProgramProcess>(windows_, loop_, user_store_,
                                              profile_, files_, shell_);
  sim::SimUi& ui = process_->ui;
  ui.QueueAnswers(std::exchange(answers_, {}));
  ui.on_event = [this](const std::string& event) { Print(event); };
  process_->media.on_event = [this](const std::string& event) { Print(event); };
  // The program's end is the process's end, as it is on Windows: whatever
  // the program was in the middle of goes with it. At the terminal the
  // runner ends with it; a script goes on without the program.
  ui.on_end = [this] {
    if (!options_.script && options_.end_process) {
      out_.flush();
      err_.flush();
      std::exit(0);
    }
    throw ProcessEnd{false};
  };
  if (ui_ask_) ui.ask = ui_ask_;
  ui.wait = [this] { PlayWaiting(); };
  started_ = false;
}

void Runner::EndProcess() {
  loop_.EndProgram();
  windows_.EndProgram();
  if (!process_) return;
  // Answers no box took are the member's, for the next start.
  answers_ = process_->ui.TakeAnswers();
  process_.reset();
}

void Runner::Restart() {
  EndProcess();
  Print("[restart]");
  NewProcess();
  state_ = State::kRunning;
  Start();
}

void Runner::Start() {
  if (started_ || !process_) return;
  started_ = true;
  if (state_ != State::kRunning) {
    state_ = State::kRunning;
    // What was said to come after the start counts from now.
    for (const auto& [ms, line] : std::exchange(held_after_, {})) {
      ScheduleAfter(ms, line);
    }
  }
  Guarded([this] {
    process_->program.Start();
    loop_.RunUntilIdle();
    return Outcome::kDone;
  });
}

Runner::Outcome Runner::Guarded(const std::function<Outcome()>& work) {
  try {
    return work();
  } catch (const ProcessEnd& end) {
    if (end.restart) {
      Restart();
    } else {
      EndProcess();
      state_ = State::kEnded;
      // The client goes on without the program.
      loop_.RunUntilIdle();
    }
    return Outcome::kDone;
  }
}

void Runner::Print(const std::string& text) {
  out_ << Cp1252ToUtf8(text) << '\n';
  out_.flush();
}

}  // namespace v2
