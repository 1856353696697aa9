// Fuzz target: the room's transcript as the chat scanner reads it. The text
// belongs to the client and to whoever speaks in the room, so it can hold any
// bytes; the client also trims it from the top whenever it likes.
//
// An input whose first byte is 0 drives a well-formed room: every line is
// "CR name : TAB text #serial#" with a unique serial, so the scanner's anchor
// can only stand in one place and what it must deliver can be worked out
// exactly. Any other input is raw text: plain text is appended as is, and the
// bytes 1 to 7 are operations (see RunRaw). Both also feed SplitChatLine.
#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/fuzz_check.h"
#include "fuzz/fuzz_world.h"
#include "host/host_windows.h"
#include "platform/chat_scanner.h"

namespace {

using v2::Hwnd;

constexpr std::size_t kAnchorChars = 128;  // as the scanner keeps it

struct Said {
  std::string name;
  std::string text;
};

class Input {
 public:
  explicit Input(std::string_view data) : data_(data) {}
  bool Done() const { return pos_ >= data_.size(); }
  unsigned char Byte() {
    return Done() ? 0 : static_cast<unsigned char>(data_[pos_++]);
  }
  std::string Take(std::size_t n) {
    n = std::min(n, data_.size() - pos_);
    std::string out(data_.substr(pos_, n));
    pos_ += n;
    return out;
  }

