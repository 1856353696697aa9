#include "aolsim/sim_window_host.h"

#include <algorithm>
#include <chrono>
#include <thread>

#include "aolsim/menu_keys.h"

namespace v2::aolsim {

SimWindowHost::SimWindowHost(sim::SimWindows& windows, sim::SimLoop& loop)
    : windows_(windows), loop_(loop) {
  // The client is another process: its posted messages are handled whenever
  // the program's thread yields, without the program handling them.
  loop_.AddForeign([this] { return windows_.DeliverPosted(); });
  windows_.SetThread(this);
}

SimWindowHost::~SimWindowHost() { windows_.SetThread(nullptr); }

std::int64_t SimWindowHost::StoppedForMs() {
  return std::max<std::int64_t>(stopped_until_ms_ - loop_.clock().NowMs(), 0);
}

void SimWindowHost::Block(std::int64_t ms) {
  if (ms <= 0) return;
  if (loop_.sim_clock().mode() == sim::TimeMode::kVirtual) {
    loop_.sim_clock().Advance(ms);
  } else {
    std::this_thread::sleep_for(std::chrono::milliseconds(ms));
  }
}

void SimWindowHost::Hang(int ms) {
  if (ms <= 0) return;
  stopped_until_ms_ =
      std::max(stopped_until_ms_, loop_.clock().NowMs() + std::int64_t{ms});
  // The loop wakes when the thread pumps again, so that what waited for it
  // (posted messages, timed work) is handled then and not at some later
  // wait of the program's.
  After(ms, [] {});
}

Hwnd SimWindowHost::Create(Hwnd parent, const std::string& cls,
                           const std::string& title, Handler handler) {
  return windows_.Create(parent, cls, title, std::move(handler));
}

void SimWindowHost::After(int ms, std::function<void()> work) {
  std::shared_ptr<Pending> p;
  if (!idle_.empty()) {
    p = std::move(idle_.back());
    idle_.pop_back();
  } else {
    p = std::make_shared<Pending>();
    std::weak_ptr<Pending> weak = p;
    p->timer = loop_.CreateForeignTimer([this, weak] {
      auto self = weak.lock();
      if (!self) return;
      // A stopped thread does its timed work once it pumps again.
      if (const std::int64_t stopped = StoppedForMs(); stopped > 0) {
        loop_.SetTimer(self->timer, static_cast<int>(stopped), true);
        return;
      }
      loop_.SetTimer(self->timer, 0, false);  // once
      auto due = std::move(self->work);
      self->work = nullptr;
      std::erase(pending_, self);
      idle_.push_back(self);
      if (due) due();
    });
  }
  p->work = std::move(work);
  // At once means on the loop's next beat, as on Windows.
  loop_.SetTimer(p->timer, std::max(ms, 1), true);
  pending_.push_back(std::move(p));
}

std::vector<Hwnd> SimWindowHost::TopLevel() {
  std::vector<Hwnd> out;
  for (Hwnd h : windows_.Children(0)) {
    if (windows_.OwnerOf(h) == sim::SimWindows::Owner::kOther) out.push_back(h);
  }
  return out;
}

void SimWindowHost::Raise(Hwnd h) {
  windows_.SetWindowPos(h, 0, 0, 0, 0, 0, kSwpNoMove | kSwpNoSize);
}

Point SimWindowHost::Pointer() {
  Point at;
  windows_.GetCursorPos(at);
  return at;
}

Hmenu SimWindowHost::BuildMenu(const std::vector<MenuEntry>& items) {
  Hmenu menu = windows_.CreateMenu();
  for (const MenuEntry& item : items) {
    if (item.IsSeparator()) {
      windows_.AppendMenu(menu, "", 0);  // as the system keeps a separator
    } else {
      windows_.AppendMenu(menu, item.text, item.id,
                          item.items.empty() ? 0 : BuildMenu(item.items));
    }
  }
  return menu;
}

void SimWindowHost::SetMenuBar(Hwnd window,
                               const std::vector<MenuEntry>& menus) {
  windows_.SetMenu(window, BuildMenu(menus));
}

void SimWindowHost::TrackPopup(Hwnd, const std::vector<MenuEntry>& items,
                               std::function<void(std::uint32_t)> chosen) {
  if (windows_.IsWindow(popup_)) windows_.Destroy(popup_);
  auto keys = std::make_shared<MenuKeys>(items);
  popup_ =
      windows_.Create(0, "#32768", "",
                      [this, keys, chosen](Hwnd h, std::uint32_t msg, WParam w,
                                           LParam) -> std::optional<LResult> {
                        if (msg == kWmKeyUp) return 0;
                        if (msg != kWmKeyDown) return std::nullopt;
                        MenuKeys::State state = keys->Key(w);
                        if (state == MenuKeys::State::kOpen) return 0;
                        // The menu goes before the item is carried out, as on
                        // Windows.
                        windows_.Destroy(h);
                        if (state == MenuKeys::State::kChosen && chosen)
                          chosen(keys->chosen());
                        return 0;
                      });
  Raise(popup_);
}

}  // namespace v2::aolsim
