// The Windows media control's length, counted from a file's own frames,
// held against the simulator's (libmpg123) on files of every kind the track
// maker writes: with and without a LAME tag, with APEv2 and Lyrics3v2 tags
// behind the audio, with and without an ID3v1 tag after them, cut short.
#include "platform/mp3_frames.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "app/track_file.h"
#include "platform/sim/mp3_reader.h"
#include "tests/unit/temp_files.h"

namespace v2 {
namespace {

namespace fs = std::filesystem;

TrackTagging Kind(bool lame_tag, std::vector<TrackTagging::Trailer> trailers,
                  bool id3v1) {
  TrackTagging t = TrackTags{"Title", "Artist", "Album", "1999", "note"};
  t.lame_tag = lame_tag;
  t.trailers = std::move(trailers);
  t.id3v1 = id3v1;
  return t;
}

TEST(Mp3Frames, CountsWhatLibmpg123CountsOnFilesOfEveryKind) {
  const fs::path dir =
      fs::temp_directory_path() / ("v2-frames-" + std::to_string(getpid()));
  fs::create_directories(dir);
  using Trailer = TrackTagging::Trailer;
  const std::vector<TrackTagging> kinds = {
      TrackTags{},
      Kind(true, {Trailer::kApe, Trailer::kLyrics3}, true),
      Kind(true, {Trailer::kApe, Trailer::kLyrics3}, false),
      Kind(false, {}, true),
      Kind(false, {Trailer::kApe, Trailer::kLyrics3}, true),
      Kind(false, {Trailer::kLyrics3, Trailer::kApe}, false),
  };
  for (TrackFormat format : {TrackFormat{}, kCdTrack}) {
    for (double seconds : {0.1, 12.44}) {
      for (const TrackTagging& kind : kinds) {
        SCOPED_TRACE(::testing::Message()
                     << format.rate << " Hz, " << seconds << " s, LAME tag "
                     << kind.lame_tag << ", " << kind.trailers.size()
                     << " trailers, ID3v1 " << kind.id3v1);
        const fs::path file = dir / "t.mp3";
        std::string error;
        ASSERT_TRUE(WriteTrack(file.string(), seconds, kind, error, format))
            << error;
        const std::string bytes = testing::ReadAll(file.string());
        // Behind the audio: the trailers in their order, each found back
        // from its end by its own size, then the ID3v1 tag.
        std::size_t end = bytes.size();
        if (kind.id3v1 && kind.fields != TrackTags{}) {
          EXPECT_EQ(bytes.substr(end - 128, 3), "TAG");
          end -= 128;
        }
        for (auto t = kind.trailers.rbegin(); t != kind.trailers.rend(); ++t) {
          if (*t == Trailer::kLyrics3) {
            EXPECT_EQ(bytes.substr(end - 9, 9), "LYRICS200");
            end -= 15 + std::stoul(bytes.substr(end - 15, 6));
            EXPECT_EQ(bytes.substr(end, 11), "LYRICSBEGIN");
          } else {
            EXPECT_EQ(bytes.substr(end - 32, 8), "APETAGEX");
            end -= 32 + static_cast<unsigned char>(bytes[end - 20]);
            EXPECT_EQ(bytes.substr(end, 8), "APETAGEX");
          }
        }
        const double counted = Mp3FrameSeconds(bytes);
        EXPECT_EQ(counted, sim::Mp3Duration(bytes));
        EXPECT_EQ(Mp3FrameSecondsOfFile(file.string()), counted);
        // With a LAME tag, the length made; without one, the encoder's
        // delay and padding too, less than two frames.
        if (kind.lame_tag) {
          EXPECT_DOUBLE_EQ(counted, seconds);
        } else {
          EXPECT_GT(counted, seconds);
          EXPECT_LT(counted, seconds + 2 * 1152.0 / format.rate);
        }
        // Cut short, it keeps the frames that are left, as libmpg123 does.
        const std::string half = bytes.substr(0, bytes.size() / 2);
        EXPECT_EQ(Mp3FrameSeconds(half), sim::Mp3Duration(half));
      }
    }
  }
  // No frames, no length.
  EXPECT_EQ(Mp3FrameSeconds(""), 0);
  EXPECT_EQ(Mp3FrameSeconds(std::string(100000, 'x')), 0);
  EXPECT_EQ(Mp3FrameSeconds(std::string(1000, '\xFF')), 0);
  EXPECT_EQ(Mp3FrameSecondsOfFile((dir / "missing.mp3").string()), 0);
  EXPECT_EQ(Mp3FrameSecondsOfFile(dir.string()), 0);
  fs::remove_all(dir);
}

}  // namespace
}  // namespace v2
