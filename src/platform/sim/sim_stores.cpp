#include "platform/sim/sim_stores.h"

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <vector>

#include "platform/text.h"

namespace v2::sim {
namespace {

std::string_view Trim(std::string_view s) {
  auto blank = [](char c) { return c == ' ' || c == '\t'; };
  while (!s.empty() && blank(s.front())) s.remove_prefix(1);
  while (!s.empty() && (blank(s.back()) || s.back() == '\r'))
    s.remove_suffix(1);
  return s;
}

std::vector<std::string> SplitLines(const std::string& bytes) {
  std::vector<std::string> lines;
  std::size_t pos = 0;
  while (pos < bytes.size()) {
    auto nl = bytes.find('\n', pos);
    std::string line = bytes.substr(
        pos, nl == std::string::npos ? std::string::npos : nl - pos);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(std::move(line));
    if (nl == std::string::npos) break;
    pos = nl + 1;
  }
  return lines;
}

// "[name]" (blanks around allowed): the section's name, else nullopt.
bool SectionName(const std::string& line, std::string_view& name) {
  std::string_view t = Trim(line);
  if (t.size() < 2 || t.front() != '[') return false;
  auto close = t.find(']');
  if (close == std::string_view::npos) return false;
  name = Trim(t.substr(1, close - 1));
  return true;
}

// "key=value": the key, trimmed, and the value as the service gives it.
bool KeyLine(const std::string& line, std::string_view& key,
             std::string_view& value) {
  auto eq = line.find('=');
  if (eq == std::string::npos) return false;
  key = Trim(std::string_view(line).substr(0, eq));
  value = Trim(std::string_view(line).substr(eq + 1));
  // A value in matching quotes comes without them.
  if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
      value.back() == value.front()) {
    value = value.substr(1, value.size() - 2);
  }
  return !key.empty();
}

std::string Escape(const std::string& s) {
  std::string out;
  for (char c : s) {
    if (c == '\\') {
      out += "\\\\";
    } else if (c == '\t') {
      out += "\\t";
    } else if (c == '\n') {
      out += "\\n";
    } else if (c == '\r') {
      out += "\\r";
    } else {
      out += c;
    }
  }
  return out;
}

std::string Unescape(std::string_view s) {
  std::string out;
  for (std::size_t i = 0; i < s.size(); ++i) {
    if (s[i] == '\\' && i + 1 < s.size()) {
      char c = s[++i];
      out += c == 't' ? '\t' : c == 'n' ? '\n' : c == 'r' ? '\r' : c;
    } else {
      out += s[i];
    }
  }
  return out;
}

}  // namespace

bool ReadFile(const std::string& path, std::string& bytes) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  bytes.assign(std::istreambuf_iterator<char>(in),
               std::istreambuf_iterator<char>());
  return true;
}

bool WriteFileAtomically(const std::string& path, const std::string& bytes) {
  std::string temp = path + ".new";
  FILE* f = std::fopen(temp.c_str(), "wb");
  if (!f) return false;
  bool ok = std::fwrite(bytes.data(), 1, bytes.size(), f) == bytes.size();
  ok = std::fflush(f) == 0 && ok;
  ok = fsync(fileno(f)) == 0 && ok;
  ok = std::fclose(f) == 0 && ok;
  if (!ok || std::rename(temp.c_str(), path.c_str()) != 0) {
    std::remove(temp.c_str());
    return false;
  }
  return true;
}

std::string SimNativePath(const std::string& name) {
  std::string out = name;
  for (char& c : out) {
    if (c == '\\') c = '/';
  }
  return out;
}

SimUserStore::SimUserStore(std::string path) : path_(std::move(path)) {
  std::string bytes;
  if (!ReadFile(path_, bytes)) return;
  // One entry a line: application, section, key and value, TAB-separated,
  // with backslash escapes.
  for (const std::string& line : SplitLines(bytes)) {
    std::vector<std::string_view> f;
    std::string_view rest = line;
    for (int i = 0; i < 3; ++i) {
      auto tab = rest.find('\t');
      if (tab == std::string_view::npos) break;
      f.push_back(rest.substr(0, tab));
      rest.remove_prefix(tab + 1);
    }
    if (f.size() != 3) continue;
    entries_[{Unescape(f[0]), Unescape(f[1]), Unescape(f[2])}] = Unescape(rest);
  }
}

std::string SimUserStore::GetSetting(const std::string& app,
                                     const std::string& section,
                                     const std::string& key,
                                     const std::string& def) {
  return Find(app, section, key).value_or(def);
}

std::optional<std::string> SimUserStore::Find(const std::string& app,
                                              const std::string& section,
                                              const std::string& key) const {
  auto it = entries_.find({app, section, key});
  if (it == entries_.end()) return std::nullopt;
  // A registry string is read as text: it ends at its first NUL.
  return it->second.substr(0, it->second.find('\0'));
}

