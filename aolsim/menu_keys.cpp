#include "aolsim/menu_keys.h"

namespace v2::aolsim {

MenuKeys::MenuKeys(std::vector<MenuEntry> items)
    : items_(std::move(items)), selected_{-1} {}

const std::vector<MenuEntry>& MenuKeys::Current() const {
  const std::vector<MenuEntry>* menu = &items_;
  for (std::size_t level = 0; level + 1 < selected_.size(); ++level) {
    menu = &(*menu)[static_cast<std::size_t>(selected_[level])].items;
  }
  return *menu;
}

std::string MenuKeys::Selected() const {
  int at = selected_.back();
  return at < 0 ? std::string() : Current()[static_cast<std::size_t>(at)].text;
}

void MenuKeys::Move(int step) {
  const std::vector<MenuEntry>& menu = Current();
  const int n = static_cast<int>(menu.size());
  if (n == 0) return;
  int& at = selected_.back();
  // From nothing the search starts before the first (or behind the last).
  int from = at < 0 ? (step > 0 ? -1 : n) : at;
  for (int i = 1; i <= n; ++i) {
    int next = ((from + step * i) % n + n) % n;
    if (!menu[static_cast<std::size_t>(next)].IsSeparator()) {
      at = next;
      return;
    }
  }
}

bool MenuKeys::OpenSubmenu() {
  int at = selected_.back();
  if (at < 0 || Current()[static_cast<std::size_t>(at)].items.empty()) {
    return false;
  }
  selected_.push_back(-1);
  Move(1);
  return true;
}

MenuKeys::State MenuKeys::Key(WParam vk) {
  if (state_ != State::kOpen) return state_;
  switch (vk) {
    case kVkDown:
      Move(1);
      break;
    case kVkUp:
      Move(-1);
      break;
    case kVkRight:
      OpenSubmenu();
      break;
    case kVkLeft:
      if (selected_.size() > 1) selected_.pop_back();
      break;
    case kVkEscape:
      if (selected_.size() > 1) {
        selected_.pop_back();
      } else {
        state_ = State::kClosed;
      }
      break;
    case kVkReturn: {
      int at = selected_.back();
      if (at < 0) {
        state_ = State::kClosed;
      } else if (!OpenSubmenu()) {
        chosen_ = Current()[static_cast<std::size_t>(at)].id;
        state_ = State::kChosen;
      }
      break;
    }
    default:
      break;
  }
  return state_;
}

}  // namespace v2::aolsim
