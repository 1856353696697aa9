// The program's own popup as a real menu under Wine: opened from the tray
// entry by the right button, walked with the keys a member would press,
// with real check marks and grayed items, and each choice running its
// Click. The member's hands are a timer of the program's own loop, which
// runs while the menu's modal loop has the thread.
#include <windows.h>

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "core/program.h"
#include "platform/platform.h"
#include "platform/win32/win32_loop.h"
#include "platform/win32/win32_ui.h"
#include "platform/win32/win32_windows.h"
#include "tests/win32/real_windows.h"

namespace v2 {
namespace {

using real::ToHwnd;

// The member's store, kept in memory so that the machine's registry stays
// as it was.
class MemoryStore : public UserStore {
 public:
  std::string GetSetting(const std::string&, const std::string&,
                         const std::string& key,
                         const std::string& def) override {
    auto it = entries.find(key);
    return it == entries.end() ? def : it->second;
  }
  void SaveSetting(const std::string&, const std::string&,
                   const std::string& key, const std::string& value) override {
    entries[key] = value;
  }
  std::map<std::string, std::string> entries;
};

// What the member saw of the open menu: each real item's state, by the
// path of positions from the popup's top ("4/3": the 4th item's submenu,
// its 3rd item).
using Seen = std::map<std::string, UINT>;

void Look(HMENU menu, const std::string& path, Seen& seen) {
  for (int i = 0; i < GetMenuItemCount(menu); ++i) {
    const std::string at = path + std::to_string(i);
    UINT state = GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION);
    HMENU sub = GetSubMenu(menu, i);
    // A submenu's head has its count of items in the high byte.
    seen[at] = sub ? state & 0xFF : state;
    if (sub) Look(sub, at + "/", seen);
  }
}

class PopupMenuTest : public ::testing::Test {
 protected:
  PopupMenuTest() {
    // A member who has been here before, with the watches that reach for
    // the client switched off: no question at the start and nothing but
    // the menu at work.
    store.entries = {
        {"handle", "mirrik"}, {"autoup", "false"}, {"dcp aol", "false"}};
    prog.Start();
  }

  // Opens the popup by the tray's button; 20 ms after it is up, each
  // pass of the member's timer presses the next key of keys, and once
  // they are gone the menu is looked at and, if it is still open, closed.
  void Open(WPARAM button_up, std::vector<WPARAM> keys, Seen* seen = nullptr) {
    std::size_t next = 0;
    int passes = 0;
    TimerId hands = loop.CreateTimer([&] {
      HWND open = FindWindowA("#32768", nullptr);
      if (++passes > 200) {  // a menu that never came or never went
        EndMenu();
        loop.SetTimer(hands, 20, false);
        return;
      }
      if (!open || !IsWindowVisible(open)) return;
      if (next < keys.size()) {
        PostMessageA(ToHwnd(ui.TrayWindow()), WM_KEYDOWN, keys[next++], 0);
        return;
      }
      if (seen && seen->empty()) {
        auto menu = reinterpret_cast<HMENU>(SendMessageA(open, 0x01E1, 0, 0));
        if (menu) Look(menu, "", *seen);
      }
      EndMenu();
    });
    loop.SetTimer(hands, 20, true);
    SendMessageA(ToHwnd(ui.TrayWindow()), win32::kTrayCallbackMessage, 1,
                 static_cast<LPARAM>(button_up));
    loop.SetTimer(hands, 20, false);
  }

