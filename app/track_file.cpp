#include "app/track_file.h"

#include <lame/lame.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <vector>

#include "platform/sim/sim_stores.h"
#include "platform/text.h"

namespace v2 {
namespace {

constexpr int kChunk = 1152 * 32;  // samples handed to the encoder at once

struct Encoder {
  Encoder() : gf(lame_init()) {}
  ~Encoder() {
    if (gf) lame_close(gf);
  }
  Encoder(const Encoder&) = delete;
  Encoder& operator=(const Encoder&) = delete;
  lame_global_flags* gf;
};

struct File {
  explicit File(const std::string& path) : f(std::fopen(path.c_str(), "w+b")) {}
  ~File() {
    if (f) std::fclose(f);
  }
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  std::FILE* f;
};

bool AnyTag(const TrackTags& t) {
  return !(t.title.empty() && t.artist.empty() && t.album.empty() &&
           t.year.empty() && t.comment.empty());
}

void PutLittleEndian(std::string& out, std::size_t v) {
  for (int i = 0; i < 4; ++i) out += static_cast<char>((v >> (8 * i)) & 0xFF);
}

void PutSyncSafe(std::string& out, std::size_t v) {
  for (int shift = 21; shift >= 0; shift -= 7)
    out += static_cast<char>((v >> shift) & 0x7F);
}

// Version 2.4, texts in UTF-8, whose header sets the extended-header flag
// (0x40) although the first frame follows the header at once, as some
// writers left it; then a little padding.
std::string BareExtendedFlagTag(const TrackTags& t) {
  std::string frames;
  auto frame = [&](const char* id, const std::string& data) {
    frames += id;
    PutSyncSafe(frames, data.size());
    frames += std::string(2, '\0');  // no frame flags
    frames += data;
  };
  auto text = [&](const char* id, const std::string& value) {
    if (!value.empty()) frame(id, '\x03' + Cp1252ToUtf8(value));
  };
  text("TIT2", t.title);
  text("TPE1", t.artist);
  text("TALB", t.album);
  text("TDRC", t.year);
  if (!t.comment.empty()) {
    // UTF-8, English, an empty description, the text.
    frame("COMM",
          std::string(1, '\x03') + "eng" + '\0' + Cp1252ToUtf8(t.comment));
  }
  frames += std::string(16, '\0');
  std::string tag = "ID3\x04";
  tag += '\0';
  tag += '\x40';
  PutSyncSafe(tag, frames.size());
  return tag + frames;
}

// APEv2 with its header and footer; the items in UTF-8.
std::string ApeTag(const TrackTags& t) {
  std::string items;
  std::size_t count = 0;
  auto item = [&](const char* key, const std::string& value) {
    if (value.empty()) return;
    const std::string utf8 = Cp1252ToUtf8(value);
    PutLittleEndian(items, utf8.size());
    PutLittleEndian(items, 0);  // a text item
    items += key;
    items += '\0';
    items += utf8;
    ++count;
  };
  item("Title", t.title);
  item("Artist", t.artist);
  item("Album", t.album);
  item("Year", t.year);
  item("Comment", t.comment);
  auto bound = [&](std::size_t flags) {
    std::string b = "APETAGEX";
    PutLittleEndian(b, 2000);
    PutLittleEndian(b, items.size() + 32);  // the items and the footer
    PutLittleEndian(b, count);
    PutLittleEndian(b, flags);
    return b + std::string(8, '\0');
  };
  // Both say that there is a header; the first says that it is one.
  return bound(0xA0000000) + items + bound(0x80000000);
}

// Lyrics3v2: a line of lyrics, the title, artist and album, the comment as
// its information field; Latin-1, which Windows-1252 stands for here.
std::string Lyrics3Tag(const TrackTags& t) {
  std::string tag = "LYRICSBEGIN";
  auto field = [&](const char* id, std::string value) {
    if (value.empty()) return;
    value.resize(std::min<std::size_t>(value.size(), 99999));
    char size[8];
    std::snprintf(size, sizeof size, "%05zu", value.size());
    tag += id;
    tag += size;
    tag += value;
  };
  field("IND", "10");  // lyrics, without time stamps
  field("LYR", "la la la");
  field("INF", t.comment);
  field("EAL", t.album);
  field("EAR", t.artist);
  field("ETT", t.title);
  char size[8];
  std::snprintf(size, sizeof size, "%06zu", tag.size());
  return tag + size + "LYRICS200";
}

bool Put(std::FILE* f, const void* bytes, std::size_t n) {
  return std::fwrite(bytes, 1, n, f) == n;
}

bool Put(std::FILE* f, const std::string& bytes) {
  return Put(f, bytes.data(), bytes.size());
}

}  // namespace

TrackTagging ParseTrackTags(const std::string& text) {
  TrackTagging tagging;
  std::size_t at = 0;
  // The options: known words in front, each followed by a blank or the end.
  for (;;) {
    const std::size_t blank = std::min(text.find(' ', at), text.size());
    const std::string word = text.substr(at, blank - at);
    if (word == "+ape") {
      tagging.trailers.push_back(TrackTagging::Trailer::kApe);
    } else if (word == "+lyrics3") {
      tagging.trailers.push_back(TrackTagging::Trailer::kLyrics3);
    } else if (word == "-v1") {
      tagging.id3v1 = false;
    } else if (word == "+v24-ext-flag") {
      tagging.bare_extended_flag = true;
    } else if (word == "-lametag") {
      tagging.lame_tag = false;
    } else {
      break;
    }
    at = std::min(blank + 1, text.size());
  }
  TrackTags& tags = tagging.fields;
  std::string* fields[] = {&tags.title, &tags.artist, &tags.album, &tags.year,
                           &tags.comment};
  for (std::size_t i = 0; i < 5; ++i) {
    auto bar = i < 4 ? text.find('|', at) : std::string::npos;
    *fields[i] = text.substr(at, bar == std::string::npos ? bar : bar - at);
    if (bar == std::string::npos) break;
    at = bar + 1;
  }
  return tagging;
}

bool WriteTrack(const std::string& path, double seconds,
                const TrackTagging& tags, std::string& error,
                TrackFormat format) {
  if (!(seconds > 0 && seconds <= kMaxTrackSeconds)) {
    error = "a track lasts more than 0 and at most 3600 seconds";
    return false;
  }
  const std::filesystem::path native = sim::SimNativePath(path);
  std::error_code ec;
  if (native.has_parent_path()) {
    std::filesystem::create_directories(native.parent_path(), ec);
  }
  Encoder enc;
  lame_global_flags* gf = enc.gf;
  if (!gf) {
    error = "the encoder did not start";
    return false;
  }
  lame_set_num_channels(gf, format.channels);
  lame_set_mode(gf, format.channels == 1 ? MONO : STEREO);
  lame_set_in_samplerate(gf, format.rate);
  lame_set_out_samplerate(gf, format.rate);
  lame_set_VBR(gf, vbr_off);
  lame_set_brate(gf, format.kbps);
  lame_set_quality(gf, 7);
  // The LAME tag: delay and padding, in a first frame kept for it.
  lame_set_bWriteVbrTag(gf, tags.lame_tag ? 1 : 0);
  const TrackTags& t = tags.fields;
  const bool tagged = AnyTag(t);
  id3tag_init(gf);
  if (tagged) {
    id3tag_add_v2(gf);
    id3tag_set_title(gf, t.title.c_str());
    id3tag_set_artist(gf, t.artist.c_str());
    id3tag_set_album(gf, t.album.c_str());
    id3tag_set_year(gf, t.year.c_str());
    id3tag_set_comment(gf, t.comment.c_str());
  }
  // The tags are put where this file wants them, below.
  lame_set_write_id3tag_automatic(gf, 0);
  if (lame_init_params(gf) < 0) {
    error = "the encoder refused its settings";
    return false;
  }
  File file(native.string());
  if (!file.f) {
    error = "cannot write " + native.string();
    return false;
  }
  std::string head;
  if (tagged && tags.bare_extended_flag) {
    head = BareExtendedFlagTag(t);
  } else if (tagged) {
    head.resize(lame_get_id3v2_tag(gf, nullptr, 0));
    head.resize(lame_get_id3v2_tag(
        gf, reinterpret_cast<unsigned char*>(head.data()), head.size()));
  }
  const std::string failed = "cannot write " + native.string();
  if (!Put(file.f, head)) {
    error = failed;
    return false;
  }
  const auto total =
      static_cast<long long>(std::llround(seconds * format.rate));
  std::vector<short> silence(kChunk, 0);
  std::vector<unsigned char> mp3(kChunk * 5 / 4 + 7200);
  for (long long done = 0; done < total;) {
    const int n = static_cast<int>(std::min<long long>(kChunk, total - done));
    int bytes = lame_encode_buffer(gf, silence.data(), silence.data(), n,
                                   mp3.data(), static_cast<int>(mp3.size()));
    if (bytes < 0 ||
        !Put(file.f, mp3.data(), static_cast<std::size_t>(bytes))) {
      error = "encoding failed";
      return false;
    }
    done += n;
  }
  int bytes = lame_encode_flush(gf, mp3.data(), static_cast<int>(mp3.size()));
  if (bytes < 0 || !Put(file.f, mp3.data(), static_cast<std::size_t>(bytes))) {
    error = "encoding failed";
    return false;
  }
  // The LAME tag goes into the first frame, behind the ID3v2 tag.
  if (tags.lame_tag) lame_mp3_tags_fid(gf, file.f);
  // What other programs put behind the audio, then the ID3v1 tag last.
  std::string tail;
  for (TrackTagging::Trailer trailer : tags.trailers) {
    tail += trailer == TrackTagging::Trailer::kApe ? ApeTag(t) : Lyrics3Tag(t);
  }
  if (tagged && tags.id3v1) {
    unsigned char v1[128];
    tail.append(reinterpret_cast<const char*>(v1),
                lame_get_id3v1_tag(gf, v1, sizeof v1));
  }
  if (std::fseek(file.f, 0, SEEK_END) != 0 || !Put(file.f, tail) ||
      std::fflush(file.f) != 0) {
    error = failed;
    return false;
  }
  return true;
}

}  // namespace v2
