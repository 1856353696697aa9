#pragma once
// The stores of the simulator: the per-user store in one file of its own, a
// profile service that reads and writes profile files the way the Windows
// one does for everything the program relies on, and the file system.
#include <map>
#include <optional>
#include <string>
#include <tuple>

#include "platform/stores.h"

namespace v2::sim {

// Every write replaces the whole file through a temporary and a rename, so
// that a program that dies in the middle leaves the old file or the new one.
bool WriteFileAtomically(const std::string& path, const std::string& bytes);
bool ReadFile(const std::string& path, std::string& bytes);

class SimUserStore : public UserStore {
 public:
  // path: the file holding the store; it is read once here and written at
  // every SaveSetting. An empty path keeps the store in memory only.
  explicit SimUserStore(std::string path);
  std::string GetSetting(const std::string& app, const std::string& section,
                         const std::string& key,
                         const std::string& def) override;
  void SaveSetting(const std::string& app, const std::string& section,
                   const std::string& key, const std::string& value) override;
  // The entry as GetSetting reads it; nothing when there is none.
  std::optional<std::string> Find(const std::string& app,
                                  const std::string& section,
                                  const std::string& key) const;

 private:
  std::string path_;
  std::map<std::tuple<std::string, std::string, std::string>, std::string>
      entries_;
};

class SimProfileService : public ProfileService {
 public:
  int GetPrivateProfileStringA(const char* section, const char* key,
                               const char* def, char* buffer, int size,
                               const char* file) override;
  bool WritePrivateProfileStringA(const char* section, const char* key,
                                  const char* value, const char* file) override;
};

class SimFileSystem : public FileSystem {
 public:
  explicit SimFileSystem(std::string program_dir)
      : program_dir_(program_dir.empty() ? "." : std::move(program_dir)) {}
  bool FileExists(const std::string& name) override;
  std::string ProgramDir() override { return program_dir_; }
  std::string NativePath(const std::string& name) override;
  // Names that begin with a dot count as hidden.
  bool FilesIn(const std::string& dir,
               std::vector<std::string>& names) override;

 private:
  std::string program_dir_;
};

// "\" as a separator, as Windows takes it.
std::string SimNativePath(const std::string& name);

}  // namespace v2::sim
