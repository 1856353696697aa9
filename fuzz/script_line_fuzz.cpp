// Fuzz target: scenario script lines, read by both runners. Any bytes at all
// are a script: every line is understood or refused, none crashes a runner
// or stops it for good, and a refused line changes nothing.
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

#include "app/runner.h"
#include "app/script.h"
#include "fuzz/fuzz_check.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  const std::string input(reinterpret_cast<const char*>(data), size);
  v2::RunnerOptions options;
  options.script = "-";
  options.clock = v2::LocalTime{2001, 6, 15, 14, 3, 0, 0};
  options.end_process = false;  // `exit` must not end the fuzzer
  std::ostringstream out, err;
  v2::Runner runner(options, out, err);
  runner.Start();

  std::istringstream lines(input);
  std::string line;
  for (int n = 0; n < 16 && std::getline(lines, line); ++n) {
    using Kind = v2::ScriptCommand::Kind;
    v2::ScriptCommand c = v2::ParseScriptLine(line);
    if (c.kind == Kind::kWait) {
      V2_FUZZ_CHECK(c.seconds >= 0 && c.seconds <= v2::kMaxWaitSeconds,
                    "a wait is a real, bounded time");
    }
    // An idle session ticks every 63 s and writes its count each time: a
    // wait of years is a real script's business, not a fuzz input's.
    if (c.kind == Kind::kWait && c.seconds > 3600) continue;
    // A track is a file written wherever the line says: not a fuzz input's
    // business either (the runner's tests make them).
    if (c.kind == Kind::kTrack) continue;
    const std::string room = runner.client().TranscriptText();
    const std::size_t printed = out.str().size();
    bool done = runner.Execute(line);
    if (!done) {
      // A menu item is known only to the program: one it does not have is
      // refused when clicked.
      V2_FUZZ_CHECK(c.kind == Kind::kNotUnderstood || c.kind == Kind::kShow ||
                        (c.kind == Kind::kProgram && c.object == "menu"),
                    "only a line that is not understood is refused");
      V2_FUZZ_CHECK(runner.client().TranscriptText() == room &&
                        out.str().size() == printed,
                    "a refused line changes nothing");
    }
    if (c.kind == Kind::kNothing) {
      V2_FUZZ_CHECK(done && out.str().size() == printed,
                    "comments and empty lines do nothing");
    }
  }
  // Whatever came before, the member is still answered once back in a room
  // (the script may have closed the client or its Welcome window, signed
  // off, or switched the commands off; but not ended the program).
  if (runner.ended()) return 0;
  runner.Execute("close client");
  runner.Execute("open client");
  runner.Execute("open welcome");
  runner.Execute("say on");
  const std::size_t before = out.str().size();
  runner.Execute("say date");
  V2_FUZZ_CHECK(out.str().find("todays date:", before) != std::string::npos,
                "the program still answers");
  return 0;
}
