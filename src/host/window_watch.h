#pragma once
// The client's windows change only when something happens to them. A timer
// whose tick only reads them, and found nothing to do, would read the same
// at every tick until then, and can sleep until the platform tells of such
// a happening; it then ticks on the first beat after it, as a timer that had
// gone on ticking would (its tick of that very moment counts as one that
// came before the happening, as after a script's wait). That is the same as
// ticking on and finding nothing, at no cost.
//
// Two kinds of telling: every change of any window (the simulator only),
// and a window made, by any program (the simulator and Windows). Where the
// platform does not tell, the timer keeps ticking.
#include <cstdint>
#include <memory>
#include <vector>

#include "platform/controls.h"
#include "platform/platform.h"

namespace v2 {

class WindowWatch {
 public:
  explicit WindowWatch(Platform& p);
  WindowWatch(const WindowWatch&) = delete;
  WindowWatch& operator=(const WindowWatch&) = delete;

  // What has been told so far: a tick takes it before it looks.
  struct Mark {
    std::uint64_t changes = 0, made = 0;
  };
  Mark Now() const { return {state_->changes, state_->made}; }
  // A tick that looked at mark and found nothing to do: its timer sleeps
  // until the next change of any window, unless one came meanwhile (the
  // tick's own doing included) or the platform tells of none.
  void SleepUnlessChanged(Timer& timer, Mark mark);
  // The same for a tick whose finding only a new window can change (it saw
  // no window of a class at all): its timer sleeps until a window is made.
  void SleepUntilMade(Timer& timer, Mark mark);

 private:
  // Shared with the platform's calls, which may outlive the watch.
  struct State {
    Clock* clock = nullptr;
    std::uint64_t changes = 0, made = 0;
    std::vector<Timer*> until_changed, until_made;
    // Wakes the sleepers of one kind on the first beat after now.
    void Wake(std::vector<Timer*>& sleepers);
  };
  static void Sleep(std::vector<Timer*>& sleepers, Timer& timer);
  std::shared_ptr<State> state_ = std::make_shared<State>();
  bool told_changes_ = false, told_made_ = false;
};

}  // namespace v2
