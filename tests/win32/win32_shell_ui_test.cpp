// The input box, the tray entry, the popup menu and the end of the program
// as real windows, under Wine. The member's part is played from a timer of
// the program's own loop, which runs while each of them waits.
#include <windows.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/win32/win32_loop.h"
#include "platform/win32/win32_ui.h"
#include "tests/win32/real_windows.h"

namespace v2 {
namespace {

using real::ToHwnd;
using real::WindowText;

HMENU RealMenu(Hmenu h) {
  return reinterpret_cast<HMENU>(static_cast<INT_PTR>(static_cast<int>(h)));
}

// Runs work on the loop's timer every 20 ms once ticks_before ticks have
// passed, until it says it is done; counts every tick.
struct Member {
  Member(win32::Win32Loop& loop_in, int ticks_before,
         std::function<bool()> work)
      : loop(loop_in) {
    timer = loop.CreateTimer([this, ticks_before, work] {
      if (++ticks >= ticks_before && work()) loop.SetTimer(timer, 20, false);
    });
    loop.SetTimer(timer, 20, true);
  }
  ~Member() { loop.SetTimer(timer, 20, false); }
  win32::Win32Loop& loop;
  TimerId timer;
  int ticks = 0;
};

struct Box {
  std::string title, prompt, edit;
  bool topmost = false, selected_all = false, others_disabled = false;
  int ticks = 0;
};

// Asks, and answers the box once it is up with act(box, edit).
std::string Ask(win32::Win32Ui& ui, win32::Win32Loop& loop, Box& seen,
                const std::string& preset, std::function<void(HWND, HWND)> act,
                HWND other = nullptr) {
  Member member(loop, 3, [&] {
    HWND box = FindWindowA(win32::kInputBoxClass, nullptr);
    if (!box) return false;
    HWND edit = FindWindowExA(box, nullptr, "Edit", nullptr);
    seen.title = WindowText(box);
    seen.prompt = WindowText(FindWindowExA(box, nullptr, "Static", nullptr));
    seen.edit = WindowText(edit);
    seen.topmost = GetWindowLongA(box, GWL_EXSTYLE) & WS_EX_TOPMOST;
    DWORD from = 1, to = 0;
    SendMessageA(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&from),
                 reinterpret_cast<LPARAM>(&to));
    seen.selected_all = from == 0 && to == seen.edit.size();
    seen.others_disabled = other && !IsWindowEnabled(other);
    act(box, edit);
    return true;
  });
  std::string answer = ui.InputBox(loop, "Why are you away?", "Away", preset);
  seen.ticks = member.ticks;
  return answer;
}

void Press(HWND box, const char* button) {
  SendMessageA(FindWindowExA(box, nullptr, "Button", button), BM_CLICK, 0, 0);
}

void Key(HWND h, WPARAM key) { SendMessageA(h, WM_KEYDOWN, key, 0); }

TEST(Win32InputBox, AnsweredCancelledAndTheLoopGoesOn) {
  win32::Win32Loop loop;
  win32::Win32Ui ui;
  HWND form = ToHwnd(ui.CreateForm("Form3", 3000, 3000));
  ShowWindow(form, SW_SHOWNA);
  Box seen;

  // The preset (Windows-1252) is shown selected; the answer typed is
  // taken with OK, while the loop's timer went on ticking.
  std::string preset = "\x8B\xA1'\x95 gone";
  EXPECT_EQ(Ask(
                ui, loop, seen, preset,
                [](HWND box, HWND edit) {
                  SetWindowTextA(edit, "brb, 5 min");
                  Press(box, "OK");
                },
                form),
            "brb, 5 min");
  EXPECT_EQ(seen.title, "Away");
  EXPECT_EQ(seen.prompt, "Why are you away?");
  EXPECT_EQ(seen.edit, preset);
  EXPECT_TRUE(seen.selected_all);
  EXPECT_TRUE(seen.topmost);
  EXPECT_GE(seen.ticks, 3);
  // The program's other windows wait for the box, and come back after it.
  EXPECT_TRUE(seen.others_disabled);
  EXPECT_TRUE(IsWindowEnabled(form));
  EXPECT_EQ(FindWindowA(win32::kInputBoxClass, nullptr), nullptr);

  // Enter answers; Esc, Cancel and closing the window give nothing.
  EXPECT_EQ(Ask(ui, loop, seen, "",
                [](HWND, HWND edit) {
                  SetWindowTextA(edit, "typed");
                  Key(edit, VK_RETURN);
                }),
            "typed");
  EXPECT_EQ(Ask(ui, loop, seen, "kept",
                [](HWND, HWND edit) { Key(edit, VK_ESCAPE); }),
            "");
  EXPECT_EQ(
      Ask(ui, loop, seen, "kept", [](HWND box, HWND) { Press(box, "Cancel"); }),
      "");
  EXPECT_EQ(Ask(ui, loop, seen, "kept",
                [](HWND box, HWND) { SendMessageA(box, WM_CLOSE, 0, 0); }),
            "");
  // Enter on the focused Cancel button cancels.
  EXPECT_EQ(Ask(ui, loop, seen, "kept",
                [](HWND box, HWND) {
                  Key(FindWindowExA(box, nullptr, "Button", "Cancel"),
                      VK_RETURN);
                }),
            "");
  EXPECT_EQ(FindWindowA(win32::kInputBoxClass, nullptr), nullptr);
  DestroyWindow(form);
}

TEST(Win32Tray, AddedRemovedAndClicked) {
  win32::Win32Ui ui;
  std::vector<int> buttons;
  // A balloon asked for before the entry waits for it; the shell takes
  // it (a size of the structure it did not know would be refused) with the
  // entry.
  ui.TrayBalloonOnce("vantrel\xB2 can't save your settings", "text");
  EXPECT_TRUE(ui.BalloonWaiting());
  ui.TrayAdd("vantrel2", [&](std::int16_t b) { buttons.push_back(b); });
  ASSERT_TRUE(ui.TrayShown());
  EXPECT_FALSE(ui.BalloonWaiting());
  // An empty text takes the balloon down, which Wine's shell otherwise
  // leaves up in front of the windows of the tests after this one.
  ui.TrayBalloon("", "");
  EXPECT_FALSE(ui.BalloonWaiting());
  HWND owner = ToHwnd(ui.TrayWindow());
  ASSERT_TRUE(IsWindow(owner));
  char cls[64] = {};
  GetClassNameA(owner, cls, sizeof(cls));
  EXPECT_STREQ(cls, win32::kTrayWindowClass);

  // Releases raise MouseUp with the button; presses and moves nothing.
  for (UINT m : {WM_LBUTTONUP, WM_RBUTTONUP, WM_MBUTTONUP, WM_LBUTTONDOWN,
                 WM_MOUSEMOVE}) {
    SendMessageA(owner, win32::kTrayCallbackMessage, 1, m);
  }
  EXPECT_EQ(buttons, (std::vector<int>{1, 2, 4}));

  // Added again: the same entry with a new tip and handler; the shell
  // starting again gets it back.
  std::vector<int> second;
  ui.TrayAdd("vantrel2 - away", [&](std::int16_t b) { second.push_back(b); });
  EXPECT_TRUE(ui.TrayShown());
  SendMessageA(owner, RegisterWindowMessageA("TaskbarCreated"), 0, 0);
  EXPECT_TRUE(ui.TrayShown());
  SendMessageA(owner, win32::kTrayCallbackMessage, 1, WM_LBUTTONUP);
  EXPECT_EQ(second, (std::vector<int>{1}));
  EXPECT_EQ(buttons.size(), 3u);

  // Removed, it stays away and hears nothing; the same news is not told
  // twice in a run.
  ui.TrayRemove();
  EXPECT_FALSE(ui.TrayShown());
  ui.TrayBalloonOnce("vantrel\xB2 can't save your settings", "again");
  EXPECT_FALSE(ui.BalloonWaiting());
  SendMessageA(owner, RegisterWindowMessageA("TaskbarCreated"), 0, 0);
  EXPECT_FALSE(ui.TrayShown());
  SendMessageA(owner, win32::kTrayCallbackMessage, 1, WM_LBUTTONUP);
  EXPECT_EQ(second.size(), 1u);
}

TEST(Win32PopupMenu, MirrorsTheItemsAndKeepsTheLoopGoing) {
  MenuItem root, away, line, off, hidden, head, bold, plain;
  for (auto [item, name] : {std::pair{&away, "away"},
                            {&line, "line"},
                            {&off, "off"},
                            {&hidden, "hidden"},
                            {&head, "style"},
                            {&bold, "bold"},
                            {&plain, "plain"}}) {
    item->Name = item->Caption = name;
  }
  away.Caption = "&away";
  line.Caption = "-";
  away.Checked = true;
  off.Enabled = false;
  hidden.Visible = false;
  plain.Checked = true;
  plain.Enabled = false;
  head.Items = {&bold, &plain};
  root.Items = {&away, &line, &off, &hidden, &head};

  std::vector<MenuItem*> commands;
  HMENU menu = RealMenu(win32::BuildPopupMenu(root, commands));
  ASSERT_NE(menu, nullptr);
  ASSERT_EQ(GetMenuItemCount(menu), 4);
  auto state = [](HMENU m, int pos) {
    return GetMenuState(m, pos, MF_BYPOSITION);
  };
  auto caption = [](HMENU m, int pos) {
    char text[64] = {};
    GetMenuStringA(m, pos, text, sizeof(text), MF_BYPOSITION);
    return std::string(text);
  };
  EXPECT_EQ(caption(menu, 0), "&away");
  EXPECT_TRUE(state(menu, 0) & MF_CHECKED);
  EXPECT_FALSE(state(menu, 0) & MF_GRAYED);
  EXPECT_TRUE(state(menu, 1) & MF_SEPARATOR);
  EXPECT_EQ(caption(menu, 2), "off");
  EXPECT_TRUE(state(menu, 2) & MF_GRAYED);
  EXPECT_EQ(caption(menu, 3), "style");
  HMENU sub = GetSubMenu(menu, 3);
  ASSERT_NE(sub, nullptr);
  ASSERT_EQ(GetMenuItemCount(sub), 2);
  EXPECT_EQ(caption(sub, 1), "plain");
  EXPECT_TRUE(state(sub, 1) & MF_CHECKED);
  EXPECT_TRUE(state(sub, 1) & MF_GRAYED);
  // Each command's number leads back to its item.
  EXPECT_EQ(commands, (std::vector<MenuItem*>{&away, &off, &bold, &plain}));
  EXPECT_EQ(GetMenuItemID(menu, 0), 1u);
  EXPECT_EQ(GetMenuItemID(sub, 1), 4u);
  DestroyMenu(menu);

  win32::Win32Loop loop;
  win32::Win32Ui ui;
  std::vector<std::string> clicked;
  for (MenuItem* item : commands) {
    item->Click = [&clicked, item] { clicked.push_back(item->Name); };
  }
  auto keys = [&](std::vector<WPARAM> pressed) {
    return [&ui, pressed] {
      for (WPARAM k : pressed) {
        PostMessageA(ToHwnd(ui.TrayWindow()), WM_KEYDOWN, k, 0);
      }
      return true;
    };
  };

  // Closed with nothing chosen, after the loop's timer ran while it was
  // open.
  {
    Member member(loop, 5, [] { return EndMenu() != FALSE; });
    ui.PopupMenu(loop, root);
    EXPECT_GE(member.ticks, 5);
  }
  // The first item chosen from the keyboard gets its Click.
  {
    Member member(loop, 3, keys({VK_DOWN, VK_RETURN}));
    ui.PopupMenu(loop, root);
  }
  // Return on the grayed item chooses nothing (a closer ends the menu if
  // it stays open); nor does an item disabled while the menu was open.
  for (bool disable_first : {false, true}) {
    Member member(loop, 3, [&, disable_first] {
      away.Enabled = !disable_first;
      return keys(disable_first
                      ? std::vector<WPARAM>{VK_DOWN, VK_RETURN}
                      : std::vector<WPARAM>{VK_DOWN, VK_DOWN, VK_RETURN})();
    });
    Member closer(loop, 20, [] { return EndMenu() != FALSE; });
    ui.PopupMenu(loop, root);
  }
  EXPECT_EQ(clicked, (std::vector<std::string>{"away"}));
}

TEST(Win32EndProgram, EndsAtOnceWithStatusZero) {
  EXPECT_EXIT(
      {
        win32::Win32Ui ui;
        ui.TrayAdd("vantrel2", nullptr);
        ui.EndProgram();
      },
      ::testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace v2
