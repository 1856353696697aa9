// The style window as a real shaped window with real edit controls, under
// Wine: what the member types into its fields is the style of the next
// line, and its three labels save, test and cancel through the real
// profile file. (No simulated client runs in this process: its stand-in
// for the class "Edit" would take the place of the system's.)
#include <windows.h>

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include "config/style_window.h"
#include "core/program.h"
#include "core/styled_line.h"
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

// The program's directory, where settings.dat lies, in a folder of its own.
class TempProgramDir : public win32::Win32FileSystem {
 public:
  explicit TempProgramDir(std::string dir) : dir_(std::move(dir)) {}
  std::string ProgramDir() override { return dir_; }

 private:
  std::string dir_;
};

// The child of form under a point given in twips of the form.
HWND ChildAt(HWND form, int left_twips, int top_twips) {
  HDC screen = GetDC(nullptr);
  const int dx = GetDeviceCaps(screen, LOGPIXELSX);
  const int dy = GetDeviceCaps(screen, LOGPIXELSY);
  ReleaseDC(nullptr, screen);
  POINT at{MulDiv(left_twips + 30, dx, 1440), MulDiv(top_twips + 30, dy, 1440)};
  return ChildWindowFromPointEx(form, at, CWP_ALL);
}

void Retype(HWND edit, const std::string& text) {
  SendMessageA(edit, EM_SETSEL, 0, -1);
  SendMessageA(edit, WM_CHAR, VK_BACK, 0);
  for (char c : text) SendMessageA(edit, WM_CHAR, static_cast<BYTE>(c), 0);
}

void Click(HWND form, HWND label) {
  SendMessageA(form, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(label), STN_CLICKED),
               reinterpret_cast<LPARAM>(label));
}

std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::stringstream s;
  s << in.rdbuf();
  return s.str();
}

TEST(Form4Window, TheRealFieldsAreTheLiveStyleAndTheLabelsAct) {
  char temp[MAX_PATH];
  GetTempPathA(MAX_PATH, temp);
  const std::string dir =
      std::string(temp) + "v2-form4-" + std::to_string(GetCurrentProcessId());
  CreateDirectoryA(dir.c_str(), nullptr);
  const std::string settings = dir + "\\settings.dat";
  DeleteFileA(settings.c_str());

  win32::Win32Windows windows;
  win32::Win32Loop loop;
  win32::Win32ProfileService profiles;
  TempProgramDir files(dir);
  win32::Win32Ui ui;
  Platform p{windows, loop, nullptr, &profiles, &files, &ui};
  Program prog(p);

  // Loaded hidden by the first line, on top, cut to its picture.
  StyledLine(prog.form4, Pair::kMain, "");
  HWND form = ToHwnd(prog.form4.hwnd);
  ASSERT_TRUE(IsWindow(form));
  EXPECT_FALSE(IsWindowVisible(form));
  EXPECT_TRUE(GetWindowLongA(form, GWL_EXSTYLE) & WS_EX_TOPMOST);
  HRGN outline = CreateRectRgn(0, 0, 0, 0);
  EXPECT_EQ(GetWindowRgn(form, outline), COMPLEXREGION);
  DeleteObject(outline);

  // The fields where they were drawn: a colour takes six characters typed,
  // the samples take none, the word of the time line is centred, and no
  // field has a border.
  HWND text3 = ChildAt(form, 1440, 1440);
  HWND text6 = ChildAt(form, 1200, 1920);
  HWND text7 = ChildAt(form, 2520, 1920);
  HWND text22 = ChildAt(form, 4680, 2640);
  ASSERT_TRUE(text3 && text6 && text7 && text22);
  EXPECT_EQ(WindowText(text3), "ff8000");
  EXPECT_EQ(WindowText(text6), "vantrel\xB2");
  EXPECT_EQ(WindowText(text22), "");  // the load emptied the design's tail
  EXPECT_EQ(SendMessageA(text3, EM_GETLIMITTEXT, 0, 0), 6);
  EXPECT_FALSE(IsWindowEnabled(text6));
  EXPECT_TRUE(GetWindowLongA(text7, GWL_STYLE) & ES_CENTER);
  EXPECT_FALSE(GetWindowLongA(text7, GWL_EXSTYLE) & WS_EX_CLIENTEDGE);
  Retype(text3, "1234567");
  EXPECT_EQ(WindowText(text3), "123456");

  // Typed and not saved, it is the style of the next line; so is a tail.
  ShowForm4(prog);
  EXPECT_TRUE(IsWindowVisible(form));
  Retype(text22, "~");
  HWND test = FindWindowExA(form, nullptr, "Static", "scroll test");
  HWND save = FindWindowExA(form, nullptr, "Static", "save and exit");
  HWND cancel = FindWindowExA(form, nullptr, "Static", "cancel");
  ASSERT_TRUE(test && save && cancel);
  EXPECT_NE(StyledLine(prog.form4, Pair::kMain, "m").find("color=#123456>"),
            std::string::npos);
  const std::string tail = StyledLine(prog.form4, Pair::kTest, "m");
  EXPECT_EQ(tail.substr(tail.size() - 2), ">~");
  // With no room open the test's lines are lost, quietly; the window stays.
  Click(form, test);
  EXPECT_TRUE(IsWindowVisible(form));

  // Cancel takes the typing back, writes all 17 keys and slides off.
  RECT before{}, r{};
  GetWindowRect(form, &before);
  Click(form, cancel);
  EXPECT_EQ(WindowText(text3), "ff8000");
  EXPECT_EQ(prog.form4.Text22.Text.Get(), "");
  GetWindowRect(form, &r);
  EXPECT_GE(r.left, GetSystemMetrics(SM_CXSCREEN));
  const std::string written = ReadFile(settings);
  EXPECT_NE(written.find("ACOLOR=ff8000"), std::string::npos);
  EXPECT_NE(written.find("EASCII3=\r\n"), std::string::npos);
  EXPECT_NE(written.find("ML=ml"), std::string::npos);

  // Shown again, it comes back where it was; dragged by its picture.
  ShowForm4(prog);
  GetWindowRect(form, &r);
  EXPECT_EQ(r.left, before.left);
  EXPECT_EQ(r.top, before.top);
  SendMessageA(form, WM_MOUSEMOVE, 0, MAKELPARAM(10, 200));
  SendMessageA(form, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(16, 204));
  GetWindowRect(form, &r);
  EXPECT_EQ(r.left, before.left + 6);
  EXPECT_EQ(r.top, before.top + 4);

  // Save and exit stores an emptied field as empty.
  Retype(text7, "");
  Click(form, save);
  EXPECT_NE(ReadFile(settings).find("MID=\r\n"), std::string::npos);
  GetWindowRect(form, &r);
  EXPECT_GE(r.left, GetSystemMetrics(SM_CXSCREEN));

  DestroyWindow(form);
  DeleteFileA(settings.c_str());
  RemoveDirectoryA(dir.c_str());
}

}  // namespace
}  // namespace v2
