#pragma once
// What aolhost.exe sees of the program that drives its client: the
// program's input boxes, which it answers as the member would, and its end.
// Given the program's file, aolhost also starts it (only once the client is
// signed on and in its room, never beside a client still coming up) and
// ends it and starts it again for `restart`, as a machine does.
#include <windows.h>

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace v2 {

class ProgramWatch {
 public:
  // How often aolhost looks at the program while it waits for something
  // of it, handling the client's messages in between.
  static constexpr int kLookEveryMs = 20;

  // program: the class of the program's main window ("" for none).
  explicit ProgramWatch(std::string program) : program_(std::move(program)) {}
  ~ProgramWatch();
  ProgramWatch(const ProgramWatch&) = delete;
  ProgramWatch& operator=(const ProgramWatch&) = delete;

  // Starts the program file (a path, or a name in the working directory)
  // and waits, handling the client's messages, until its main window is up
  // (or a box of its start is left open by a wait) or it has ended; false
  // when it could not be started or no window came within the bound.
  bool Launch(const std::string& file);
  // Ends the program's process at once (nothing of it runs to its end) and
  // waits for it to be gone; false when it is not gone within the bound.
  bool Kill();
  // Asks the program to close, as the system does at the end of a session,
  // and ends it when it has not gone within a few seconds.
  void Close();

  // Told "[inputbox] PROMPT | TITLE | PRESET" and "[exit]" as they happen.
  std::function<void(const std::string&)> on_event;
  // The answers for the next boxes, in order; nullopt cancels, and a wait
  // leaves the box open until AnswerOpenBox.
  struct Answer {
    std::optional<std::string> text;
    bool wait = false;
  };
  std::deque<Answer> answers;
  // Answers the box left open by a wait; false when none is open.
  bool AnswerOpenBox(const std::optional<std::string>& answer);
  // The prompt of the box left open, if one is.
  std::optional<std::string> OpenBoxPrompt();
  // The program has ended by itself ("[exit]" is printed once).
  bool gone() const { return gone_; }
  // When a box was last answered: the program goes on from there.
  ULONGLONG last_answer_ms() const { return last_answer_ms_; }

  // Handles the client's messages for ms, looking at once when a window of
  // another process is made, every few milliseconds while a box is still
  // coming up, and otherwise now and then; returns early once the program
  // is gone. A quiet wait costs the machine next to nothing, as a real
  // client's would.
  void PumpFor(int ms);
  // One look: a box to answer, the program's end.
  void Look();
  // Whether the program's thread takes a message within a moment: false
  // while it is busy inside one thing (a device opening, a hold), however
  // quiet it is towards the client meanwhile. True without a program.
  bool Answering();
  // Whether the program's main window is up.
  bool Up();

 private:
  // The program's process, from the first of its windows seen: it can end
  // before its main window is up, say at a question of its start.
  void Follow(HWND h);
  void TakeBox(HWND box);
  void Reply(HWND box, const std::optional<std::string>& answer);

  // Handles the client's messages for at most ms; returns early when a
  // window of another process is made or the program's process ends.
  void WaitFor(ULONGLONG ms);

  std::string program_;
  HWINEVENTHOOK hook_ = nullptr;
  bool pending_ = false;  // a box seen that is not complete yet
  bool program_seen_ = false;
  bool gone_ = false;
  HANDLE process_ = nullptr;
  std::vector<HWND> handled_;  // boxes answered that may still be up
  HWND open_box_ = nullptr;    // a box left open by a wait
  std::string open_prompt_;
  ULONGLONG last_answer_ms_ = 0;
};

}  // namespace v2
