#pragma once
// The client's windows change only when something happens to them. A timer
// whose tick only reads them, and found nothing to do, would read the same
// at every tick until then. Where the platform tells of every change of any
// window (the simulator), such a timer sleeps until the next change and
// then ticks on the first beat after it, as a timer that had gone on ticking
// would (its tick of that very moment counts as one that came before the
// change, as after a script's wait); elsewhere it keeps ticking.
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

  // How many changes have been told so far: a tick takes it before it
  // looks.
  std::uint64_t Changes() const { return state_->changes; }
  // A tick that looked at mark and found nothing to do: its timer sleeps
  // until the next change, unless one came meanwhile (the tick's own doing
  // included) or the platform tells of none.
  void SleepUnlessChanged(Timer& timer, std::uint64_t mark);

 private:
  // Shared with the platform's call, which may outlive the watch.
  struct State {
    Clock* clock = nullptr;
    std::uint64_t changes = 0;
    std::vector<Timer*> asleep;
  };
  std::shared_ptr<State> state_ = std::make_shared<State>();
  bool told_ = false;
};

}  // namespace v2
