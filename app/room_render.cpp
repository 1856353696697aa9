#include "app/room_render.h"

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/text.h"

namespace v2 {
namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;

// A character a terminal shows as a character: controls, DEL, the C1
// controls, surrogates and what lies past Unicode are shown as U+FFFD.
void AppendShown(std::string& out, std::uint32_t u) {
  const bool control = (u < 0x20 && u != '\t') || (u >= 0x7F && u < 0xA0);
  const bool invalid = (u >= 0xD800 && u < 0xE000) || u > 0x10FFFF;
  AppendUtf8(out, control || invalid ? kReplacement : u);
}

// One Windows-1252 byte as the character it stands for.
void AppendByte(std::string& out, char c) {
  if (c == '\r' || c == '\n') {
    out += ' ';
    return;
  }
  const std::string utf8 = Cp1252ToUtf8(std::string_view(&c, 1));
  // Bytes with no character of their own come back as C1 controls.
  if (utf8.size() == 2 && static_cast<unsigned char>(utf8[0]) == 0xC2 &&
      static_cast<unsigned char>(utf8[1]) < 0xA0) {
    AppendUtf8(out, kReplacement);
    return;
  }
  if (utf8.size() == 1) {
    AppendShown(out, static_cast<unsigned char>(utf8[0]));
    return;
  }
  out += utf8;
}

bool IsAlpha(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

struct Rgb {
  int r, g, b;
  bool operator==(const Rgb&) const = default;
};

// A colour as the markup gives it: six hex digits, with or without "#".
std::optional<Rgb> ParseColour(std::string_view v) {
  if (!v.empty() && v.front() == '#') v.remove_prefix(1);
  if (v.size() != 6) return std::nullopt;
  int d[6];
  for (int i = 0; i < 6; ++i) {
    d[i] = HexDigit(v[static_cast<std::size_t>(i)]);
    if (d[i] < 0) return std::nullopt;
  }
  return Rgb{d[0] * 16 + d[1], d[2] * 16 + d[3], d[4] * 16 + d[5]};
}

// The colour of a font tag's attributes (color=#ff8000, color="#ff8000");
// none when it has no colour the client can read.
std::optional<Rgb> FontColour(std::string_view attrs) {
  std::size_t i = 0;
  while (i < attrs.size()) {
    while (i < attrs.size() && !IsAlpha(attrs[i])) ++i;
    const std::size_t name_at = i;
    while (i < attrs.size() && (IsAlpha(attrs[i]) || attrs[i] == '-')) ++i;
    const std::string name = LCase(attrs.substr(name_at, i - name_at));
    while (i < attrs.size() && attrs[i] == ' ') ++i;
    if (i >= attrs.size() || attrs[i] != '=') continue;
    ++i;
    while (i < attrs.size() && attrs[i] == ' ') ++i;
    std::string_view value;
    if (i < attrs.size() && (attrs[i] == '"' || attrs[i] == '\'')) {
      const char quote = attrs[i];
      const std::size_t close = attrs.find(quote, i + 1);
      const std::size_t stop =
          close == std::string_view::npos ? attrs.size() : close;
      value = attrs.substr(i + 1, stop - i - 1);
      i = stop + 1;
    } else {
      const std::size_t from = i;
      while (i < attrs.size() && attrs[i] != ' ') ++i;
      value = attrs.substr(from, i - from);
    }
    if (name == "color") return ParseColour(value);
  }
  return std::nullopt;
}

// What is in force at a character.
struct Look {
  std::optional<Rgb> colour;
  bool bold = false, underline = false, italic = false, strike = false;
  bool operator==(const Look&) const = default;
};

class Renderer {
 public:
  // line_break: what a CR (or CR LF) of the text becomes; empty for a
  // blank, as in a room line, which is one line.
  explicit Renderer(std::string_view line_break = {})
      : line_break_(line_break) {}
  std::string Run(std::string_view text);

 private:
  // A tag at text[i] ('<'): handles it and gives the position behind it,
  // or 0 when it is no tag (the '<' is then text).
  std::size_t Tag(std::string_view text, std::size_t i);
  std::size_t Entity(std::string_view text, std::size_t i);
  void Text(char c);
  void Emit();
  Look Now() const;

  std::string_view line_break_;
  std::string out_;
  std::vector<std::optional<Rgb>> fonts_;  // one per open font tag
  int bold_ = 0, underline_ = 0, italic_ = 0, strike_ = 0, link_ = 0;
  Look shown_;  // what the terminal has now
  bool styled_ = false;
};

Look Renderer::Now() const {
  Look l;
  for (const auto& c : fonts_) {
    if (c) l.colour = c;
  }
  l.bold = bold_ > 0;
  l.underline = underline_ > 0 || link_ > 0;
  l.italic = italic_ > 0;
  l.strike = strike_ > 0;
  return l;
}

void Renderer::Emit() {
  const Look now = Now();
  if (now == shown_) return;
  out_ += "\x1b[0";
  if (now.bold) out_ += ";1";
  if (now.italic) out_ += ";3";
  if (now.underline) out_ += ";4";
  if (now.strike) out_ += ";9";
  if (now.colour) {
    out_ += ";38;2;" + std::to_string(now.colour->r) + ";" +
            std::to_string(now.colour->g) + ";" + std::to_string(now.colour->b);
  }
  out_ += "m";
  shown_ = now;
  styled_ = true;
}

void Renderer::Text(char c) {
  Emit();
  AppendByte(out_, c);
}

std::size_t Renderer::Tag(std::string_view text, std::size_t i) {
  std::size_t j = i + 1;
  auto blanks = [&] {
    std::size_t from = j;
    while (j < text.size() && text[j] == ' ') ++j;
    return j > from;
  };
  bool spaced = blanks();
  bool closing = false;
  if (j < text.size() && text[j] == '/') {
    closing = true;
    ++j;
    spaced = blanks() || spaced;
  }
  const std::size_t name_at = j;
  while (j < text.size() && IsAlpha(text[j])) ++j;
  const std::string name = LCase(text.substr(name_at, j - name_at));
  if (name.empty()) return 0;
  // The end of the tag: the first '>' outside quote marks.
  std::size_t end = j;
  char quote = 0;
  for (; end < text.size(); ++end) {
    const char c = text[end];
    if (quote) {
      if (c == quote) quote = 0;
    } else if (c == '"' || c == '\'') {
      quote = c;
    } else if (c == '>') {
      break;
    }
  }
  if (end >= text.size()) return 0;
  static const char* const kKnown[] = {
      "font",   "b", "u",    "i",    "s",   "a",   "br",  "strong", "em",
      "strike", "p", "html", "body", "sub", "sup", "big", "small"};
  bool known = false;
  for (const char* k : kKnown) known = known || name == k;
  // A blank behind the bracket is allowed for the tags the client knows
  // ("< a HREF=...>"); anything else with one is plain text.
  if (spaced && !known) return 0;
  const std::string_view attrs = text.substr(j, end - j);

  auto count = [closing](int& n) {
    if (closing) {
      if (n > 0) --n;
    } else {
      ++n;
    }
  };
  if (name == "font") {
    if (closing) {
      if (!fonts_.empty()) fonts_.pop_back();
    } else {
      fonts_.push_back(FontColour(attrs));
    }
  } else if (name == "b" || name == "strong") {
    count(bold_);
  } else if (name == "u") {
    count(underline_);
  } else if (name == "i" || name == "em") {
    count(italic_);
  } else if (name == "s" || name == "strike") {
    count(strike_);
  } else if (name == "a") {
    count(link_);
  } else if (name == "br" && !closing) {
    Text(' ');
  }
  return end + 1;
}

// A character reference at text[i] ('&'): "&lt;", "&#233;", "&#xE9;" and
// the like; 0 when it is none (the '&' is then text).
std::size_t Renderer::Entity(std::string_view text, std::size_t i) {
  const std::size_t semi = text.find(';', i + 1);
  if (semi == std::string_view::npos || semi - i > 10) return 0;
  const std::string_view body = text.substr(i + 1, semi - i - 1);
  std::uint32_t u = 0;
  if (body.size() >= 2 && body[0] == '#') {
    const bool hex = body[1] == 'x' || body[1] == 'X';
    const std::string_view digits = body.substr(hex ? 2 : 1);
    if (digits.empty()) return 0;
    for (char c : digits) {
      const int d = hex ? HexDigit(c) : (c >= '0' && c <= '9' ? c - '0' : -1);
      if (d < 0) return 0;
      u = u * (hex ? 16 : 10) + static_cast<std::uint32_t>(d);
    }
  } else if (body == "lt") {
    u = '<';
  } else if (body == "gt") {
    u = '>';
  } else if (body == "amp") {
    u = '&';
  } else if (body == "quot") {
    u = '"';
  } else if (body == "apos") {
    u = '\'';
  } else if (body == "nbsp") {
    u = ' ';
  } else {
    return 0;
  }
  Emit();
  AppendShown(out_, u);
  return semi + 1;
}

std::string Renderer::Run(std::string_view text) {
  for (std::size_t i = 0; i < text.size();) {
    if (text[i] == '\r' && !line_break_.empty()) {
      out_ += line_break_;
      i += text.compare(i, 2, "\r\n") == 0 ? 2 : 1;
      continue;
    }
    std::size_t next = 0;
    if (text[i] == '<') next = Tag(text, i);
    if (text[i] == '&') next = Entity(text, i);
    if (next == 0) {
      Text(text[i]);
      next = i + 1;
    }
    i = next;
  }
  if (styled_) out_ += "\x1b[0m";
  return out_;
}

}  // namespace

std::string RenderMarkup(std::string_view text) { return Renderer().Run(text); }

std::string RenderRoomLine(std::string_view line) {
  const std::size_t sep = line.find(":\t");
  if (sep == std::string_view::npos) return RenderMarkup(line);
  std::string out;
  for (char c : line.substr(0, sep)) AppendByte(out, c);
  out += ":\t";
  return out + RenderMarkup(line.substr(sep + 2));
}

std::string RenderImEvent(std::string_view event) {
  constexpr std::string_view kHead = "[im to ";
  const std::size_t close = event.find("] ");
  if (event.substr(0, kHead.size()) != kHead ||
      close == std::string_view::npos) {
    return RenderMarkup(event);
  }
  std::string out;
  for (char c : event.substr(0, close + 1)) AppendByte(out, c);
  std::string_view text = event.substr(close + 2);
  // A message that begins with a line break begins under the heading.
  if (!text.empty() && text[0] != '\r') out += ' ';
  return out + Renderer("\n  ").Run(text);
}

}  // namespace v2
