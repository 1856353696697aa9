#pragma once
// Window services over user32: the client's real windows.
#include <functional>
#include <vector>

#include "platform/window_services.h"

namespace v2::win32 {

class Win32Windows : public WindowServices {
 public:
  Win32Windows() = default;
  Win32Windows(const Win32Windows&) = delete;
  Win32Windows& operator=(const Win32Windows&) = delete;
  ~Win32Windows() override;

  Hwnd FindWindowA(const char* cls, const char* title) override;
  Hwnd FindWindowExA(Hwnd parent, Hwnd after, const char* cls,
                     const char* title) override;
  // SendMessageTimeoutA of user32, with kSendBoundMs; a client that Windows
  // already knows to be hung is not waited for at all.
  std::optional<LResult> SendMessageTimeoutA(Hwnd h, std::uint32_t msg,
                                             WParam w, LParam l) override;
  std::optional<LResult> TextLengthW(Hwnd h) override;
  bool PostMessageA(Hwnd h, std::uint32_t msg, WParam w, LParam l) override;
  int GetWindowTextA(Hwnd h, char* buffer, int max_count) override;
  int GetWindowTextLengthA(Hwnd h) override;
  bool IsWindowVisible(Hwnd h) override;
  bool ShowWindow(Hwnd h, int cmd) override;
  bool IsWindow(Hwnd h) override;
  bool SetWindowPos(Hwnd h, Hwnd after, int x, int y, int cx, int cy,
                    std::uint32_t flags) override;
  Hmenu GetMenu(Hwnd h) override;
  int GetMenuItemCount(Hmenu menu) override;
  Hmenu GetSubMenu(Hmenu menu, int pos) override;
  std::uint32_t GetMenuItemID(Hmenu menu, int pos) override;
  int GetMenuStringA(Hmenu menu, std::uint32_t item, char* buffer,
                     int max_count, std::uint32_t flags) override;
  Screen GetScreen() override;
  bool GetCursorPos(Point& at) override;
  bool SetCursorPos(int x, int y) override;
  bool ReleaseCapture() override;
  // A range request carries a pointer into this process, which another
  // process cannot write to: the client's transcript is read whole.
  std::optional<std::string> GetTextRange(Hwnd, int, int) override {
    return std::nullopt;
  }
  // The system's own creation event (EVENT_OBJECT_CREATE), hooked out of
  // context: told on this thread whenever it takes its messages, for the
  // windows of every process. Windows and Wine tell creations across
  // processes; Wine tells little else, so no more is watched.
  bool WatchCreations(std::function<void()> made) override;
  // Called by the hook.
  void TellMade();

 private:
  void* hook_ = nullptr;  // the HWINEVENTHOOK, once one is watched
  std::vector<std::function<void()>> made_;
};

}  // namespace v2::win32