 private:
  std::string_view data_;
  std::size_t pos_ = 0;
};

std::string Without(std::string s, std::string_view banned) {
  std::erase_if(
      s, [banned](char c) { return banned.find(c) != std::string_view::npos; });
  return s;
}

std::size_t Count(std::string_view text, std::string_view needle) {
  std::size_t n = 0;
  for (std::size_t at = text.find(needle); at != std::string_view::npos;
       at = text.find(needle, at + 1)) {
    ++n;
  }
  return n;
}

// The serial a well-formed line ends with ("...#12#"), or -1.
int SerialOf(std::string_view text) {
  if (text.size() < 3 || text.back() != '#') return -1;
  auto hash = text.rfind('#', text.size() - 2);
  if (hash == std::string_view::npos) return -1;
  int serial = -1;
  const char* first = text.data() + hash + 1;
  const char* last = text.data() + text.size() - 1;
  auto [end, error] = std::from_chars(first, last, serial);
  return error == std::errc() && end == last ? serial : -1;
}

// What was said comes without markup: every character of it is one of the
// raw text's, in the same order, and text with no '<' is left alone.
void CheckStrip(std::string_view raw, std::string_view seen) {
  V2_FUZZ_CHECK(
      seen == v2::StripMarkup(raw),
      "what was said is the text behind the separator, without markup");
  std::size_t at = 0;
  for (char c : seen) {
    at = raw.find(c, at);
    V2_FUZZ_CHECK(at != std::string_view::npos,
                  "the text seen is drawn from the raw text, in order");
    ++at;
  }
  if (raw.find('<') == std::string_view::npos) {
    V2_FUZZ_CHECK(seen == raw, "text without markup is left alone");
  }
}

void CheckSplit(std::string_view piece) {
  std::string name, said;
  if (!v2::SplitChatLine(piece, name, said)) {
    V2_FUZZ_CHECK(piece.find(":\t") == std::string_view::npos,
                  "a piece with a separator splits");
    return;
  }
  if (!piece.empty() && piece.front() == '\n') piece.remove_prefix(1);
  V2_FUZZ_CHECK(piece.starts_with(name + ":\t"), "the name leads the piece");
  V2_FUZZ_CHECK(name.find(":\t") == std::string::npos,
                "the name ends at the first separator");
  CheckStrip(piece.substr(name.size() + 2), said);
}

// Every line the scanner delivers stood in the transcript when it looked:
// its speaker, the separator, and a text that shows as what was delivered.
void CheckDelivered(const std::vector<Said>& got, std::string_view before) {
  for (const Said& s : got) {
    V2_FUZZ_CHECK(s.name.find('\r') == std::string::npos &&
                      s.text.find('\r') == std::string::npos,
                  "a delivered line is one line");
    V2_FUZZ_CHECK(s.name.find(":\t") == std::string::npos,
                  "a delivered name holds no separator");
    const std::string lead = s.name + ":\t";
    bool stood = false;
    for (auto at = before.find(lead); !stood && at != before.npos;
         at = before.find(lead, at + 1)) {
      std::string_view rest = before.substr(at + lead.size());
      stood = v2::StripMarkup(rest.substr(0, rest.find('\r'))) == s.text;
    }
    V2_FUZZ_CHECK(stood, "a delivered line stood in the transcript");
  }
}

// Raw text with operations between its stretches:
//   1 look   2 N erase N bytes from the top   3 trim the top line
//   4 say the next stretch ("name text") as the client would write it
//   5 close the client   6 start it again   7 scanning off and on again
void RunRaw(std::string_view data) {
  v2::fuzz::World w;
  w.client.max_lines = 16;
  v2::ChatScanner scanner(w.platform,
                          [&w] { return v2::FindTranscript(w.platform); });
  std::vector<Said> got;
  scanner.OnChatMsg([&got](const std::string& name, const std::string& text) {
    got.push_back({name, text});
  });
  scanner.ScanOn();

  std::string stretch;
  bool say_next = false;
  auto flush = [&] {
    if (say_next) {
      auto blank = stretch.find(' ');
      w.client.OtherSays(stretch.substr(0, blank),
                         blank == std::string::npos
                             ? std::string()
                             : stretch.substr(blank + 1));
    } else if (!stretch.empty()) {
      w.windows.AppendText(w.client.transcript(), stretch);
    }
    stretch.clear();
    say_next = false;
  };
  auto look = [&] {
    std::string before(w.windows.TextView(v2::FindTranscript(w.platform)));
    got.clear();
    scanner.Look();
    w.loop.PumpEvents();
    CheckDelivered(got, before);
  };

  Input in(data);
  while (!in.Done()) {
    unsigned char c = in.Byte();
    if (c == 0 || c > 7) {
      stretch += static_cast<char>(c);
      continue;
    }
    flush();
    switch (c) {
      case 1:
        look();
        break;
      case 2:
        w.windows.EraseFront(w.client.transcript(), in.Byte());
        break;
      case 3: {
        std::string_view all = w.windows.TextView(w.client.transcript());
        auto cut = all.find('\r', 1);
        w.windows.EraseFront(w.client.transcript(),
                             cut == std::string_view::npos ? all.size() : cut);
        break;
      }
      case 4:
        say_next = true;
        break;
      case 5:
        w.client.Quit();
        break;
      case 6:
        w.client.Start();
        break;
      case 7:
        scanner.ScanOff();
        scanner.ScanOn();
        break;
    }
  }
  flush();
  look();
}

// A well-formed room, with a model of what the scanner knows: where it has
// read up to and the anchor it will look for. The model predicts exactly
// which lines each look delivers as long as the anchor can be found in one
// place only; where a short anchor (after a hard cut) could match in two, the
// scanner may lose lines, but it must still deliver lines of this room, each
// once and in order.
class WellFormedRoom {
 public:
  WellFormedRoom()
      : scanner_(w_.platform,
                 [this] { return v2::FindTranscript(w_.platform); }) {
    scanner_.OnChatMsg(
        [this](const std::string& name, const std::string& text) {
          got_.push_back({name, text});
        });
    scanner_.ScanOn();
    ModelRebase();
  }

  // Operations, by the low three bits of each byte:
  //   0-2 someone says a line   3 look   4 N erase 4N bytes from the top
  //   5 N the client keeps at most N % 50 + 1 lines
  //   6 N trim N % 8 + 1 whole lines from the top
  //   7 N a new room (N odd) or scanning off and on again (N even)
  void Run(Input& in) {
    while (!in.Done()) {
      unsigned char op = in.Byte();
      switch (op & 7) {
        case 0:
        case 1:
        case 2: {
          std::size_t name_len = in.Byte() % 8;
          std::string name = Without(in.Take(name_len), "\r\n:#");
          std::size_t text_len = in.Byte() % 40;
          std::string text = Without(in.Take(text_len), "\r#");
          Say(name, text);
          break;
        }
        case 3:
          Look();
          break;
        case 4:
          Erase(static_cast<std::size_t>(in.Byte()) * 4);
          break;
        case 5:
          w_.client.max_lines = in.Byte() % 50 + 1;
          break;
        case 6: {
          std::string_view all = Text();
          std::size_t cut = 0;
          for (int i = in.Byte() % 8 + 1; i > 0 && cut != all.npos; --i) {
            cut = all.find('\r', cut + 1);
          }
          Erase(cut == all.npos ? all.size() : cut);
          break;
        }
        case 7:
          if (in.Byte() & 1) {
            w_.client.Quit();
            w_.client.Start();
            trimmed_ = 0;
            lines_.clear();
          } else {
            scanner_.ScanOff();
            scanner_.ScanOn();
            ModelRebase();
          }
          break;
      }
    }
    Look();
  }

