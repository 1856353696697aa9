#include "platform/sim/sim_windows.h"

#include <algorithm>
#include <cstring>

#include "platform/text.h"

namespace v2::sim {

const SimWindows::Node* SimWindows::Find(Hwnd h) const {
  auto it = nodes_.find(h);
  return it == nodes_.end() ? nullptr : &it->second;
}

SimWindows::Node* SimWindows::Find(Hwnd h) {
  auto it = nodes_.find(h);
  return it == nodes_.end() ? nullptr : &it->second;
}

const std::vector<Hwnd>& SimWindows::ChildList(Hwnd parent) const {
  static const std::vector<Hwnd> kNone;
  if (parent == 0) return top_level_;
  const Node* n = Find(parent);
  return n ? n->children : kNone;
}

Hwnd SimWindows::Create(Hwnd parent, std::string cls, std::string title,
                        Handler handler, bool visible, Owner owner) {
  if (parent != 0 && !Find(parent)) return 0;
  if (parent != 0) owner = Find(parent)->owner;
  Hwnd h = next_handle_;
  next_handle_ += 2;  // handles are never reused within a run
  Node node;
  node.parent = parent;
  node.cls = std::move(cls);
  node.text = std::move(title);
  node.visible = visible;
  node.handler = std::move(handler);
  node.owner = owner;
  nodes_.emplace(h, std::move(node));
  (parent == 0 ? top_level_ : Find(parent)->children).push_back(h);
  for (std::size_t i = 0; i < creation_watchers_.size(); ++i) {
    creation_watchers_[i]();
  }
  Changed();
  return h;
}

void SimWindows::Destroy(Hwnd h) {
  Node* n = Find(h);
  if (!n) return;
  std::vector<Hwnd> kids = n->children;
  for (Hwnd k : kids) Destroy(k);
  n = Find(h);
  auto& siblings = n->parent == 0 ? top_level_ : Find(n->parent)->children;
  siblings.erase(std::remove(siblings.begin(), siblings.end(), h),
                 siblings.end());
  nodes_.erase(h);
  Changed();
}

void SimWindows::EndProgram() {
  // The program's hooks go first: nothing of it hears its windows go.
  watchers_.clear();
  creation_watchers_.clear();
  std::vector<Hwnd> own;
  for (Hwnd h : top_level_) {
    if (Find(h)->owner == Owner::kProgram) own.push_back(h);
  }
  for (Hwnd h : own) Destroy(h);
  if (!Find(capture_)) capture_ = 0;
  // What it posted to its own windows is gone with them.
  std::erase_if(posted_, [this](const Posted& p) { return !Find(p.h); });
}

bool SimWindows::WatchChanges(std::function<void()> changed) {
  watchers_.push_back(std::move(changed));
  return true;
}

bool SimWindows::WatchCreations(std::function<void()> made) {
  creation_watchers_.push_back(std::move(made));
  return true;
}

void SimWindows::Changed() {
  for (std::size_t i = 0; i < watchers_.size(); ++i) watchers_[i]();
}

std::string_view SimWindows::TextView(Hwnd h) const {
  const Node* n = Find(h);
  return n ? std::string_view(n->text) : std::string_view();
}

void SimWindows::SetText(Hwnd h, std::string text) {
  Node* n = Find(h);
  if (!n) return;
  n->text = std::move(text);
  Changed();
}

void SimWindows::AppendText(Hwnd h, std::string_view more) {
  Node* n = Find(h);
  if (!n) return;
  n->text.append(more);
  Changed();
}

void SimWindows::EraseFront(Hwnd h, std::size_t count) {
  Node* n = Find(h);
  if (!n) return;
  n->text.erase(0, std::min(count, n->text.size()));
  Changed();
}

std::vector<Hwnd> SimWindows::Children(Hwnd parent) const {
  return ChildList(parent);
}

Hwnd SimWindows::Parent(Hwnd h) const {
  const Node* n = Find(h);
  return n ? n->parent : 0;
}

SimWindows::Owner SimWindows::OwnerOf(Hwnd h) const {
  const Node* n = Find(h);
  return n ? n->owner : Owner::kOther;
}

std::string SimWindows::ClassOf(Hwnd h) const {
  const Node* n = Find(h);
  return n ? n->cls : std::string();
}

bool SimWindows::Shown(Hwnd h) const {
  const Node* n = Find(h);
  return n && n->visible;
}

bool SimWindows::IsIconic(Hwnd h) const {
  const Node* n = Find(h);
  return n && n->minimized;
}

Hwnd SimWindows::FindWindowA(const char* cls, const char* title) {
  return FindWindowExA(0, 0, cls, title);
}

Hwnd SimWindows::FindWindowExA(Hwnd parent, Hwnd after, const char* cls,
                               const char* title) {
  if (parent != 0 && !Find(parent)) return 0;
  const auto& kids = ChildList(parent);
  auto it = kids.begin();
  if (after != 0) {
    it = std::find(kids.begin(), kids.end(), after);
    if (it == kids.end()) return 0;
    ++it;
  }
  for (; it != kids.end(); ++it) {
    const Node* n = Find(*it);
    if (cls && !SameIgnoringCase(n->cls, cls)) continue;
    if (title && n->text != title) continue;
    return *it;
  }
  return 0;
}

int SimWindows::GetWindowTextA(Hwnd h, char* buffer, int max_count) {
  const Node* n = Find(h);
  if (!buffer || max_count <= 0) return 0;
  buffer[0] = '\0';
  if (!n) return 0;
  auto count = std::min<std::size_t>(static_cast<std::size_t>(max_count - 1),
                                     n->text.size());
  std::memcpy(buffer, n->text.data(), count);
  buffer[count] = '\0';
  return static_cast<int>(count);
}

int SimWindows::GetWindowTextLengthA(Hwnd h) {
  const Node* n = Find(h);
  return n ? static_cast<int>(n->text.size()) : 0;
}

bool SimWindows::IsWindowVisible(Hwnd h) {
  for (const Node* n = Find(h); n; n = Find(n->parent)) {
    if (!n->visible) return false;
    if (n->parent == 0) return true;
  }
  return false;
}

bool SimWindows::ShowWindow(Hwnd h, int cmd) {
  Node* n = Find(h);
  if (!n) return false;
  const bool was = n->visible, was_minimized = n->minimized;
  // Every command but hiding shows the window; some also minimize or
  // restore it, the rest leave that as it was (so a window hidden and then
  // minimized is shown minimized).
  n->visible = cmd != kSwHide;
  if (cmd == kSwShowMinimized || cmd == kSwMinimize ||
      cmd == kSwShowMinNoActive) {
    n->minimized = true;
  } else if (cmd == kSwShowNormal || cmd == kSwMaximize || cmd == kSwRestore) {
    n->minimized = false;
  }
  if (n->visible != was || n->minimized != was_minimized) Changed();
  return was;
}

bool SimWindows::IsWindow(Hwnd h) { return Find(h) != nullptr; }

bool SimWindows::SetWindowPos(Hwnd h, Hwnd after, int x, int y, int cx, int cy,
                              std::uint32_t flags) {
  constexpr Hwnd kTop = 0, kBottom = 1;
  Node* n = Find(h);
  if (!n) return false;
  if (!(flags & kSwpNoZOrder) && after != kTop && after != kBottom &&
      after != kHwndTopmost && after != kHwndNoTopmost && !Find(after)) {
    return false;
  }
  if (!(flags & kSwpNoMove)) {
    n->placement.x = x;
    n->placement.y = y;
  }
  if (!(flags & kSwpNoSize)) {
    n->placement.cx = cx;
    n->placement.cy = cy;
  }
  if (flags & kSwpNoZOrder) return true;
  // The stacking order is the sibling order that lookups walk.
  auto& siblings = n->parent == 0 ? top_level_ : Find(n->parent)->children;
  if (after == kHwndNoTopmost) {
    n->placement.topmost = false;
    return true;
  }
  Changed();
  if (after == kHwndTopmost) n->placement.topmost = true;
  std::erase(siblings, h);
  if (after == kTop || after == kHwndTopmost) {
    siblings.insert(siblings.begin(), h);
  } else if (after == kBottom) {
    siblings.push_back(h);
  } else {
    auto it = std::find(siblings.begin(), siblings.end(), after);
    siblings.insert(it == siblings.end() ? it : it + 1, h);
  }
  return true;
}

SimWindows::Placement SimWindows::PlacementOf(Hwnd h) const {
  const Node* n = Find(h);
  return n ? n->placement : Placement{};
}

std::optional<std::string> SimWindows::GetTextRange(Hwnd h, int from, int to) {
  if (!Find(h) || to < from) return std::nullopt;
  std::string buffer(static_cast<std::size_t>(to - from) + 1, '\0');
  TextRange range{from, to, buffer.data()};
  auto got = SendMessageTimeoutA(h, kEmGetTextRange, 0,
                                 reinterpret_cast<LParam>(&range));
  if (!got) return std::nullopt;
  buffer.resize(static_cast<std::size_t>(*got));
  return buffer;
}

}  // namespace v2::sim
