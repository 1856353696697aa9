#pragma once
// The controls whose values are the program's data. In the simulator they are
// plain values; a backend that shows a control to the member can attach a
// peer so that reading the control reads the real window.
#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "platform/event_loop.h"
#include "platform/stores.h"

namespace v2 {

// The link from a control to a real window showing its text.
class TextPeer {
 public:
  virtual ~TextPeer() = default;
  virtual std::string Read() = 0;
  virtual void Write(const std::string& text) = 0;
};

class TextControl {
 public:
  explicit TextControl(std::string initial = {}) : value_(std::move(initial)) {}
  std::string Get() const { return peer_ ? peer_->Read() : value_; }
  void Set(std::string text) {
    if (peer_) peer_->Write(text);
    value_ = std::move(text);
  }
  void Attach(TextPeer* peer) { peer_ = peer; }

 private:
  std::string value_;
  TextPeer* peer_ = nullptr;
};

// A text box. The rest is how a window shows it and what the member may do
// in it; a value the program sets is never cut.
struct TextBox {
  TextControl Text;
  int MaxLength = 0;  // the most characters the member can type; 0: any
  bool Enabled = true;
  int Alignment = 0;    // 0 left, 1 right, 2 centred
  int BorderStyle = 1;  // 0 none, 1 a fixed single border
};

struct Label {
  TextControl Caption;
};

// A ruled line of a form, from (X1, Y1) to (X2, Y2) in twips; it does
// nothing.
struct Line {
  int X1 = 0, Y1 = 0, X2 = 0, Y2 = 0;
};

// The link from a list to a real list box showing it. The list is changed
// only through its own operations, which tell the peer.
class ListPeer {
 public:
  virtual ~ListPeer() = default;
  virtual void Added(const std::string& item) = 0;
  virtual void Removed(int index) = 0;
  virtual void Cleared() = 0;
};

struct ListBox {
  std::vector<std::string> items;
  int ListIndex = -1;
  void AddItem(std::string item) {
    if (peer) peer->Added(item);
    items.push_back(std::move(item));
  }
  void RemoveItem(int index) {
    if (index < 0 || index >= ListCount()) return;
    items.erase(items.begin() + index);
    if (peer) peer->Removed(index);
  }
  void Clear() {
    items.clear();
    ListIndex = -1;
    if (peer) peer->Cleared();
  }
  int ListCount() const { return static_cast<int>(items.size()); }
  ListPeer* peer = nullptr;
};

// A file list box: the names of the files of one directory that match its
// pattern, in the order the box sorts them, and a cursor on one of them.
class FileListBox {
 public:
  FileListBox(FileSystem& files, std::string pattern)
      : files_(files), pattern_(std::move(pattern)) {}
  const std::string& Path() const { return path_; }
  const std::string& Pattern() const { return pattern_; }
  // Shows the directory dir (the empty path shows nothing): the list is
  // read anew and the cursor falls back to -1. A directory that cannot be
  // read shows no files.
  void SetPath(const std::string& dir) {
    path_ = dir;
    files_.ListFiles(path_, pattern_, names_);
    ListIndex_ = -1;
  }
  // The list read anew; the cursor stays on its file while it is listed.
  void Refresh() {
    const std::string at = FileName();
    files_.ListFiles(path_, pattern_, names_);
    auto found = std::find(names_.begin(), names_.end(), at);
    ListIndex_ = at.empty() || found == names_.end()
                     ? -1
                     : static_cast<int>(found - names_.begin());
  }
  int ListCount() const { return static_cast<int>(names_.size()); }
  int ListIndex() const { return ListIndex_; }
  // Moves the cursor to index, -1 to ListCount - 1; any other index is
  // refused (false) and the cursor stays.
  bool SetListIndex(int index) {
    if (index < -1 || index >= ListCount()) return false;
    ListIndex_ = index;
    return true;
  }
  // The name at index, "" outside the list.
  std::string List(int index) const {
    return index < 0 || index >= ListCount()
               ? std::string()
               : names_[static_cast<std::size_t>(index)];
  }
  // The name at the cursor, "" at -1.
  std::string FileName() const { return List(ListIndex_); }

 private:
  FileSystem& files_;
  std::string pattern_;
  std::string path_;
  std::vector<std::string> names_;
  int ListIndex_ = -1;
};

// A menu item; one with Items is a submenu head, and one whose caption is
// "-" a separator line.
struct MenuItem {
  std::string Name;
  std::string Caption;
  bool Checked = false;
  bool Enabled = true;
  bool Visible = true;
  std::function<void()> Click;
  std::vector<MenuItem*> Items;
  bool IsSeparator() const { return Caption == "-"; }
};

// A timer control: Interval in ms and Enabled, on the program's event loop.
// A timer that has no work yet keeps its settings but is not armed, so that
// it costs nothing.
class Timer {
 public:
  Timer(EventLoop& loop, int interval_ms = 0);
  void OnTimer(std::function<void()> handler) {
    handler_ = std::move(handler);
    Arm();
  }
  int Interval() const { return interval_; }
  bool Enabled() const { return enabled_; }
  void SetInterval(int ms);
  void SetEnabled(bool on);
  // The handler's next passes would do nothing before until_ms (kNeverMs:
  // before Wake): they are skipped, at no cost, with no other difference.
  void Sleep(std::int64_t until_ms) { loop_.SleepTimer(id_, until_ms); }
  void Wake() { loop_.WakeTimer(id_); }

 private:
  void Arm() { loop_.SetTimer(id_, interval_, enabled_ && handler_); }
  EventLoop& loop_;
  TimerId id_;
  int interval_;
  bool enabled_ = false;
  std::function<void()> handler_;
};

inline Timer::Timer(EventLoop& loop, int interval_ms)
    : loop_(loop), interval_(interval_ms) {
  id_ = loop_.CreateTimer([this] {
    if (handler_) handler_();
  });
}

inline void Timer::SetInterval(int ms) {
  interval_ = ms;
  Arm();
}

// Enabling a running timer leaves its countdown alone.
inline void Timer::SetEnabled(bool on) {
  if (on == enabled_) return;
  enabled_ = on;
  Arm();
}

}  // namespace v2
