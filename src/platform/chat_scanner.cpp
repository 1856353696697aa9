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

void ChatScanner::ScanOn() {
  whole_.reset();
  if (!watching_) {
    watching_ = true;
    platform_.loop.AddWatcher(
        [this] {
          if (scanning_) Look();
        },
        kLookIntervalMs);
  }
  if (scanning_) return;
  scanning_ = true;
  room_ = 0;
  Hwnd t = finder_();
  if (!t) return;
  // A client that does not answer now is taken up by the next look.
  auto n = platform_.windows.SendMessageTimeoutA(t, kWmGetTextLength, 0, 0);
  if (n) Rebase(t, static_cast<int>(*n));
}

void ChatScanner::ScanOff() { scanning_ = false; }

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
  if (!whole_) {
    whole_ = ReadText(platform_.windows, transcript);
    if (!*whole_) return std::nullopt;
    ranges_ = false;
    head_ = (*whole_)->substr(0, kAnchorChars);
  }
  if (!*whole_) return std::nullopt;
  const std::string& all = **whole_;
  if (from >= static_cast<int>(all.size())) return std::string();
  return all.substr(static_cast<std::size_t>(from),
                    static_cast<std::size_t>(to - from));
}

bool ChatScanner::Rebase(Hwnd transcript, int length) {
  if (transcript != room_) ranges_ = true;
  auto anchor = Read(transcript, std::max(0, length - kAnchorChars), length);
  if (!anchor) {
    room_ = 0;  // taken up afresh at the next look
    return false;
  }
  room_ = transcript;
  seen_ = length;
  anchor_ = std::move(*anchor);
  return true;
}

Hwnd ChatScanner::Transcript() {
  // Finding the room walks the client's windows, many lookups; in between,
  // the transcript found last time stands while it is there.
  std::int64_t now = platform_.clock().NowMs();
  if (room_ && now - found_at_ < kFindEveryMs && now >= found_at_ &&
      platform_.windows.IsWindow(room_)) {
    return room_;
  }
  found_at_ = now;
  return finder_();
}

void ChatScanner::Look() {
  whole_.reset();
  Hwnd t = Transcript();
  if (!t) {
    room_ = 0;
    return;
  }
  // Every read of a look must be answered; one that is not (a hung client)
  // leaves everything as it was for the next look.
  auto length =
      platform_.windows.SendMessageTimeoutA(t, kWmGetTextLength, 0, 0);
  if (!length) return;
  const auto n = static_cast<int>(*length);
  if (t != room_) {
    Rebase(t, n);  // another room: what was said there before is not news
    return;
  }
  if (!ranges_ && n == seen_) {
    auto head = ReadTextHead(platform_.windows, t, kAnchorChars);
    if (!head || *head == head_) return;
  }
  LookAt(t, n);
}

void ChatScanner::LookAt(Hwnd t, int n) {
  std::string anchor = anchor_;
  const int a = static_cast<int>(anchor.size());
  int start = -1;  // where the undelivered text begins
  // The length alone is no proof: a trim can take away as much as came.
  if (n >= seen_) {
    auto there = Read(t, seen_ - a, seen_);
    if (!there) return;
    if (*there == anchor) {
      if (n == seen_) return;
      start = seen_;
    }
  }
  if (start < 0 && a > 0) {
    // Trimmed at the top: the anchor moved left. Search backwards in growing
    // windows for its last occurrence that does not reach past seen_.
    int hi = std::min(n, seen_);
    for (int width = kFirstSearchWindow;; width *= 2) {
      int lo = std::max(0, hi - width);
      auto window = Read(t, lo, hi);
      if (!window) return;
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
      if (!head) return;
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
  if (start < 0) {
    Rebase(t, n);
    return;
  }
  auto fresh = Read(t, start, n);
  if (!fresh) return;
  seen_ = n;
  std::string tail = anchor + *fresh;
  if (tail.size() > kAnchorChars) tail.erase(0, tail.size() - kAnchorChars);
  anchor_ = std::move(tail);
  Deliver(*fresh);
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
