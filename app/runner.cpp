// The runner's world and its commands: the client, the program's process,
// and every script line played on them.
#include "app/runner.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <istream>
#include <ostream>
#include <sstream>

#include "app/room_render.h"
#include "app/script.h"
#include "app/track_file.h"
#include "config/style_window.h"
#include "core/menu_items.h"
#include "core/settings.h"
#include "core/style_keys.h"
#include "idle/reason_list.h"
#include "platform/text.h"

namespace v2 {
namespace {

// The local clock to the millisecond, for `show time`: how long a wait
// took can be read off two of them.
std::string ClockText(const LocalTime& t) {
  char text[32];
  std::snprintf(text, sizeof(text), "%02d:%02d:%02d.%03d", t.hour, t.minute,
                t.second, t.millisecond);
  return text;
}

}  // namespace

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

void Runner::NewProcess(std::deque<std::optional<std::string>> answers) {
  process_ = std::make_unique<ProgramProcess>(windows_, loop_, user_store_,
                                              profile_, files_, shell_);
  sim::SimUi& ui = process_->ui;
  for (auto& answer : answers) ui.QueueAnswer(std::move(answer));
  ui.on_event = [this](const std::string& event) { Print(event); };
  process_->media.on_event = [this](const std::string& event) { Print(event); };
  // The program's end is the process's end, as it is on Windows: whatever
  // the program was in the middle of goes with it.
  ui.on_end = [this] {
    loop_.Halt();
    if (!options_.end_process) return;
    out_.flush();
    err_.flush();
    std::exit(0);
  };
  if (ui_ask_) ui.ask = ui_ask_;
  started_ = false;
}

void Runner::Restart() {
  Start();  // a program held so far is started, to be ended
  // Nothing of the old process runs again, and nothing it did not write
  // already is written: its timers, events, hooks and windows go with it.
  loop_.EndProgram();
  windows_.EndProgram();
  auto answers = process_->ui.TakeAnswers();
  process_.reset();
  Print("[restart]");
  NewProcess(std::move(answers));
  Start();
}

void Runner::Start() {
  if (started_) return;
  started_ = true;
  process_->program.Start();
  loop_.RunUntilIdle();
}

void Runner::QueueAnswer(const ScriptCommand& command) {
  if (command.object == "answer") {
    process_->ui.QueueAnswer(command.text);
  } else {
    process_->ui.QueueAnswer(std::nullopt);
  }
}

void Runner::Print(const std::string& text) {
  out_ << Cp1252ToUtf8(text) << '\n';
  out_.flush();
}

Runner::Outcome Runner::Run(const std::string& raw) {
  ScriptCommand command = ParseScriptLine(raw);
  if (ended()) return Outcome::kDone;  // the program is gone
  // Answers given before the start are for the start's questions, and
  // tracks made then are there when it begins.
  if (command.kind != ScriptCommand::Kind::kNothing &&
      command.kind != ScriptCommand::Kind::kAnswer &&
      command.kind != ScriptCommand::Kind::kTrack &&
      command.kind != ScriptCommand::Kind::kTags) {
    Start();
    // A line that comes while the client is hung waits until it answers
    // again, with the program running: the member's keys, the room's lines
    // and what the client shows all go through the client's thread. The
    // clock is the runner's own: it is read at once, so that the moment the
    // program came back from a wait shows even while the client still hangs.
    const bool clock_only =
        command.kind == ScriptCommand::Kind::kShow && command.object == "time";
    if (!clock_only) loop_.RunFor(host_.HungForMs());
  }
  switch (command.kind) {
    case ScriptCommand::Kind::kNothing:
      return Outcome::kDone;
    case ScriptCommand::Kind::kNotUnderstood:
      return Outcome::kNotUnderstood;
    case ScriptCommand::Kind::kClient:
      PlayOnClient(client_, command);
      break;
    case ScriptCommand::Kind::kDesktop:
      PlayOnDesktop(desktop_, command);
      break;
    case ScriptCommand::Kind::kProgram:
      if (command.object == "menu" && !program().ClickMenu(command.text)) {
        return Outcome::kNotUnderstood;
      }
      PlayOnProgram(command);
      break;
    case ScriptCommand::Kind::kAnswer:
      QueueAnswer(command);
      break;
    case ScriptCommand::Kind::kTags:
      track_tags_ = ParseTrackTags(command.text);
      break;
    case ScriptCommand::Kind::kTrack: {
      std::string error;
      if (!WriteTrack(command.object, command.seconds, track_tags_, error)) {
        err_ << "vantrel2-sim: track " << command.object << ": " << error
             << '\n';
        return Outcome::kNotUnderstood;
      }
      break;
    }
    case ScriptCommand::Kind::kRestart:
      Restart();
      break;
    case ScriptCommand::Kind::kWait:
      loop_.RunFor(static_cast<std::int64_t>(command.seconds * 1000.0 + 0.5));
      break;
    case ScriptCommand::Kind::kHang: {
      const auto ms = static_cast<int>(command.seconds * 1000.0 + 0.5);
      client_.Hang(ms);
      loop_.RunFor(ms);
      break;
    }
    case ScriptCommand::Kind::kShow: {
      if (command.object == "settings.dat") {
        ShowSettingsFile();
        break;
      }
      if (command.object.compare(0, 6, "store ") == 0) {
        const std::string key = command.object.substr(6);
        const auto stored =
            user_store_.Find(kSettingsApp, kSettingsSection, key);
        Print("[store " + key + "] " +
              (stored ? "\"" + *stored + "\"" : std::string("none")));
        break;
      }
      if (command.object == "menu") {
        for (const std::string& line : MenuLines(program().form2)) {
          Print("[menu] " + line);
        }
        break;
      }
      std::string value;
      if (command.object == "media") {
        value = process_->media.Describe();
      } else if (command.object == "time") {
        value = ClockText(loop_.clock().LocalNow());
      } else if (!ShowOfClient(client_, command.object, value) &&
                 !ShowOfDesktop(desktop_, command.object, value) &&
                 !program().Show(command.object, value)) {
        return Outcome::kNotUnderstood;
      }
      Print("[" + command.object + "] " + value);
      break;
    }
  }
  loop_.RunUntilIdle();
  return Outcome::kDone;
}

void Runner::PlayOnProgram(const ScriptCommand& command) {
  if (command.object == "menu") return;  // clicked above
  if (command.object == "tray") {
    process_->ui.ClickTray(command.text == "right" ? 2 : 1);
    return;
  }
  if (command.object.compare(0, 7, "custom ") == 0) {
    PlayOnForm4(command);
    return;
  }
  // The member's hands in the reason list window, which the first touch
  // brings into being.
  EnsureForm3(program());
  if (command.object == "reasons add") {
    program().form3.Text1.Text.Set(command.text);
    Form3_Text1_KeyPress(program(), 13);
  } else if (command.object == "reasons edit") {
    // A double click on entry N selects it first; below the last entry it
    // lands on nothing.
    int n = std::stoi(command.text);
    program().form3.List1.ListIndex =
        n < program().form3.List1.ListCount() ? n : -1;
    Form3_List1_DblClick(program());
  } else if (command.object == "reasons save") {
    Form3_Label1_Click(program());
  } else if (command.object == "reasons cancel") {
    Form3_Label2_Click(program());
  }
}

// settings.dat line by line, as it lies beside the program.
void Runner::ShowSettingsFile() {
  std::ifstream in(files_.NativePath(SettingsFile(process_->platform)),
                   std::ios::binary);
  if (!in) {
    Print("[settings.dat] missing");
    return;
  }
  std::string line;
  while (std::getline(in, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    Print("[settings.dat] " + line);
  }
}

// The member's hands in the style window.
void Runner::PlayOnForm4(const ScriptCommand& command) {
  EnsureForm4(program());
  if (command.object == "custom type") {
    const auto blank = command.text.find(' ');
    TextBox* box = Form4Field(program().form4, command.text.substr(0, blank));
    // A disabled field takes no keys; a full one loses the rest.
    if (!box || !box->Enabled) return;
    box->Text.Set("");
    const std::string typed =
        blank == std::string::npos ? "" : command.text.substr(blank + 1);
    for (char key : typed) {
      std::string now = box->Text.Get();
      if (box->MaxLength > 0 &&
          now.size() >= static_cast<std::size_t>(box->MaxLength)) {
        break;
      }
      box->Text.Set(now + key);
    }
  } else if (command.object == "custom save") {
    Form4_Label8_Click(program());
  } else if (command.object == "custom test") {
    Form4_Label9_Click(program());
  } else if (command.object == "custom cancel") {
    Form4_Label10_Click(program());
  }
}

bool Runner::Execute(const std::string& line) {
  return Run(line) == Outcome::kDone;
}

int Runner::RunScript(std::istream& script) {
  std::string line;
  for (int number = 1; std::getline(script, line); ++number) {
    switch (Run(line)) {
      case Outcome::kDone:
        break;
      case Outcome::kNotUnderstood:
        err_ << "vantrel2-sim: line " << number
             << " is not understood: " << line << '\n';
        return 2;
    }
  }
  Start();
  return 0;
}

}  // namespace v2
