#include "host/window_watch.h"

#include <algorithm>

namespace v2 {

WindowWatch::WindowWatch(Platform& p) {
  state_->clock = &p.clock();
  std::weak_ptr<State> weak = state_;
  told_ = p.windows.WatchChanges([weak] {
    auto state = weak.lock();
    if (!state) return;
    ++state->changes;
    // Every sleeper looks again, on its first beat after now.
    std::vector<Timer*> wake;
    wake.swap(state->asleep);
    const std::int64_t now = state->clock->NowMs();
    for (Timer* t : wake) t->Sleep(now + 1);
  });
}

void WindowWatch::SleepUnlessChanged(Timer& timer, std::uint64_t mark) {
  if (!told_ || state_->changes != mark) return;
  timer.Sleep(kNeverMs);
  auto& asleep = state_->asleep;
  if (std::find(asleep.begin(), asleep.end(), &timer) == asleep.end()) {
    asleep.push_back(&timer);
  }
}

}  // namespace v2
