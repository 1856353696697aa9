#pragma once
// Window services: the only way the program sees or touches another program's
// windows. Text is Windows-1252 bytes, exactly what the A functions pass.
#include <functional>
#include <optional>
#include <string>

#include "platform/types.h"

namespace v2 {

// A sent message waits at most this long for the window's thread to take
// it, so that a client that has stopped answering (a hung program) cannot
// stop the program with it.
inline constexpr int kSendBoundMs = 5000;

class WindowServices {
 public:
  virtual ~WindowServices() = default;

  // Top-level lookup; a null class or title matches any. Class names compare
  // without regard to case, titles exactly.
  virtual Hwnd FindWindowA(const char* cls, const char* title) = 0;
  // Direct children of parent, starting behind the sibling after (0: first).
  virtual Hwnd FindWindowExA(Hwnd parent, Hwnd after, const char* cls,
                             const char* title) = 0;
  // Runs the window's handler before it returns, waiting for the window's
  // thread at most kSendBoundMs: nullopt when it did not take the message
  // in that time (it is hung), and the message is then not handled. 0 for
  // a missing window.
  virtual std::optional<LResult> SendMessageTimeoutA(Hwnd h, std::uint32_t msg,
                                                     WParam w, LParam l) = 0;
  // The same, with 0 for a message that was not taken.
  LResult SendMessageA(Hwnd h, std::uint32_t msg, WParam w, LParam l) {
    return SendMessageTimeoutA(h, msg, w, l).value_or(0);
  }
  // The length of a text control's text as a Unicode reader counts it:
  // WM_GETTEXTLENGTH sent as a Unicode message, with the same bound and the
  // same nullopt. For Windows-1252 text it is the length, and any text that
  // grows or shrinks changes it; it tells whether a text changed, not where
  // it ends (in a double-byte code page the two lengths differ). Across
  // processes it is one message, where Wine answers the ANSI length only
  // by reading the whole text as well.
  virtual std::optional<LResult> TextLengthW(Hwnd h) {
    return SendMessageTimeoutA(h, kWmGetTextLength, 0, 0);
  }
  // Queues the message for the window's thread and returns at once.
  virtual bool PostMessageA(Hwnd h, std::uint32_t msg, WParam w, LParam l) = 0;
  virtual int GetWindowTextA(Hwnd h, char* buffer, int max_count) = 0;
  virtual int GetWindowTextLengthA(Hwnd h) = 0;
  virtual bool IsWindowVisible(Hwnd h) = 0;
  virtual bool ShowWindow(Hwnd h, int cmd) = 0;
  virtual bool IsWindow(Hwnd h) = 0;
  // after: a sibling, or kHwndTopmost / kHwndNoTopmost.
  virtual bool SetWindowPos(Hwnd h, Hwnd after, int x, int y, int cx, int cy,
                            std::uint32_t flags) = 0;

  // The menu bar of a window and its items: 0 for no menu, a count of -1 for
  // a menu that is not there, an ID of -1 for an item that opens a submenu.
  virtual Hmenu GetMenu(Hwnd h) = 0;
  virtual int GetMenuItemCount(Hmenu menu) = 0;
  virtual Hmenu GetSubMenu(Hmenu menu, int pos) = 0;
  virtual std::uint32_t GetMenuItemID(Hmenu menu, int pos) = 0;
  // The item's text with its ampersands; by command number unless flags has
  // kMfByPosition. Gives the count of characters copied.
  virtual int GetMenuStringA(Hmenu menu, std::uint32_t item, char* buffer,
                             int max_count, std::uint32_t flags) = 0;

  // The screen's size in twips and how many twips make a pixel.
  virtual Screen GetScreen() = 0;
  // The pointer, in screen pixels; a position off the screen stops at its
  // edge.
  virtual bool GetCursorPos(Point& at) = 0;
  virtual bool SetCursorPos(int x, int y) = 0;
  virtual bool ReleaseCapture() = 0;

  // Characters [from, to) of a text control without copying the rest, where
  // the control supports it; nullopt where it does not (callers then fall back
  // to WM_GETTEXT).
  virtual std::optional<std::string> GetTextRange(Hwnd h, int from, int to) = 0;

  // Calls changed whenever any window may have changed in a way that a
  // lookup or a read could see: made or destroyed, shown or hidden, its
  // text set, moved in the stacking order. False where the platform cannot
  // tell of every such change; whoever waits for one then keeps looking.
  virtual bool WatchChanges(std::function<void()> changed) {
    (void)changed;
    return false;
  }
  // Calls made whenever a window is created, by any program but the
  // program's own thread (whose windows are never waited for): the one
  // change that every platform tells of, also of another process's
  // windows. False where the platform cannot tell.
  virtual bool WatchCreations(std::function<void()> made) {
    (void)made;
    return false;
  }
};

// A window's text through WM_GETTEXTLENGTH and WM_GETTEXT; "" for none,
// nullopt when the window's thread did not answer.
std::optional<std::string> ReadText(WindowServices& w, Hwnd h);
// The same, with "" for no answer.
std::string SendGetText(WindowServices& w, Hwnd h);
// At most the first max_chars characters of it, by one WM_GETTEXT.
std::optional<std::string> ReadTextHead(WindowServices& w, Hwnd h,
                                        int max_chars);

}  // namespace v2
