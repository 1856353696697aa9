#include "player/player_text.h"

#include <algorithm>

#include "platform/text.h"

namespace v2 {

std::string StripSpaces(const std::string& text) {
  std::string out = text;
  std::erase(out, ' ');
  return out;
}

std::string ReplaceText(Platform& p, const std::string& text,
                        const std::string& find,
                        const std::string& replacement) {
  if (find.empty()) return text;
  const std::string lower_find = LCase(find);
  std::string out = text;
  int at = InStr(1, LCase(out), lower_find);
  while (at > 0) {
    out = Left(out, at - 1) + replacement +
          Mid(out, at + static_cast<int>(find.size()));
    p.loop.PumpEvents();
    at = InStr(at + static_cast<int>(replacement.size()), LCase(out),
               lower_find);
  }
  return out;
}

}  // namespace v2
