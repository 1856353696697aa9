// Fuzz target: room lines rendered for the terminal. Any bytes at all make
// valid UTF-8 in which the only control sequences are the renderer's own
// SGR attributes, and text without markup comes out as it went in.
#include <cstddef>
#include <cstdint>
#include <string>

#include "app/room_render.h"
#include "fuzz/fuzz_check.h"
#include "platform/text.h"

namespace {

// The text of rendered output without its SGR sequences; aborts on any
// other control or on bytes that are no UTF-8.
std::string Visible(const std::string& out) {
  std::string text;
  for (std::size_t i = 0; i < out.size();) {
    const auto c = static_cast<unsigned char>(out[i]);
    if (c == 0x1b) {
      std::size_t j = i + 1;
      V2_FUZZ_CHECK(j < out.size() && out[j] == '[', "an escape opens SGR");
      ++j;
      while (j < out.size() &&
             (out[j] == ';' || (out[j] >= '0' && out[j] <= '9'))) {
        ++j;
      }
      V2_FUZZ_CHECK(j < out.size() && out[j] == 'm', "SGR ends with m");
      i = j + 1;
      continue;
    }
    V2_FUZZ_CHECK(c >= 0x20 || c == '\t', "no other C0 control");
    V2_FUZZ_CHECK(c != 0x7F, "no DEL");
    std::size_t len = c < 0x80 ? 1 : c >= 0xF0 ? 4 : c >= 0xE0 ? 3 : 2;
    V2_FUZZ_CHECK(c < 0x80 || (c >= 0xC2 && c < 0xF5), "a UTF-8 lead byte");
    V2_FUZZ_CHECK(i + len <= out.size(), "a whole UTF-8 sequence");
    for (std::size_t k = 1; k < len; ++k) {
      V2_FUZZ_CHECK((static_cast<unsigned char>(out[i + k]) & 0xC0) == 0x80,
                    "UTF-8 continuation bytes");
    }
    if (c == 0xC2) {
      V2_FUZZ_CHECK(static_cast<unsigned char>(out[i + 1]) >= 0xA0,
                    "no C1 control");
    }
    text.append(out, i, len);
    i += len;
  }
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  const std::string input(reinterpret_cast<const char*>(data), size);
  Visible(v2::RenderMarkup(input));
  Visible(v2::RenderRoomLine(input));
  // Plain text (no tag, no reference, no control) is shown unchanged.
  std::string plain;
  for (char c : input) {
    const auto u = static_cast<unsigned char>(c);
    if (c == '<' || c == '&' || u < 0x20 || u == 0x7F || u == 0x81 ||
        u == 0x8D || u == 0x8F || u == 0x90 || u == 0x9D) {
      continue;
    }
    plain += c;
  }
  const std::string shown = v2::RenderMarkup(plain);
  V2_FUZZ_CHECK(shown == v2::Cp1252ToUtf8(plain), "plain text is unchanged");
  return 0;
}
