// The window tree's messages: sent ones handled at once by the window's
// handler (the other process's only while its thread answers), posted ones
// queued for that thread, and the default handling of a window.
#include "platform/sim/sim_windows.h"

#include <cstring>

namespace v2::sim {

LResult SimWindows::DefWindowProc(Hwnd h, std::uint32_t msg, WParam w,
                                  LParam l) {
  Node* n = Find(h);
  if (!n) return 0;
  switch (msg) {
    case kWmSetText:
      n->text = l ? reinterpret_cast<const char*>(l) : "";
      Changed();
      return 1;
    case kWmGetText: {
      if (w == 0 || l == 0) return 0;
      auto count = std::min<std::size_t>(w - 1, n->text.size());
      std::memcpy(reinterpret_cast<char*>(l), n->text.data(), count);
      reinterpret_cast<char*>(l)[count] = '\0';
      return static_cast<LResult>(count);
    }
    case kWmGetTextLength:
      return static_cast<LResult>(n->text.size());
    case kWmClose:
      Destroy(h);
      return 0;
    case kEmGetTextRange: {
      auto* r = reinterpret_cast<TextRange*>(l);
      if (!r || !r->lpstrText) return 0;
      auto size = static_cast<std::int32_t>(n->text.size());
      std::int32_t from = std::clamp(r->cpMin, 0, size);
      std::int32_t to = r->cpMax < 0 ? size : std::clamp(r->cpMax, from, size);
      std::memcpy(r->lpstrText, n->text.data() + from,
                  static_cast<std::size_t>(to - from));
      r->lpstrText[to - from] = '\0';
      return to - from;
    }
    default:
      return 0;
  }
}

bool SimWindows::DeliverPosted() {
  auto stopped = [this] { return thread_ && thread_->StoppedForMs() > 0; };
  if (posted_.empty() || stopped()) return false;
  std::deque<Posted> batch;
  batch.swap(posted_);
  while (!batch.empty()) {
    Posted p = batch.front();
    batch.pop_front();
    Count(p.h, p.msg, p.title);
    Dispatch(p.h, p.msg, p.w, p.l);
    if (stopped()) {
      // What the thread has not taken yet waits, ahead of anything newer.
      posted_.insert(posted_.begin(), batch.begin(), batch.end());
      break;
    }
  }
  return true;
}

bool SimWindows::WaitForThread() {
  const std::int64_t stopped = thread_ ? thread_->StoppedForMs() : 0;
  if (stopped <= 0) return true;
  thread_->Block(std::min<std::int64_t>(stopped, kSendBoundMs));
  return stopped <= kSendBoundMs;
}

std::optional<LResult> SimWindows::SendMessageTimeoutA(Hwnd h,
                                                       std::uint32_t msg,
                                                       WParam w, LParam l) {
  const Node* n = Find(h);
  if (!n) return 0;
  if (n->owner == Owner::kProgram) return Dispatch(h, msg, w, l);
  // A thread that does not pump within the bound never sees the message.
  if (!WaitForThread()) return std::nullopt;
  Count(h, msg, std::string(TextView(h)));
  LResult result = Dispatch(h, msg, w, l);
  // A handler that stopped its thread has not returned yet for the sender.
  if (!WaitForThread()) return std::nullopt;
  return result;
}

LResult SimWindows::Dispatch(Hwnd h, std::uint32_t msg, WParam w, LParam l) {
  Node* n = Find(h);
  if (!n) return 0;
  if (n->handler) {
    Handler handler = n->handler;  // the window may go away while it runs
    if (auto r = handler(h, msg, w, l)) return *r;
  }
  return DefWindowProc(h, msg, w, l);
}

bool SimWindows::PostMessageA(Hwnd h, std::uint32_t msg, WParam w, LParam l) {
  if (!Find(h)) return false;
  // A message that carries a pointer cannot wait in a queue: the window
  // manager refuses to post it, and the text never arrives.
  if (msg == kWmSetText || msg == kWmGetText || msg == kEmGetTextRange) {
    return false;
  }
  posted_.push_back(
      {h, msg, w, l, keep_sent_ ? std::string(TextView(h)) : std::string()});
  return true;
}

void SimWindows::Count(Hwnd h, std::uint32_t msg, const std::string& title) {
  if (!keep_sent_) return;
  const Node* n = Find(h);
  if (!n || n->owner == Owner::kProgram) return;  // gone, or its own
  for (Sent& s : sent_) {
    if (s.msg == msg && s.cls == n->cls && s.title == title) {
      ++s.count;
      return;
    }
  }
  sent_.push_back({msg, n->cls, title, 1});
}

}  // namespace v2::sim
