#include "aolsim/sim_window_host.h"

namespace v2::aolsim {

SimWindowHost::SimWindowHost(sim::SimWindows& windows, sim::SimLoop& loop)
    : windows_(windows), loop_(loop) {
  // The client is another process: its posted messages are handled whenever
  // the program's thread yields, without the program handling them.
  loop_.AddForeign([this] { return windows_.DeliverPosted(); });
}

Hwnd SimWindowHost::Create(Hwnd parent, const std::string& cls,
                           const std::string& title, Handler handler) {
  return windows_.Create(parent, cls, title, std::move(handler));
}

void SimWindowHost::After(int ms, std::function<void()> work) {
  auto p = std::make_shared<Pending>();
  p->work = std::move(work);
  std::weak_ptr<Pending> weak = p;
  p->timer = loop_.CreateTimer([this, weak] {
    auto self = weak.lock();
    if (!self) return;
    loop_.SetTimer(self->timer, 0, false);  // once
    auto due = std::move(self->work);
    std::erase(pending_, self);
    if (due) due();
  });
  loop_.SetTimer(p->timer, ms, true);
  pending_.push_back(std::move(p));
}

}  // namespace v2::aolsim