 private:
  struct Line {
    std::string name;
    std::string raw;         // the text as the client wrote it
    std::int64_t start = 0;  // where its CR stood, counting trimmed bytes
  };

  std::string_view Text() { return w_.windows.TextView(Transcript()); }
  Hwnd Transcript() { return v2::FindTranscript(w_.platform); }

  void Say(const std::string& name, const std::string& text) {
    int serial = next_serial_++;
    std::string raw = text + "#" + std::to_string(serial) + "#";
    std::size_t before = Text().size();
    std::int64_t start = trimmed_ + static_cast<std::int64_t>(before);
    w_.client.OtherSays(name, raw);
    std::size_t line = 1 + name.size() + 2 + raw.size();
    // The client may have trimmed its oldest lines to make room.
    trimmed_ += static_cast<std::int64_t>(before + line - Text().size());
    lines_[serial] = {name, raw, start};
  }

  void Erase(std::size_t count) {
    std::size_t before = Text().size();
    w_.windows.EraseFront(w_.client.transcript(), count);
    trimmed_ += static_cast<std::int64_t>(before - Text().size());
  }

  // What the scanner knows after starting afresh at the transcript's end.
  void ModelRebase() {
    room_ = Transcript();
    std::string_view text = Text();
    seen_n_ = text.size();
    seen_abs_ = trimmed_ + static_cast<std::int64_t>(seen_n_);
    anchor_ =
        std::string(text.substr(seen_n_ - std::min(kAnchorChars, seen_n_)));
    exact_ = room_ != 0;
  }

  // The scanner reads on behind the last line it delivered: every line
  // said since, as the member sees it. kept is how much of the old anchor
  // still stands in front of the new text.
  std::vector<Said> Continue(std::string_view text, std::size_t kept) {
    std::vector<Said> want;
    for (const auto& [serial, line] : lines_) {
      if (line.start >= seen_abs_) {
        want.push_back({line.name, v2::StripMarkup(line.raw)});
      }
    }
    std::int64_t end = trimmed_ + static_cast<std::int64_t>(text.size());
    std::size_t keep = static_cast<std::size_t>(std::min<std::int64_t>(
        kAnchorChars, static_cast<std::int64_t>(kept) + (end - seen_abs_)));
    anchor_ = std::string(text.substr(text.size() - keep));
    seen_abs_ = end;
    seen_n_ = text.size();
    return want;
  }

  // Which lines the scanner must deliver at this look; nullopt when the
  // model cannot know (the anchor may be found in the wrong place).
  std::optional<std::vector<Said>> Predict() {
    std::vector<Said> want;
    Hwnd t = Transcript();
    std::string_view text = Text();
    const std::size_t n = text.size();
    if (t == 0) {
      room_ = 0;  // it forgets the room; the next one starts afresh
      return want;
    }
    if (t != room_) {
      ModelRebase();  // a new room: nothing said there before is news
      return want;
    }
    if (!exact_) return std::nullopt;

    if (anchor_.empty()) {
      // It last saw an empty transcript, so all that stands there now is
      // news, from the first byte: after a cut inside a line, that line's
      // tail comes first. (The client trims whole lines, so it never does
      // this itself.)
      std::string_view front = text.substr(0, text.find('\r'));
      std::string name, said;
      if (!front.empty() && v2::SplitChatLine(front, name, said)) {
        want.push_back({name, said});
      }
      for (const auto& [serial, line] : lines_) {
        if (line.start >= trimmed_) {
          want.push_back({line.name, v2::StripMarkup(line.raw)});
        }
      }
      ModelRebase();
      return want;
    }

    const auto a = static_cast<std::int64_t>(anchor_.size());
    const std::int64_t anchor_abs = seen_abs_ - a;
    // Where else the whole anchor stands, for the scanner looks for it
    // behind the last line it delivered and then searches backwards.
    std::size_t places = Count(text.substr(0, std::min(n, seen_n_)), anchor_);
    if (trimmed_ <= anchor_abs) {
      if (places == 1) return Continue(text, anchor_.size());
      exact_ = false;
      return std::nullopt;
    }
    if (places != 0) {
      exact_ = false;
      return std::nullopt;
    }
    // The trim cut into the anchor (or took it all). The scanner then tries
    // the anchor's line breaks, oldest first, for the one the transcript
    // now begins with.
    std::string_view head = text.substr(0, std::min<std::size_t>(n, a));
    std::size_t first = std::string::npos;
    for (auto k = anchor_.find('\r', 1); k != std::string::npos;
         k = anchor_.find('\r', k + 1)) {
      if (head.starts_with(std::string_view(anchor_).substr(k))) {
        first = k;
        break;
      }
    }
    const std::int64_t cut = trimmed_ - anchor_abs;  // bytes of it gone
    if (cut < a && anchor_[static_cast<std::size_t>(cut)] == '\r') {
      // Cut at one of its line breaks: what is left of it stands at the
      // top, and the scanner must carry on behind it.
      if (first == static_cast<std::size_t>(cut)) {
        return Continue(text, anchor_.size() - first);
      }
      exact_ = false;
      return std::nullopt;
    }
    if (first != std::string::npos) {
      exact_ = false;  // a part of it happens to stand at the top
      return std::nullopt;
    }
    ModelRebase();  // the anchor is gone: start afresh
    return want;
  }

