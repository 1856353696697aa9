// The reason list window as a real window with real controls, under Wine.
#include <windows.h>

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include "core/program.h"
#include "idle/reason_list.h"
#include "platform/platform.h"
#include "platform/win32/win32_loop.h"
#include "platform/win32/win32_stores.h"
#include "platform/win32/win32_ui.h"
#include "platform/win32/win32_windows.h"
#include "tests/win32/real_windows.h"

namespace v2 {
namespace {

using real::ToHwnd;
using real::WindowText;

void Type(HWND edit, const std::string& text) {
  for (char c : text) SendMessageA(edit, WM_CHAR, static_cast<BYTE>(c), 0);
}

void Command(HWND form, HWND control, WORD code) {
  SendMessageA(form, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(control), code),
               reinterpret_cast<LPARAM>(control));
}

TEST(Form3Window, RealControlsAreTheList) {
  char temp[MAX_PATH];
  GetTempPathA(MAX_PATH, temp);
  std::string dir =
      std::string(temp) + "v2-form3-" + std::to_string(GetCurrentProcessId());
  CreateDirectoryA(dir.c_str(), nullptr);
  char before[MAX_PATH];
  GetCurrentDirectoryA(MAX_PATH, before);
  SetCurrentDirectoryA(dir.c_str());

  win32::Win32Windows windows;
  win32::Win32Loop loop;
  win32::Win32FileSystem files;
  win32::Win32Ui ui;
  Platform p{windows, loop, nullptr, nullptr, &files, &ui};
  Program prog(p);
  EnsureForm3(prog);
  HWND form = ToHwnd(prog.form3.hwnd);
  ASSERT_TRUE(IsWindow(form));
  EXPECT_FALSE(IsWindowVisible(form));  // made hidden
  HWND list = FindWindowExA(form, nullptr, "ListBox", nullptr);
  HWND edit = FindWindowExA(form, nullptr, "Edit", nullptr);
  HWND save = FindWindowExA(form, nullptr, "Static", "save and exit");
  HWND cancel = FindWindowExA(form, nullptr, "Static", "cancel");
  ASSERT_TRUE(list && edit && save && cancel);

  // Typing and Enter in the real edit add to the list.
  Type(edit, "gone, back soon\r");
  Type(edit, "brb\r");
  EXPECT_EQ(prog.form3.List1.ListCount(), 2);
  EXPECT_EQ(SendMessageA(list, LB_GETCOUNT, 0, 0), 2);
  EXPECT_EQ(WindowText(edit), "");

  // A double click takes the entry under it out, into the edit.
  SendMessageA(list, LB_SETCURSEL, 1, 0);
  Command(form, list, LBN_DBLCLK);
  EXPECT_EQ(WindowText(edit), "brb");
  EXPECT_EQ(prog.form3.Text1.Text.Get(), "brb");  // read from the window
  EXPECT_EQ(SendMessageA(list, LB_GETCOUNT, 0, 0), 1);

  // Cut from its picture, above the rest; saving slides it off the screen,
  // and showing it brings it back.
  HRGN outline = CreateRectRgn(0, 0, 0, 0);
  EXPECT_EQ(GetWindowRgn(form, outline), COMPLEXREGION);
  DeleteObject(outline);
  EXPECT_TRUE(GetWindowLongA(form, GWL_EXSTYLE) & WS_EX_TOPMOST);
  Command(form, save, STN_CLICKED);
  RECT r{};
  GetWindowRect(form, &r);
  EXPECT_GE(r.left, GetSystemMetrics(SM_CXSCREEN));
  ShowForm3(prog);
  GetWindowRect(form, &r);
  EXPECT_LT(r.left, GetSystemMetrics(SM_CXSCREEN));
  EXPECT_TRUE(IsWindowVisible(form));
  std::ifstream in("vantrel2.lst", std::ios::binary);
  std::stringstream saved;
  saved << in.rdbuf();
  in.close();
  EXPECT_EQ(saved.str(), "gone, back soon\r\n");
  Command(form, cancel, STN_CLICKED);
  EXPECT_EQ(SendMessageA(list, LB_GETCOUNT, 0, 0), 2);  // "gone", "back soon"
  char item[64] = {};
  SendMessageA(list, LB_GETTEXT, 1, reinterpret_cast<LPARAM>(item));
  EXPECT_STREQ(item, "back soon");

  DestroyWindow(form);
  DeleteFileA("vantrel2.lst");
  SetCurrentDirectoryA(before);
  RemoveDirectoryA(dir.c_str());
}

}  // namespace
}  // namespace v2
