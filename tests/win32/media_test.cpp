// The media control over MCI, playing a real MP3 through the system's own
// decoder, and the file list of a folder, under Wine. The MP3 comes from the
// run (tests/wine/run-tests makes it with the Linux build's make-track and
// names it in V2_TEST_MP3); without it the playing test is skipped.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <string>

#include "platform/win32/win32_loop.h"
#include "platform/win32/win32_media.h"
#include "platform/win32/win32_stores.h"

namespace v2 {
namespace {

// Runs the thread's loop (MCI's notice comes as a message) until done()
// or ms have passed.
template <typename Done>
bool RunUntil(win32::Win32Loop& loop, int ms, Done done) {
  const std::int64_t end = loop.clock().NowMs() + ms;
  while (!done()) {
    if (loop.clock().NowMs() >= end) return false;
    loop.PumpEvents();
    loop.WaitUntil(std::min(end, loop.clock().NowMs() + 10));
  }
  return true;
}

TEST(Win32Media, ARealFilePlaysAndStandsAtExactlyItsEnd) {
  const char* track = std::getenv("V2_TEST_MP3");  // 2 seconds long
  if (!track || !*track) GTEST_SKIP() << "V2_TEST_MP3 names no track";
  win32::Win32Loop loop;
  win32::Win32Media media(loop.clock());
  int changes = 0;
  media.OnChange([&] { ++changes; });

  // Nothing open, and a file that is no media: the reads never meet.
  EXPECT_EQ(media.Duration(), 0.0);
  EXPECT_LT(media.CurrentPosition(), media.Duration());
  media.Open("C:\\no such folder\\none.mp3");
  EXPECT_LT(media.CurrentPosition(), media.Duration());
  EXPECT_EQ(media.NextChangeMs(), kNeverMs);

  const int opened_before = changes;
  media.Open(track);
  EXPECT_GT(changes, opened_before);  // whoever sleeps on the reads wakes
  EXPECT_NEAR(media.Duration(), 2.0, 0.1);
  const double length = media.Duration();
  EXPECT_NE(media.CurrentPosition(), length);
  EXPECT_LT(media.NextChangeMs(), kNeverMs);
  // It plays by itself: the position moves, short of the end.
  ASSERT_TRUE(
      RunUntil(loop, 5000, [&] { return media.CurrentPosition() > 0.3; }));
  media.Pause();
  const double paused = media.CurrentPosition();
  RunUntil(loop, 300, [] { return false; });
  EXPECT_EQ(media.CurrentPosition(), paused);
  EXPECT_EQ(media.NextChangeMs(), kNeverMs);
  media.Play();
  // The end: MCI tells, or (its notice late under load) the device is seen
  // stopped once the end is due; from then on the position is the length,
  // exactly, whatever MCI's own position says.
  ASSERT_TRUE(RunUntil(loop, 10000, [&] {
    return media.CurrentPosition() == media.Duration();
  }));
  RunUntil(loop, 500, [] { return false; });
  EXPECT_EQ(media.CurrentPosition(), length);
  EXPECT_EQ(media.NextChangeMs(), kNeverMs);
  // Play at the end starts over; a rewind while halted stays halted.
  media.Play();
  EXPECT_LT(media.CurrentPosition(), 0.5);
  media.Stop();
  media.SetCurrentPosition(0.0);
  EXPECT_EQ(media.CurrentPosition(), 0.0);
  RunUntil(loop, 300, [] { return false; });
  EXPECT_EQ(media.CurrentPosition(), 0.0);
}

TEST(Win32Media, VolumeInHundredthsOfADecibelOnMcisScale) {
  EXPECT_EQ(win32::Win32Media::MciVolume(0), 1000);
  EXPECT_EQ(win32::Win32Media::MciVolume(-600), 501);  // -6 dB: half
  EXPECT_EQ(win32::Win32Media::MciVolume(-2500), 56);
  EXPECT_EQ(win32::Win32Media::MciVolume(-10000), 0);
  EXPECT_EQ(win32::Win32Media::MciVolume(500), 1000);
}

TEST(Win32FileSystem, TheFilesOfAFolderByPatternAndInOrder) {
  char temp[MAX_PATH];
  GetTempPathA(MAX_PATH, temp);
  const std::string dir =
      std::string(temp) + "v2-files-" + std::to_string(GetCurrentProcessId());
  CreateDirectoryA(dir.c_str(), nullptr);
  for (const char* name : {"b.mp3", "A.MP3", "c.txt", "hidden.mp3"}) {
    std::ofstream(dir + "\\" + name) << "x";
  }
  SetFileAttributesA((dir + "\\hidden.mp3").c_str(), FILE_ATTRIBUTE_HIDDEN);
  CreateDirectoryA((dir + "\\folder.mp3").c_str(), nullptr);
  win32::Win32FileSystem files;
  std::vector<std::string> names;
  ASSERT_TRUE(files.ListFiles(dir, "*.mp3", names));
  EXPECT_EQ(names, (std::vector<std::string>{"A.MP3", "b.mp3"}));
  ASSERT_TRUE(files.ListFiles(dir + "\\", "*.mp3", names));
  EXPECT_EQ(names.size(), 2u);
  EXPECT_FALSE(files.ListFiles(dir + "\\none", "*.mp3", names));
  EXPECT_FALSE(files.ListFiles("", "*.mp3", names));
  for (const char* name : {"b.mp3", "A.MP3", "c.txt", "hidden.mp3"}) {
    std::string path = dir + "\\" + name;
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    DeleteFileA(path.c_str());
  }
  RemoveDirectoryA((dir + "\\folder.mp3").c_str());
  RemoveDirectoryA(dir.c_str());
}

}  // namespace
}  // namespace v2
