#include "platform/chat_scanner.h"

#include <algorithm>

namespace v2 {
namespace {

constexpr int kAnchorChars = 128;
constexpr int kFirstSearchWindow = 4096;

}  // namespace

std::string StripMarkup(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '<' && i + 1 < text.size()) {
      auto c = static_cast<unsigned char>(text[i + 1]);
      bool tag = c == '/' || c == '!' || (c >= 'A' && c <= 'Z') ||
                 (c >= 'a' && c <= 'z');
      auto close = text.find('>', i + 1);
      if (tag && close != std::string_view::npos) {
        i = close;
        continue;
      }
    }
    out += text[i];
  }
  return out;
}

bool SplitChatLine(std::string_view piece, std::string& name,
                   std::string& said) {
  if (!piece.empty() && piece.front() == '\n') piece.remove_prefix(1);
  auto sep = piece.find(":\t");
  if (sep == std::string_view::npos) return false;
  name.assign(piece.substr(0, sep));
  said = StripMarkup(piece.substr(sep + 2));
  return true;
}

ChatScanner::ChatScanner(Platform& platform, std::function<Hwnd()> finder)
    : platform_(platform), finder_(std::move(finder)) {}

void ChatScanner::Watch() {
  if (watching_) return;
  watching_ = true;
  told_->loop = &platform_.loop;
  told_->watcher = platform_.loop.AddWatcher(
      [this] {
        if (scanning_) {
          Look();
        } else {
          platform_.loop.SleepWatcher(told_->watcher);  // woken by ScanOn
        }
      },
      kLookIntervalMs);
  std::weak_ptr<Told> weak = told_;
  told_made_ = platform_.windows.WatchCreations([weak] {
    if (auto told = weak.lock()) {
      ++told->made;
      // A new window can be a new room: the next look comes at once.
      told->loop->WakeWatcher(told->watcher);
    }
  });
}

void ChatScanner::ScanOn() {
  whole_.reset();
  Watch();
  if (scanning_) return;
  scanning_ = true;
  platform_.loop.WakeWatcher(told_->watcher);
  room_ = 0;
  Hwnd t = Find(platform_.clock().NowMs());
  if (!t) return;
  // A client that does not answer now is taken up by the next look.
  if (auto stamp = platform_.windows.TextLengthW(t)) {
    look_stamp_ = *stamp;
    Rebase(t, *stamp);
  }
}

void ChatScanner::ScanOff() {
  scanning_ = false;
  if (watching_) platform_.loop.SleepWatcher(told_->watcher);
}

std::optional<std::string> ChatScanner::Read(Hwnd transcript, int from,
                                             int to) {
  from = std::max(from, 0);
  if (to <= from) return std::string();
  if (ranges_) {
    if (auto part = platform_.windows.GetTextRange(transcript, from, to)) {
      return part;
    }
  }
  // The control hands out no range: read it whole, once in a look. Only a
  // control that answered that read is known to have no ranges.
  if (!whole_ && !ReadWhole(transcript)) return std::nullopt;
  if (!*whole_) return std::nullopt;
  const std::string& all = **whole_;
  if (from >= static_cast<int>(all.size())) return std::string();
  return all.substr(static_cast<std::size_t>(from),
                    static_cast<std::size_t>(to - from));
}

bool ChatScanner::ReadWhole(Hwnd transcript) {
  // One read, as long as the stamp says with room to spare (a double-byte
  // text is longer than its stamp); one that fills it may be cut short, and
  // the text is read again after its length.
  const int room = static_cast<int>(
      std::min<LResult>(2 * std::max<LResult>(look_stamp_, 0) + 64, 1 << 24));
  whole_ = ReadTextHead(platform_.windows, transcript, room);
  if (*whole_ && static_cast<int>((*whole_)->size()) >= room) {
    whole_ = ReadText(platform_.windows, transcript);
  }
  if (!*whole_) return false;
  ranges_ = false;
  head_ = (*whole_)->substr(0, kAnchorChars);
  return true;
}

bool ChatScanner::Rebase(Hwnd transcript, LResult stamp,
                         std::optional<int> length) {
  if (transcript != room_) {
    ranges_ = true;
    trims_ = false;
  }
  // The length as the stamp gives it, until a whole read tells better.
  int n = length.value_or(static_cast<int>(stamp));
  auto anchor = Read(transcript, std::max(0, n - kAnchorChars), n);
  if (anchor && !ranges_ && *whole_) {
    n = static_cast<int>((*whole_)->size());
    anchor = Read(transcript, std::max(0, n - kAnchorChars), n);
  }
  if (!anchor) {
    room_ = 0;  // taken up afresh at the next look
    return false;
  }
  room_ = transcript;
  stamp_ = stamp;
  seen_ = n;
  anchor_ = std::move(*anchor);
  checked_at_ = platform_.clock().NowMs();
  return true;
}

bool ChatScanner::MustFind(std::int64_t now) const {
  // Finding the room walks the client's windows, a dozen lookups; the
  // transcript found stands until a window is made (a new room could be
  // ahead of it), and for a while, for what no event tells (a room brought
  // ahead of another).
  if (room_ == 0) return true;
  if (told_made_ && told_->made != made_seen_) return true;
  const int every = told_made_ ? kFindEveryToldMs : kFindEveryMs;
  return now - found_at_ >= every || now < found_at_;
}

Hwnd ChatScanner::Find(std::int64_t now) {
  found_at_ = now;
  made_seen_ = told_->made;
  none_ = false;
  return finder_();
}

