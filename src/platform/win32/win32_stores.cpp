#include "platform/win32/win32_stores.h"

#include <windows.h>

#include <vector>

namespace v2::win32 {
namespace {

std::string KeyPath(const std::string& app, const std::string& section) {
  return "Software\\VB and VBA Program Settings\\" + app + "\\" + section;
}

}  // namespace

std::string Win32UserStore::GetSetting(const std::string& app,
                                       const std::string& section,
                                       const std::string& key,
                                       const std::string& def) {
  HKEY k = nullptr;
  if (RegOpenKeyExA(HKEY_CURRENT_USER, KeyPath(app, section).c_str(), 0,
                    KEY_QUERY_VALUE, &k) != ERROR_SUCCESS) {
    return def;
  }
  std::string out = def;
  DWORD type = 0, size = 0;
  if (RegQueryValueExA(k, key.c_str(), nullptr, &type, nullptr, &size) ==
          ERROR_SUCCESS &&
      (type == REG_SZ || type == REG_EXPAND_SZ)) {
    std::vector<char> data(size + 1, '\0');
    if (RegQueryValueExA(k, key.c_str(), nullptr, &type,
                         reinterpret_cast<BYTE*>(data.data()),
                         &size) == ERROR_SUCCESS) {
      out.assign(data.data());  // up to its NUL
    }
  }
  RegCloseKey(k);
  return out;
}

void Win32UserStore::SaveSetting(const std::string& app,
                                 const std::string& section,
                                 const std::string& key,
                                 const std::string& value) {
  HKEY k = nullptr;
  if (RegCreateKeyExA(HKEY_CURRENT_USER, KeyPath(app, section).c_str(), 0,
                      nullptr, 0, KEY_SET_VALUE, nullptr, &k,
                      nullptr) != ERROR_SUCCESS) {
    return;
  }
  RegSetValueExA(k, key.c_str(), 0, REG_SZ,
                 reinterpret_cast<const BYTE*>(value.c_str()),
                 static_cast<DWORD>(value.size() + 1));
  RegCloseKey(k);
}

int Win32ProfileService::GetPrivateProfileStringA(const char* section,
                                                  const char* key,
                                                  const char* def, char* buffer,
                                                  int size, const char* file) {
  if (!buffer || size <= 0) return 0;
  return static_cast<int>(::GetPrivateProfileStringA(
      section, key, def, buffer, static_cast<DWORD>(size), file));
}

bool Win32ProfileService::WritePrivateProfileStringA(const char* section,
                                                     const char* key,
                                                     const char* value,
                                                     const char* file) {
  if (!file) return false;
  std::string temp = std::string(file) + ".new";
  DeleteFileA(temp.c_str());
  if (GetFileAttributesA(file) != INVALID_FILE_ATTRIBUTES &&
      !CopyFileA(file, temp.c_str(), FALSE)) {
    return false;
  }
  if (!::WritePrivateProfileStringA(section, key, value, temp.c_str())) {
    DeleteFileA(temp.c_str());
    return false;
  }
  // Profile writes of files other than win.ini reach the disk at once;
  // flushing the cache for the copy makes sure before it replaces the file.
  ::WritePrivateProfileStringA(nullptr, nullptr, nullptr, temp.c_str());
  if (!MoveFileExA(temp.c_str(), file,
                   MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
    DeleteFileA(temp.c_str());
    return false;
  }
  return true;
}

bool Win32FileSystem::FileExists(const std::string& name) {
  if (name.empty()) return false;
  WIN32_FIND_DATAA found;
  HANDLE h = FindFirstFileA(name.c_str(), &found);
  if (h == INVALID_HANDLE_VALUE) return false;
  FindClose(h);
  const DWORD skip =
      FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
  return (found.dwFileAttributes & skip) == 0;
}

std::string Win32FileSystem::ProgramDir() {
  char path[MAX_PATH + 1] = {};
  DWORD n = GetModuleFileNameA(nullptr, path, MAX_PATH);
  std::string exe(path, n);
  auto slash = exe.find_last_of("\\/");
  return slash == std::string::npos ? "." : exe.substr(0, slash);
}

bool Win32FileSystem::FilesIn(const std::string& dir,
                              std::vector<std::string>& names) {
  if (dir.empty()) return false;
  const char last = dir.back();
  const std::string search =
      dir + (last == '\\' || last == '/' || last == ':' ? "*" : "\\*");
  WIN32_FIND_DATAA found;
  HANDLE h = FindFirstFileA(search.c_str(), &found);
  if (h == INVALID_HANDLE_VALUE) {
    // An empty folder still has its "." entry; no entry at all means no
    // folder (or one that cannot be read).
    return false;
  }
  const DWORD skip =
      FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
  do {
    if ((found.dwFileAttributes & skip) == 0)
      names.emplace_back(found.cFileName);
  } while (FindNextFileA(h, &found));
  FindClose(h);
  return true;
}

}  // namespace v2::win32
