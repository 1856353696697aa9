// aolhost.exe's side of the program: starting it, answering its boxes,
// seeing it end, and ending it for a restart.
#include "app/aolhost_program.h"

#include <algorithm>

#include "aolsim/win32_window_host.h"

namespace v2 {
namespace {

// A read of the program's box waits at most this long for the program.
constexpr UINT kReadBoundMs = 2000;
// With nothing coming up, a look at the program all the same this often:
// for what no window made tells (its main window gone with its process
// still there).
constexpr ULONGLONG kQuietLookEveryMs = 1000;
// How long a program started has to show its main window, and one ended to
// be gone.
constexpr ULONGLONG kLaunchBoundMs = 60000;
constexpr DWORD kKillBoundMs = 10000;
constexpr ULONGLONG kCloseBoundMs = 5000;
// How long a program that takes its messages needs to take one.
constexpr UINT kAnswerBoundMs = 250;
// The program's input box, by its window class.
constexpr const char* kInputBoxClass = "vantrel2 inputbox";

ULONGLONG Now() { return aolsim::Win32WindowHost::MonotonicMs(); }

// Windows of other processes made so far, as the system tells of them.
unsigned long windows_made = 0;

void CALLBACK OnMade(HWINEVENTHOOK, DWORD, HWND, LONG object, LONG, DWORD,
                     DWORD) {
  if (object == OBJID_WINDOW) ++windows_made;
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

}  // namespace

ProgramWatch::~ProgramWatch() {
  if (hook_) UnhookWinEvent(hook_);
  if (process_) CloseHandle(process_);
}

bool ProgramWatch::Launch(const std::string& file) {
  if (process_) CloseHandle(process_);
  process_ = nullptr;
  program_seen_ = gone_ = false;
  handled_.clear();
  open_box_ = nullptr;
  STARTUPINFOA startup{};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION info{};
  // By its full name: a bare name would be looked for beside aolhost.exe
  // first. Its working directory is aolhost's: the run's folder.
  char full[MAX_PATH] = {};
  if (!GetFullPathNameA(file.c_str(), MAX_PATH, full, nullptr)) return false;
  std::string command = std::string("\"") + full + "\"";
  if (!CreateProcessA(full, command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                      nullptr, &startup, &info)) {
    return false;
  }
  CloseHandle(info.hThread);
  process_ = info.hProcess;
  const ULONGLONG start = Now();
  // Up is its main window, or a question of its start that the member
  // leaves open for now.
  while (!program_seen_ && !gone_ && !open_box_) {
    if (Now() - start > kLaunchBoundMs) return false;
    PumpFor(50);
  }
  return true;
}

bool ProgramWatch::Kill() {
  if (!process_) return true;
  TerminateProcess(process_, 1);
  const bool ended =
      WaitForSingleObject(process_, kKillBoundMs) == WAIT_OBJECT_0;
  CloseHandle(process_);
  process_ = nullptr;
  program_seen_ = false;
  handled_.clear();
  return ended;
}

void ProgramWatch::Close() {
  if (HWND program =
          program_.empty() ? nullptr : FindWindowA(program_.c_str(), nullptr)) {
    PostMessageA(program, WM_CLOSE, 0, 0);
  }
  if (!process_) return;
  const ULONGLONG start = Now();
  while (WaitForSingleObject(process_, 0) != WAIT_OBJECT_0 &&
         Now() - start < kCloseBoundMs) {
    aolsim::Win32WindowHost::PumpFor(ProgramWatch::kLookEveryMs);
  }
  Kill();
}

void ProgramWatch::PumpFor(int ms) {
  if (!hook_) {
    hook_ = SetWinEventHook(EVENT_OBJECT_CREATE, EVENT_OBJECT_CREATE, nullptr,
                            OnMade, 0, 0,
                            WINEVENT_OUTOFCONTEXT | WINEVENT_SKIPOWNPROCESS);
  }
  const ULONGLONG start = Now();
  for (;;) {
    Look();
    ULONGLONG now = Now();
    if (gone_ || now - start >= static_cast<ULONGLONG>(ms)) return;
    // Without the system's word of windows made, every look is a poll.
    const ULONGLONG every =
        pending_ || !hook_ ? static_cast<ULONGLONG>(ProgramWatch::kLookEveryMs)
                           : kQuietLookEveryMs;
    WaitFor(std::min<ULONGLONG>(every, ms - (now - start)));
  }
}

void ProgramWatch::WaitFor(ULONGLONG ms) {
  const ULONGLONG deadline = Now() + ms;
  const unsigned long made = windows_made;
  for (;;) {
    MSG msg;
    while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
      TranslateMessage(&msg);
      DispatchMessageA(&msg);
    }
    const ULONGLONG now = Now();
    if (now >= deadline || windows_made != made) return;
    // Woken by a message, or by the program's end.
    const DWORD count = process_ ? 1 : 0;
    const DWORD woke = MsgWaitForMultipleObjectsEx(
        count, &process_, static_cast<DWORD>(deadline - now), QS_ALLINPUT,
        MWMO_INPUTAVAILABLE);
    if (count == 1 && woke == WAIT_OBJECT_0) return;
  }
}

void ProgramWatch::Look() {
  if (gone_) return;
  HWND program =
      program_.empty() ? nullptr : FindWindowA(program_.c_str(), nullptr);
  if (program) {
    program_seen_ = true;
    Follow(program);
  }
  std::erase_if(handled_, [](HWND h) { return !IsWindow(h); });
  pending_ = false;
  for (HWND box = nullptr;
       (box = FindWindowExA(nullptr, box, kInputBoxClass, nullptr));) {
    Follow(box);
    if (std::find(handled_.begin(), handled_.end(), box) == handled_.end()) {
      TakeBox(box);
      // Not complete yet: it shows itself in a moment, which no event tells.
      pending_ |=
          std::find(handled_.begin(), handled_.end(), box) == handled_.end();
    }
  }
  bool ended = (program_seen_ && !program) ||
               (process_ && WaitForSingleObject(process_, 0) == WAIT_OBJECT_0);
  if (ended) {
    gone_ = true;
    if (on_event) on_event("[exit]");
  }
}

bool ProgramWatch::Up() {
  return !gone_ && !program_.empty() && FindWindowA(program_.c_str(), nullptr);
}

bool ProgramWatch::Answering() {
  HWND program =
      program_.empty() ? nullptr : FindWindowA(program_.c_str(), nullptr);
  if (!program || gone_) return true;
  DWORD_PTR result = 0;
  return SendMessageTimeoutA(program, WM_NULL, 0, 0, SMTO_NORMAL,
                             kAnswerBoundMs, &result) != 0;
}

void ProgramWatch::Follow(HWND h) {
  if (process_) return;
  DWORD id = 0;
  GetWindowThreadProcessId(h, &id);
  if (id) process_ = OpenProcess(SYNCHRONIZE, FALSE, id);
}

void ProgramWatch::TakeBox(HWND box) {
  HWND prompt = FindWindowExA(box, nullptr, "Static", nullptr);
  HWND edit = FindWindowExA(box, nullptr, "Edit", nullptr);
  HWND ok = FindWindowExA(box, nullptr, "Button", "OK");
  HWND cancel = FindWindowExA(box, nullptr, "Button", "Cancel");
  // The box shows itself once it is complete.
  if (!IsWindowVisible(box) || !prompt || !edit || !ok || !cancel) return;
  handled_.push_back(box);
  const std::string asked = TextOf(prompt);
  if (on_event) {
    on_event("[inputbox] " + asked + " | " + TextOf(box) + " | " +
             TextOf(edit));
  }
  Answer next;
  if (!answers.empty()) {
    next = std::move(answers.front());
    answers.pop_front();
  }
  if (next.wait) {
    // The member leaves it open for now.
    open_box_ = box;
    open_prompt_ = asked;
    return;
  }
  Reply(box, next.text);
}

void ProgramWatch::Reply(HWND box, const std::optional<std::string>& answer) {
  HWND edit = FindWindowExA(box, nullptr, "Edit", nullptr);
  HWND ok = FindWindowExA(box, nullptr, "Button", "OK");
  HWND cancel = FindWindowExA(box, nullptr, "Button", "Cancel");
  if (answer && edit) {
    SendMessageTimeoutA(edit, WM_SETTEXT, 0,
                        reinterpret_cast<LPARAM>(answer->c_str()),
                        SMTO_ABORTIFHUNG, kReadBoundMs, nullptr);
  }
  PostMessageA(answer ? ok : cancel, BM_CLICK, 0, 0);
  last_answer_ms_ = Now();
}

bool ProgramWatch::AnswerOpenBox(const std::optional<std::string>& answer) {
  if (!OpenBoxPrompt()) return false;
  Reply(open_box_, answer);
  open_box_ = nullptr;
  return true;
}

std::optional<std::string> ProgramWatch::OpenBoxPrompt() {
  if (!open_box_ || !IsWindow(open_box_)) {
    open_box_ = nullptr;
    return std::nullopt;
  }
  return open_prompt_;
}

}  // namespace v2
