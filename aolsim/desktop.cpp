#include "aolsim/desktop.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace v2::aolsim {

std::string Desktop::ClockText(const LocalTime& t) {
  const int hour = t.hour % 12 == 0 ? 12 : t.hour % 12;
  const int minute = std::clamp(t.minute, 0, 59);
  return std::to_string(hour) + ":" + (minute < 10 ? "0" : "") +
         std::to_string(minute) + (t.hour < 12 ? " AM" : " PM");
}

void Desktop::ShowTaskBar(WindowHost::Handler on_task_bar) {
  if (host_.Exists(task_bar_)) return;
  task_bar_ = host_.Create(0, "Shell_TrayWnd", "", std::move(on_task_bar));
  notify_ = host_.Create(task_bar_, "TrayNotifyWnd", "");
  ClockOn();
}

void Desktop::ClockOff() {
  if (host_.Exists(clock_)) host_.Destroy(clock_);
  clock_ = 0;
}

void Desktop::ClockOn() {
  if (host_.Exists(clock_) || !host_.Exists(notify_)) return;
  // The clock tells the time at the moment it is asked.
  clock_ = host_.Create(notify_, "TrayClockWClass", "",
                        [this](Hwnd, std::uint32_t msg, WParam w,
                               LParam l) -> std::optional<LResult> {
                          if (msg != kWmGetText && msg != kWmGetTextLength)
                            return std::nullopt;
                          const std::string text = ClockText(host_.LocalNow());
                          if (msg == kWmGetTextLength)
                            return static_cast<LResult>(text.size());
                          if (w == 0 || l == 0) return 0;
                          const std::size_t n =
                              std::min<std::size_t>(text.size(), w - 1);
                          char* out = reinterpret_cast<char*>(l);
                          std::memcpy(out, text.data(), n);
                          out[n] = '\0';
                          return static_cast<LResult>(n);
                        });
}

void Desktop::AimSignOn(const std::string& name) {
  AimQuit();
  buddy_list_ = host_.Create(0, "_Oscar_BuddyListWin", name + "'s Buddy List");
}

bool Desktop::Retitle(const std::string& old, const std::string& now) {
  if (!host_.Exists(buddy_list_) || host_.Text(buddy_list_) != old) {
    return false;
  }
  host_.SetText(buddy_list_, now);
  return true;
}

void Desktop::AimQuit() {
  if (host_.Exists(buddy_list_)) host_.Destroy(buddy_list_);
  buddy_list_ = 0;
}

}  // namespace v2::aolsim