  win32::Win32Windows windows;
  win32::Win32Loop loop;
  win32::Win32Ui ui;
  MemoryStore store;
  Platform p{windows, loop, &store, nullptr, nullptr, &ui};
  Program prog{p};
};

TEST_F(PopupMenuTest, TheTrayOpensTheWholeTreeWithItsMarks) {
  ASSERT_NE(ui.TrayWindow(), 0);
  // The left button opens nothing, and so nothing is seen.
  Seen seen;
  Open(WM_LBUTTONUP, {}, &seen);
  EXPECT_TRUE(seen.empty());

  Open(WM_RBUTTONUP, {}, &seen);
  ASSERT_FALSE(seen.empty());
  // The popup's 12 items: the grayed head line, two separators, five
  // submenus, two separators and exit; 26 separators in the whole tree.
  int top = 0, separators = 0;
  for (const auto& [path, state] : seen) {
    if (path.find('/') == std::string::npos) ++top;
    if (state & MF_SEPARATOR) ++separators;
  }
  EXPECT_EQ(top, 12);
  EXPECT_EQ(separators, 26);
  EXPECT_EQ(seen.size(), 87u);
  EXPECT_TRUE(seen["0"] & MF_GRAYED);       // blahblah
  EXPECT_TRUE(seen["1"] & MF_SEPARATOR);    // sep41
  EXPECT_TRUE(seen["3"] & MF_POPUP);        // idleconfigure
  EXPECT_TRUE(seen["3/1"] & MF_CHECKED);    // idleoff, checked and
  EXPECT_TRUE(seen["3/1"] & MF_GRAYED);     // grayed
  EXPECT_TRUE(seen["3/4/0"] & MF_CHECKED);  // chatsendtime
  EXPECT_TRUE(seen["4/2"] & MF_CHECKED);    // enterpr
  EXPECT_FALSE(seen["4/3"] & MF_CHECKED);   // enterjap
  EXPECT_FALSE(seen["4/0"] & MF_CHECKED);   // reconaol, stored off
}

TEST_F(PopupMenuTest, KeysReachASubmenuAndTheChoiceMovesTheMark) {
  // Down to "disc. protection", into it, down to "enter japan room".
  Open(WM_RBUTTONUP,
       {VK_DOWN, VK_DOWN, VK_DOWN, VK_RIGHT, VK_DOWN, VK_DOWN, VK_RETURN});
  EXPECT_TRUE(prog.form2.enterjap.Checked);
  EXPECT_FALSE(prog.form2.enterpr.Checked);
  EXPECT_EQ(store.entries["dcp jap"], "true");
  EXPECT_EQ(store.entries["dcp pr"], "false");
  // The next opening shows the mark where it went.
  Seen seen;
  Open(WM_RBUTTONUP, {}, &seen);
  EXPECT_TRUE(seen["4/3"] & MF_CHECKED);
  EXPECT_FALSE(seen["4/2"] & MF_CHECKED);

  // Into "idle configuration": its first item starts a session, after
  // which the pair shows the other way round.
  Open(WM_RBUTTONUP, {VK_DOWN, VK_DOWN, VK_RIGHT, VK_RETURN});
  EXPECT_TRUE(prog.form2.idleon.Checked);
  EXPECT_FALSE(prog.form2.idleon.Enabled);
  EXPECT_TRUE(prog.form1.Timer1.Enabled());
  seen.clear();
  Open(WM_RBUTTONUP, {}, &seen);
  EXPECT_TRUE(seen["3/0"] & MF_CHECKED);
  EXPECT_TRUE(seen["3/0"] & MF_GRAYED);
  EXPECT_FALSE(seen["3/1"] & (MF_CHECKED | MF_GRAYED));

  // Return on the grayed head line, or on a grayed item, chooses nothing:
  // the session goes on.
  Open(WM_RBUTTONUP, {VK_DOWN, VK_RETURN});
  Open(WM_RBUTTONUP, {VK_DOWN, VK_DOWN, VK_RIGHT, VK_RETURN});
  EXPECT_TRUE(prog.form2.idleon.Checked);
  EXPECT_TRUE(prog.form1.Timer1.Enabled());
  // A plain toggle two levels down: "define chatsend's", "send time".
  Open(WM_RBUTTONUP,
       {VK_DOWN, VK_DOWN, VK_RIGHT, VK_DOWN, VK_DOWN, VK_RIGHT, VK_RETURN});
  EXPECT_FALSE(prog.form2.chatsendtime.Checked);
  EXPECT_EQ(store.entries["chatsend time"], "false");
}

}  // namespace
}  // namespace v2
