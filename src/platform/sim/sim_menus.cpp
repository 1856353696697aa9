// The window tree's menus (a menu bar is a menu whose items open
// submenus), the screen, and the pointer with its capture.
#include "platform/sim/sim_windows.h"

#include <cstring>

#include "platform/sim/sim_shaped.h"

namespace v2::sim {

Hmenu SimWindows::CreateMenu() {
  Hmenu m = next_menu_;
  next_menu_ += 4;
  menus_[m];
  return m;
}

void SimWindows::AppendMenu(Hmenu menu, std::string text, std::uint32_t id,
                            Hmenu sub) {
  auto it = menus_.find(menu);
  if (it == menus_.end()) return;
  it->second.push_back({std::move(text), sub ? 0xFFFFFFFFu : id, sub});
}

void SimWindows::SetMenu(Hwnd h, Hmenu menu) {
  if (Node* n = Find(h)) n->menu = menu;
}

Hmenu SimWindows::GetMenu(Hwnd h) {
  const Node* n = Find(h);
  return n ? n->menu : 0;
}

int SimWindows::GetMenuItemCount(Hmenu menu) {
  auto it = menus_.find(menu);
  return it == menus_.end() ? -1 : static_cast<int>(it->second.size());
}

Hmenu SimWindows::GetSubMenu(Hmenu menu, int pos) {
  auto it = menus_.find(menu);
  if (it == menus_.end() || pos < 0 ||
      pos >= static_cast<int>(it->second.size())) {
    return 0;
  }
  return it->second[static_cast<std::size_t>(pos)].sub;
}

std::uint32_t SimWindows::GetMenuItemID(Hmenu menu, int pos) {
  auto it = menus_.find(menu);
  if (it == menus_.end() || pos < 0 ||
      pos >= static_cast<int>(it->second.size())) {
    return 0xFFFFFFFFu;
  }
  return it->second[static_cast<std::size_t>(pos)].id;
}

const SimWindows::MenuEntry* SimWindows::FindItem(Hmenu menu, std::uint32_t id,
                                                  int depth) const {
  auto it = menus_.find(menu);
  if (it == menus_.end() || depth > 8) return nullptr;
  for (const MenuEntry& e : it->second) {
    if (!e.sub && e.id == id) return &e;
    if (e.sub) {
      if (const MenuEntry* found = FindItem(e.sub, id, depth + 1)) return found;
    }
  }
  return nullptr;
}

int SimWindows::GetMenuStringA(Hmenu menu, std::uint32_t item, char* buffer,
                               int max_count, std::uint32_t flags) {
  const MenuEntry* e = nullptr;
  if (flags & kMfByPosition) {
    auto it = menus_.find(menu);
    if (it != menus_.end() && item < it->second.size()) e = &it->second[item];
  } else {
    e = FindItem(menu, item, 0);  // submenus are searched too
  }
  if (!e) return 0;
  if (!buffer || max_count <= 0) return static_cast<int>(e->text.size());
  auto count = std::min<std::size_t>(static_cast<std::size_t>(max_count - 1),
                                     e->text.size());
  std::memcpy(buffer, e->text.data(), count);
  buffer[count] = '\0';
  return static_cast<int>(count);
}

Screen SimWindows::GetScreen() { return SimScreen(); }

bool SimWindows::GetCursorPos(Point& at) {
  at = cursor_;
  return true;
}

bool SimWindows::SetCursorPos(int x, int y) {
  cursor_ = {std::clamp(x, 0, kScreenWidth - 1),
             std::clamp(y, 0, kScreenHeight - 1)};
  return true;
}

bool SimWindows::ReleaseCapture() {
  capture_ = 0;
  return true;
}

}  // namespace v2::sim
