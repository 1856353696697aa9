// aolhost.exe plays a script line by line in real time: on the client, the
// desktop, the program's boxes, start and end, and the stores and files.
#include "app/aolhost_play.h"

#include <windows.h>

#include <algorithm>
#include <iostream>
#include <utility>

#include "app/script_words.h"
#include "platform/text.h"

namespace v2 {
namespace {

constexpr int kSettleBoundMs = 10000;
// Where the program keeps the per-user store, as GetSetting does.
constexpr const char* kSettingsKey =
    "Software\\VB and VBA Program Settings\\vantrel2\\settings";

void Print(const std::string& text) {
  std::string line = Cp1252ToUtf8(text) + "\n";
  std::fwrite(line.data(), 1, line.size(), stdout);
  std::fflush(stdout);
}

// The folder of the program's file: where its settings.dat lies.
std::string FolderOf(const std::string& file) {
  char full[MAX_PATH] = {};
  if (!GetFullPathNameA(file.c_str(), MAX_PATH, full, nullptr)) return ".";
  std::string path = full;
  const auto slash = path.find_last_of("\\/");
  return slash == std::string::npos ? "." : path.substr(0, slash);
}

}  // namespace

void ScriptPlayer::Queue(const ScriptCommand& c) {
  ProgramWatch::Answer answer;
  if (c.object == "answer") answer.text = c.text;
  answer.wait = c.object == "answer-wait";
  if (!answer.wait && watch_.AnswerOpenBox(answer.text)) return;
  watch_.answers.push_back(std::move(answer));
}

void ScriptPlayer::Settle() {
  const ULONGLONG start = aolsim::Win32WindowHost::MonotonicMs();
  ULONGLONG seen_at = 0;  // when the program first read the room since
  for (;;) {
    watch_.PumpFor(ProgramWatch::kLookEveryMs);
    if (watch_.gone()) return;
    ULONGLONG now = aolsim::Win32WindowHost::MonotonicMs();
    // Quiet, and not because it is stuck in the middle of something (on a
    // busy machine a device can take longer to open than the quiet time),
    // nor because it has not looked at the room since its last line. Until
    // it does something after that line, the quiet counts from its look:
    // it looks now and then, and what it does about the line comes after.
    const bool seen = !watch_.Up() || !client_.transcript() ||
                      host_.last_read_ms(client_.transcript()) >= line_ms_;
    if (!seen) {
      seen_at = 0;
    } else if (seen_at == 0) {
      seen_at = now;
    }
    ULONGLONG quiet_since = std::max<ULONGLONG>(
        {start, host_.last_action_ms(), watch_.last_answer_ms()});
    if (host_.last_action_ms() < line_ms_) {
      quiet_since = std::max(quiet_since, seen_at);
    }
    if (now - quiet_since >= static_cast<ULONGLONG>(settle_ms_) && seen &&
        watch_.Answering()) {
      return;
    }
    if (now - start >= kSettleBoundMs) return;
  }
}

bool ScriptPlayer::Running() const { return started_ && !watch_.gone(); }

ScriptPlayer::Outcome ScriptPlayer::Start(std::size_t number) {
  if (run_.empty()) {
    std::cerr << "aolhost: line " << number
              << ": the program can only be started with --run\n";
    return Outcome::kNotUnderstood;
  }
  if (!watch_.Launch(run_)) {
    std::cerr << "aolhost: " << run_ << " did not start\n";
    return Outcome::kFailed;
  }
  started_ = true;
  for (const auto& [ms, line] : std::exchange(held_after_, {})) {
    Schedule(ms, line);
  }
  return Outcome::kDone;
}

bool ScriptPlayer::Store(const ScriptCommand& c) {
  if (Running()) return false;
  if (c.object == "store") {
    HKEY key = nullptr;
    if (RegCreateKeyExA(HKEY_CURRENT_USER, kSettingsKey, 0, nullptr, 0,
                        KEY_SET_VALUE, nullptr, &key,
                        nullptr) != ERROR_SUCCESS) {
      return false;
    }
    RegSetValueExA(key, c.text.c_str(), 0, REG_SZ,
                   reinterpret_cast<const BYTE*>(c.value.c_str()),
                   static_cast<DWORD>(c.value.size() + 1));
    RegCloseKey(key);
    return true;
  }
  // The program writes its keys in upper case.
  std::string upper = c.text;
  for (char& ch : upper) {
    if (ch >= 'a' && ch <= 'z') ch = static_cast<char>(ch - 32);
  }
  const std::string file =
      FolderOf(run_.empty() ? "x" : run_) + "\\settings.dat";
  return WritePrivateProfileStringA("vantrel2", upper.c_str(), c.value.c_str(),
                                    file.c_str()) != 0;
}

std::optional<std::string> ScriptPlayer::Stored(const std::string& key) {
  char value[4096] = {};
  DWORD size = sizeof(value) - 1;
  DWORD type = 0;
  HKEY k = nullptr;
  if (RegOpenKeyExA(HKEY_CURRENT_USER, kSettingsKey, 0, KEY_QUERY_VALUE, &k) !=
      ERROR_SUCCESS) {
    return std::nullopt;
  }
  const LONG read = RegQueryValueExA(k, key.c_str(), nullptr, &type,
                                     reinterpret_cast<BYTE*>(value), &size);
  RegCloseKey(k);
  if (read != ERROR_SUCCESS || type != REG_SZ) return std::nullopt;
  return std::string(value);
}

void ScriptPlayer::ShowSettingsFile() {
  const std::string file =
      FolderOf(run_.empty() ? "x" : run_) + "\\settings.dat";
  std::FILE* in = std::fopen(file.c_str(), "rb");
  if (!in) {
    Print("[settings.dat] missing");
    return;
  }
  std::string all;
  char chunk[4096];
  for (std::size_t got; (got = std::fread(chunk, 1, sizeof(chunk), in)) > 0;)
    all.append(chunk, got);
  std::fclose(in);
  std::size_t at = 0;
  while (at < all.size()) {
    std::size_t end = all.find('\n', at);
    if (end == std::string::npos) end = all.size();
    std::string line = all.substr(at, end - at);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    Print("[settings.dat] " + line);
    at = end + 1;
  }
}

void ScriptPlayer::After(const ScriptCommand& c) {
  const int ms = static_cast<int>(c.seconds * 1000.0 + 0.5);
  if (held && !started_) {
    held_after_.emplace_back(ms, c.text);
  } else {
    Schedule(ms, c.text);
  }
}

void ScriptPlayer::Schedule(int ms, const std::string& line) {
  const ScriptCommand later = ParseScriptLine(line);
  auto play = [this, later] { PlayLine(later, 0); };
  // The client's own doing goes with the client if it quits first.
  if (later.kind == ScriptCommand::Kind::kClient) {
    client_.Later(ms, play);
  } else {
    host_.After(ms, play);
  }
}

ScriptPlayer::Outcome ScriptPlayer::PlayLine(const ScriptCommand& c,
                                             std::size_t number) {
  using Kind = ScriptCommand::Kind;
  switch (c.kind) {
    case Kind::kNothing:
      return Outcome::kDone;
    case Kind::kClient:
      PlayOnClient(client_, c, &desktop_);
      return Outcome::kDone;
    case Kind::kDesktop:
      PlayOnDesktop(desktop_, c);
      return Outcome::kDone;
    case Kind::kWait:
      watch_.PumpFor(
          static_cast<int>(std::min(c.seconds * 1000.0 + 0.5, 2147483647.0)));
      return Outcome::kDone;
    case Kind::kHang:
      // This thread is the client's: it really stops pumping.
      client_.Hang(static_cast<int>(c.seconds * 1000.0 + 0.5));
      return Outcome::kDone;
    case Kind::kAnswer:
      Queue(c);
      return Outcome::kDone;
    case Kind::kAfter:
      After(c);
      return Outcome::kDone;
    case Kind::kUntrack:
      DeleteFileA(c.object.c_str());
      return Outcome::kDone;
    case Kind::kStore:
      if (Store(c)) return Outcome::kDone;
      std::cerr << "aolhost: line " << number
                << ": the stores are written while no program runs\n";
      return Outcome::kNotUnderstood;
    case Kind::kStart:
      if (Running()) return Outcome::kNotUnderstood;
      return Start(number);
    case Kind::kRestart:
      if (!Running()) return Outcome::kEnd;
      if (!watch_.Kill()) {
        std::cerr << "aolhost: the program did not end\n";
        return Outcome::kFailed;
      }
      Print("[restart]");
      return Start(number);
    case Kind::kShow: {
      std::string value;
      if (c.object == "settings.dat") {
        ShowSettingsFile();
        return Outcome::kDone;
      }
      if (c.object.rfind("store ", 0) == 0) {
        const std::string key = c.object.substr(6);
        const auto stored = Stored(key);
        Print("[store " + key + "] " +
              (stored ? "\"" + *stored + "\"" : std::string("none")));
        return Outcome::kDone;
      }
      if (c.object == "inputbox") {
        const auto prompt = watch_.OpenBoxPrompt();
        value = prompt ? "open " + *prompt : "none";
      } else if (!ShowOfClient(client_, c.object, value) &&
                 !ShowOfDesktop(desktop_, c.object, value)) {
        std::cerr << "aolhost: line " << number << ": " << c.object
                  << " belongs to the program, which the client cannot see\n";
        return Outcome::kNotUnderstood;
      }
      Print("[" + c.object + "] " + value);
      return Outcome::kDone;
    }
    case Kind::kProgram:
      std::cerr << "aolhost: line " << number
                << ": the program's windows are not the client's\n";
      return Outcome::kNotUnderstood;
    case Kind::kTrack:
    case Kind::kTags:
      // The run script makes the tracks before the program starts, from
      // the lines at the top; one made later would come too early.
      std::cerr << "aolhost: line " << number
                << ": tracks are made before the start, at the top of "
                   "the script\n";
      return Outcome::kNotUnderstood;
    default:
      std::cerr << "aolhost: line " << number << " is not understood\n";
      return Outcome::kNotUnderstood;
  }
}

int ScriptPlayer::Play(const std::vector<std::string>& lines,
                       std::size_t first) {
  using Kind = ScriptCommand::Kind;
  for (std::size_t number = first; number <= lines.size(); ++number) {
    const ScriptCommand c = ParseScriptLine(lines[number - 1]);
    if (c.kind == Kind::kNothing) continue;
    if (c.kind == Kind::kNotUnderstood ||
        (c.kind == Kind::kHold && number != first)) {
      std::cerr << "aolhost: line " << number
                << " is not understood: " << lines[number - 1] << "\n";
      return 2;
    }
    if (c.kind == Kind::kHold) continue;  // held at the start already
    // After the program's end only a look, a wait, a store or a start goes
    // on; anything else ends the run, as it ends in-process.
    if (started_ && watch_.gone() && c.kind != Kind::kShow &&
        c.kind != Kind::kWait && c.kind != Kind::kStore &&
        c.kind != Kind::kStart) {
      return 0;
    }
    switch (PlayLine(c, number)) {
      case Outcome::kDone:
        break;
      case Outcome::kEnd:
        return 0;
      case Outcome::kNotUnderstood:
        return 2;
      case Outcome::kFailed:
        return 3;
    }
    if (c.kind == Kind::kAnswer) continue;  // sets nothing off
    Settle();
  }
  return 0;
}

}  // namespace v2
