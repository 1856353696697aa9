#include "platform/mp3_frames.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <memory>
#include <optional>

namespace v2 {
namespace {

unsigned Byte(std::string_view s, std::size_t i) {
  return static_cast<unsigned char>(s[i]);
}

// One frame header of MPEG-1, 2 or 2.5 audio, layer I, II or III.
struct Header {
  int family = 0;  // 0 MPEG-1, 1 MPEG-2, 2 MPEG-2.5
  int layer = 0;
  long rate = 0;  // samples a second
  bool mono = false;
  int samples = 0;         // in the frame
  std::size_t length = 0;  // bytes, the header's own included

  // Frames of one stream keep these; the bit rate may change.
  bool SameStream(const Header& o) const {
    return family == o.family && layer == o.layer && rate == o.rate;
  }
};

std::optional<Header> HeaderAt(std::string_view bytes, std::size_t at) {
  if (bytes.size() < 4 || at > bytes.size() - 4) return std::nullopt;
  const unsigned b1 = Byte(bytes, at + 1), b2 = Byte(bytes, at + 2);
  if (Byte(bytes, at) != 0xFF || (b1 & 0xE0) != 0xE0) return std::nullopt;
  const unsigned version = (b1 >> 3) & 3, layer = (b1 >> 1) & 3;
  const unsigned bitrate = b2 >> 4, rate = (b2 >> 2) & 3;
  // Reserved values, and the free format, whose frames say no length.
  if (version == 1 || layer == 0 || bitrate == 0 || bitrate == 15 ||
      rate == 3) {
    return std::nullopt;
  }
  static constexpr int kKbps[5][14] = {
      {32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448},
      {32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384},
      {32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320},
      {32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256},
      {8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160}};
  static constexpr long kRates[3] = {44100, 48000, 32000};
  Header h;
  h.family = version == 3 ? 0 : version == 2 ? 1 : 2;
  h.layer = 4 - static_cast<int>(layer);
  h.rate = kRates[rate] >> h.family;
  h.mono = (Byte(bytes, at + 3) >> 6) == 3;
  const int table = h.family == 0 ? h.layer - 1 : h.layer == 1 ? 3 : 4;
  const long bps = kKbps[table][bitrate - 1] * 1000L;
  const long padding = (b2 >> 1) & 1;
  if (h.layer == 1) {
    h.samples = 384;
    h.length = static_cast<std::size_t>((12 * bps / h.rate + padding) * 4);
  } else {
    h.samples = h.layer == 3 && h.family > 0 ? 576 : 1152;
    h.length = static_cast<std::size_t>(h.samples / 8 * bps / h.rate + padding);
  }
  return h;
}

std::uint32_t SyncSafe(std::string_view s, std::size_t at) {
  return Byte(s, at) << 21 | Byte(s, at + 1) << 14 | Byte(s, at + 2) << 7 |
         Byte(s, at + 3);
}

// The bytes of a tag that starts at at (ID3v2, ID3v1, an APEv2 header or
// footer), to be passed over; 0 for none.
std::size_t TagAt(std::string_view bytes, std::size_t at) {
  std::string_view rest = bytes.substr(at);
  if (rest.size() >= 10 && rest.substr(0, 3) == "ID3" &&
      Byte(rest, 3) != 0xFF && Byte(rest, 4) != 0xFF &&
      ((Byte(rest, 6) | Byte(rest, 7) | Byte(rest, 8) | Byte(rest, 9)) &
       0x80) == 0) {
    const bool footer = Byte(rest, 3) == 4 && (Byte(rest, 5) & 0x10);
    return 10 + SyncSafe(rest, 6) + (footer ? 10 : 0);
  }
  if (rest.size() >= 128 && rest.substr(0, 3) == "TAG") return 128;
  if (rest.size() >= 32 && rest.substr(0, 8) == "APETAGEX") {
    // A header is followed by the items and a footer, which its size
    // counts; a footer stands alone.
    const bool header = Byte(rest, 23) & 0x20;
    const std::size_t size = Byte(rest, 12) | Byte(rest, 13) << 8 |
                             Byte(rest, 14) << 16 |
                             static_cast<std::size_t>(Byte(rest, 15)) << 24;
    return header ? 32 + size : 32;
  }
  return 0;
}

// The first frame of a file may be an encoder's Xing or Info frame, which
// holds no audio. It may tell how many frames of audio follow, and a LAME
// tag in it how many samples the encoder put in front (its delay) and
// behind (its padding).
struct InfoFrame {
  long long frames = 0;  // 0: not told
  long long trim = 0;    // delay and padding
};

std::optional<InfoFrame> InfoFrameOf(std::string_view frame, const Header& h) {
  if (h.layer != 3) return std::nullopt;
  std::size_t at = 4 + (h.family == 0 ? (h.mono ? 17 : 32) : (h.mono ? 9 : 17));
  if (frame.size() < at + 8) return std::nullopt;
  const std::string_view id = frame.substr(at, 4);
  if (id != "Xing" && id != "Info") return std::nullopt;
  InfoFrame info;
  const unsigned fields = Byte(frame, at + 7);  // frames, bytes, TOC, scale
  at += 8;
  if ((fields & 1) && frame.size() >= at + 4) {
    info.frames = static_cast<long long>(Byte(frame, at)) << 24 |
                  Byte(frame, at + 1) << 16 | Byte(frame, at + 2) << 8 |
                  Byte(frame, at + 3);
  }
  at += (fields & 1 ? 4 : 0) + (fields & 2 ? 4 : 0) + (fields & 4 ? 100 : 0) +
        (fields & 8 ? 4 : 0);
  if (frame.size() >= at + 24 && frame.substr(at, 4) == "LAME") {
    const unsigned a = Byte(frame, at + 21), b = Byte(frame, at + 22),
                   c = Byte(frame, at + 23);
    info.trim = (a << 4 | b >> 4) + ((b & 0x0F) << 8 | c);
  }
  return info;
}

double FrameSecondsOfStream(const std::string& native_path) {
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(
      std::fopen(native_path.c_str(), "rb"), &std::fclose);
  if (!file) return 0;
  std::string bytes;
  char buffer[65536];
  for (std::size_t n; (n = std::fread(buffer, 1, sizeof buffer, file.get()));)
    bytes.append(buffer, n);
  return Mp3FrameSeconds(bytes);
}

}  // namespace

double Mp3FrameSeconds(std::string_view bytes) {
  std::optional<Header> stream;
  std::optional<InfoFrame> info;
  long long samples = 0;
  bool in_step = false;  // the last bytes were a frame of the stream
  bool first = true;
  for (std::size_t at = 0; at < bytes.size();) {
    if (std::size_t tag = TagAt(bytes, at)) {
      at += std::min(tag, bytes.size() - at);
      in_step = false;
      continue;
    }
    std::optional<Header> h = HeaderAt(bytes, at);
    // Out of step, a header counts only when the next frame's header, or
    // the end of the bytes, follows it where it says: a chance pair of
    // bytes in a tag's text or in noise seldom has a second behind it.
    bool frame = h && (!stream || h->SameStream(*stream)) &&
                 h->length <= bytes.size() - at;
    if (frame && !in_step && at + h->length != bytes.size()) {
      std::optional<Header> next = HeaderAt(bytes, at + h->length);
      frame = next && next->SameStream(*h);
    }
    if (!frame) {
      in_step = false;
      ++at;
      continue;
    }
    if (first) info = InfoFrameOf(bytes.substr(at, h->length), *h);
    if (!first || !info) samples += h->samples;
    first = false;
    stream = h;
    in_step = true;
    at += h->length;
  }
  if (!stream) return 0;
  // The encoder's delay and padding come off when the frames it told of
  // are all there; a file cut short keeps every sample it has.
  if (info && info->trim > 0) {
    const long long told = info->frames * stream->samples;
    if (told == 0 || told <= samples) {
      samples = std::max(0LL, (told == 0 ? samples : told) - info->trim);
    }
  }
  return static_cast<double>(samples) / static_cast<double>(stream->rate);
}

double Mp3FrameSecondsOfFile(const std::string& native_path) {
  // A file too big to hold has no length that can be counted.
  try {
    return FrameSecondsOfStream(native_path);
  } catch (const std::exception&) {
    return 0;
  }
}

}  // namespace v2
