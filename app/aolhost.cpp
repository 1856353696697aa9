// aolhost.exe: the simulated client with real windows, played by a scenario
// script in real time. The room's transcript goes to standard output in the
// scenario output form, so that a run under Windows or Wine can be compared
// line for line with the same script run in-process. It also plays the
// member at the program's input boxes, with the answers the script queues,
// and notices when the program has ended itself.
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <fstream>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "aolsim/aol_client.h"
#include "aolsim/desktop.h"
#include "aolsim/win32_window_host.h"
#include "app/aolhost_program.h"
#include "app/script.h"
#include "platform/text.h"

namespace {

constexpr int kWaitForBoundMs = 60000;
constexpr int kSettleBoundMs = 10000;
constexpr int kLookEveryMs = 20;

struct Options {
  std::string script;
  std::string screen_name = "Member";
  std::string program;                 // the driving program's window class
  std::string run;                     // the program's file, started here
  std::optional<v2::LocalTime> clock;  // the simulated system's clock
  // Quiet time that counts as "the program is done": longer than the
  // program's own waits within one command (a second, after `pr`).
  int settle_ms = 1500;
};

void Print(const std::string& text) {
  std::string line = v2::Cp1252ToUtf8(text) + "\n";
  std::fwrite(line.data(), 1, line.size(), stdout);
  std::fflush(stdout);
}

int Usage(const std::string& error) {
  std::cerr << "aolhost: " << error << "\n"
            << "usage: aolhost --script FILE|- [--screen-name NAME] "
               "[--program CLASS] [--run FILE] [--settle MS]\n"
               "  --program CLASS: play the script once a window of CLASS is "
               "up, and ask it\n"
               "  to close when the script has run\n"
               "  --run FILE: start the program FILE once the client is "
               "signed on (and\n"
               "  again at `restart`)\n";
  return 2;
}

// Whether the system's task bar has a clock where the program looks for it.
// Wine's task bar has none: then aolhost shows one of its own, which its
// lookups find first (it is the newest top-level window of its class, and
// stays on top).
bool SystemTrayClock() {
  HWND h = FindWindowA("Shell_TrayWnd", nullptr);
  if (h) h = FindWindowExA(h, nullptr, "TrayNotifyWnd", nullptr);
  if (h) h = FindWindowExA(h, nullptr, "TrayClockWClass", nullptr);
  return h != nullptr;
}

// The shell's tray entries come as data sent to the first task bar it
// finds: aolhost's, which stands in front of the system's for its clock
// only, hands them on to the system's.
std::optional<v2::LResult> HandTrayDataOn(v2::Hwnd h, std::uint32_t msg,
                                          v2::WParam w, v2::LParam l) {
  if (msg != WM_COPYDATA) return std::nullopt;
  HWND self = reinterpret_cast<HWND>(
      static_cast<INT_PTR>(static_cast<std::int32_t>(h)));
  HWND shell = FindWindowExA(nullptr, self, "Shell_TrayWnd", nullptr);
  return shell ? SendMessageA(shell, msg, w, l) : FALSE;
}

void Queue(v2::ProgramWatch& watch, const v2::ScriptCommand& c) {
  if (c.object == "answer") {
    watch.answers.push_back(c.text);
  } else {
    watch.answers.push_back(std::nullopt);
  }
}

// The program driving the client has done what a command set off when it
// has left the client's windows alone for settle_ms (an input box it asked
// counts as something it did).
void Settle(v2::aolsim::Win32WindowHost& host, v2::ProgramWatch& watch,
            int settle_ms) {
  const ULONGLONG start = v2::aolsim::Win32WindowHost::MonotonicMs();
  for (;;) {
    watch.PumpFor(kLookEveryMs);
    if (watch.gone()) return;
    ULONGLONG now = v2::aolsim::Win32WindowHost::MonotonicMs();
    ULONGLONG quiet_since = std::max<ULONGLONG>(
        {start, host.last_action_ms(), watch.last_answer_ms()});
    if (now - quiet_since >= static_cast<ULONGLONG>(settle_ms)) return;
    if (now - start >= kSettleBoundMs) return;
  }
}

// Plays the script from line first on; 0 when it ran to its end or the
// program ended itself, 2 for a line it cannot play.
int Play(v2::aolsim::AolClient& client, v2::aolsim::Desktop& desktop,
         v2::aolsim::Win32WindowHost& host, v2::ProgramWatch& watch,
         const std::vector<std::string>& lines, std::size_t first,
         int settle_ms, const std::string& run) {
  for (std::size_t number = first; number <= lines.size(); ++number) {
    if (watch.gone()) return 0;
    v2::ScriptCommand c = v2::ParseScriptLine(lines[number - 1]);
    using Kind = v2::ScriptCommand::Kind;
    switch (c.kind) {
      case Kind::kNothing:
        continue;
      case Kind::kNotUnderstood:
        std::cerr << "aolhost: line " << number
                  << " is not understood: " << lines[number - 1] << "\n";
        return 2;
      case Kind::kClient:
        v2::PlayOnClient(client, c);
        break;
      case Kind::kDesktop:
        v2::PlayOnDesktop(desktop, c);
        break;
      case Kind::kWait:
        watch.PumpFor(
            static_cast<int>(std::min(c.seconds * 1000.0 + 0.5, 2147483647.0)));
        break;
      case Kind::kHang:
        // This thread is the client's: it really stops pumping.
        client.Hang(static_cast<int>(c.seconds * 1000.0 + 0.5));
        break;
      case Kind::kAnswer:
        Queue(watch, c);
        continue;  // sets nothing off
      case Kind::kRestart:
        if (run.empty()) {
          std::cerr << "aolhost: line " << number
                    << ": restart needs the program's file (--run)\n";
          return 2;
        }
        if (!watch.Kill()) {
          std::cerr << "aolhost: the program did not end\n";
          return 3;
        }
        Print("[restart]");
        if (!watch.Launch(run)) {
          std::cerr << "aolhost: " << run << " did not start again\n";
          return 3;
        }
        break;
      case Kind::kProgram:
        std::cerr << "aolhost: line " << number
                  << ": the program's windows are not the client's\n";
        return 2;
      case Kind::kTrack:
      case Kind::kTags:
        // The run script makes the tracks before the program starts, from
        // the lines at the top; one made later would come too early.
        std::cerr << "aolhost: line " << number
                  << ": tracks are made before the start, at the top of "
                     "the script\n";
        return 2;
      case Kind::kShow: {
        std::string value;
        if (!v2::ShowOfClient(client, c.object, value) &&
            !v2::ShowOfDesktop(desktop, c.object, value)) {
          std::cerr << "aolhost: line " << number << ": " << c.object
                    << " belongs to the program, which the client cannot see\n";
          return 2;
        }
        Print("[" + c.object + "] " + value);
        break;
      }
    }
    Settle(host, watch, settle_ms);
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  _setmode(_fileno(stdout), _O_BINARY);
  Options options;
  for (int i = 1; i < argc; ++i) {
    std::string arg = argv[i];
    if (i + 1 >= argc) return Usage("missing value after " + arg);
    std::string value = argv[++i];
    if (arg == "--script") {
      options.script = value;
    } else if (arg == "--screen-name") {
      options.screen_name = v2::Utf8ToCp1252(value);
    } else if (arg == "--program") {
      options.program = value;
    } else if (arg == "--run") {
      options.run = value;
    } else if (arg == "--settle") {
      options.settle_ms = std::atoi(value.c_str());
    } else if (arg == "--clock") {
      // The task bar's clock shows it; the program's own clock is the
      // machine's here.
      v2::LocalTime t;
      if (std::sscanf(value.c_str(), "%4d-%2d-%2d %2d:%2d:%2d", &t.year,
                      &t.month, &t.day, &t.hour, &t.minute, &t.second) != 6) {
        return Usage("--clock wants \"YYYY-MM-DD HH:MM:SS\"");
      }
      options.clock = t;
    } else if (arg == "--program-dir" || arg == "--user-store" ||
               arg == "--uptime") {
      // The program's own options: the machine's own values here.
    } else {
      return Usage("unknown option " + arg);
    }
  }
  if (options.script.empty()) return Usage("--script is needed");

  std::vector<std::string> lines;
  {
    std::ifstream file;
    std::istream* in = &std::cin;
    if (options.script != "-") {
      file.open(options.script, std::ios::binary);
      if (!file) return Usage("cannot open " + options.script);
      in = &file;
    }
    for (std::string line; std::getline(*in, line);) lines.push_back(line);
  }

  // Answers at the top of the script are for the questions the program
  // asks at its start, before anything else happens; the tracks there have
  // been made by whoever started the run (make-track).
  v2::ProgramWatch watch(options.program);
  watch.on_event = Print;
  std::size_t first = 1;
  for (; first <= lines.size(); ++first) {
    v2::ScriptCommand c = v2::ParseScriptLine(lines[first - 1]);
    using Kind = v2::ScriptCommand::Kind;
    if (c.kind == Kind::kAnswer) {
      Queue(watch, c);
    } else if (c.kind != Kind::kNothing && c.kind != Kind::kTrack &&
               c.kind != Kind::kTags) {
      break;
    }
  }

  v2::aolsim::Win32WindowHost host;
  if (options.clock) host.SetClock(*options.clock);
  v2::aolsim::AolClient client(host, options.screen_name);
  client.on_line = Print;
  client.on_event = Print;
  client.Start();
  v2::aolsim::Desktop desktop(host);
  if (!SystemTrayClock()) desktop.ShowTaskBar(HandTrayDataOn);

  if (!options.run.empty()) {
    // The client is signed on and in its room: now the program starts.
    if (!watch.Launch(options.run)) {
      std::cerr << "aolhost: " << options.run << " did not start\n";
      return 3;
    }
  } else if (!options.program.empty()) {
    const ULONGLONG start = v2::aolsim::Win32WindowHost::MonotonicMs();
    while (!FindWindowA(options.program.c_str(), nullptr)) {
      if (v2::aolsim::Win32WindowHost::MonotonicMs() - start >
          kWaitForBoundMs) {
        std::cerr << "aolhost: no window of class " << options.program
                  << " came\n";
        return 3;
      }
      watch.PumpFor(50);
      if (watch.gone()) return 0;
    }
  }
  Settle(host, watch, options.settle_ms);
  int status = Play(client, desktop, host, watch, lines, first,
                    options.settle_ms, options.run);
  if (!watch.gone()) watch.Close();
  return status;
}
