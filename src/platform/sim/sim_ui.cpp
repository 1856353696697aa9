#include "platform/sim/sim_ui.h"

namespace v2::sim {

Hwnd SimUi::CreateForm(const std::string& title, int width_twips,
                       int height_twips) {
  Hwnd h = windows_.Create(0, "vantrel2 form", title, {}, false,
                           SimWindows::Owner::kProgram);
  const int px = static_cast<int>(SimScreen().TwipsPerPixelX);
  windows_.SetWindowPos(h, 0, 0, 0, width_twips / px, height_twips / px,
                        kSwpNoMove | kSwpNoZOrder);
  return h;
}

std::unique_ptr<ShapedWindow> SimUi::Shaped(Hwnd form) {
  if (!form) return nullptr;
  return std::make_unique<SimShapedWindow>(windows_, regions_, form);
}

std::unique_ptr<PictureBox> SimUi::Picture(Hwnd, const Pixels& picture,
                                           float width_twips,
                                           float height_twips, ColorRef back,
                                           MouseMove) {
  // The pointer is the scenario's; it does not move over pictures here.
  return std::make_unique<SimPictureBox>(picture, width_twips, height_twips,
                                         back);
}

std::string SimUi::InputBox(EventLoop& loop, const std::string& prompt,
                            const std::string& title,
                            const std::string& preset) {
  Event("[inputbox] " + prompt + " | " + title + " | " + preset);
  std::optional<std::string> answer;
  if (!answers_.empty()) {
    Answer queued = std::move(answers_.front());
    answers_.pop_front();
    if (queued.wait) {
      answer = Wait(prompt);
    } else {
      answer = std::move(queued.text);
    }
  } else if (ask) {
    answer = ask();
  }
  // The box is modal, but what was waiting is handled before it closes.
  loop.PumpEvents();
  return answer.value_or(std::string());
}

std::optional<std::string> SimUi::Wait(const std::string& prompt) {
  open_.push_back({prompt, std::nullopt});
  const std::size_t mine = open_.size();
  while (wait && !open_[mine - 1].answer) wait();
  std::optional<std::string> answer =
      open_[mine - 1].answer.value_or(std::nullopt);
  open_.resize(mine - 1);
  return answer;
}

bool SimUi::AnswerOpenBox(std::optional<std::string> answer) {
  for (auto it = open_.rbegin(); it != open_.rend(); ++it) {
    if (it->answer) continue;
    it->answer = std::move(answer);
    return true;
  }
  return false;
}

std::optional<std::string> SimUi::OpenBoxPrompt() const {
  for (auto it = open_.rbegin(); it != open_.rend(); ++it) {
    if (!it->answer) return it->prompt;
  }
  return std::nullopt;
}

bool SimUi::OpenBoxAnswered() const {
  return !open_.empty() && open_.back().answer.has_value();
}

void SimUi::TrayAdd(const std::string& tip, TrayMouseUp handler) {
  tray_ = tip;
  tray_handler_ = std::move(handler);
  Event("[tray] shown " + tip);
  if (balloon_) Event("[tray] balloon " + *std::exchange(balloon_, {}));
}

void SimUi::TrayBalloon(const std::string& title, const std::string& text) {
  balloon_ = title + " | " + text;
  if (tray_) Event("[tray] balloon " + *std::exchange(balloon_, {}));
}

void SimUi::TrayRemove() {
  if (!tray_) return;
  tray_.reset();
  tray_handler_ = nullptr;
  Event("[tray] removed");
}

void SimUi::ClickTray(std::int16_t Button) {
  if (!tray_ || !tray_handler_) return;
  TrayMouseUp handler = tray_handler_;  // the click may remove the entry
  handler(Button);
}

void SimUi::PopupMenu(EventLoop& loop, const MenuItem& root) {
  Event("[popup] " + root.Name);
  loop.PumpEvents();
}

void SimUi::EndProgram() {
  ended_ = true;
  Event("[exit]");
  if (on_end) on_end();
}

bool SimUi::Call(const void* control) {
  auto it = clicks_.find(control);
  if (it == clicks_.end() || !it->second) return false;
  auto handler = it->second;  // it may unload the form that holds it
  handler();
  return true;
}

bool SimUi::KeyPress(const TextBox& box, int key) {
  auto it = keys_.find(&box);
  if (it == keys_.end() || !it->second) return false;
  auto handler = it->second;
  handler(key);
  return true;
}

}  // namespace v2::sim
