#pragma once
// What the simulated client needs from a windowing system. The client is
// written once against this and realised twice: over the in-process window
// tree, and with real windows in aolhost.exe.
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/types.h"

namespace v2::aolsim {

class WindowHost {
 public:
  // Answers a message, or nullopt to let the window's default handling act.
  using Handler = std::function<std::optional<LResult>(Hwnd, std::uint32_t,
                                                       WParam, LParam)>;

  virtual ~WindowHost() = default;
  virtual Hwnd Create(Hwnd parent, const std::string& cls,
                      const std::string& title, Handler handler = {}) = 0;
  virtual void Destroy(Hwnd h) = 0;
  virtual bool Exists(Hwnd h) = 0;
  virtual std::string_view Text(Hwnd h) = 0;
  virtual void SetText(Hwnd h, std::string text) = 0;
  virtual void AppendText(Hwnd h, std::string_view more) = 0;
  virtual void EraseFront(Hwnd h, std::size_t count) = 0;
  // The direct children of a window, in sibling order.
  virtual std::vector<Hwnd> Children(Hwnd parent) = 0;
  // Runs work after ms on the shared clock.
  virtual void After(int ms, std::function<void()> work) = 0;
};

}  // namespace v2::aolsim
