#include "transfers/transfer_monitors.h"

#include <gtest/gtest.h>

#include "app/script.h"
#include "core/program.h"
#include "core/styled_line.h"
#include "host/host_windows.h"
#include "tests/unit/world.h"

namespace v2 {
namespace {

TEST(TransferMonitors, TheDownloadWindowAndItsTexts) {
  testing::World w;
  Platform& p = w.platform;
  EXPECT_EQ(FindDownload(p), 0u);
  EXPECT_EQ(DownloadPercent(p), "");
  EXPECT_EQ(DownloadMins(p), "n/a");

  w.client.Download("My Song.MP3", 45, 12);
  ASSERT_NE(w.client.download(), 0u);
  EXPECT_EQ(FindDownload(p), w.client.download());
  EXPECT_EQ(DownloadName(p), "My Song.MP3");
  EXPECT_EQ(DownloadPercent(p), "45");
  EXPECT_EQ(DownloadMins(p), "12");
  // The same window goes on showing the progress.
  const Hwnd first = w.client.download();
  w.client.Download("My Song.MP3", 100, 0);
  EXPECT_EQ(FindDownload(p), first);
  EXPECT_EQ(DownloadPercent(p), "100");
  EXPECT_EQ(DownloadMins(p), "0");
  w.client.EndDownload();
  EXPECT_EQ(FindDownload(p), 0u);
  EXPECT_EQ(DownloadName(p), "none");

  // Texts of other shapes: the title behind "-" when there is no "%", from
  // its 2nd character with no "-" either; minutes only as a number.
  EXPECT_EQ(DownloadPercentOf("File Transfer - 45"), "45");
  EXPECT_EQ(DownloadPercentOf("Transfer 45%"), "ransfer 45");
  EXPECT_EQ(DownloadNameOf("Now Downloading a b.zip"), "a b.zip");
  EXPECT_EQ(DownloadMinsOf("About soon minutes remaining"), "n/a");
  EXPECT_EQ(DownloadMinsOf("About 12"), "n/a");
  EXPECT_EQ(DownloadMinsOf("About"), "n/a");
  EXPECT_EQ(DownloadMinsOf("About 1.5 minutes"), "1.5");
}

TEST(TransferMonitors, TheUploadWindowAndItsTexts) {
  testing::World w;
  Platform& p = w.platform;
  const std::int64_t start = w.loop.clock().NowMs();
  EXPECT_EQ(FindUpload(p), 0u);
  EXPECT_EQ(w.loop.clock().NowMs(), start);  // no modal: no waiting
  EXPECT_EQ(UploadName(p), "");
  EXPECT_EQ(UploadPercent(p), "");
  EXPECT_EQ(UploadMins(p), "");

  w.client.Upload("Pic One.JPG", 45, 12);
  ASSERT_NE(w.client.upload(), 0u);
  EXPECT_EQ(FindUpload(p), w.client.upload());
  EXPECT_EQ(UploadName(p), "Pic One.JPG");
  EXPECT_EQ(UploadPercent(p), "45");
  EXPECT_EQ(UploadMins(p), "12");
  w.client.EndUpload();
  EXPECT_EQ(FindUpload(p), 0u);

  EXPECT_EQ(UploadPercentOf("File Transfer - abc%"), "0");
  EXPECT_EQ(UploadPercentOf("File Transfer"), "");
  EXPECT_EQ(UploadPercentOf(" - "), "0");  // nothing behind, nothing dropped
  EXPECT_EQ(UploadMinsOf("Now Uploading a", "About soon minutes"), "0");
  // The minutes' place is taken from the 1st text: without a blank there
  // the cut is skipped, and "About" is no number.
  EXPECT_EQ(UploadMinsOf("Now Uploadingx", "About 12 minutes remaining"), "0");
  EXPECT_EQ(UploadMinsOf("Now Uploading a", "About 12"), "12");

  // Quitting the client closes both windows.
  w.client.Download("a", 1, 2);
  w.client.Upload("b", 3, 4);
  w.client.Quit();
  EXPECT_EQ(FindDownload(p), 0u);
  EXPECT_EQ(FindUpload(p), 0u);
  w.client.Upload("b", 3, 4);  // no client, no upload
  EXPECT_EQ(w.windows.FindWindowA("_AOL_Modal", nullptr), 0u);
}

TEST(TransferMonitors, AnotherModalIsWaitedOutWithinTheBound) {
  testing::World w;
  Platform& p = w.platform;
  // An upload's text under another title is not the upload.
  Hwnd other = w.windows.Create(0, "_AOL_Modal", "Please Wait");
  Hwnd label = w.windows.Create(other, "_AOL_Static", "Now Uploading x");
  std::int64_t start = w.loop.clock().NowMs();
  EXPECT_EQ(FindUpload(p), 0u);
  const std::int64_t waited = w.loop.clock().NowMs() - start;
  EXPECT_GE(waited, 2000);
  EXPECT_LT(waited, 2100);

  // Nor is a transfer title over another text; the same window becomes the
  // upload's while it is waited on.
  w.windows.SetText(other, "File Transfer - 5%");
  w.windows.SetText(label, "Now Downloading x");
  w.host.After(500, [&] { w.windows.SetText(label, "Now Uploading y"); });
  start = w.loop.clock().NowMs();
  EXPECT_EQ(FindUpload(p), other);
  EXPECT_GE(w.loop.clock().NowMs() - start, 500);
  EXPECT_LT(w.loop.clock().NowMs() - start, 2000);
}

struct Status : testing::World {
  Status() : prog(platform) {}
  std::string Main(const std::string& text) {
    return "Member:\t" + StyledLine(prog.form4, Pair::kMain, text);
  }
  std::string Stat(const std::string& text) {
    return "Member:\t" + StyledLineTight(prog.form4, Pair::kStat, text);
  }
  Program prog;
};

TEST(TransferMonitors, StatusInTheRoom) {
  Status w;
  PostTransferStatus(w.prog);
  EXPECT_EQ(
      w.room,
      (std::vector<std::string>{w.Main("no file transfer in progress!")}));

  w.room.clear();
  w.client.Download("Big File.ZIP", 45, 12);
  PostTransferStatus(w.prog);
  EXPECT_EQ(w.room, (std::vector<std::string>{
                        w.Main("down file: big file.zip"),
                        w.Stat("percent: 45 \xB7 mins remaining: 12")}));

  w.room.clear();
  w.client.Upload("Up.TXT", 7, 3);
  PostTransferStatus(w.prog);
  EXPECT_EQ(w.room, (std::vector<std::string>{
                        w.Main("down file: big file.zip"),
                        w.Stat("percent: 45 \xB7 mins remaining: 12"),
                        w.Main("up file: up.txt"),
                        w.Stat("percent: 7 \xB7 mins remaining: 3")}));
}

TEST(TransferScript, CommandsOpenUpdateAndCloseTheWindows) {
  testing::World w;
  auto play = [&](const std::string& line) {
    ScriptCommand c = ParseScriptLine(line);
    if (c.kind == ScriptCommand::Kind::kClient) PlayOnClient(w.client, c);
    return c.kind;
  };
  using Kind = ScriptCommand::Kind;
  EXPECT_EQ(play("download my big file.zip 45 12"), Kind::kClient);
  EXPECT_EQ(GetCaption(w.platform, w.client.download()), "File Transfer - 45%");
  EXPECT_EQ(DownloadName(w.platform), "my big file.zip");
  EXPECT_EQ(play("upload a  b 3 1"), Kind::kClient);
  EXPECT_EQ(UploadName(w.platform), "a  b");
  EXPECT_EQ(UploadMins(w.platform), "1");
  for (const char* refused :
       {"download", "download 45 12", "download  45 12", "download a 45",
        "download a 4x 12", "download a 45 12 ", "download a 45  12",
        "upload a -1 2", "download a 1234567890 1", "end", "end it",
        "end download now"}) {
    EXPECT_EQ(play(refused), Kind::kNotUnderstood) << refused;
  }
  EXPECT_EQ(play("end download"), Kind::kClient);
  EXPECT_EQ(play("end upload"), Kind::kClient);
  EXPECT_EQ(FindDownload(w.platform), 0u);
  EXPECT_EQ(FindUpload(w.platform), 0u);
}

}  // namespace
}  // namespace v2
