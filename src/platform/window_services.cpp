#include "platform/window_services.h"

#include <algorithm>

namespace v2 {

std::optional<std::string> ReadText(WindowServices& w, Hwnd h) {
  if (h == 0) return std::string();
  auto n = w.SendMessageTimeoutA(h, kWmGetTextLength, 0, 0);
  if (!n) return std::nullopt;
  if (*n <= 0) return std::string();
  std::string buffer(static_cast<std::size_t>(*n) + 1, '\0');
  auto got = w.SendMessageTimeoutA(h, kWmGetText, buffer.size(),
                                   reinterpret_cast<LParam>(buffer.data()));
  if (!got) return std::nullopt;
  buffer.resize(static_cast<std::size_t>(std::clamp<LResult>(*got, 0, *n)));
  return buffer;
}

std::string SendGetText(WindowServices& w, Hwnd h) {
  return ReadText(w, h).value_or(std::string());
}

std::optional<std::string> ReadTextHead(WindowServices& w, Hwnd h,
                                        int max_chars) {
  if (h == 0 || max_chars <= 0) return std::string();
  std::string buffer(static_cast<std::size_t>(max_chars) + 1, '\0');
  auto got = w.SendMessageTimeoutA(h, kWmGetText, buffer.size(),
                                   reinterpret_cast<LParam>(buffer.data()));
  if (!got) return std::nullopt;
  buffer.resize(
      static_cast<std::size_t>(std::clamp<LResult>(*got, 0, max_chars)));
  return buffer;
}

}  // namespace v2
