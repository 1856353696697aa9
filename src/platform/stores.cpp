#include <algorithm>
#include <cstring>

#include "platform/platform.h"
#include "platform/text.h"

namespace v2 {

int NoStores::GetPrivateProfileStringA(const char*, const char*,
                                       const char* def, char* buffer, int size,
                                       const char*) {
  if (!buffer || size <= 0) return 0;
  std::size_t n = std::min<std::size_t>(def ? std::strlen(def) : 0,
                                        static_cast<std::size_t>(size - 1));
  if (n) std::memcpy(buffer, def, n);
  buffer[n] = '\0';
  return static_cast<int>(n);
}

bool MatchesFilePattern(std::string_view name, std::string_view pattern) {
  // Greedy with one point to come back to: the last "*" seen takes one more
  // character whenever what follows it fails.
  const std::string n = LCase(name), p = LCase(pattern);
  std::size_t i = 0, j = 0, star = std::string::npos, resume = 0;
  while (i < n.size()) {
    if (j < p.size() && (p[j] == '?' || p[j] == n[i])) {
      ++i;
      ++j;
    } else if (j < p.size() && p[j] == '*') {
      star = j++;
      resume = i;
    } else if (star != std::string::npos) {
      j = star + 1;
      i = ++resume;
    } else {
      return false;
    }
  }
  while (j < p.size() && p[j] == '*') ++j;
  return j == p.size();
}

bool FileListOrder(const std::string& a, const std::string& b) {
  const std::string la = LCase(a), lb = LCase(b);
  auto bytes = [](const std::string& x, const std::string& y) {
    return std::lexicographical_compare(
        x.begin(), x.end(), y.begin(), y.end(), [](char c, char d) {
          return static_cast<unsigned char>(c) < static_cast<unsigned char>(d);
        });
  };
  if (la != lb) return bytes(la, lb);
  return bytes(a, b);
}

bool FileSystem::ListFiles(const std::string& dir, const std::string& pattern,
                           std::vector<std::string>& names) {
  names.clear();
  if (!FilesIn(dir, names)) return false;
  std::erase_if(names, [&](const std::string& name) {
    return !MatchesFilePattern(name, pattern);
  });
  std::sort(names.begin(), names.end(), FileListOrder);
  return true;
}

NoStores& NoStores::Instance() {
  static NoStores none;
  return none;
}

}  // namespace v2
