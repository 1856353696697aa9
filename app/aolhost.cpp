// aolhost.exe: the simulated client with real windows, played by a scenario
// script in real time. The room's transcript goes to standard output in the
// scenario output form, so that a run under Windows or Wine can be compared
// line for line with the same script run in-process.
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "aolsim/aol_client.h"
#include "aolsim/win32_window_host.h"
#include "app/script.h"
#include "platform/text.h"

namespace {

constexpr int kWaitForBoundMs = 60000;
constexpr int kSettleBoundMs = 10000;

struct Options {
  std::string script;
  std::string screen_name = "Member";
  std::string program;  // the driving program's window class
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
               "[--program CLASS] [--settle MS]\n"
               "  --program CLASS: play the script once a window of CLASS is "
               "up, and ask it\n"
               "  to close when the script has run\n";
  return 2;
}

// The program driving the client has done what a command set off when it
// has left the client's windows alone for settle_ms.
void Settle(v2::aolsim::Win32WindowHost& host, int settle_ms) {
  const ULONGLONG start = GetTickCount64();
  for (;;) {
    v2::aolsim::Win32WindowHost::PumpFor(20);
    ULONGLONG now = GetTickCount64();
    ULONGLONG quiet_since = std::max<ULONGLONG>(start, host.last_action_ms());
    if (now - quiet_since >= static_cast<ULONGLONG>(settle_ms)) return;
    if (now - start >= kSettleBoundMs) return;
  }
}

// Plays the script; 0 when it ran to its end, 2 for a line it cannot play.
int Play(v2::aolsim::AolClient& client, v2::aolsim::Win32WindowHost& host,
         const std::vector<std::string>& lines, int settle_ms) {
  for (std::size_t number = 1; number <= lines.size(); ++number) {
    v2::ScriptCommand c = v2::ParseScriptLine(lines[number - 1]);
    using Kind = v2::ScriptCommand::Kind;
    switch (c.kind) {
      case Kind::kNothing:
        continue;
      case Kind::kNotUnderstood:
        std::cerr << "aolhost: line " << number
                  << " is not understood: " << lines[number - 1] << "\n";
        return 2;
      case Kind::kLater:
        std::cerr << "aolhost: line " << number
                  << " needs a capability this runner does not have yet: "
                  << lines[number - 1] << "\n";
        return 2;
      case Kind::kClient:
        v2::PlayOnClient(client, c);
        break;
      case Kind::kWait:
        v2::aolsim::Win32WindowHost::PumpFor(
            static_cast<int>(std::min(c.seconds * 1000.0 + 0.5, 2147483647.0)));
        break;
      case Kind::kProgram:
        std::cerr << "aolhost: line " << number
                  << ": the program's windows are not the client's\n";
        return 2;
      case Kind::kShow: {
        std::string value;
        if (!v2::ShowOfClient(client, c.object, value)) {
          std::cerr << "aolhost: line " << number << ": " << c.object
                    << " belongs to the program, which the client cannot see\n";
          return 2;
        }
        Print("[" + c.object + "] " + value);
        break;
      }
    }
    Settle(host, settle_ms);
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
    } else if (arg == "--settle") {
      options.settle_ms = std::atoi(value.c_str());
    } else if (arg == "--clock" || arg == "--program-dir" ||
               arg == "--user-store") {
      // The program's own options: its clock is the machine's here.
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
  v2::aolsim::AolClient client(host, options.screen_name);
  client.on_line = Print;
  client.on_event = Print;
  client.Start();

  if (!options.program.empty()) {
    const ULONGLONG start = GetTickCount64();
    while (!FindWindowA(options.program.c_str(), nullptr)) {
      if (GetTickCount64() - start > kWaitForBoundMs) {
        std::cerr << "aolhost: no window of class " << options.program
                  << " came\n";
        return 3;
      }
      v2::aolsim::Win32WindowHost::PumpFor(50);
    }
  }
  Settle(host, options.settle_ms);
  int status = Play(client, host, lines, options.settle_ms);
  if (!options.program.empty()) {
    if (HWND program = FindWindowA(options.program.c_str(), nullptr)) {
      PostMessageA(program, WM_CLOSE, 0, 0);
    }
  }
  return status;
}
