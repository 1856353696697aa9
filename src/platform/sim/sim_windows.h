#pragma once
// In-process window tree with the lookup rules of the real window manager.
// Every window here belongs to "the other process" (the simulated client)
// unless it is made as one of the program's own: a sent message runs its
// handler at once; a posted message waits until the program's thread
// yields (a pump or a wait), after any sent message.
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/window_services.h"

namespace v2::sim {

class SimWindows : public WindowServices {
 public:
  // A handler answers a message or returns nullopt for default processing.
  using Handler = std::function<std::optional<LResult>(Hwnd, std::uint32_t,
                                                       WParam, LParam)>;

  // The other process's thread as a sender sees it. While it is stopped (a
  // hung program), a message sent to one of its windows waits for it at
  // most kSendBoundMs and, if the thread has not pumped again by then, comes
  // back untaken and is never handled; posted messages stay queued. A
  // handler that stops the thread keeps its sender waiting the same way.
  class Thread {
   public:
    virtual ~Thread() = default;
    // How much longer the thread stays stopped; 0 while it pumps.
    virtual std::int64_t StoppedForMs() = 0;
    // The sender's thread stands still for ms: time passes, nothing runs.
    virtual void Block(std::int64_t ms) = 0;
  };
  // Without one, the other process always answers.
  void SetThread(Thread* thread) { thread_ = thread; }

  // Whose a window is: the program's own windows never stop answering.
  enum class Owner { kOther, kProgram };
  Hwnd Create(Hwnd parent, std::string cls, std::string title,
              Handler handler = {}, bool visible = true,
              Owner owner = Owner::kOther);
  // Destroys the window and everything under it.
  void Destroy(Hwnd h);
  // The program's process has ended: its windows are gone and its hooks
  // (WatchChanges, WatchCreations) hear nothing more. What it posted to
  // the other process's windows is still delivered.
  void EndProgram();
  LResult DefWindowProc(Hwnd h, std::uint32_t msg, WParam w, LParam l);

  std::string_view TextView(Hwnd h) const;
  void SetText(Hwnd h, std::string text);
  void AppendText(Hwnd h, std::string_view more);
  void EraseFront(Hwnd h, std::size_t count);
  std::vector<Hwnd> Children(Hwnd parent) const;
  Hwnd Parent(Hwnd h) const;
  std::string ClassOf(Hwnd h) const;
  // Whose the window is (kOther for one that is gone).
  Owner OwnerOf(Hwnd h) const;
  // Whether the window itself is shown, whatever its parents are.
  bool Shown(Hwnd h) const;
  // Whether it is minimized (shown or hidden: a hidden window keeps the
  // state it will be shown in).
  bool IsIconic(Hwnd h) const;

  // Menus: a menu bar is a menu whose items open submenus.
  Hmenu CreateMenu();
  void AppendMenu(Hmenu menu, std::string text, std::uint32_t id,
                  Hmenu sub = 0);
  void SetMenu(Hwnd h, Hmenu menu);

  struct Placement {
    int x = 0, y = 0, cx = 0, cy = 0;
    bool topmost = false;
  };
  Placement PlacementOf(Hwnd h) const;
  // The window holding the pointer's capture (a window pressed on), or 0.
  void SetCapture(Hwnd h) { capture_ = h; }
  Hwnd capture() const { return capture_; }

  static constexpr int kScreenWidth = 1024;
  static constexpr int kScreenHeight = 768;

  // Handles every message posted so far; true if there was any. A stopped
  // thread handles none, and one that stops on a message leaves the rest.
  bool DeliverPosted();

  // What the program has given the other process's windows, sent or
  // posted, since the last take: each message to windows of one class and
  // one title (the title when the message went), counted when it reached
  // its window, in the order first given.
  struct Sent {
    std::uint32_t msg;
    std::string cls, title;
    int count;
  };
  std::vector<Sent> TakeSent() { return std::exchange(sent_, {}); }
  // Whether that is kept at all: a long run that nobody asks about keeps
  // nothing (the text controls' titles are their whole texts).
  void KeepSent(bool keep) { keep_sent_ = keep; }

