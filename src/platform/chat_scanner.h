#pragma once
// The chat scanner control: watches the open chat room's transcript through
// the window services and raises ChatMsg once for every new line, in order.
//
// A quiet look asks the client one thing: the transcript's length, of the
// window found before, kept while it answers. The room is found again when
// the window kept is gone (a room closed, the client quit), when a window
// is made (where the platform tells of that: a new room ahead of the old one
// is taken up at the next look, which comes at once), and now and then; with
// no room at all the scanner does not look until a window is made.
//
// A look whose length moved reads a short anchor: the text just before the
// end of the last line it delivered. Where the anchor still stands there,
// only the stretch behind it is read, so a look costs the same with a
// hundred lines as with ten thousand. A client that trims old lines from the
// top moves the anchor to the left; the scanner finds it again by searching
// backwards. A different room, or a transcript in which the anchor is gone,
// starts afresh from its end: nothing said before is replayed. Lines are
// delivered as the member sees them, without markup. A trim that leaves the
// text around the anchor exactly as it was (the same lines again, of the
// same length) cannot be seen by any reader of the text, and is missed.
//
// A client that does not answer (hung) shows nothing: a look in which any
// read goes unanswered changes nothing, and the next look starts again
// from what was delivered.
//
// A transcript in another process hands out no ranges, only its whole text:
// there a look with news reads it once. A trim at the top that took away
// exactly as much as came leaves the length as it was; it changes the first
// characters, which a quiet room has compared now and then.
#include <cstdint>
#include <functional>
#include <memory>
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

  // Under real time a quiet room is looked at about this often (a little
  // earlier or later where that shares a wake of the loop's timers): about
  // the longest a member's first line after a silence waits to be seen,
  // short enough that a command's answer still seems to follow it.
  static constexpr int kLookIntervalMs = 500;
  // After a line came, for a while, this often: the answer to a line, and
  // the next line of a conversation, are seen about as soon as they come.
  static constexpr int kBusyLookIntervalMs = 250;
  static constexpr int kBusyForMs = 5000;
  // How long a room found stays the one watched without looking for it
  // again, where the platform does not tell of windows made, and where it
  // does (a new room is then found at once).
  static constexpr int kFindEveryMs = 1000;
  static constexpr int kFindEveryToldMs = 30000;
  // How often a quiet transcript without ranges, of a client seen to trim
  // it, has its first characters compared with the last whole read: the
  // longest a line can wait that came with a trim of its very length.
  static constexpr int kCheckEveryMs = 2000;

 private:
  // What the platform told, shared with its calls, which may outlive this.
  struct Told {
    EventLoop* loop = nullptr;
    WatcherId watcher = -1;
    std::uint64_t made = 0;  // windows made so far
  };
  void Watch();
  bool MustFind(std::int64_t now) const;
  Hwnd Find(std::int64_t now);
  // A line came: the looks come quicker for a while.
  void Busy(std::int64_t now);
  // No room: where windows made are told, nothing to look at until one is.
  void Idle();
  // Starts afresh at the end of the text: of length where known, else of
  // the stamp's (a whole read, where it comes to that, tells better).
  bool Rebase(Hwnd transcript, LResult stamp,
              std::optional<int> length = std::nullopt);
  // Characters [from, to) of the transcript; nullopt when it did not answer.
  std::optional<std::string> Read(Hwnd transcript, int from, int to);
  bool ReadWhole(Hwnd transcript);
  // The lines that came, of a transcript whose stamp moved (its length,
  // where ranges are read; the whole text is read where they are not);
  // false when a read went unanswered.
  bool ReadNews(Hwnd transcript, LResult stamp);
  bool LookAt(Hwnd transcript, int length);
  void Deliver(std::string_view fresh);

  Platform& platform_;
  std::function<Hwnd()> finder_;
  ChatMsgHandler handler_;
  std::shared_ptr<Told> told_ = std::make_shared<Told>();
  bool told_made_ = false;  // whether the platform tells of windows made
  bool scanning_ = false;
  bool watching_ = false;
  Hwnd room_ = 0;      // the transcript watched, kept while it answers
  LResult stamp_ = 0;  // its Unicode length at the last complete look
  std::uint64_t made_seen_ = 0;  // windows made up to the last find
  bool none_ = false;            // the last find found no room
  std::int64_t found_at_ = 0;    // when the finder last ran
  std::int64_t checked_at_ = 0;  // when the text itself was last read
  bool busy_ = false;            // looking quicker, after a line came
  std::int64_t busy_until_ = 0;
  int seen_ = 0;            // transcript length up to the last delivered line
  std::string anchor_;      // the text just before seen_
  bool ranges_ = true;      // whether the transcript hands out ranges
  bool trims_ = false;      // whether its client was seen to trim it at the top
  LResult look_stamp_ = 0;  // the stamp read by the look under way
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
