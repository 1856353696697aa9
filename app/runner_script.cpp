// A script played: line by line from its top, also from inside the
// program's wait for an input box's answer, and every line that ends the
// program's process or the run handled where it unwinds to.
#include <istream>
#include <ostream>

#include "app/runner.h"
#include "platform/text.h"

namespace v2 {

std::optional<std::string> Runner::NextScriptLine() {
  if (line_number_ >= static_cast<int>(script_lines_.size())) {
    return std::nullopt;
  }
  return script_lines_[static_cast<std::size_t>(line_number_++)];
}

bool Runner::Execute(const std::string& line) {
  return Guarded([&] { return Run(line); }) == Outcome::kDone;
}

int Runner::RunScript(std::istream& script) {
  script_lines_.clear();
  line_number_ = 0;
  bool asks_sent = false;
  for (std::string line; std::getline(script, line);) {
    asks_sent = asks_sent || line.find("show sent") != std::string::npos;
    script_lines_.push_back(std::move(line));
  }
  // What the program sends is kept only for a script that asks for it.
  windows_.KeepSent(asks_sent);
  try {
    while (auto line = NextScriptLine()) {
      switch (Guarded([&] { return Run(*line); })) {
        case Outcome::kDone:
          break;
        case Outcome::kEnd:
          return 0;
        case Outcome::kNotUnderstood:
          err_ << "vantrel2-sim: line " << line_number_
               << " is not understood: " << *line << '\n';
          return 2;
      }
    }
    // A script of answers alone still starts the program; one held to its
    // end does not. A wait an answered box broke off is finished.
    if (state_ == State::kFresh) Start();
    if (wait_until_ > loop_.clock().NowMs()) {
      Guarded([this] {
        WaitTill(wait_until_);
        return Outcome::kDone;
      });
    }
  } catch (const RunEnd& end) {
    return end.status;
  }
  return 0;
}

void Runner::PlayWaiting() {
  // The member acts while the box is open: the script goes on. At the
  // terminal the next line typed is the next command.
  std::optional<std::string> line =
      options_.script ? NextScriptLine() : ReadTerminalLine();
  if (!line) throw RunEnd{0};
  switch (Run(*line)) {
    case Outcome::kDone:
      return;
    case Outcome::kEnd:
      throw RunEnd{0};
    case Outcome::kNotUnderstood:
      if (!options_.script) {
        Run("say " + *line);  // at the terminal it is said in the room
        return;
      }
      err_ << "vantrel2-sim: line " << line_number_
           << " is not understood: " << *line << '\n';
      throw RunEnd{2};
  }
}

}  // namespace v2