  Hwnd FindWindowA(const char* cls, const char* title) override;
  Hwnd FindWindowExA(Hwnd parent, Hwnd after, const char* cls,
                     const char* title) override;
  std::optional<LResult> SendMessageTimeoutA(Hwnd h, std::uint32_t msg,
                                             WParam w, LParam l) override;
  bool PostMessageA(Hwnd h, std::uint32_t msg, WParam w, LParam l) override;
  int GetWindowTextA(Hwnd h, char* buffer, int max_count) override;
  int GetWindowTextLengthA(Hwnd h) override;
  bool IsWindowVisible(Hwnd h) override;
  bool ShowWindow(Hwnd h, int cmd) override;
  bool IsWindow(Hwnd h) override;
  std::optional<std::string> GetTextRange(Hwnd h, int from, int to) override;
  // Every change of the tree goes through here, so every one is told.
  bool WatchChanges(std::function<void()> changed) override;
  bool WatchCreations(std::function<void()> made) override;
  bool SetWindowPos(Hwnd h, Hwnd after, int x, int y, int cx, int cy,
                    std::uint32_t flags) override;
  Hmenu GetMenu(Hwnd h) override;
  int GetMenuItemCount(Hmenu menu) override;
  Hmenu GetSubMenu(Hmenu menu, int pos) override;
  std::uint32_t GetMenuItemID(Hmenu menu, int pos) override;
  int GetMenuStringA(Hmenu menu, std::uint32_t item, char* buffer,
                     int max_count, std::uint32_t flags) override;
  // kScreenWidth by kScreenHeight pixels of 15 twips each.
  Screen GetScreen() override;
  bool GetCursorPos(Point& at) override;
  bool SetCursorPos(int x, int y) override;
  bool ReleaseCapture() override;

 private:
  struct MenuEntry {
    std::string text;
    std::uint32_t id;
    Hmenu sub;
  };
  struct Node {
    Hwnd parent = 0;
    std::string cls;
    std::string text;
    bool visible = true;
    bool minimized = false;
    Handler handler;
    std::vector<Hwnd> children;
    Placement placement;
    Hmenu menu = 0;
    Owner owner = Owner::kOther;
  };
  struct Posted {
    Hwnd h;
    std::uint32_t msg;
    WParam w;
    LParam l;
    std::string title;  // the window's, when the message went
  };

  const Node* Find(Hwnd h) const;
  Node* Find(Hwnd h);
  LResult Dispatch(Hwnd h, std::uint32_t msg, WParam w, LParam l);
  // A message of the program's reached the other process's window h.
  void Count(Hwnd h, std::uint32_t msg, const std::string& title);
  // Waits, as a sender, for the other process's thread to pump: false when
  // it is still stopped after the bound.
  bool WaitForThread();
  const std::vector<Hwnd>& ChildList(Hwnd parent) const;
  const MenuEntry* FindItem(Hmenu menu, std::uint32_t id, int depth) const;
  void Changed();

  std::unordered_map<Hwnd, Node> nodes_;
  std::vector<Hwnd> top_level_;
  std::deque<Posted> posted_;
  std::vector<Sent> sent_;
  bool keep_sent_ = false;
  Hwnd next_handle_ = 0x10010;
  std::unordered_map<Hmenu, std::vector<MenuEntry>> menus_;
  Hmenu next_menu_ = 0x20010;
  Point cursor_{kScreenWidth / 2, kScreenHeight / 2};
  Hwnd capture_ = 0;
  Thread* thread_ = nullptr;
  std::vector<std::function<void()>> watchers_;
  std::vector<std::function<void()>> creation_watchers_;
};

}  // namespace v2::sim
