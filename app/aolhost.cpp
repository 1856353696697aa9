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
#include "app/aolhost_play.h"
#include "app/aolhost_program.h"
#include "app/script.h"
#include "platform/text.h"

namespace {

constexpr int kWaitForBoundMs = 60000;

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

  v2::aolsim::Win32WindowHost host;
  if (options.clock) host.SetClock(*options.clock);
  v2::aolsim::AolClient client(host, options.screen_name);
  client.on_event = Print;
  client.Start();
  v2::aolsim::Desktop desktop(host);
  if (!SystemTrayClock()) desktop.ShowTaskBar(HandTrayDataOn);
  v2::ProgramWatch watch(options.program);
  watch.on_event = Print;
  v2::ScriptPlayer player(client, desktop, host, watch, options.run,
                          options.settle_ms);
  client.on_line = [&player](const std::string& line) {
    Print(line);
    player.LineShown();
  };

  // Answers at the top of the script are for the questions the program
  // asks at its start, before anything else happens; the tracks there have
  // been made by whoever started the run (make-track). A script that holds
  // the program starts it itself.
  std::size_t first = 1;
  for (; first <= lines.size(); ++first) {
    v2::ScriptCommand c = v2::ParseScriptLine(lines[first - 1]);
    using Kind = v2::ScriptCommand::Kind;
    if (c.kind == Kind::kAnswer) {
      player.Queue(c);
    } else if (c.kind != Kind::kNothing && c.kind != Kind::kTrack &&
               c.kind != Kind::kTags) {
      player.held = c.kind == Kind::kHold;
      break;
    }
  }

  if (player.held) {
    // The program starts at the script's `start`.
  } else if (!options.run.empty()) {
    // The client is signed on and in its room: now the program starts.
    if (!player.StartProgram()) return 3;
  } else if (!options.program.empty()) {
    const ULONGLONG start = v2::aolsim::Win32WindowHost::MonotonicMs();
    while (!FindWindowA(options.program.c_str(), nullptr)) {
      if (v2::aolsim::Win32WindowHost::MonotonicMs() - start >
          kWaitForBoundMs) {
        std::cerr << "aolhost: no window of class " << options.program
                  << " came\n";
        return 3;
      }
      // Looked for at least once a second, and whenever a window is made.
      watch.PumpFor(1000);
      if (watch.gone()) return 0;
    }
  }
  player.Settle();
  int status = player.Play(lines, first);
  if (!watch.gone()) watch.Close();
  return status;
}
