#pragma once
// The program's own windows in the simulator: a form is a hidden window of
// the window tree with its place and outline; its controls stay plain
// values, with the handlers the member's clicks and keys go through.
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "platform/sim/sim_shaped.h"
#include "platform/sim/sim_windows.h"
#include "platform/ui.h"

namespace v2::sim {

class SimUi : public UiToolkit {
 public:
  explicit SimUi(SimWindows& windows) : windows_(windows), regions_(windows) {}
  Hwnd CreateForm(const std::string& title, int width_twips,
                  int height_twips) override;
  // The controls keep what they call, so that the member's clicks and keys
  // reach the program only through a control the program made.
  void AddListBox(Hwnd, ListBox& list, TwipsRect,
                  std::function<void()> double_click) override {
    clicks_[&list] = std::move(double_click);
  }
  void AddTextBox(Hwnd, TextBox& box, TwipsRect,
                  std::function<void(int)> key_press) override {
    keys_[&box] = std::move(key_press);
  }
  void AddLabel(Hwnd, Label& label, TwipsRect,
                std::function<void()> click) override {
    clicks_[&label] = std::move(click);
  }
  // The member clicks a label, double clicks a list or presses a key in a
  // field; false when the program never made that control.
  bool Click(const Label& label) { return Call(&label); }
  bool DoubleClick(const ListBox& list) { return Call(&list); }
  bool KeyPress(const TextBox& box, int key);
  void AddLine(Hwnd, const Line&) override {}
  std::unique_ptr<ShapedWindow> Shaped(Hwnd form) override;
  std::unique_ptr<PictureBox> Picture(Hwnd form, const Pixels& picture,
                                      float width_twips, float height_twips,
                                      ColorRef back,
                                      MouseMove handler) override;
  // Input boxes take the queued answers in order (nullopt: the member
  // cancels); with none queued a box is cancelled. Each box reports
  // "[inputbox] PROMPT | TITLE | PRESET" as it opens. A box that takes a
  // queued wait stays open, calling wait (which should let the member act,
  // events running) until Answer answers it; with no wait it is cancelled.
  std::string InputBox(EventLoop& loop, const std::string& prompt,
                       const std::string& title,
                       const std::string& preset) override;
  struct Answer {
    std::optional<std::string> text;  // nullopt: cancel
    bool wait = false;                // the box stays open
  };
  void QueueAnswer(std::optional<std::string> answer) {
    answers_.push_back({std::move(answer), false});
  }
  void QueueWait() { answers_.push_back({std::nullopt, true}); }
  // Answers the box open last and waiting, if there is one; false when
  // there is none (the answer is then for the next box to queue).
  bool AnswerOpenBox(std::optional<std::string> answer);
  // The prompt of the box open last and waiting, and whether it has been
  // answered.
  std::optional<std::string> OpenBoxPrompt() const;
  bool OpenBoxAnswered() const;
  // The answers no box has taken yet, for a program started anew.
  std::deque<Answer> TakeAnswers() { return std::exchange(answers_, {}); }
  void QueueAnswers(std::deque<Answer> answers) {
    for (Answer& a : answers) answers_.push_back(std::move(a));
  }
  // The tray reports "[tray] shown TIP" and "[tray] removed"; a click on
  // an entry that is not there does nothing.
  void TrayAdd(const std::string& tip, TrayMouseUp handler) override;
  void TrayRemove() override;
  // "[tray] balloon TITLE | TEXT"; one asked for before the entry is there
  // comes right after its "[tray] shown".
  void TrayBalloon(const std::string& title, const std::string& text) override;
  void ClickTray(std::int16_t Button);
  bool TrayShown() const { return tray_.has_value(); }
  // A popup reports "[popup] NAME" and closes with nothing chosen: the
  // member's clicks on items come as scenario commands of their own.
  void PopupMenu(EventLoop& loop, const MenuItem& root) override;
  // Reports "[exit]", then calls on_end (which should not come back); with
  // no on_end the run is only marked ended.
  void EndProgram() override;
  bool ended() const { return ended_; }

  std::function<void(const std::string&)> on_event;
  std::function<void()> on_end;
  // Asked for the answer when none is queued (a person at the terminal);
  // nullopt cancels.
  std::function<std::optional<std::string>()> ask;
  // Called again and again while a box waits for its answer.
  std::function<void()> wait;
  SimRegions& regions() { return regions_; }

 private:
  void Event(const std::string& text) {
    if (on_event) on_event(text);
  }
  bool Call(const void* control);
  std::map<const void*, std::function<void()>> clicks_;
  std::map<const void*, std::function<void(int)>> keys_;
  // Keeps a box open until it is answered.
  std::optional<std::string> Wait(const std::string& prompt);
  std::deque<Answer> answers_;
  // The boxes open and waiting, the last opened last.
  struct OpenBox {
    std::string prompt;
    std::optional<std::optional<std::string>> answer;
  };
  std::vector<OpenBox> open_;
  std::optional<std::string> tray_;  // the tip while the entry is there
  TrayMouseUp tray_handler_;
  std::optional<std::string> balloon_;  // waiting for the entry
  bool ended_ = false;
  SimWindows& windows_;
  SimRegions regions_;
};

}  // namespace v2::sim
