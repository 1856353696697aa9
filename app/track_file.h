#pragma once
// MP3 files for scenarios, made with a real encoder (libmp3lame): silence,
// MPEG-1 Layer III, 32 kHz mono at 48 kbit/s (or, for measurements, as a
// member's music is: 44.1 kHz stereo at 128 kbit/s), with a LAME tag that
// gives a reader who counts frames the exact length, and ID3 tags (version
// 1 and 2) when there are any to write; or, on request, as other tag
// writers and encoders of the time left them.
#include <string>
#include <utility>
#include <vector>

#include "player/id3_tags.h"

namespace v2 {

// The longest track a script can ask for.
inline constexpr double kMaxTrackSeconds = 3600;

// How a track's tags are written: the fields, and the forms other programs
// leave. A plain TrackTags gives what the encoder writes by itself.
struct TrackTagging {
  enum class Trailer { kApe, kLyrics3 };
  TrackTagging() = default;
  TrackTagging(TrackTags tags) : fields(std::move(tags)) {}
  bool operator==(const TrackTagging&) const = default;

  TrackTags fields;
  // An ID3v1 tag at the very end (when there are fields).
  bool id3v1 = true;
  // The ID3v2 tag is version 2.4 with the extended-header flag set in its
  // header and no extended header behind it: the frames follow at once.
  bool bare_extended_flag = false;
  // No LAME tag in the first frame, as encoders before it wrote none: a
  // reader learns the length from the frames or from the bit rate.
  bool lame_tag = true;
  // APEv2 and Lyrics3v2 tags behind the audio, in this order, before the
  // ID3v1 tag; they carry the same fields.
  std::vector<Trailer> trailers;
};

// Writes the file at path ("\" or "/" between folders; they are made as
// needed), seconds long to the sample; false, with the reason in error,
// when it cannot.
struct TrackFormat {
  int rate = 32000;
  int channels = 1;
  int kbps = 48;  // the smallest frame at 32 kHz that holds the LAME tag
};
inline constexpr TrackFormat kCdTrack{44100, 2, 128};
bool WriteTrack(const std::string& path, double seconds,
                const TrackTagging& tags, std::string& error,
                TrackFormat format = {});

// The tags of a script's `tags` line: "[OPTION ...] TITLE|ARTIST|ALBUM|YEAR|
// COMMENT", fields left out being empty. The options, each a word in front
// of the fields: +ape, +lyrics3 (trailers, in the order given), -v1 (no
// ID3v1 tag), +v24-ext-flag (bare_extended_flag), -lametag (no LAME tag).
TrackTagging ParseTrackTags(const std::string& text);

}  // namespace v2