void ChatScanner::Busy(std::int64_t now) {
  busy_until_ = now + kBusyForMs;
  if (busy_) return;
  busy_ = true;
  platform_.loop.SetWatcherInterval(told_->watcher, kBusyLookIntervalMs);
}

void ChatScanner::Idle() {
  room_ = 0;
  none_ = true;
  // Only a window made can bring a room, and that wakes the watcher.
  if (told_made_) platform_.loop.SleepWatcher(told_->watcher);
}

void ChatScanner::Look() {
  whole_.reset();
  const std::int64_t now = platform_.clock().NowMs();
  if (busy_ && (now >= busy_until_ || now < busy_until_ - kBusyForMs)) {
    busy_ = false;  // the room went quiet again
    platform_.loop.SetWatcherInterval(told_->watcher, kLookIntervalMs);
  }
  Hwnd t = room_;
  if (MustFind(now)) {
    if (room_ == 0 && none_ && told_made_ && told_->made == made_seen_) {
      Idle();  // nothing made since a find that found no room
      return;
    }
    t = Find(now);
  }
  if (!t) {
    Idle();
    return;
  }
  // Every read of a look must be answered; one that is not (a hung client)
  // leaves everything as it was for the next look.
  auto stamp = platform_.windows.TextLengthW(t);
  if (!stamp) return;
  look_stamp_ = *stamp;
  if (t == room_ && *stamp == 0 && !platform_.windows.IsWindow(t)) {
    // The room closed, or the client went: whatever room there is now.
    t = Find(now);
    if (!t) {
      Idle();
      return;
    }
    stamp = platform_.windows.TextLengthW(t);
    if (!stamp) return;
    look_stamp_ = *stamp;
  }
  if (t != room_) {
    Rebase(t, *stamp);  // another room: what was said there before is not news
    return;
  }
  if (*stamp == 0 && stamp_ == 0 && seen_ == 0) return;  // still empty
  if (*stamp == stamp_ && !ranges_) {
    // The same length: nothing came to a text that only grows. Where the
    // client trims at the top, a trim can take away exactly as much as
    // came; that changes the first characters, compared now and then.
    if (!trims_) return;
    if (now - checked_at_ < kCheckEveryMs && now >= checked_at_) return;
    auto head = ReadTextHead(platform_.windows, t, kAnchorChars);
    if (!head) return;
    if (*head == head_) {
      checked_at_ = now;
      return;
    }
  }
  const int before = seen_;
  if (ReadNews(t, *stamp)) {
    stamp_ = *stamp;
    checked_at_ = now;
    if (seen_ != before) Busy(now);
  }
}

bool ChatScanner::ReadNews(Hwnd t, LResult stamp) {
  // Without ranges the whole text is read anyway: its length comes with it.
  if (!ranges_) {
    if (!ReadWhole(t)) return false;
    return LookAt(t, static_cast<int>((*whole_)->size()));
  }
  return LookAt(t, static_cast<int>(stamp));
}

bool ChatScanner::LookAt(Hwnd t, int n) {
  std::string anchor = anchor_;
  const int a = static_cast<int>(anchor.size());
  int start = -1;  // where the undelivered text begins
  // The length alone is no proof: a trim can take away as much as came.
  if (n >= seen_) {
    auto there = Read(t, seen_ - a, seen_);
    if (!there) return false;
    if (*there == anchor) {
      if (n == seen_) return true;
      start = seen_;
    }
  }
  if (start < 0) trims_ = true;
  if (start < 0 && a > 0) {
    // Trimmed at the top: the anchor moved left. Search backwards in growing
    // windows for its last occurrence that does not reach past seen_.
    int hi = std::min(n, seen_);
    for (int width = kFirstSearchWindow;; width *= 2) {
      int lo = std::max(0, hi - width);
      auto window = Read(t, lo, hi);
      if (!window) return false;
      auto at = window->rfind(anchor);
      if (at != std::string::npos) {
        start = lo + static_cast<int>(at) + a;
        break;
      }
      if (lo == 0) break;
    }
    if (start < 0) {
      // The oldest lines of the anchor went with the trim: the transcript
      // then begins with what is left of it, from one of its line breaks.
      auto head = Read(t, 0, std::min(n, a));
      if (!head) return false;
      for (auto k = anchor.find('\r', 1); k != std::string::npos;
           k = anchor.find('\r', k + 1)) {
        if (head->compare(0, a - k, anchor, k) == 0) {
          start = a - static_cast<int>(k);
          anchor.erase(0, k);
          break;
        }
      }
    }
  }
  if (start < 0) return Rebase(t, stamp_, n);  // the caller sets the stamp
  auto fresh = Read(t, start, n);
  if (!fresh) return false;
  seen_ = n;
  std::string tail = anchor + *fresh;
  if (tail.size() > kAnchorChars) tail.erase(0, tail.size() - kAnchorChars);
  anchor_ = std::move(tail);
  Deliver(*fresh);
  return true;
}

void ChatScanner::Deliver(std::string_view fresh) {
  // The client writes every line as CR, name, ":", TAB, text.
  for (std::size_t pos = 0;;) {
    auto next = fresh.find('\r', pos);
    std::string_view piece = fresh.substr(pos, next == std::string_view::npos
                                                   ? std::string_view::npos
                                                   : next - pos);
    std::string name, said;
    if (!piece.empty() && SplitChatLine(piece, name, said)) {
      platform_.loop.Post(
          [this, name = std::move(name), said = std::move(said)] {
            if (scanning_ && handler_) handler_(name, said);
          });
    }
    if (next == std::string_view::npos) break;
    pos = next + 1;
  }
}

}  // namespace v2
