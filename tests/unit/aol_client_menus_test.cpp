// The simulated client's menus, sign-off and sign-on, its boxes and lists,
// and the desktop around it, driven as a program drives them: by posted
// clicks and keys, sent commands and window lookups.
#include <gtest/gtest.h>

#include "aolsim/desktop.h"
#include "aolsim/menu_keys.h"
#include "app/script.h"
#include "host/host_windows.h"
#include "tests/unit/world.h"
#include "transfers/transfer_monitors.h"

namespace v2 {
namespace {

using aolsim::MenuEntry;
using aolsim::MenuKeys;

TEST(MenuKeys, KeysMoveAsInASystemMenu) {
  const std::vector<MenuEntry> items = {
      {"One", 1, {}},
      {"-", 0, {}},
      {"Two", 2, {}},
      {"More", 0, {{"-", 0, {}}, {"Inner", 7, {}}, {"Last", 8, {}}}},
      {"Three", 3, {}}};
  auto walk = [&](std::initializer_list<WParam> keys) {
    MenuKeys menu(items);
    for (WParam k : keys) menu.Key(k);
    return menu;
  };
  EXPECT_EQ(walk({}).Selected(), "");
  EXPECT_EQ(walk({kVkDown}).Selected(), "One");
  EXPECT_EQ(walk({kVkDown, kVkDown}).Selected(), "Two");  // past the line
  EXPECT_EQ(walk({kVkUp}).Selected(), "Three");
  EXPECT_EQ(walk({kVkUp, kVkUp}).Selected(), "More");
  EXPECT_EQ(walk({kVkUp, kVkDown}).Selected(), "One");  // round the end
  EXPECT_EQ(walk({kVkDown, kVkUp}).Selected(), "Three");
  EXPECT_EQ(walk({kVkDown, kVkRight}).Selected(), "One");  // no submenu
  EXPECT_EQ(walk({kVkUp, kVkUp, kVkRight}).Selected(), "Inner");
  EXPECT_EQ(walk({kVkUp, kVkUp, kVkRight, kVkUp}).Selected(), "Last");
  EXPECT_EQ(walk({kVkUp, kVkUp, kVkRight, kVkLeft}).Selected(), "More");
  EXPECT_EQ(walk({kVkUp, kVkUp, kVkReturn}).Selected(), "Inner");

  MenuKeys chosen = walk({kVkUp, kVkUp, kVkRight, kVkDown, kVkReturn});
  EXPECT_EQ(chosen.state(), MenuKeys::State::kChosen);
  EXPECT_EQ(chosen.chosen(), 8u);
  EXPECT_EQ(chosen.Key(kVkDown), MenuKeys::State::kChosen);  // over
  EXPECT_EQ(walk({kVkReturn}).state(), MenuKeys::State::kClosed);
  EXPECT_EQ(walk({kVkEscape}).state(), MenuKeys::State::kClosed);
  MenuKeys back = walk({kVkUp, kVkUp, kVkRight, kVkEscape});
  EXPECT_EQ(back.state(), MenuKeys::State::kOpen);
  EXPECT_EQ(back.Selected(), "More");
  EXPECT_EQ(walk({kVkDown, 'A', kVkSpace}).Selected(), "One");
  MenuKeys empty({});
  EXPECT_EQ(empty.Key(kVkDown), MenuKeys::State::kOpen);
  EXPECT_EQ(empty.Key(kVkReturn), MenuKeys::State::kClosed);
}

struct Client : testing::World {
  Client() {
    client.on_event = [this](const std::string& e) { events.push_back(e); };
  }
  // The toolbar icon clicked and the keys pressed in its popup, each by a
  // posted message; the client handles them while the caller holds.
  void Pick(int icon, std::initializer_list<WParam> keys) {
    Hwnd h = NthChild(platform, client.toolbar(), "_AOL_Icon", icon);
    windows.PostMessageA(h, kWmLButtonDown, 0, 0);
    windows.PostMessageA(h, kWmLButtonUp, 0, 0);
    loop.Hold(10);
    Hwnd popup = windows.FindWindowA("#32768", nullptr);
    ASSERT_TRUE(windows.IsWindowVisible(popup));
    for (WParam k : keys) {
      windows.PostMessageA(popup, kWmKeyDown, k, 0);
      windows.PostMessageA(popup, kWmKeyUp, k, 0);
    }
    loop.Hold(10);
  }
  std::string FirstChild() {
    Hwnd mdi = FindMdiClient(platform);
    return GetCaption(platform,
                      windows.FindWindowExA(mdi, 0, "AOL Child", nullptr));
  }
  std::vector<std::string> events;
};

TEST(ClientMenus, TheToolbarPopupsHoldTheItemsWhereTheKeysLand) {
  Client w;
  const WParam D = kVkDown, U = kVkUp, R = kVkRight, E = kVkReturn;
  struct Case {
    int icon;
    std::initializer_list<WParam> keys;
    const char* item;
    const char* window;
  };
  const Case cases[] = {
      {3, {D, D, E}, "Read New Mail", "New Mail"},
      {3, {D, D, D, D, E}, "Old Mail", "Old Mail"},
      {3, {D, D, D, D, D, E}, "Sent Mail", "Sent Mail"},
      {3, {U, U, R, E}, "Flashed Mail", "Flashed Mail"},
      {3,
       {D, D, D, D, D, D, D, D, D, D, D, D, D, D, D, E},
       "Upload Queue",
       "Upload Queue"},
      {5, {D, D, D, D, E}, "Download Manager", "Download Manager"},
  };
  for (const Case& c : cases) {
    w.events.clear();
    w.Pick(c.icon, c.keys);
    EXPECT_EQ(w.events,
              std::vector<std::string>{std::string("[client menu] ") + c.item})
        << c.item;
    // The window the item opened is the first of the MDI area; the popup
    // is gone.
    EXPECT_EQ(w.FirstChild(), c.window);
    EXPECT_EQ(w.windows.FindWindowA("#32768", nullptr), 0u);
  }
  // An item whose window is open brings it to the front again.
  w.Pick(3, {D, D, E});
  EXPECT_EQ(w.FirstChild(), "New Mail");
  w.loop.RunFor(60000);
  w.events.clear();
  w.Pick(6, {D, D, D, D, D, D, D, D, D, D, E});
  EXPECT_EQ(w.events, std::vector<std::string>{"[client menu] Time Online"});
  Hwnd box = w.windows.FindWindowA("_AOL_Modal", nullptr);
  ASSERT_EQ(box, w.client.time_box());
  Hwnd text = w.windows.FindWindowExA(box, 0, "_AOL_Static", nullptr);
  EXPECT_EQ(GetText(w.platform, text),
            "You have been online for 0 hours and 1 minutes.");
  // Its first icon closes it.
  ClickIcon(w.platform, w.windows.FindWindowExA(box, 0, "_AOL_Icon", nullptr));
  EXPECT_FALSE(w.windows.IsWindow(box));
  // Return with nothing selected and Escape close a popup with no item.
  w.events.clear();
  w.Pick(3, {E});
  w.Pick(6, {D, kVkEscape});
  EXPECT_TRUE(w.events.empty());
  EXPECT_EQ(w.windows.FindWindowA("#32768", nullptr), 0u);
}

TEST(ClientMenus, SigningOffThroughTheMenuBarAndOnAgain) {
  Client w;
  Platform& p = w.platform;
  // The menu bar holds "&Sign Off" in its second menu.
  Hmenu bar = w.windows.GetMenu(w.client.frame());
  ASSERT_EQ(w.windows.GetMenuItemCount(bar), 3);
  Hmenu sign_off = w.windows.GetSubMenu(bar, 1);
  const std::uint32_t id = w.windows.GetMenuItemID(sign_off, 0);
  char text[32] = {};
  w.windows.GetMenuStringA(sign_off, id, text, sizeof(text), 0);
  EXPECT_STREQ(text, "&Sign Off");

  w.loop.RunFor(3 * 3600 * 1000);
  w.windows.SendMessageA(w.client.frame(), kWmCommand, id, 0);
  EXPECT_EQ(w.events, std::vector<std::string>{"[client menu] Sign Off"});
  EXPECT_NE(FindChatRoom(p), 0u);  // a moment still to say goodbye
  w.loop.RunFor(aolsim::AolClient::kSignOffMs);
  EXPECT_EQ(w.events, (std::vector<std::string>{"[client menu] Sign Off",
                                                "[signed off]"}));
  EXPECT_FALSE(w.client.SignedOn());
  EXPECT_EQ(FindWelcome(p), 0u);
  EXPECT_EQ(FindChatRoom(p), 0u);
  EXPECT_EQ(w.FirstChild(), "Sign On");
  EXPECT_EQ(w.client.TimeOnlineText(), "You are not signed on.");

  // The 4th icon of the first child signs on, 5 seconds later; presses in
  // between (a click, the space bar) change nothing.
  w.events.clear();
  Hwnd first =
      w.windows.FindWindowExA(FindMdiClient(p), 0, "AOL Child", nullptr);
  Hwnd icon = NthChild(p, first, "_AOL_Icon", 4);
  ClickIcon(p, icon);
  w.loop.RunFor(3000);
  PressSpace(p, icon);
  ClickIcon(p, icon);
  EXPECT_TRUE(w.events.empty());
  w.loop.RunFor(1999);
  EXPECT_TRUE(w.events.empty());
  w.loop.RunFor(1);
  EXPECT_EQ(w.events, std::vector<std::string>{"[signed on]"});
  EXPECT_EQ(GetUser(p), "Member");
  EXPECT_EQ(w.FirstChild(), "Welcome, Member!");
  EXPECT_EQ(FindChatRoom(p), 0u);  // no room until one is entered
  EXPECT_FALSE(w.windows.IsWindow(icon));
  EXPECT_EQ(w.client.TimeOnlineText(),
            "You have been online for 0 hours and 0 minutes.");
  w.loop.RunFor(10000);
  EXPECT_EQ(w.events.size(), 1u);

  // A sign-on under way ends with the client.
  w.client.SignOff();
  w.client.signon_delay_ms = 100;
  ClickIcon(p, NthChild(p, w.client.signon_window(), "_AOL_Icon", 4));
  w.client.Quit();
  w.client.Start();
  w.events.clear();
  w.loop.RunFor(1000);
  EXPECT_TRUE(w.events.empty());
  EXPECT_TRUE(w.client.SignedOn());
}

TEST(ClientMenus, TheTransferListsCountAndStartWhatWaits) {
  Client w;
  Platform& p = w.platform;
  w.client.queued_uploads = 3;
  w.client.MenuCommand(15);  // Upload Queue
  Hwnd list =
      w.windows.FindWindowExA(FindMdiClient(p), 0, "AOL Child", "Upload Queue");
  ASSERT_NE(list, 0u);
  Hwnd tree = w.windows.FindWindowExA(list, 0, "_AOL_Tree", nullptr);
  EXPECT_EQ(w.windows.SendMessageA(tree, kLbGetCount, 0, 0), 3);
  ClickIcon(p, NthChild(p, list, "_AOL_Icon", 2));  // not the start icon
  EXPECT_EQ(w.client.queued_uploads, 3);
  ClickIcon(p, NthChild(p, list, "_AOL_Icon", 4));
  EXPECT_EQ(w.windows.SendMessageA(tree, kLbGetCount, 0, 0), 0);
  ClickIcon(p, NthChild(p, list, "_AOL_Icon", 4));  // empty: nothing
  w.client.queued_downloads = 1;
  w.client.MenuCommand(22);  // Download Manager
  Hwnd downloads =
      w.windows.FindWindowExA(FindMdiClient(p), 0, "AOL Child", nullptr);
  ClickIcon(p, NthChild(p, downloads, "_AOL_Icon", 2));
  EXPECT_EQ(
      w.events,
      (std::vector<std::string>{
          "[client menu] Upload Queue", "[client] uploads started",
          "[client menu] Download Manager", "[client] downloads started"}));
}

Hwnd FirstChildWindow(Client& w) {
  return w.windows.FindWindowExA(FindMdiClient(w.platform), 0, "AOL Child",
                                 nullptr);
}

// What a script does to the client for the unattended guards: a lost
// connection, a slower sign-on, waiting transfers and the upload's window.
TEST(ClientScript, ConnectionQueuesAndTheUploadWindow) {
  Client w;
  Platform& p = w.platform;
  using Kind = ScriptCommand::Kind;
  auto play = [&](const std::string& line) {
    ScriptCommand c = ParseScriptLine(line);
    if (c.kind == Kind::kClient) PlayOnClient(w.client, c);
    return c.kind;
  };
  auto show_upload = [&] {
    std::string value;
    EXPECT_TRUE(ShowOfClient(w.client, "upload", value));
    return value;
  };
  for (const char* refused :
       {"disconnect now", "signon-delay", "signon-delay -1", "signon-delay x",
        "queue", "queue uploads", "queue uploads -2", "queue uploads 2x",
        "queue files 2", "queue uploads 1234567890", "queue  uploads 2"}) {
    EXPECT_EQ(play(refused), Kind::kNotUnderstood) << refused;
  }

  EXPECT_EQ(play("signon-delay 2.5"), Kind::kClient);
  EXPECT_EQ(w.client.signon_delay_ms, 2500);
  EXPECT_EQ(play("disconnect"), Kind::kClient);
  EXPECT_FALSE(w.client.SignedOn());
  EXPECT_EQ(w.events, std::vector<std::string>{"[signed off]"});
  ClickIcon(p, NthChild(p, w.client.signon_window(), "_AOL_Icon", 4));
  w.loop.RunFor(2400);
  EXPECT_FALSE(w.client.SignedOn());
  w.loop.RunFor(200);
  EXPECT_TRUE(w.client.SignedOn());

  EXPECT_EQ(play("queue uploads 2"), Kind::kClient);
  EXPECT_EQ(play("queue downloads 7"), Kind::kClient);
  EXPECT_EQ(w.client.queued_uploads, 2);
  EXPECT_EQ(w.client.queued_downloads, 7);

  // The upload's window: shown, hidden, minimized, restored.
  EXPECT_EQ(show_upload(), "none");
  play("upload a.zip 1 2");
  EXPECT_EQ(show_upload(), "normal");
  w.windows.ShowWindow(w.client.upload(), kSwHide);
  EXPECT_EQ(show_upload(), "hidden");
  w.windows.ShowWindow(w.client.upload(), kSwMinimize);
  EXPECT_EQ(show_upload(), "minimized");
  w.windows.ShowWindow(w.client.upload(), kSwRestore);
  EXPECT_EQ(show_upload(), "normal");
  play("end upload");
  EXPECT_EQ(show_upload(), "none");
}

TEST(ClientScript, StartedTransfersShowTheirWindowInFront) {
  Client w;
  Platform& p = w.platform;
  // A box already open: the new upload comes in front of it.
  w.client.MenuCommand(35);  // Time Online
  ASSERT_NE(w.client.time_box(), 0u);
  w.client.queued_uploads = 2;
  w.client.MenuCommand(15);  // Upload Queue
  ClickIcon(p, NthChild(p, FirstChildWindow(w), "_AOL_Icon", 4));
  ASSERT_NE(w.client.upload(), 0u);
  EXPECT_EQ(w.windows.FindWindowA("_AOL_Modal", nullptr), w.client.upload());
  EXPECT_EQ(UploadNameOf(
                GetText(p, NthChild(p, w.client.upload(), "_AOL_Static", 1))),
            "2 files");
  w.client.queued_downloads = 1;
  w.client.MenuCommand(22);  // Download Manager
  ClickIcon(p, NthChild(p, FirstChildWindow(w), "_AOL_Icon", 2));
  EXPECT_EQ(FirstChildWindow(w), w.client.download());
  EXPECT_EQ(DownloadName(p), "1 file");
}

TEST(Desktop, TheClocksTextAndThePointer) {
  testing::World w;
  aolsim::Desktop desktop(w.host);
  EXPECT_EQ(aolsim::Desktop::ClockText({2001, 6, 15, 0, 5}), "12:05 AM");
  EXPECT_EQ(aolsim::Desktop::ClockText({2001, 6, 15, 12, 0}), "12:00 PM");
  EXPECT_EQ(aolsim::Desktop::ClockText({2001, 6, 15, 23, 59}), "11:59 PM");
  EXPECT_EQ(aolsim::Desktop::ClockText({2001, 6, 15, 9, 7}), "9:07 AM");

  desktop.MovePointer(5000, -3);
  EXPECT_EQ(desktop.Pointer().x, 1023);
  EXPECT_EQ(desktop.Pointer().y, 0);
}

}  // namespace
}  // namespace v2
