#pragma once
// The stores on Windows: the registry key where Visual Basic's SaveSetting
// keeps an application's settings (so a member's existing settings are
// found), the system's profile API, and the file system.
#include "platform/stores.h"

namespace v2::win32 {

class Win32UserStore : public UserStore {
 public:
  std::string GetSetting(const std::string& app, const std::string& section,
                         const std::string& key,
                         const std::string& def) override;
  void SaveSetting(const std::string& app, const std::string& section,
                   const std::string& key, const std::string& value) override;
};

class Win32ProfileService : public ProfileService {
 public:
  int GetPrivateProfileStringA(const char* section, const char* key,
                               const char* def, char* buffer, int size,
                               const char* file) override;
  // The system writes a copy of the file, which then replaces the file in
  // one step: a program that dies in the middle leaves one or the other.
  bool WritePrivateProfileStringA(const char* section, const char* key,
                                  const char* value, const char* file) override;
};

class Win32FileSystem : public FileSystem {
 public:
  bool FileExists(const std::string& name) override;
  std::string ProgramDir() override;
  std::string NativePath(const std::string& name) override { return name; }
  bool FilesIn(const std::string& dir,
               std::vector<std::string>& names) override;
};

}  // namespace v2::win32
