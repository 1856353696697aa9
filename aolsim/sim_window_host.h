#pragma once
// The client realised over the in-process window tree and event loop.
#include <memory>
#include <vector>

#include "aolsim/window_host.h"
#include "platform/sim/sim_loop.h"
#include "platform/sim/sim_windows.h"

namespace v2::aolsim {

class SimWindowHost : public WindowHost {
 public:
  SimWindowHost(sim::SimWindows& windows, sim::SimLoop& loop);
  Hwnd Create(Hwnd parent, const std::string& cls, const std::string& title,
              Handler handler) override;
  void Destroy(Hwnd h) override { windows_.Destroy(h); }
  bool Exists(Hwnd h) override { return windows_.IsWindow(h); }
  std::string_view Text(Hwnd h) override { return windows_.TextView(h); }
  void SetText(Hwnd h, std::string text) override {
    windows_.SetText(h, std::move(text));
  }
  void AppendText(Hwnd h, std::string_view more) override {
    windows_.AppendText(h, more);
  }
  void EraseFront(Hwnd h, std::size_t count) override {
    windows_.EraseFront(h, count);
  }
  std::vector<Hwnd> Children(Hwnd parent) override {
    return windows_.Children(parent);
  }
  void After(int ms, std::function<void()> work) override;

 private:
  struct Pending {
    TimerId timer;
    std::function<void()> work;
  };
  sim::SimWindows& windows_;
  sim::SimLoop& loop_;
  std::vector<std::shared_ptr<Pending>> pending_;
};

}  // namespace v2::aolsim
