// Script lines played: on the client, on the desktop, on the program's
// windows, on the stores and the files, and `after` them.
#include <cstdio>
#include <ostream>

#include "app/runner.h"
#include "app/script.h"
#include "app/track_file.h"
#include "config/style_window.h"
#include "core/settings.h"
#include "core/style_keys.h"
#include "idle/reason_list.h"

namespace v2 {

using Kind = ScriptCommand::Kind;

bool Runner::NeedsProgram(const ScriptCommand& command) const {
  if (command.kind == Kind::kProgram || command.kind == Kind::kRestart) {
    return true;
  }
  if (command.kind != Kind::kShow) return false;
  // The client, the desktop, the stores, the files and the clock are there
  // without the program.
  const std::string& o = command.object;
  return o.rfind("Form", 0) == 0 || o == "media" || o == "media-state" ||
         o == "menu" || o == "inputbox";
}

bool Runner::PlaysAfterEnd(const ScriptCommand& command) const {
  return command.kind == Kind::kWait || command.kind == Kind::kStore ||
         (command.kind == Kind::kShow && !NeedsProgram(command));
}

Runner::Outcome Runner::Run(const std::string& raw) {
  const ScriptCommand command = ParseScriptLine(raw);
  if (command.kind == Kind::kNothing) return Outcome::kDone;
  const bool first = !played_;
  played_ = true;
  switch (command.kind) {
    case Kind::kNotUnderstood:
      return Outcome::kNotUnderstood;
    case Kind::kHold:
      // Only as the first thing the script does.
      if (state_ != State::kFresh || !first) return Outcome::kNotUnderstood;
      state_ = State::kHeld;
      return Outcome::kDone;
    case Kind::kStart:
      if (state_ == State::kRunning) return Outcome::kNotUnderstood;
      if (state_ == State::kEnded) NewProcess();
      Start();
      return Outcome::kDone;
    default:
      break;
  }
  if (state_ == State::kHeld) {
    // Held, a line that needs the program is a mistake of the script's.
    if (NeedsProgram(command)) return Outcome::kNotUnderstood;
  } else if (state_ == State::kEnded) {
    // After the program's end the run ends at the first line that is more
    // than a look, a wait or a store of the next start's.
    if (!PlaysAfterEnd(command)) return Outcome::kEnd;
  } else if (command.kind != Kind::kAnswer && command.kind != Kind::kTrack &&
             command.kind != Kind::kTags && command.kind != Kind::kStore) {
    // Answers given before the start are for the start's questions, and
    // tracks made then are there when it begins.
    Start();
    // A program that ended in its start has not taken this line.
    if (state_ == State::kEnded && !PlaysAfterEnd(command)) {
      return Outcome::kEnd;
    }
  }
  if (wait_until_ > loop_.clock().NowMs()) WaitTill(wait_until_);
  // A line that comes while the client is hung waits until it answers
  // again, with the program running: the member's keys, the room's lines
  // and what the client shows all go through the client's thread. The
  // clock is the runner's own: it is read at once, so that the moment the
  // program came back from a wait shows even while the client still hangs.
  const bool clock_only =
      command.kind == Kind::kShow && command.object == "time";
  if (!clock_only) loop_.RunFor(host_.HungForMs());
  const Outcome outcome = Act(command);
  loop_.RunUntilIdle();
  return outcome;
}

Runner::Outcome Runner::Act(const ScriptCommand& command) {
  switch (command.kind) {
    case Kind::kClient:
      PlayOnClient(client_, command, &desktop_);
      break;
    case Kind::kDesktop:
      PlayOnDesktop(desktop_, command);
      break;
    case Kind::kProgram:
      if (command.object == "menu" && !program().ClickMenu(command.text)) {
        return Outcome::kNotUnderstood;
      }
      PlayOnProgram(command);
      break;
    case Kind::kAnswer:
      QueueAnswer(command);
      break;
    case Kind::kTags:
      track_tags_ = ParseTrackTags(command.text);
      break;
    case Kind::kTrack: {
      std::string error;
      if (!WriteTrack(command.object, command.seconds, track_tags_, error)) {
        err_ << "vantrel2-sim: track " << command.object << ": " << error
             << '\n';
        return Outcome::kNotUnderstood;
      }
      break;
    }
    case Kind::kUntrack:
      // Gone from under the program, as a member deletes a file.
      std::remove(command.object.c_str());
      break;
    case Kind::kStore:
      return Store(command);
    case Kind::kAfter:
      After(command);
      break;
    case Kind::kRestart:
      // Inside an input box's wait the program's stack is unwound first.
      if (process_ && process_->ui.OpenBoxPrompt()) throw ProcessEnd{true};
      Restart();
      break;
    case Kind::kWait:
      WaitTill(loop_.clock().NowMs() +
               static_cast<std::int64_t>(command.seconds * 1000.0 + 0.5));
      break;
    case Kind::kHang: {
      const auto ms = static_cast<int>(command.seconds * 1000.0 + 0.5);
      client_.Hang(ms);
      WaitTill(loop_.clock().NowMs() + ms);
      break;
    }
    case Kind::kShow:
      if (!Show(command.object)) return Outcome::kNotUnderstood;
      break;
    default:
      return Outcome::kNotUnderstood;
  }
  return Outcome::kDone;
}

void Runner::WaitTill(std::int64_t until) {
  wait_until_ = 0;
  for (;;) {
    loop_.RunUntilIdle();
    if (loop_.clock().NowMs() >= until) return;
    // An answer to the box this wait runs in: the box closes now, and the
    // rest of the wait is the next line's.
    if (process_ && process_->ui.OpenBoxAnswered()) {
      wait_until_ = until;
      return;
    }
    loop_.WaitUntil(until);
  }
}

void Runner::QueueAnswer(const ScriptCommand& command) {
  sim::SimUi::Answer answer;
  if (command.object == "answer") answer.text = command.text;
  answer.wait = command.object == "answer-wait";
  // An answer that comes while a box waits for one is that box's.
  if (!answer.wait && process_ && process_->ui.AnswerOpenBox(answer.text)) {
    return;
  }
  if (process_) {
    std::deque<sim::SimUi::Answer> one{std::move(answer)};
    process_->ui.QueueAnswers(std::move(one));
  } else {
    answers_.push_back(std::move(answer));
  }
}

Runner::Outcome Runner::Store(const ScriptCommand& command) {
  // What an earlier run left: only while no program runs.
  if (state_ == State::kRunning) return Outcome::kNotUnderstood;
  if (command.object == "store") {
    user_store_.SaveSetting(kStoreApp, kStoreSection, command.text,
                            command.value);
  } else {
    Platform files_only{windows_, loop_, nullptr, &profile_, &files_};
    IniWrite(files_only, kIniSection, command.text, command.value,
             SettingsFile(files_only));
  }
  return Outcome::kDone;
}

void Runner::After(const ScriptCommand& command) {
  const int ms = static_cast<int>(command.seconds * 1000.0 + 0.5);
  if (state_ == State::kHeld || state_ == State::kFresh) {
    held_after_.emplace_back(ms, command.text);
  } else {
    ScheduleAfter(ms, command.text);
  }
}

void Runner::ScheduleAfter(int ms, const std::string& line) {
  const ScriptCommand later = ParseScriptLine(line);
  if (later.kind == Kind::kClient) {
    // The client's own doing goes with the client if it quits first.
    client_.Later(ms,
                  [this, later] { PlayOnClient(client_, later, &desktop_); });
    return;
  }
  // The member's hands and eyes go on even while the program holds.
  loop_.AfterOutside(ms, [this, later] {
    // Due while no program runs, a line that needs one is dropped.
    if (state_ != State::kRunning && NeedsProgram(later)) return;
    // A click in the program's windows, or an answer to its box, waits
    // while the program holds its thread: it is taken at its next pump.
    if (loop_.holding() &&
        (later.kind == Kind::kProgram || later.kind == Kind::kAnswer)) {
      loop_.Post([this, later] { Act(later); });
      return;
    }
    Act(later);
  });
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
    process_->ui.KeyPress(program().form3.Text1, 13);
  } else if (command.object == "reasons edit") {
    // A double click on entry N selects it first; below the last entry it
    // lands on nothing.
    int n = std::stoi(command.text);
    program().form3.List1.ListIndex =
        n < program().form3.List1.ListCount() ? n : -1;
    process_->ui.DoubleClick(program().form3.List1);
  } else if (command.object == "reasons save") {
    process_->ui.Click(program().form3.Label1);
  } else if (command.object == "reasons cancel") {
    process_->ui.Click(program().form3.Label2);
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
    process_->ui.Click(program().form4.Label8);
  } else if (command.object == "custom test") {
    process_->ui.Click(program().form4.Label9);
  } else if (command.object == "custom cancel") {
    process_->ui.Click(program().form4.Label10);
  }
}

}  // namespace v2
