#pragma once
// How a popup menu of the system takes the keyboard, as Windows' own menus
// do, so that the in-process client's popups and the real ones of
// aolhost.exe agree on where a row of key presses lands.
#include <cstdint>
#include <string>
#include <vector>

#include "aolsim/window_host.h"

namespace v2::aolsim {

// Nothing is selected when the menu opens. Down selects the next item and Up
// the one before (from nothing: the first and the last), passing over
// separators and going round at the ends. Right opens the selected item's
// submenu with its first item selected. Left closes an open submenu, Escape
// too (at the top it closes the menu). Return carries out the selected item,
// or opens its submenu as Right does; with nothing selected it closes the
// menu. Other keys do nothing.
class MenuKeys {
 public:
  enum class State { kOpen, kChosen, kClosed };

  explicit MenuKeys(std::vector<MenuEntry> items);
  // A key pressed (its WM_KEYDOWN); keys after the menu closed do nothing.
  State Key(WParam vk);
  State state() const { return state_; }
  // The number of the item carried out, once kChosen.
  std::uint32_t chosen() const { return chosen_; }
  // The selected item of the innermost open menu, "" for none.
  std::string Selected() const;

 private:
  const std::vector<MenuEntry>& Current() const;
  void Move(int step);
  bool OpenSubmenu();

  std::vector<MenuEntry> items_;
  // The selected position at each open level, the top menu first; -1 for
  // none.
  std::vector<int> selected_;
  State state_ = State::kOpen;
  std::uint32_t chosen_ = 0;
};

}  // namespace v2::aolsim
