#include "platform/text.h"

#include <array>
#include <cstdint>

namespace v2 {
namespace {

// Unicode code points of bytes 0x80..0x9F in Windows-1252 (0 = unassigned).
constexpr std::array<std::uint16_t, 32> kHigh = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
    0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

std::uint32_t CodePoint(unsigned char c) {
  if (c >= 0x80 && c < 0xA0) {
    std::uint16_t u = kHigh[c - 0x80];
    return u != 0 ? u : c;  // unassigned bytes map to the C1 control
  }
  return c;
}

char FromCodePoint(std::uint32_t u) {
  if (u < 0x80 || (u >= 0xA0 && u < 0x100)) return static_cast<char>(u);
  for (std::size_t i = 0; i < kHigh.size(); ++i) {
    if (kHigh[i] == u) return static_cast<char>(0x80 + i);
  }
  if (u >= 0x80 && u < 0xA0) return static_cast<char>(u);
  return '?';
}

}  // namespace

std::string LCase(std::string_view s) {
  std::string out(s);
  for (char& ch : out) {
    auto c = static_cast<unsigned char>(ch);
    if ((c >= 'A' && c <= 'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7)) {
      c = static_cast<unsigned char>(c + 0x20);
    } else if (c == 0x8A || c == 0x8C || c == 0x8E) {
      c = static_cast<unsigned char>(c + 0x10);
    } else if (c == 0x9F) {
      c = 0xFF;
    }
    ch = static_cast<char>(c);
  }
  return out;
}

int InStr(int start, std::string_view haystack, std::string_view needle) {
  if (start < 1) start = 1;
  auto from = static_cast<std::size_t>(start - 1);
  if (from > haystack.size()) return 0;
  auto pos = haystack.find(needle, from);
  return pos == std::string_view::npos ? 0 : static_cast<int>(pos) + 1;
}

std::string Mid(std::string_view s, int start, int length) {
  if (start < 1) start = 1;
  auto from = static_cast<std::size_t>(start - 1);
  if (from >= s.size()) return {};
  std::size_t n =
      length < 0 ? std::string_view::npos : static_cast<std::size_t>(length);
  return std::string(s.substr(from, n));
}

std::string Left(std::string_view s, int length) {
  if (length <= 0) return {};
  return std::string(s.substr(0, static_cast<std::size_t>(length)));
}

bool IsNumeric(std::string_view s) {
  auto blank = [](char c) { return c == ' ' || c == '\t'; };
  auto digit = [](char c) { return c >= '0' && c <= '9'; };
  std::size_t i = 0, end = s.size();
  while (i < end && blank(s[i])) ++i;
  while (end > i && blank(s[end - 1])) --end;
  if (i < end && (s[i] == '+' || s[i] == '-')) ++i;
  std::size_t digits = 0;
  while (i < end && digit(s[i])) ++i, ++digits;
  if (i < end && s[i] == '.') {
    ++i;
    while (i < end && digit(s[i])) ++i, ++digits;
  }
  if (digits == 0) return false;
  if (i < end && (s[i] == 'e' || s[i] == 'E' || s[i] == 'd' || s[i] == 'D')) {
    ++i;
    if (i < end && (s[i] == '+' || s[i] == '-')) ++i;
    std::size_t exponent = 0;
    while (i < end && digit(s[i])) ++i, ++exponent;
    if (exponent == 0) return false;
  }
  return i == end;
}

void AppendUtf8(std::string& out, std::uint32_t u) {
  if (u < 0x80) {
    out += static_cast<char>(u);
  } else if (u < 0x800) {
    out += static_cast<char>(0xC0 | (u >> 6));
    out += static_cast<char>(0x80 | (u & 0x3F));
  } else if (u < 0x10000) {
    out += static_cast<char>(0xE0 | (u >> 12));
    out += static_cast<char>(0x80 | ((u >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (u & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (u >> 18));
    out += static_cast<char>(0x80 | ((u >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((u >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (u & 0x3F));
  }
}

std::string Cp1252ToUtf8(std::string_view s) {
  std::string out;
  out.reserve(s.size());
  for (char ch : s) AppendUtf8(out, CodePoint(static_cast<unsigned char>(ch)));
  return out;
}

std::string Utf8ToCp1252(std::string_view s) {
  std::string out;
  out.reserve(s.size());
  for (std::size_t i = 0; i < s.size();) {
    auto c = static_cast<unsigned char>(s[i]);
    std::uint32_t u = c;
    std::size_t len = 1;
    if (c >= 0xF0 && c < 0xF8) {
      u = c & 0x07;
      len = 4;
    } else if (c >= 0xE0) {
      u = c & 0x0F;
      len = 3;
    } else if (c >= 0xC0) {
      u = c & 0x1F;
      len = 2;
    } else if (c >= 0x80) {
      out += '?';  // stray continuation byte
      ++i;
      continue;
    }
    if (i + len > s.size()) {
      out += '?';
      break;
    }
    bool ok = true;
    for (std::size_t k = 1; k < len; ++k) {
      auto cc = static_cast<unsigned char>(s[i + k]);
      if ((cc & 0xC0) != 0x80) ok = false;
      u = (u << 6) | (cc & 0x3F);
    }
    if (!ok) {
      out += '?';
      ++i;
      continue;
    }
    out += len == 1 ? static_cast<char>(c) : FromCodePoint(u);
    i += len;
  }
  return out;
}

bool SameIgnoringCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    auto x = static_cast<unsigned char>(a[i]);
    auto y = static_cast<unsigned char>(b[i]);
    if (x >= 'A' && x <= 'Z') x = static_cast<unsigned char>(x + 32);
    if (y >= 'A' && y <= 'Z') y = static_cast<unsigned char>(y + 32);
    if (x != y) return false;
  }
  return true;
}

}  // namespace v2