  void Look() {
    std::optional<std::vector<Said>> want = Predict();
    std::string before(Text());
    got_.clear();
    scanner_.Look();
    w_.loop.PumpEvents();
    CheckDelivered(got_, before);
    // The only piece that can be part of a line: the transcript's first,
    // when its top was cut inside a line.
    std::string_view front =
        std::string_view(before).substr(0, before.find('\r'));
    for (const Said& s : got_) {
      // Lines of this room, each once, in the order they were said.
      int serial = SerialOf(s.text);
      V2_FUZZ_CHECK(serial >= 0,
                    "a delivered line ends as the client wrote it");
      auto it = lines_.find(serial);
      V2_FUZZ_CHECK(it != lines_.end(),
                    "a delivered line is one this room's client wrote");
      const Line& wrote = it->second;
      std::string name, said;
      bool tail = !front.empty() &&
                  (wrote.name + ":\t" + wrote.raw).ends_with(front) &&
                  v2::SplitChatLine(front, name, said) && name == s.name &&
                  said == s.text;
      V2_FUZZ_CHECK(
          (wrote.name == s.name && v2::StripMarkup(wrote.raw) == s.text) ||
              tail,
          "a delivered line is whole, unless the top cut it");
      V2_FUZZ_CHECK(serial > last_serial_,
                    "lines come once each, in the order they were said");
      last_serial_ = serial;
    }
    if (!want) return;
    V2_FUZZ_CHECK(got_.size() == want->size(),
                  "every new line is delivered, and nothing else");
    for (std::size_t i = 0; i < want->size(); ++i) {
      V2_FUZZ_CHECK(
          got_[i].name == (*want)[i].name && got_[i].text == (*want)[i].text,
          "the new lines are delivered as said, in order");
    }
  }

  v2::fuzz::World w_;
  v2::ChatScanner scanner_;
  std::vector<Said> got_;
  std::map<int, Line> lines_;  // this room's lines by serial
  std::int64_t trimmed_ = 0;   // bytes trimmed from this room's top so far
  int next_serial_ = 0;
  int last_serial_ = -1;
  // The model of the scanner.
  Hwnd room_ = 0;
  bool exact_ = false;
  std::size_t seen_n_ = 0;     // the transcript's length at its last read
  std::int64_t seen_abs_ = 0;  // the same, counting trimmed bytes
  std::string anchor_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  std::string_view input(reinterpret_cast<const char*>(data), size);
  for (std::size_t pos = 0;;) {
    auto next = input.find('\r', pos);
    CheckSplit(input.substr(pos, next == input.npos ? input.npos : next - pos));
    if (next == input.npos) break;
    pos = next + 1;
  }
  if (!input.empty() && input.front() == '\0') {
    Input in(input.substr(1));
    WellFormedRoom room;
    room.Run(in);
  } else {
    RunRaw(input);
  }
  return 0;
}
