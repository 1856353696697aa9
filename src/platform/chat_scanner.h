#pragma once
// The chat scanner control: watches the open chat room's transcript through
// the window services and raises ChatMsg once for every new line, in order.
//
// Each look reads the transcript's length and a short anchor: the text just
// before the end of the last line it delivered. Where the anchor still stands
// there, only the stretch behind it is read, so a look costs the same with a
// hundred lines as with ten thousand. A client that
// trims old lines from the top moves the anchor to the left; the scanner finds
// it again by searching backwards. A different room, or a transcript in which
// the anchor is gone, starts afresh from its end: nothing said before is
// replayed. Lines are delivered as the member sees them, without markup. A trim
// that leaves the text around the anchor exactly as it was (the same lines
// again, of the same length) cannot be seen by any reader of the text, and is
// missed.
//
// A client that does not answer (hung) shows nothing: a look in which any
// read goes unanswered changes nothing, and the next look starts again
// from what was delivered.
//
// A transcript in another process hands out no ranges, only its whole text.
// There a look reads the text at most once, and a look that finds the length
// and the first characters unchanged reads nothing more: a trim at the top
// changes the first characters.
#include <functional>
#include <optional>
#include <string>

#include "platform/platform.h"

namespace v2 {

class ChatScanner {
 public:
  using ChatMsgHandler = std::function<void(const std::string& Screen_Name,
                                            const std::string& What_Said)>;

  // finder gives the transcript of the room to watch, or 0.
  ChatScanner(Platform& platform, std::function<Hwnd()> finder);
  void OnChatMsg(ChatMsgHandler handler) { handler_ = std::move(handler); }
  void ScanOn();
  void ScanOff();
  bool Scanning() const { return scanning_; }

  // One look at the room; new lines are posted to the event loop as ChatMsg
  // events. The loop calls this by itself while scanning.
  void Look();

  static constexpr int kLookIntervalMs = 50;
  // How long a room found stays the one watched without looking for it
  // again (while its transcript is there): a room opened ahead of it in the
  // client is taken up within this time.
  static constexpr int kFindEveryMs = 1000;

 private:
  Hwnd Transcript();
  bool Rebase(Hwnd transcript, int length);
  // Characters [from, to) of the transcript; nullopt when it did not answer.
  std::optional<std::string> Read(Hwnd transcript, int from, int to);
  void LookAt(Hwnd transcript, int length);
  void Deliver(std::string_view fresh);

  Platform& platform_;
  std::function<Hwnd()> finder_;
  ChatMsgHandler handler_;
  bool scanning_ = false;
  bool watching_ = false;
  Hwnd room_ = 0;
  std::int64_t found_at_ = 0;  // when the finder last ran
  int seen_ = 0;        // transcript length up to the last delivered line
  std::string anchor_;  // the text just before seen_
  bool ranges_ = true;  // whether the transcript hands out ranges
  // The whole text, read in this look (nullopt inside: it did not answer).
  std::optional<std::optional<std::string>> whole_;
  std::string head_;  // the first characters, as the last whole read saw them
};

// The text as the member sees it in the room: the client shows tags such as
// <font ...> or </b> as formatting, not as words. "a < b" stays as it is.
std::string StripMarkup(std::string_view text);

// Splits "Name:\tText" into the speaker and what was said, as seen; false
// when the piece has no speaker.
bool SplitChatLine(std::string_view piece, std::string& name,
                   std::string& said);

}  // namespace v2
