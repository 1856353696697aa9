// The client's real menus (aolhost.exe's), driven from another thread as
// the program drives them from another process: a toolbar popup tracked by
// the system and walked by posted keys, the menu bar read item by item, the
// time box, and the windows around the client. Menus are read here within
// one process; see docs/architecture.md for what Wine does across two.
#include <windows.h>

#include <gtest/gtest.h>

#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "aolsim/aol_client.h"
#include "aolsim/desktop.h"
#include "aolsim/win32_window_host.h"
#include "host/host_menus.h"
#include "host/host_tweaks.h"
#include "host/host_windows.h"
#include "platform/platform.h"
#include "platform/win32/win32_loop.h"
#include "platform/win32/win32_windows.h"

namespace v2 {
namespace {

// The client on a thread of its own, with its own message loop.
class ClientThread {
 public:
  ClientThread() {
    thread_ = std::thread([this] {
      aolsim::Win32WindowHost host;
      aolsim::AolClient client(host, "Bob");
      aolsim::Desktop desktop(host);
      client.on_event = [this](const std::string& e) {
        std::lock_guard<std::mutex> lock(mutex_);
        events_.push_back(e);
      };
      client.Start();
      desktop.ShowTaskBar();
      desktop.AimSignOn("Some Body");
      {
        std::lock_guard<std::mutex> lock(mutex_);
        id_ = GetCurrentThreadId();
      }
      MSG msg;
      while (GetMessageA(&msg, nullptr, 0, 0) > 0) {
        TranslateMessage(&msg);
        DispatchMessageA(&msg);
      }
    });
    // Up once its windows are.
    for (int i = 0; i < 500 && !Id(); ++i) Sleep(10);
  }
  ~ClientThread() {
    PostThreadMessageA(Id(), WM_QUIT, 0, 0);
    thread_.join();
  }
  DWORD Id() {
    std::lock_guard<std::mutex> lock(mutex_);
    return id_;
  }
  // Waits (at most 5 s) until the client has said what it did count times.
  std::vector<std::string> Events(std::size_t count) {
    for (int i = 0; i < 500; ++i) {
      {
        std::lock_guard<std::mutex> lock(mutex_);
        if (events_.size() >= count) return events_;
      }
      Sleep(10);
    }
    std::lock_guard<std::mutex> lock(mutex_);
    return events_;
  }

 private:
  std::thread thread_;
  std::mutex mutex_;
  std::vector<std::string> events_;
  DWORD id_ = 0;
};

TEST(AolHostMenus, PopupsMenuBarAndBoxesThroughRealMenus) {
  // The pointer rests in the middle of the screen, clear of the popups.
  // (Under Wine a menu that opens under the pointer's last place can see
  // the park late and take the item under it as selected.)
  SetCursorPos(512, 384);
  ClientThread client;
  ASSERT_NE(client.Id(), 0u);
  win32::Win32Windows w;
  win32::Win32Loop loop;
  Platform p{w, loop};

  MailOpenNew(p);
  EXPECT_EQ(client.Events(1).back(), "[client menu] Read New Mail");
  MailOpenFlashed(p);
  EXPECT_EQ(client.Events(2).back(), "[client menu] Flashed Mail");
  MailOpenSent(p);
  EXPECT_EQ(client.Events(3).back(), "[client menu] Sent Mail");
  // The windows the items opened are first in the MDI area, newest first
  // (the client's thread puts the last in front a moment after it says so).
  std::string first;
  for (int i = 0; i < 500 && first != "Sent Mail"; ++i) {
    if (i) Sleep(10);
    first = GetCaption(
        p, w.FindWindowExA(FindMdiClient(p), 0, "AOL Child", nullptr));
  }
  EXPECT_EQ(first, "Sent Mail");

  EXPECT_EQ(SessionTime(p), "0 hours and 0 minutes");
  EXPECT_EQ(client.Events(4).back(), "[client menu] Time Online");
  for (int i = 0; i < 100 && w.FindWindowA("_AOL_Modal", nullptr); ++i) {
    Sleep(10);
  }
  EXPECT_EQ(w.FindWindowA("_AOL_Modal", nullptr), 0u);  // closed behind

  // The desktop around the client.
  EXPECT_EQ(AimName(p), "Some Body");
  const std::string clock = TrayClockTime(p);
  EXPECT_NE(clock.find(':'), std::string::npos) << clock;
  EXPECT_TRUE(clock.ends_with(" AM") || clock.ends_with(" PM")) << clock;

  // Window tweaks on real windows of another thread.
  Hwnd welcome = FindWelcome(p);
  HideWelcome(p);
  EXPECT_FALSE(w.IsWindowVisible(welcome));
  EXPECT_EQ(GetUser(p), "Bob");
  ShowWelcome(p);
  EXPECT_TRUE(w.IsWindowVisible(welcome));
  Hwnd glyph = w.FindWindowExA(FindToolbar(p), 0, "_AOL_Glyph", nullptr);
  ASSERT_NE(glyph, 0u);
  KillGlyph(p);
  for (int i = 0; i < 100 && w.IsWindow(glyph); ++i) Sleep(10);
  EXPECT_FALSE(w.IsWindow(glyph));

  // The menu bar read item by item, and Sign Off chosen from it.
  SignOff(p);
  EXPECT_EQ(client.Events(5).back(), "[client menu] Sign Off");
  EXPECT_EQ(client.Events(6).back(), "[signed off]");
  EXPECT_EQ(FindWelcome(p), 0u);
  EXPECT_EQ(
      GetCaption(p, w.FindWindowExA(FindMdiClient(p), 0, "AOL Child", nullptr)),
      "Sign On");
}

}  // namespace
}  // namespace v2
