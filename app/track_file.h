#pragma once
// MP3 files for scenarios, made with a real encoder (libmp3lame): silence,
// MPEG-1 Layer III, 32 kHz mono at 48 kbit/s (or, for measurements, as a
// member's music is: 44.1 kHz stereo at 128 kbit/s), with a LAME tag that
// gives a reader who counts frames the exact length, and ID3 tags (version
// 1 and 2) when there are any to write.
#include <string>

#include "player/id3_tags.h"

namespace v2 {

// The longest track a script can ask for.
inline constexpr double kMaxTrackSeconds = 3600;

// Writes the file at path ("\" or "/" between folders; they are made as
// needed), seconds long to the sample; false, with the reason in error,
// when it cannot.
struct TrackFormat {
  int rate = 32000;
  int channels = 1;
  int kbps = 48;  // the smallest frame at 32 kHz that holds the LAME tag
};
inline constexpr TrackFormat kCdTrack{44100, 2, 128};
bool WriteTrack(const std::string& path, double seconds, const TrackTags& tags,
                std::string& error, TrackFormat format = {});

// The tags of a script's `tags` line: "TITLE|ARTIST|ALBUM|YEAR|COMMENT",
// fields left out being empty.
TrackTags ParseTrackTags(const std::string& text);

}  // namespace v2
