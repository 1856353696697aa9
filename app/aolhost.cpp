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
#include "app/script.h"
#include "platform/text.h"

namespace {

constexpr int kWaitForBoundMs = 60000;
constexpr int kSettleBoundMs = 10000;
// A read of the program's box waits at most this long for the program.
constexpr UINT kReadBoundMs = 2000;
constexpr int kLookEveryMs = 20;
// The program's input box, by its window class.
constexpr const char* kInputBoxClass = "vantrel2 inputbox";

struct Options {
  std::string script;
  std::string screen_name = "Member";
  std::string program;                 // the driving program's window class
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
               "[--program CLASS] [--settle MS]\n"
               "  --program CLASS: play the script once a window of CLASS is "
               "up, and ask it\n"
               "  to close when the script has run\n";
  return 2;
}

// Text of a window of the program's, as the window itself gives it.
std::string TextOf(HWND h) {
  DWORD_PTR length = 0;
  if (!SendMessageTimeoutA(h, WM_GETTEXTLENGTH, 0, 0, SMTO_ABORTIFHUNG,
                           kReadBoundMs, &length)) {
    return {};
  }
  std::string text(length + 1, '\0');
  DWORD_PTR got = 0;
  if (!SendMessageTimeoutA(h, WM_GETTEXT, text.size(),
                           reinterpret_cast<LPARAM>(text.data()),
                           SMTO_ABORTIFHUNG, kReadBoundMs, &got)) {
    return {};
  }
  text.resize(std::min<std::size_t>(got, length));
  return text;
}

// What aolhost sees of the program besides the client's windows: its input
// boxes, which it answers as the member would, and its end.
class Watch {
 public:
  explicit Watch(std::string program) : program_(std::move(program)) {}
  ~Watch() {
    if (process_) CloseHandle(process_);
  }
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;

  // The answers for the next boxes, in order; nullopt cancels.
  std::deque<std::optional<std::string>> answers;
  // The program has ended ("[exit]" is printed once).
  bool gone() const { return gone_; }
  // When a box was last answered: the program goes on from there.
  ULONGLONG last_answer_ms() const { return last_answer_ms_; }

  // Handles the client's messages for ms, looking every few milliseconds;
  // returns early once the program is gone.
  void PumpFor(int ms) {
    const ULONGLONG start = GetTickCount64();
    for (;;) {
      Look();
      ULONGLONG now = GetTickCount64();
      if (gone_ || now - start >= static_cast<ULONGLONG>(ms)) return;
      v2::aolsim::Win32WindowHost::PumpFor(static_cast<int>(
          std::min<ULONGLONG>(kLookEveryMs, ms - (now - start))));
    }
  }

  void Look() {
    if (gone_) return;
    HWND program =
        program_.empty() ? nullptr : FindWindowA(program_.c_str(), nullptr);
    if (program) {
      program_seen_ = true;
      Follow(program);
    }
    std::erase_if(handled_, [](HWND h) { return !IsWindow(h); });
    for (HWND box = nullptr;
         (box = FindWindowExA(nullptr, box, kInputBoxClass, nullptr));) {
      Follow(box);
      if (std::find(handled_.begin(), handled_.end(), box) == handled_.end()) {
        Answer(box);
      }
    }
    bool ended =
        (program_seen_ && !program) ||
        (process_ && WaitForSingleObject(process_, 0) == WAIT_OBJECT_0);
    if (ended) {
      gone_ = true;
      Print("[exit]");
    }
  }

 private:
  // The program's process, from the first of its windows seen: it can end
  // before its main window is up, say at a question of its start.
  void Follow(HWND h) {
    if (process_) return;
    DWORD id = 0;
    GetWindowThreadProcessId(h, &id);
    if (id) process_ = OpenProcess(SYNCHRONIZE, FALSE, id);
  }

  void Answer(HWND box) {
    HWND prompt = FindWindowExA(box, nullptr, "Static", nullptr);
    HWND edit = FindWindowExA(box, nullptr, "Edit", nullptr);
    HWND ok = FindWindowExA(box, nullptr, "Button", "OK");
    HWND cancel = FindWindowExA(box, nullptr, "Button", "Cancel");
    // The box shows itself once it is complete.
    if (!IsWindowVisible(box) || !prompt || !edit || !ok || !cancel) return;
    handled_.push_back(box);
    Print("[inputbox] " + TextOf(prompt) + " | " + TextOf(box) + " | " +
          TextOf(edit));
    std::optional<std::string> answer;
    if (!answers.empty()) {
      answer = std::move(answers.front());
      answers.pop_front();
    }
    if (answer) {
      SendMessageTimeoutA(edit, WM_SETTEXT, 0,
                          reinterpret_cast<LPARAM>(answer->c_str()),
                          SMTO_ABORTIFHUNG, kReadBoundMs, nullptr);
    }
    PostMessageA(answer ? ok : cancel, BM_CLICK, 0, 0);
    last_answer_ms_ = GetTickCount64();
  }

  std::string program_;
  bool program_seen_ = false;
  bool gone_ = false;
  HANDLE process_ = nullptr;
  std::vector<HWND> handled_;  // boxes answered that may still be up
  ULONGLONG last_answer_ms_ = 0;
};

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

void Queue(Watch& watch, const v2::ScriptCommand& c) {
  if (c.object == "answer") {
    watch.answers.push_back(c.text);
  } else {
    watch.answers.push_back(std::nullopt);
  }
}

// The program driving the client has done what a command set off when it
// has left the client's windows alone for settle_ms (an input box it asked
// counts as something it did).
void Settle(v2::aolsim::Win32WindowHost& host, Watch& watch, int settle_ms) {
  const ULONGLONG start = GetTickCount64();
  for (;;) {
    watch.PumpFor(kLookEveryMs);
    if (watch.gone()) return;
    ULONGLONG now = GetTickCount64();
    ULONGLONG quiet_since = std::max<ULONGLONG>(
        {start, host.last_action_ms(), watch.last_answer_ms()});
    if (now - quiet_since >= static_cast<ULONGLONG>(settle_ms)) return;
    if (now - start >= kSettleBoundMs) return;
  }
}

// Plays the script from line first on; 0 when it ran to its end or the
// program ended itself, 2 for a line it cannot play.
int Play(v2::aolsim::AolClient& client, v2::aolsim::Desktop& desktop,
         v2::aolsim::Win32WindowHost& host, Watch& watch,
         const std::vector<std::string>& lines, std::size_t first,
         int settle_ms) {
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
  Watch watch(options.program);
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
  if (!SystemTrayClock()) desktop.ShowTaskBar();

  if (!options.program.empty()) {
    const ULONGLONG start = GetTickCount64();
    while (!FindWindowA(options.program.c_str(), nullptr)) {
      if (GetTickCount64() - start > kWaitForBoundMs) {
        std::cerr << "aolhost: no window of class " << options.program
                  << " came\n";
        return 3;
      }
      watch.PumpFor(50);
      if (watch.gone()) return 0;
    }
  }
  Settle(host, watch, options.settle_ms);
  int status =
      Play(client, desktop, host, watch, lines, first, options.settle_ms);
  if (watch.gone()) return 0;
  if (!options.program.empty()) {
    if (HWND program = FindWindowA(options.program.c_str(), nullptr)) {
      PostMessageA(program, WM_CLOSE, 0, 0);
    }
  }
  return status;
}
