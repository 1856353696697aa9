// The player's media contract in the simulator (its control and its MP3
// reader) and the number forms of its replies, halves included.
#include <gtest/gtest.h>

#include <fstream>

#include "app/track_file.h"
#include "platform/sim/mp3_reader.h"
#include "platform/sim/sim_media.h"
#include "platform/sim/sim_stores.h"
#include "player/play_modes.h"
#include "player/player_commands.h"
#include "tests/unit/temp_files.h"
#include "tests/unit/world.h"

namespace v2 {
namespace {

using testing::ReadAll;

// A track of the given length in dir.
std::string Track(const testing::TempDir& dir, const std::string& name,
                  double seconds) {
  std::string error;
  const std::string file = dir.File(name);
  EXPECT_TRUE(WriteTrack(file, seconds, {}, error)) << error;
  return file;
}

TEST(Mp3Reader, ATrackLastsWhatItWasMadeToLastAndJunkLastsNothing) {
  testing::TempDir dir;
  for (double seconds : {59.5, 205.4, 3.0, 0.04}) {
    EXPECT_DOUBLE_EQ(sim::Mp3DurationOfFile(Track(dir, "t.mp3", seconds)),
                     seconds);
  }
  const std::string bytes = ReadAll(Track(dir, "t.mp3", 10));
  // Cut in half, it holds the frames that are left (a reader that trusted
  // the LAME tag would say 10).
  double half = sim::Mp3Duration(bytes.substr(0, bytes.size() / 2));
  EXPECT_GT(half, 4.0);
  EXPECT_LT(half, 6.0);
  EXPECT_EQ(sim::Mp3Duration(""), 0);
  EXPECT_EQ(sim::Mp3Duration(std::string(100000, 'x')), 0);
  EXPECT_EQ(sim::Mp3DurationOfFile((dir.path / "missing.mp3").string()), 0);
  EXPECT_EQ(sim::Mp3DurationOfFile(dir.path.string()), 0);
}

// The control's promises, in virtual time.
TEST(SimMedia, PlaysByItselfAndStandsAtExactlyItsEndUntilACallMovesIt) {
  testing::TempDir dir;
  testing::World world;
  sim::SimFileSystem files(".");
  sim::SimMedia media(world.loop.clock(), files);
  int changes = 0;
  media.OnChange([&] { ++changes; });
  std::vector<std::string> events;
  media.on_event = [&](const std::string& e) { events.push_back(e); };

  // Nothing open: the reads never meet, so no end is ever seen.
  EXPECT_EQ(media.Duration(), 0.0);
  EXPECT_LT(media.CurrentPosition(), media.Duration());
  EXPECT_EQ(media.NextChangeMs(), kNeverMs);
  EXPECT_EQ(media.Describe(), "closed ");

  media.Open(Track(dir, "a.mp3", 2.5));
  EXPECT_EQ(media.Describe(), "playing a.mp3");
  EXPECT_EQ(media.CurrentPosition(), 0.0);
  EXPECT_EQ(media.NextChangeMs(), 2500);
  world.loop.RunFor(2499);
  EXPECT_LT(media.CurrentPosition(), 2.5);
  world.loop.RunFor(1);
  EXPECT_EQ(media.CurrentPosition(), media.Duration());
  world.loop.RunFor(60000);
  EXPECT_EQ(media.CurrentPosition(), 2.5);
  EXPECT_EQ(media.Describe(), "at end a.mp3");
  EXPECT_EQ(media.NextChangeMs(), kNeverMs);

  // Pause and Stop at the end change nothing; Play starts over.
  media.Pause();
  media.Stop();
  EXPECT_EQ(media.CurrentPosition(), 2.5);
  media.Play();
  EXPECT_EQ(media.CurrentPosition(), 0.0);
  world.loop.RunFor(1000);
  media.Pause();
  world.loop.RunFor(5000);
  EXPECT_EQ(media.CurrentPosition(), 1.0);
  EXPECT_EQ(media.Describe(), "paused a.mp3");
  media.Play();
  world.loop.RunFor(500);
  media.Stop();
  EXPECT_EQ(media.CurrentPosition(), 1.5);  // Stop keeps the place
  media.SetCurrentPosition(0.0);
  EXPECT_EQ(media.Describe(), "stopped a.mp3");
  media.Play();
  media.SetCurrentPosition(99);  // cut to the end
  EXPECT_EQ(media.Describe(), "at end a.mp3");

  // A file that is no MP3 leaves nothing open.
  std::ofstream(dir.path / "junk.mp3") << "not audio";
  media.Open((dir.path / "junk.mp3").string());
  EXPECT_EQ(media.Describe(), "closed ");
  EXPECT_LT(media.CurrentPosition(), media.Duration());
  media.SetVolume(-1562);
  EXPECT_EQ(media.volume(), -1562);
  EXPECT_EQ(events.front(), "[media] open a.mp3");
  EXPECT_EQ(events.back(), "[media] volume -1562");
  // Every call that moved what the reads give, and no other.
  EXPECT_EQ(changes, 9);
}

TEST(PlayerNumbers, TimesAndVolumesRoundHalvesToTheEvenOne) {
  testing::World world;
  auto time = [&](double s) { return SongTime(world.platform, s); };
  EXPECT_EQ(time(205.4), "03:25");
  EXPECT_EQ(time(59.5), "01:00");
  EXPECT_EQ(time(0.5), "00:00");
  EXPECT_EQ(time(1.5), "00:02");
  EXPECT_EQ(time(0), "00:00");
  EXPECT_EQ(time(MediaControl::kNoMediaPosition), "00:00");
  EXPECT_EQ(time(3725), "62:05");
  EXPECT_EQ(time(6000), "100:00");
  EXPECT_EQ(VolumeFor(100), 0);
  EXPECT_EQ(VolumeFor(50), -1250);
  EXPECT_EQ(VolumeFor(1), -2475);
  EXPECT_EQ(VolumeFor(0), -2500);
  EXPECT_EQ(VolumeFor(37.5), -1562);  // -1562.5
  EXPECT_EQ(VolumeFor(62.5), -938);   // -937.5
}

}  // namespace
}  // namespace v2
