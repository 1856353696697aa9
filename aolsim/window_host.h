#pragma once
// What the simulated client needs from a windowing system. The client is
// written once against this and realised twice: over the in-process window
// tree, and with real windows in aolhost.exe.
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/event_loop.h"
#include "platform/types.h"

namespace v2::aolsim {

// An item of one of the client's menus: its text as the menu keeps it ("-"
// for a separator line), and either the number its choice carries or, for
// a submenu, the submenu's items.
struct MenuEntry {
  std::string text;
  std::uint32_t id = 0;
  std::vector<MenuEntry> items;
  bool IsSeparator() const { return text == "-"; }
};

class WindowHost {
 public:
  // Answers a message, or nullopt to let the window's default handling act.
  using Handler = std::function<std::optional<LResult>(Hwnd, std::uint32_t,
                                                       WParam, LParam)>;

  virtual ~WindowHost() = default;
  virtual Hwnd Create(Hwnd parent, const std::string& cls,
                      const std::string& title, Handler handler = {}) = 0;
  virtual void Destroy(Hwnd h) = 0;
  virtual bool Exists(Hwnd h) = 0;
  virtual std::string_view Text(Hwnd h) = 0;
  virtual void SetText(Hwnd h, std::string text) = 0;
  virtual void AppendText(Hwnd h, std::string_view more) = 0;
  virtual void EraseFront(Hwnd h, std::size_t count) = 0;
  // The direct children of a window, in sibling order.
  virtual std::vector<Hwnd> Children(Hwnd parent) = 0;
  // This host's top-level windows, front to back, as lookups find them.
  virtual std::vector<Hwnd> TopLevel() = 0;
  virtual std::string ClassName(Hwnd h) = 0;
  // Runs work after ms on the shared clock.
  virtual void After(int ms, std::function<void()> work) = 0;
  // The client's thread stops pumping for ms, as a hung program's does: it
  // takes no message, sent or posted, and does none of its timed work until
  // then. Where the thread is real (Windows) this returns when the time is
  // up; a hang that starts while a message is handled keeps the sender
  // waiting.
  virtual void Hang(int ms) = 0;

  // Puts the window ahead of its siblings: the first in lookups.
  virtual void Raise(Hwnd h) = 0;
  // Whether the window itself is shown, whatever its parents are.
  virtual bool Shown(Hwnd h) = 0;
  // Whether it is minimized; a hidden window keeps the state it will show
  // in.
  virtual bool Minimized(Hwnd h) = 0;
  // The shared clock (milliseconds) and the simulated system's local time.
  virtual std::int64_t NowMs() = 0;
  virtual LocalTime LocalNow() = 0;
  // The pointer, in screen pixels.
  virtual Point Pointer() = 0;
  virtual void MovePointer(int x, int y) = 0;

  // Gives a top-level window its menu bar: each of menus is one menu of the
  // bar. A chosen item comes to the window as WM_COMMAND with its number.
  virtual void SetMenuBar(Hwnd window, const std::vector<MenuEntry>& menus) = 0;
  // Opens items as a popup menu below the window at: a top-level window of
  // class #32768, visible once open, that takes the keys a menu takes
  // (Up, Down, Right, Left, Return, Escape) as a menu of the system does.
  // The number of the item carried out goes to chosen; a menu closed with
  // nothing chosen calls nothing. Where the system tracks the menu itself
  // (Windows), this returns only when the menu has closed.
  virtual void TrackPopup(Hwnd at, const std::vector<MenuEntry>& items,
                          std::function<void(std::uint32_t)> chosen) = 0;
};

}  // namespace v2::aolsim
