// The runner in real time: each line typed at the terminal is a command,
// and a line that is none is said in the room.
#include <unistd.h>

#include <ostream>

#include "app/runner.h"
#include "platform/text.h"

namespace v2 {
namespace {

// How long the program goes on after piped input has ended.
constexpr std::int64_t kInteractiveTailMs = 2000;

}  // namespace

void Runner::ReadTerminal() {
  char buffer[4096];
  ssize_t n = read(STDIN_FILENO, buffer, sizeof(buffer));
  if (n <= 0) {
    input_done_ = true;
  } else {
    pending_.append(buffer, static_cast<std::size_t>(n));
  }
}

std::optional<std::string> Runner::TakeTerminalLine() {
  auto nl = pending_.find('\n');
  if (nl == std::string::npos) return std::nullopt;
  std::string line = pending_.substr(0, nl);
  pending_.erase(0, nl + 1);
  return line;
}

std::optional<std::string> Runner::ReadTerminalLine() {
  for (;;) {
    if (auto line = TakeTerminalLine()) return line;
    if (input_done_) return std::nullopt;
    ReadTerminal();
  }
}

int Runner::RunInteractive() {
  err_ << "vantrel2-sim: " << Cp1252ToUtf8(options_.screen_name)
       << " is signed on and in the room. Type a line to say it, or a command\n"
          "(say, type, typeahead, other NAME TEXT, im NAME TEXT, wait S,\n"
          "show OBJECT, close welcome, open welcome, close client,\n"
          "open client, restart,\n"
          "menu ITEM, tray right, answer TEXT, download NAME PERCENT MINUTES,\n"
          "aim NAME, aim off, pointer X Y,\n"
          "custom type FIELD TEXT, custom save, custom test, custom cancel).\n"
          "An [inputbox] waits for the next line as its answer (an empty line\n"
          "cancels). End with Ctrl-D.\n";
  // A box the program opens takes the next line typed; the program waits
  // for it as it would for the member.
  ui_ask_ = [this]() -> std::optional<std::string> {
    std::optional<std::string> line = ReadTerminalLine();
    if (line) line = Utf8ToCp1252(*line);
    return line;
  };
  process_->ui.ask = ui_ask_;
  Start();
  loop_.SetInput(STDIN_FILENO, [&] {
    ReadTerminal();
    while (auto line = TakeTerminalLine()) {
      // Anything that is no command is said in the room.
      if (Guarded([&] { return Run(*line); }) != Outcome::kDone) {
        Guarded([&] { return Run("say " + *line); });
      }
    }
  });
  while (!input_done_) {
    loop_.RunUntilIdle();
    loop_.WaitUntil(loop_.clock().NowMs() + 1000);
  }
  // Input piped in ends at once: the program still answers what came last,
  // as it would for a person who stops typing.
  loop_.RunFor(kInteractiveTailMs);
  return 0;
}

}  // namespace v2
