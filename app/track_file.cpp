#include "app/track_file.h"

#include <lame/lame.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <vector>

#include "platform/sim/sim_stores.h"

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

}  // namespace

TrackTags ParseTrackTags(const std::string& text) {
  TrackTags tags;
  std::string* fields[] = {&tags.title, &tags.artist, &tags.album, &tags.year,
                           &tags.comment};
  std::size_t at = 0;
  for (std::size_t i = 0; i < 5; ++i) {
    auto bar = i < 4 ? text.find('|', at) : std::string::npos;
    *fields[i] = text.substr(at, bar == std::string::npos ? bar : bar - at);
    if (bar == std::string::npos) break;
    at = bar + 1;
  }
  return tags;
}

bool WriteTrack(const std::string& path, double seconds, const TrackTags& tags,
                std::string& error, TrackFormat format) {
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
  lame_set_bWriteVbrTag(gf, 1);  // the LAME tag: delay and padding
  id3tag_init(gf);
  if (AnyTag(tags)) {
    id3tag_add_v2(gf);
    id3tag_set_title(gf, tags.title.c_str());
    id3tag_set_artist(gf, tags.artist.c_str());
    id3tag_set_album(gf, tags.album.c_str());
    id3tag_set_year(gf, tags.year.c_str());
    id3tag_set_comment(gf, tags.comment.c_str());
  }
  if (lame_init_params(gf) < 0) {
    error = "the encoder refused its settings";
    return false;
  }
  File file(native.string());
  if (!file.f) {
    error = "cannot write " + native.string();
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
    if (bytes < 0 || std::fwrite(mp3.data(), 1, static_cast<std::size_t>(bytes),
                                 file.f) != static_cast<std::size_t>(bytes)) {
      error = "encoding failed";
      return false;
    }
    done += n;
  }
  int bytes = lame_encode_flush(gf, mp3.data(), static_cast<int>(mp3.size()));
  if (bytes < 0 || std::fwrite(mp3.data(), 1, static_cast<std::size_t>(bytes),
                               file.f) != static_cast<std::size_t>(bytes)) {
    error = "encoding failed";
    return false;
  }
  // The LAME tag goes into the first frame, which the encoder kept for it.
  lame_mp3_tags_fid(gf, file.f);
  if (std::fflush(file.f) != 0) {
    error = "cannot write " + native.string();
    return false;
  }
  return true;
}

}  // namespace v2
