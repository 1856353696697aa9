#include "app/runner.h"

#include <unistd.h>

#include <cstdlib>
#include <istream>
#include <ostream>
#include <sstream>

#include "platform/text.h"

namespace v2 {
namespace {

// "word rest": true when line is word alone or word, a blank and rest.
bool Take(const std::string& line, const std::string& word, std::string& rest) {
  if (line == word) {
    rest.clear();
    return true;
  }
  if (line.compare(0, word.size() + 1, word + " ") == 0) {
    rest = line.substr(word.size() + 1);
    return true;
  }
  return false;
}

bool ParseSeconds(const std::string& text, double& seconds) {
  if (text.empty() ||
      text.find_first_not_of("0123456789.") != std::string::npos) {
    return false;
  }
  char* end = nullptr;
  seconds = std::strtod(text.c_str(), &end);
  return end && *end == '\0';
}

std::string DefaultUserStore() {
  const char* config = std::getenv("XDG_CONFIG_HOME");
  const char* home = std::getenv("HOME");
  std::string base = config && *config ? config
                     : home            ? std::string(home) + "/.config"
                                       : std::string(".");
  return base + "/vantrel2/user-store";
}

std::string ExecutableDir() {
  char path[4096];
  ssize_t n = readlink("/proc/self/exe", path, sizeof(path) - 1);
  if (n <= 0) return ".";
  std::string exe(path, static_cast<std::size_t>(n));
  auto slash = exe.rfind('/');
  return slash == std::string::npos ? "." : exe.substr(0, slash);
}

}  // namespace

bool ParseRunnerArgs(int argc, const char* const* argv, RunnerOptions& options,
                     std::string& error) {
  options.program_dir = ExecutableDir();
  options.user_store = DefaultUserStore();
  for (int i = 1; i < argc; ++i) {
    std::string arg = argv[i];
    if (i + 1 >= argc) {
      error = "missing value after " + arg;
      return false;
    }
    std::string value = argv[++i];
    if (arg == "--script") {
      options.script = value;
    } else if (arg == "--screen-name") {
      if (value.empty() || value.find(' ') != std::string::npos) {
        error = "a screen name is one word";
        return false;
      }
      options.screen_name = Utf8ToCp1252(value);
    } else if (arg == "--clock") {
      LocalTime t;
      if (!sim::ParseLocalTime(value, t)) {
        error = "--clock wants \"YYYY-MM-DD HH:MM:SS\", not \"" + value + "\"";
        return false;
      }
      options.clock = t;
    } else if (arg == "--program-dir") {
      options.program_dir = value;
    } else if (arg == "--user-store") {
      options.user_store = value;
    } else {
      error = "unknown option " + arg;
      return false;
    }
  }
  return true;
}

Runner::Runner(const RunnerOptions& options, std::ostream& out,
               std::ostream& err)
    : options_(options),
      out_(out),
      err_(err),
      loop_(options.script ? sim::TimeMode::kVirtual : sim::TimeMode::kReal,
            options.clock.value_or(sim::MachineLocalTime())),
      platform_{windows_, loop_},
      host_(windows_, loop_),
      client_(host_, options.screen_name),
      program_(platform_) {
  client_.on_line = [this](const std::string& line) { Print(line); };
  client_.Start();
  program_.Start();
  loop_.RunUntilIdle();
}

void Runner::Print(const std::string& text) {
  out_ << Cp1252ToUtf8(text) << '\n';
  out_.flush();
}

Runner::Outcome Runner::Run(const std::string& raw) {
  std::string line = Utf8ToCp1252(raw);
  if (!line.empty() && line.back() == '\r') line.pop_back();
  if (line.empty() || line[0] == '#') return Outcome::kDone;
  std::string rest;
  if (Take(line, "say", rest)) {
    client_.MemberTypes(rest);
    client_.MemberPressesReturn();
  } else if (Take(line, "type", rest)) {
    client_.MemberTypes(rest);
  } else if (Take(line, "other", rest)) {
    auto blank = rest.find(' ');
    std::string name = rest.substr(0, blank);
    if (name.empty()) return Outcome::kNotUnderstood;
    client_.OtherSays(name,
                      blank == std::string::npos ? "" : rest.substr(blank + 1));
  } else if (Take(line, "wait", rest)) {
    double seconds = 0;
    if (!ParseSeconds(rest, seconds)) return Outcome::kNotUnderstood;
    loop_.RunFor(static_cast<std::int64_t>(seconds * 1000.0 + 0.5));
  } else if (Take(line, "show", rest)) {
    std::string value;
    if (rest == "input") {
      value = client_.InputText();
    } else if (!program_.Show(rest, value)) {
      return Outcome::kNotUnderstood;
    }
    Print("[" + rest + "] " + value);
  } else if (line == "close welcome") {
    client_.CloseWelcome();
  } else if (line == "open welcome") {
    client_.OpenWelcome();
  } else {
    static const char* const kLater[] = {
        "answer", "answer-cancel", "reasons",  "im",
        "person", "roomfull",      "roomfree", "menu",
        "tray",   "download",      "upload",   "end"};
    std::string word = line.substr(0, line.find(' '));
    for (const char* later : kLater) {
      if (word == later) return Outcome::kNotYet;
    }
    return Outcome::kNotUnderstood;
  }
  loop_.RunUntilIdle();
  return Outcome::kDone;
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
      case Outcome::kNotYet:
        err_ << "vantrel2-sim: line " << number
             << " needs a capability this runner does not have yet: " << line
             << '\n';
        return 2;
    }
  }
  return 0;
}

int Runner::RunInteractive() {
  err_ << "vantrel2-sim: " << Cp1252ToUtf8(options_.screen_name)
       << " is signed on and in the room. Type a line to say it, or a command\n"
          "(say, type, other NAME TEXT, wait S, show OBJECT, close welcome,\n"
          "open welcome). End with Ctrl-D.\n";
  bool done = false;
  std::string pending;
  loop_.SetInput(STDIN_FILENO, [&] {
    char buffer[4096];
    ssize_t n = read(STDIN_FILENO, buffer, sizeof(buffer));
    if (n <= 0) {
      done = true;
      return;
    }
    pending.append(buffer, static_cast<std::size_t>(n));
    for (auto nl = pending.find('\n'); nl != std::string::npos;
         nl = pending.find('\n')) {
      std::string line = pending.substr(0, nl);
      pending.erase(0, nl + 1);
      // Anything that is no command is said in the room.
      if (Run(line) != Outcome::kDone) Run("say " + line);
    }
  });
  while (!done) {
    loop_.RunUntilIdle();
    loop_.WaitUntil(loop_.clock().NowMs() + 1000);
  }
  loop_.RunUntilIdle();
  return 0;
}

}  // namespace v2
