#include "platform/window_services.h"

#include <algorithm>

namespace v2 {

std::string SendGetText(WindowServices& w, Hwnd h) {
  if (h == 0) return {};
  auto n = w.SendMessageA(h, kWmGetTextLength, 0, 0);
  if (n <= 0) return {};
  std::string buffer(static_cast<std::size_t>(n) + 1, '\0');
  auto got = w.SendMessageA(h, kWmGetText, buffer.size(),
                            reinterpret_cast<LParam>(buffer.data()));
  buffer.resize(static_cast<std::size_t>(std::clamp<LResult>(got, 0, n)));
  return buffer;
}

std::string SendGetTextHead(WindowServices& w, Hwnd h, int max_chars) {
  if (h == 0 || max_chars <= 0) return {};
  std::string buffer(static_cast<std::size_t>(max_chars) + 1, '\0');
  auto got = w.SendMessageA(h, kWmGetText, buffer.size(),
                            reinterpret_cast<LParam>(buffer.data()));
  buffer.resize(
      static_cast<std::size_t>(std::clamp<LResult>(got, 0, max_chars)));
  return buffer;
}

}  // namespace v2
