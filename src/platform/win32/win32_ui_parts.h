#pragma once
// What the files of the Windows toolkit share: handle conversions, twips to
// pixels, the peer that reads a real control's text, and the records behind
// the program's controls and behind the tray's hidden window. Only the
// toolkit's own files include this.
#include <windows.h>
// After windows.h, which it needs.
#include <shellapi.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "platform/win32/win32_handles.h"
#include "platform/win32/win32_ui.h"

namespace v2::win32 {

// Twips as pixels at the screen's DPI.
inline int TwipsToPixels(int twips, bool horizontal) {
  HDC screen = GetDC(nullptr);
  int per_inch = GetDeviceCaps(screen, horizontal ? LOGPIXELSX : LOGPIXELSY);
  ReleaseDC(nullptr, screen);
  if (per_inch <= 0) per_inch = 96;
  return MulDiv(twips, per_inch, 1440);
}

// Pixels at the screen's DPI for a layout drawn at 96 DPI.
inline int Px(int at96, bool horizontal = true) {
  return TwipsToPixels(at96 * 15, horizontal);
}

// The text of a real control, for a control of the program to read.
class WindowText : public TextPeer {
 public:
  explicit WindowText(HWND h) : h_(h) {}
  std::string Read() override {
    int n = GetWindowTextLengthA(h_);
    std::string text(static_cast<std::size_t>(n) + 1, '\0');
    n = GetWindowTextA(h_, text.data(), n + 1);
    text.resize(static_cast<std::size_t>(n > 0 ? n : 0));
    return text;
  }
  void Write(const std::string& text) override {
    SetWindowTextA(h_, text.c_str());
  }

 private:
  HWND h_;
};

// An exception cannot pass through the system's frames between a window
// procedure and whoever dispatched its message, so a handler called from a
// window procedure that fails ends there, with a note for a debugger.
template <typename F>
void Guarded(F&& handler) {
  try {
    handler();
  } catch (...) {
    OutputDebugStringA("vantrel2: a handler failed\n");
  }
}

// The window classes of the input box and of the tray's window.
void RegisterInputBoxClass(const WNDCLASSEXA& form_class);
void RegisterTrayClass(HINSTANCE instance);

struct Win32Ui::Control {
  HWND hwnd = nullptr;
  int id = 0;
  WNDPROC original = nullptr;
  bool field = false;            // an edit control
  std::function<void()> click;   // list: double click; label: click
  std::function<void(int)> key;  // text box: each character
  ListBox* list = nullptr;
  std::unique_ptr<TextPeer> text;  // text box, label caption
  std::unique_ptr<ListPeer> rows;  // list box
};

struct Win32Ui::Owner {
  Win32Ui* ui = nullptr;
  HWND hwnd = nullptr;
  HICON icon = nullptr;
  UINT taskbar_created = 0;
  std::string tip;
  TrayMouseUp mouse_up;
  EventLoop* menu_loop = nullptr;  // run while a popup menu is open
  bool pumping = false;

  // The shell started again (Explorer restarted) and knows no entries; the
  // same message also comes when only the screen changed, with the entry
  // still there.
  void ShellRestarted() {
    if (!ui->tray_wanted_) return;
    ui->tray_shown_ = ui->Notify(NIM_ADD) || ui->Notify(NIM_MODIFY);
    ui->ShowBalloon();
  }
};

}  // namespace v2::win32
