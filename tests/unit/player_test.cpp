// The player's pieces: the simulator's media control and its MP3 reader,
// the file list box, the text helpers and the number forms of the replies.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "app/runner.h"
#include "app/script.h"
#include "app/track_file.h"
#include "platform/sim/mp3_reader.h"
#include "platform/sim/sim_media.h"
#include "platform/sim/sim_stores.h"
#include "player/play_modes.h"
#include "player/player_commands.h"
#include "player/player_text.h"
#include "tests/unit/world.h"

namespace v2 {
namespace {

namespace fs = std::filesystem;

struct TempDir {
  TempDir()
      : path(fs::temp_directory_path() /
             ("v2-player-" + std::to_string(getpid()) + "-" +
              std::to_string(counter++))) {
    fs::create_directories(path);
  }
  ~TempDir() { fs::remove_all(path); }
  std::string Track(const std::string& name, double seconds) const {
    std::string error;
    std::string file = (path / name).string();
    EXPECT_TRUE(WriteTrack(file, seconds, {}, error)) << error;
    return file;
  }
  static inline int counter = 0;
  fs::path path;
};

std::string ReadAll(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream out;
  out << in.rdbuf();
  return out.str();
}

TEST(Mp3Reader, ATrackLastsWhatItWasMadeToLastAndJunkLastsNothing) {
  TempDir dir;
  for (double seconds : {59.5, 205.4, 3.0, 0.04}) {
    EXPECT_DOUBLE_EQ(sim::Mp3DurationOfFile(dir.Track("t.mp3", seconds)),
                     seconds);
  }
  const std::string bytes = ReadAll(dir.Track("t.mp3", 10));
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
  TempDir dir;
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

  media.Open(dir.Track("a.mp3", 2.5));
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

TEST(FileListBox, ShowsTheMatchingFilesSortedWithoutRegardToCase) {
  EXPECT_TRUE(MatchesFilePattern("song.MP3", "*.mp3"));
  EXPECT_TRUE(MatchesFilePattern(".mp3", "*.mp3"));
  EXPECT_FALSE(MatchesFilePattern("song.mp3x", "*.mp3"));
  EXPECT_FALSE(MatchesFilePattern("song.mp", "*.mp3"));
  EXPECT_TRUE(MatchesFilePattern("a.b.mp3", "*.mp3"));
  EXPECT_TRUE(MatchesFilePattern("ab", "a?"));
  EXPECT_FALSE(MatchesFilePattern("a", "a?"));
  EXPECT_TRUE(MatchesFilePattern("\xC9T\xC9.mp3", "\xE9t\xE9*"));

  TempDir dir;
  for (const char* name : {"b.mp3", "A.mp3", "a.MP3", "c.txt", ".hid.mp3"}) {
    std::ofstream(dir.path / name) << "x";
  }
  fs::create_directories(dir.path / "folder.mp3");
  sim::SimFileSystem files(".");
  FileListBox box(files, "*.mp3");
  box.SetPath(dir.path.string());
  ASSERT_EQ(box.ListCount(), 3);
  EXPECT_EQ(box.List(0), "A.mp3");
  EXPECT_EQ(box.List(1), "a.MP3");
  EXPECT_EQ(box.List(2), "b.mp3");
  EXPECT_EQ(box.FileName(), "");
  EXPECT_FALSE(box.SetListIndex(3));
  EXPECT_FALSE(box.SetListIndex(-2));
  EXPECT_TRUE(box.SetListIndex(2));
  // A file added before the cursor's: Refresh keeps the cursor on b.mp3.
  std::ofstream(dir.path / "0.mp3") << "x";
  box.Refresh();
  EXPECT_EQ(box.ListIndex(), 3);
  EXPECT_EQ(box.FileName(), "b.mp3");
  fs::remove(dir.path / "b.mp3");
  box.Refresh();
  EXPECT_EQ(box.ListIndex(), -1);
  // A folder that is not there shows nothing, and so does the empty path.
  box.SetPath((dir.path / "gone").string());
  EXPECT_EQ(box.ListCount(), 0);
  box.SetPath("");
  EXPECT_EQ(box.ListCount(), 0);
}

TEST(PlayerText, StripSpacesAndReplaceText) {
  testing::World world;
  EXPECT_EQ(StripSpaces(" The  Song\t.mp3 "), "TheSong\t.mp3");
  EXPECT_EQ(ReplaceText(world.platform, "A.MP3.mp3", ".mp3", ""), "A");
  // Replaced text is not searched again.
  EXPECT_EQ(ReplaceText(world.platform, "aXa", "a", "aa"), "aaXaa");
  EXPECT_EQ(ReplaceText(world.platform, "x", "", "y"), "x");
  // Pending events run at each replacement.
  int ran = 0;
  world.loop.Post([&] { ++ran; });
  ReplaceText(world.platform, "b", "c", "d");
  EXPECT_EQ(ran, 0);
  ReplaceText(world.platform, "c", "c", "d");
  EXPECT_EQ(ran, 1);
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

TEST(PlayerScript, TrackAndTagsLines) {
  using Kind = ScriptCommand::Kind;
  ScriptCommand c = ParseScriptLine("track music/The Song.mp3 205.4");
  EXPECT_EQ(c.kind, Kind::kTrack);
  EXPECT_EQ(c.object, "music/The Song.mp3");
  EXPECT_EQ(c.seconds, 205.4);
  for (const char* bad : {"track", "track a.mp3", "track a.mp3 0", "track  3",
                          "track a.mp3 -1", "track a.mp3 1s"}) {
    EXPECT_EQ(ParseScriptLine(bad).kind, Kind::kNotUnderstood) << bad;
  }
  c = ParseScriptLine("tags T|A");
  EXPECT_EQ(c.kind, Kind::kTags);
  EXPECT_EQ(ParseTrackTags(c.text), (TrackTags{"T", "A", "", "", ""}));
  EXPECT_EQ(ParseTrackTags("a|b|c|d|e|f"),
            (TrackTags{"a", "b", "c", "d", "e|f"}));
  EXPECT_EQ(ParseTrackTags(""), TrackTags{});
  // Options in front of the fields, in their order; an unknown word is the
  // title's.
  TrackTagging odd = ParseTrackTags("+lyrics3 -v1 +ape +v24-ext-flag -lametag");
  EXPECT_EQ(odd.fields, TrackTags{});
  using Trailer = TrackTagging::Trailer;
  EXPECT_EQ(odd.trailers, (std::vector{Trailer::kLyrics3, Trailer::kApe}));
  EXPECT_TRUE(!odd.id3v1 && odd.bare_extended_flag && !odd.lame_tag);
  EXPECT_EQ(ParseTrackTags("+ape +apex|A").fields.title, "+apex");
  EXPECT_EQ(ParseTrackTags("+ape +apex|A").trailers,
            (std::vector{Trailer::kApe}));

  // A track the runner cannot write refuses the line.
  TempDir dir;
  std::ofstream(dir.path / "file") << "x";
  std::string error;
  EXPECT_FALSE(
      WriteTrack((dir.path / "file" / "a.mp3").string(), 1, {}, error));
  EXPECT_FALSE(WriteTrack((dir.path / "a.mp3").string(), 3601, {}, error));
  EXPECT_TRUE(
      WriteTrack((dir.path / "deep\\er" / "a.mp3").string(), 1, {}, error));
  EXPECT_TRUE(fs::exists(dir.path / "deep" / "er" / "a.mp3"));
}

// While a list of matches goes out, a second of pause at a time, commands
// run in between: `p` with a number is a new search until the list is
// complete, adding to the same list, and `cancel` finds nothing to cancel.
TEST(PlayerSearch, ALineSaidDuringTheListingRunsOnTopOfIt) {
  TempDir dir;
  for (const char* name : {"music/a.mp3", "music/b.mp3", "music/c.mp3"}) {
    dir.Track(name, 30);
  }
  RunnerOptions options;
  options.script = "-";
  options.clock = LocalTime{2001, 6, 15, 14, 3, 0, 0};
  options.user_store = (dir.path / "user-store").string();
  options.program_dir = dir.path.string();
  std::ostringstream out, err;
  Runner runner(options, out, err);
  runner.Execute("say dir " + (dir.path / "music").string());
  // The member speaks 1.5 s into the listing, and again 1.5 s later.
  std::vector<std::string> lines = {"p 1", "cancel"};
  TimerId later = runner.loop().CreateTimer([&] {
    if (lines.empty()) return;
    runner.client().MemberTypes(lines.front());
    runner.client().MemberPressesReturn();
    lines.erase(lines.begin());
  });
  runner.loop().SetTimer(later, 1500, true);
  out.str("");
  runner.Execute("say p mp3");
  runner.loop().SetTimer(later, 0, false);
  const std::string said = out.str();
  auto count = [&](const std::string& what) {
    std::size_t n = 0;
    for (auto at = said.find(what); at != std::string::npos;
         at = said.find(what, at + 1)) {
      ++n;
    }
    return n;
  };
  EXPECT_EQ(count("Member:\tp 1\n"), 1u);
  EXPECT_EQ(count("Member:\tcancel\n"), 1u);
  // The search for "1" found nothing more: the list it saw (the three of
  // the first search) went out a second time, and nothing was canceled.
  EXPECT_EQ(count("<b>3</b> multiple matches found"), 2u);
  EXPECT_EQ(count("canceled"), 0u);
  EXPECT_EQ(count("type <b>p</b> and a number"), 2u);
  EXPECT_EQ(runner.program().form1.List1.ListCount(), 3);
  EXPECT_EQ(runner.program().form1.SelectionPending, kVbTrue);
}

// Step 30 of the start: the stored folder, or the program's own.
TEST(PlayerStart, TheDirectoryComesFromSettingsDatOrIsTheProgramsOwn) {
  TempDir dir;
  dir.Track("mine.mp3", 1);
  dir.Track("music/one.mp3", 1);
  dir.Track("music/two.mp3", 1);
  RunnerOptions options;
  options.script = "-";
  options.clock = LocalTime{2001, 6, 15, 14, 3, 0, 0};
  options.user_store = (dir.path / "user-store").string();
  options.program_dir = dir.path.string();
  std::ostringstream out, err;
  {
    Runner runner(options, out, err);
    runner.Start();
    EXPECT_EQ(runner.program().form1.File1.Path(), dir.path.string());
    EXPECT_EQ(runner.program().form1.File1.ListCount(), 1);
    runner.Execute("say dir " + (dir.path / "music").string());
  }
  EXPECT_NE(ReadAll((dir.path / "settings.dat").string())
                .find("PATH=" + (dir.path / "music").string() + "\r\n"),
            std::string::npos);
  {
    Runner runner(options, out, err);
    runner.Start();
    EXPECT_EQ(runner.program().form1.File1.ListCount(), 2);
    fs::remove_all(dir.path / "music");
  }
  {
    // The folder has gone: it stands, with nothing in it.
    Runner runner(options, out, err);
    runner.Start();
    EXPECT_EQ(runner.program().form1.File1.Path(),
              (dir.path / "music").string());
    EXPECT_EQ(runner.program().form1.File1.ListCount(), 0);
    runner.Execute("say cdir");
  }
  Runner runner(options, out, err);
  runner.Start();
  EXPECT_EQ(runner.program().form1.File1.Path(), dir.path.string());
}

}  // namespace
}  // namespace v2
