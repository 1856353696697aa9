// The simulated client realised with real windows (aolhost.exe's), driven by
// the host layer over the Windows backend, in one process under Wine.
#include <windows.h>

#include <gtest/gtest.h>

#include "aolsim/aol_client.h"
#include "aolsim/win32_window_host.h"
#include "host/host_windows.h"
#include "platform/platform.h"
#include "platform/win32/win32_loop.h"
#include "platform/win32/win32_windows.h"
#include "transfers/transfer_monitors.h"
#include "transfers/upchat.h"

namespace v2 {
namespace {

TEST(AolHost, TheClientsWindowsAsTheHostLayerFindsThem) {
  aolsim::Win32WindowHost host;
  aolsim::AolClient client(host, "Bob");
  std::vector<std::string> lines;
  client.on_line = [&](const std::string& l) { lines.push_back(l); };
  client.Start();

  win32::Win32Windows w;
  win32::Win32Loop loop;
  Platform p{w, loop};

  // The real class names in the real structure.
  Hwnd frame = w.FindWindowA("aol frame25", "America  Online");
  ASSERT_EQ(frame, client.frame());
  EXPECT_NE(FindMdiClient(p), 0u);
  EXPECT_EQ(GetUser(p), "Bob");
  EXPECT_EQ(FindWelcome(p), client.welcome());
  // The IM window ahead of the room has no list box and is passed over.
  EXPECT_EQ(FindChatRoom(p), client.room());
  EXPECT_EQ(FindTranscript(p), client.transcript());
  EXPECT_EQ(GetCaption(p, client.room()), "Lobby 1");

  client.MemberTypes("half");
  ChatSend(p, "hello there");
  EXPECT_EQ(lines, (std::vector<std::string>{"Bob:\thello there"}));
  EXPECT_EQ(client.InputText(), "half");
  EXPECT_EQ(GetText(p, client.transcript()), "\rBob:\thello there");

  // The dialog is a real #32770 with a real button, pressed by the key pair.
  client.ShowDialog("The room is full.");
  Hwnd dialog = w.FindWindowA("#32770", "America Online");
  ASSERT_NE(dialog, 0u);
  Hwnd text = NthChild(p, dialog, "Static", 2);
  EXPECT_EQ(GetText(p, text), "The room is full.");
  DismissHostError(p);
  EXPECT_FALSE(w.IsWindow(dialog));
  client.ShowDialog("Again.");
  WaitHostOK(p);
  EXPECT_EQ(w.FindWindowA("#32770", "America Online"), 0u);

  // Closed, the client is gone for every lookup; opened, it is back.
  client.Quit();
  EXPECT_EQ(FindChatRoom(p), 0u);
  EXPECT_EQ(GetUser(p), "");
  ChatSend(p, "lost");  // no room: the line is lost, quietly
  client.Start();
  EXPECT_EQ(GetUser(p), "Bob");
  ChatSend(p, "back");
  EXPECT_EQ(lines.back(), "Bob:\tback");
}

TEST(AolHost, TransferWindowsByClassAndTitle) {
  aolsim::Win32WindowHost host;
  aolsim::AolClient client(host, "Bob");
  client.Start();
  win32::Win32Windows w;
  win32::Win32Loop loop;
  Platform p{w, loop};

  client.Download("My Song.MP3", 45, 12);
  client.Upload("Pic One.JPG", 7, 3);
  Hwnd down =
      w.FindWindowExA(FindMdiClient(p), 0, "AOL Child", "File Transfer - 45%");
  ASSERT_NE(down, 0u);
  Hwnd up = w.FindWindowA("_AOL_Modal", "File Transfer - 7%");
  ASSERT_NE(up, 0u);

  // The monitors read the real windows as they read the simulated ones.
  EXPECT_EQ(FindDownload(p), down);
  EXPECT_EQ(DownloadName(p), "My Song.MP3");
  EXPECT_EQ(DownloadMins(p), "12");
  EXPECT_EQ(FindUpload(p), up);
  EXPECT_EQ(UploadName(p), "Pic One.JPG");
  EXPECT_EQ(UploadPercent(p), "7");
  EXPECT_EQ(UploadMins(p), "3");

  // Updated in place, then closed; quitting takes the upload along.
  client.Download("My Song.MP3", 90, 1);
  EXPECT_EQ(GetCaption(p, down), "File Transfer - 90%");
  EXPECT_EQ(DownloadPercent(p), "90");
  client.EndDownload();
  EXPECT_FALSE(w.IsWindow(down));
  EXPECT_EQ(FindDownload(p), 0u);
  client.Quit();
  EXPECT_FALSE(w.IsWindow(up));
  EXPECT_EQ(FindUpload(p), 0u);
}

TEST(AolHost, TheUploadWindowHiddenMinimizedAndBack) {
  aolsim::Win32WindowHost host;
  aolsim::AolClient client(host, "Bob");
  client.Start();
  win32::Win32Windows w;
  win32::Win32Loop loop;
  Platform p{w, loop};
  EXPECT_EQ(client.UploadShowing(), "none");
  UpChat(p);  // nothing to hide
  client.Upload("Pic One.JPG", 7, 3);
  EXPECT_EQ(client.UploadShowing(), "normal");
  UpChat(p);
  EXPECT_EQ(client.UploadShowing(), "minimized");
  w.ShowWindow(client.upload(), kSwHide);
  EXPECT_EQ(client.UploadShowing(), "hidden");
  UnUpChat(p);
  EXPECT_EQ(client.UploadShowing(), "normal");
  client.EndUpload();
  UnUpChat(p);
  EXPECT_EQ(client.UploadShowing(), "none");
}

}  // namespace
}  // namespace v2