void SimUserStore::SaveSetting(const std::string& app,
                               const std::string& section,
                               const std::string& key,
                               const std::string& value) {
  entries_[{app, section, key}] = value;
  if (path_.empty()) return;  // a store kept in memory only
  std::string bytes;
  for (const auto& [k, v] : entries_) {
    bytes += Escape(std::get<0>(k)) + '\t' + Escape(std::get<1>(k)) + '\t' +
             Escape(std::get<2>(k)) + '\t' + Escape(v) + '\n';
  }
  std::string dir = path_.substr(0, path_.rfind('/'));
  if (!dir.empty() && dir != path_) {
    // The store's folder is made on the first write, as the registry key is.
    for (std::size_t p = 1; p <= dir.size(); ++p) {
      if (p == dir.size() || dir[p] == '/')
        mkdir(dir.substr(0, p).c_str(), 0700);
    }
  }
  WriteFileAtomically(path_, bytes);
}

int SimProfileService::GetPrivateProfileStringA(const char* section,
                                                const char* key,
                                                const char* def, char* buffer,
                                                int size, const char* file) {
  if (!buffer || size <= 0) return 0;
  std::string found = def ? def : "";
  std::string bytes;
  if (section && key && file && ReadFile(SimNativePath(file), bytes)) {
    bool inside = false;
    for (const std::string& line : SplitLines(bytes)) {
      std::string_view name, k, v;
      if (SectionName(line, name)) {
        inside = SameIgnoringCase(name, section);
      } else if (inside && KeyLine(line, k, v) && SameIgnoringCase(k, key)) {
        found.assign(v.substr(0, v.find('\0')));  // text ends at a NUL
        break;
      }
    }
  }
  std::size_t n =
      std::min<std::size_t>(found.size(), static_cast<std::size_t>(size - 1));
  std::memcpy(buffer, found.data(), n);
  buffer[n] = '\0';
  return static_cast<int>(n);
}

bool SimProfileService::WritePrivateProfileStringA(const char* section,
                                                   const char* key,
                                                   const char* value,
                                                   const char* file) {
  if (!section || !key || !file) return false;
  const std::string path = SimNativePath(file);
  std::string bytes;
  ReadFile(path, bytes);
  std::vector<std::string> lines = SplitLines(bytes);
  const std::string entry = std::string(key) + "=" + (value ? value : "");
  // Find the section, and in it the key; add what is missing at the end of
  // the section (or of the file).
  std::size_t sec = lines.size(), end = lines.size();
  for (std::size_t i = 0; i < lines.size(); ++i) {
    std::string_view name;
    if (!SectionName(lines[i], name)) continue;
    if (sec < lines.size()) {
      end = i;
      break;
    }
    if (SameIgnoringCase(name, section)) sec = i;
  }
  if (sec == lines.size()) {
    if (!value) return true;  // nothing to delete
    lines.push_back("[" + std::string(section) + "]");
    lines.push_back(entry);
  } else {
    bool done = false;
    for (std::size_t i = sec + 1; i < end; ++i) {
      std::string_view k, v;
      if (KeyLine(lines[i], k, v) && SameIgnoringCase(k, key)) {
        if (value) {
          lines[i] = entry;
        } else {
          lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(i));
        }
        done = true;
        break;
      }
    }
    if (!done && value) {
      // Behind the section's last line that is not blank.
      std::size_t at = end;
      while (at > sec + 1 && Trim(lines[at - 1]).empty()) --at;
      lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(at), entry);
    }
  }
  std::string out;
  for (const std::string& line : lines) out += line + "\r\n";
  return WriteFileAtomically(path, out);
}

bool SimFileSystem::FileExists(const std::string& name) {
  if (name.empty()) return false;
  struct stat st {};
  return stat(SimNativePath(name).c_str(), &st) == 0 && S_ISREG(st.st_mode);
}

std::string SimFileSystem::NativePath(const std::string& name) {
  return SimNativePath(name);
}

bool SimFileSystem::FilesIn(const std::string& dir,
                            std::vector<std::string>& names) {
  if (dir.empty()) return false;
  const std::string native = SimNativePath(dir);
  DIR* d = opendir(native.c_str());
  if (!d) return false;
  while (dirent* entry = readdir(d)) {
    std::string name = entry->d_name;
    if (name.empty() || name[0] == '.') continue;
    struct stat st {};
    if (stat((native + "/" + name).c_str(), &st) == 0 && S_ISREG(st.st_mode)) {
      names.push_back(std::move(name));
    }
  }
  closedir(d);
  return true;
}

}  // namespace v2::sim
