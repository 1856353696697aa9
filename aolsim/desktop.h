#pragma once
// The desktop around the client, as far as the program reads it: the other
// messenger's buddy list window, the task bar with its clock, and the
// pointer. Written, like the client, against WindowHost.
#include <string>

#include "aolsim/window_host.h"

namespace v2::aolsim {

class Desktop {
 public:
  explicit Desktop(WindowHost& host) : host_(host) {}

  // The task bar: Shell_TrayWnd, its TrayNotifyWnd and in that the
  // TrayClockWClass, whose text is always the system's clock text. The
  // task bar's own messages go to on_task_bar first.
  void ShowTaskBar(WindowHost::Handler on_task_bar = {});
  // The other messenger runs with name signed on: its buddy list window,
  // class _Oscar_BuddyListWin, titled "NAME's Buddy List". A second name
  // replaces the first.
  void AimSignOn(const std::string& name);
  // The other messenger quits: its window goes.
  void AimQuit();
  // The buddy list gets the title now if it has the title old.
  bool Retitle(const std::string& old, const std::string& now);
  // The task bar's clock goes, and comes back (where this task bar is
  // shown: a system's own clock is the system's).
  void ClockOff();
  void ClockOn();

  // The clock text of the system's task bar: "h:mm AM" or "h:mm PM".
  static std::string ClockText(const LocalTime& t);

  Point Pointer() { return host_.Pointer(); }
  void MovePointer(int x, int y) { host_.MovePointer(x, y); }

  Hwnd buddy_list() const { return buddy_list_; }
  Hwnd clock() const { return clock_; }

 private:
  WindowHost& host_;
  Hwnd buddy_list_ = 0, task_bar_ = 0, notify_ = 0, clock_ = 0;
};

}  // namespace v2::aolsim
