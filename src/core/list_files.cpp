// The list files, the file test, the draw and the command list's place.
#include "core/list_files.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace v2 {

std::vector<std::string> ReadListItems(const std::string& bytes) {
  std::vector<std::string> items;
  std::size_t i = 0;
  const std::size_t n = bytes.size();
  auto eol = [&](std::size_t at) {
    return at >= n || bytes[at] == '\r' || bytes[at] == '\n';
  };
  auto skip_eol = [&] {
    if (i < n && bytes[i] == '\r') ++i;
    if (i < n && bytes[i] == '\n') ++i;
  };
  while (i < n) {
    while (i < n && (bytes[i] == ' ' || bytes[i] == '\t')) ++i;
    std::string item;
    if (i < n && bytes[i] == '"') {
      auto close = bytes.find('"', i + 1);
      auto line_end = bytes.find_first_of("\r\n", i + 1);
      if (close == std::string::npos ||
          (line_end != std::string::npos && close > line_end)) {
        close = line_end == std::string::npos ? n : line_end;
      }
      item = bytes.substr(i + 1, close - i - 1);
      i = close < n && bytes[close] == '"' ? close + 1 : close;
      // What stands between the closing quote and the next comma is dropped.
      while (!eol(i) && bytes[i] != ',') ++i;
    } else {
      std::size_t start = i;
      while (!eol(i) && bytes[i] != ',') ++i;
      item = bytes.substr(start, i - start);
    }
    items.push_back(std::move(item));
    if (i < n && bytes[i] == ',') {
      ++i;
      // A comma at the end of a line leaves one more, empty item.
      if (eol(i)) {
        items.emplace_back();
        skip_eol();
      }
    } else {
      skip_eol();
    }
  }
  return items;
}

void LoadList(Platform& p, const std::string& file, ListBox& list) {
  // C's files: the streams of the library would bring its locales into the
  // program for two plain reads and writes.
  std::FILE* in = std::fopen(p.files().NativePath(file).c_str(), "rb");
  if (!in) return;
  std::string bytes;
  char chunk[4096];
  for (std::size_t got; (got = std::fread(chunk, 1, sizeof(chunk), in)) > 0;)
    bytes.append(chunk, got);
  std::fclose(in);
  for (std::string& item : ReadListItems(bytes)) {
    list.AddItem(std::move(item));
    p.loop.PumpEvents();
  }
}

void SaveList(Platform& p, const std::string& file, const ListBox& list) {
  std::FILE* out = std::fopen(p.files().NativePath(file).c_str(), "wb");
  if (!out) return;
  for (const std::string& item : list.items) {
    std::fwrite(item.data(), 1, item.size(), out);
    std::fwrite("\r\n", 1, 2, out);
  }
  std::fclose(out);
}

bool FileExists(Platform& p, const std::string& file) {
  return p.files().FileExists(file);
}

double RandomPick(Platform& p, int n) {
  // Reseeded from the clock at every call, as a generator seeded once per
  // draw: the seconds since midnight, fraction included, make the seed.
  double timer = p.clock().SecondsSinceMidnight();
  float seed_f = static_cast<float>(timer);
  std::uint32_t bits = 0;
  std::memcpy(&bits, &seed_f, sizeof(bits));
  std::uint32_t x = ((bits >> 8) ^ (bits << 8) ^ bits) & 0xFFFFFF;
  // One step of a 24-bit linear congruential generator.
  x = (x * 1140671485u + 12820163u) & 0xFFFFFFu;
  float r = static_cast<float>(x) / 16777216.0f;  // 0 <= r < 1
  return std::floor(static_cast<double>(r) * n + 1.0);
}

std::string CommandListFile(Platform& p) {
  return p.files().ProgramDir() + "\\commands.txt";
}

}  // namespace v2
