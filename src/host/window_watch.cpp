#include "host/window_watch.h"

#include <algorithm>

namespace v2 {

WindowWatch::WindowWatch(Platform& p) {
  state_->clock = &p.clock();
  std::weak_ptr<State> weak = state_;
  told_changes_ = p.windows.WatchChanges([weak] {
    if (auto state = weak.lock()) {
      ++state->changes;
      state->Wake(state->until_changed);
    }
  });
  told_made_ = p.windows.WatchCreations([weak] {
    if (auto state = weak.lock()) {
      ++state->made;
      state->Wake(state->until_made);
    }
  });
}

void WindowWatch::State::Wake(std::vector<Timer*>& sleepers) {
  std::vector<Timer*> wake;
  wake.swap(sleepers);
  const std::int64_t now = clock->NowMs();
  for (Timer* t : wake) t->Sleep(now + 1);
}

void WindowWatch::Sleep(std::vector<Timer*>& sleepers, Timer& timer) {
  timer.Sleep(kNeverMs);
  if (std::find(sleepers.begin(), sleepers.end(), &timer) == sleepers.end()) {
    sleepers.push_back(&timer);
  }
}

void WindowWatch::SleepUnlessChanged(Timer& timer, Mark mark) {
  if (!told_changes_ || state_->changes != mark.changes ||
      state_->made != mark.made) {
    return;
  }
  Sleep(state_->until_changed, timer);
}

void WindowWatch::SleepUntilMade(Timer& timer, Mark mark) {
  if (!told_made_ || state_->made != mark.made) return;
  Sleep(state_->until_made, timer);
}

}  // namespace v2
