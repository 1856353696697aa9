#pragma once
// The two places that outlive a run, and the files the program reads: the
// per-user store (application, section, key: text), the profile service
// over profile files ("[section]" lines and "key=value" lines), and the few
// questions asked of the file system.
#include <string>
#include <string_view>
#include <vector>

namespace v2 {

class UserStore {
 public:
  virtual ~UserStore() = default;
  // The stored text, or def when the entry does not exist. Creates nothing.
  virtual std::string GetSetting(const std::string& app,
                                 const std::string& section,
                                 const std::string& key,
                                 const std::string& def = {}) = 0;
  // Creates or replaces the entry at once; it belongs to the user and
  // survives the program.
  virtual void SaveSetting(const std::string& app, const std::string& section,
                           const std::string& key,
                           const std::string& value) = 0;
};

class ProfileService {
 public:
  virtual ~ProfileService() = default;
  // Sections and keys are found without regard to case. Copies at most
  // size - 1 characters and a NUL; gives the count copied. A missing file,
  // section or key gives def.
  virtual int GetPrivateProfileStringA(const char* section, const char* key,
                                       const char* def, char* buffer, int size,
                                       const char* file) = 0;
  // Writes key=value into the section, creating the file and the section as
  // needed and keeping everything else in the file. A file is never left
  // half-written.
  virtual bool WritePrivateProfileStringA(const char* section, const char* key,
                                          const char* value,
                                          const char* file) = 0;
};

class FileSystem {
 public:
  virtual ~FileSystem() = default;
  // A directory search for name finds a normal file; hidden and system files
  // count as missing, and so does the empty name.
  virtual bool FileExists(const std::string& name) = 0;
  // The directory the program's executable lies in, without a separator at
  // the end.
  virtual std::string ProgramDir() = 0;
  // A file's name as the system opens it (the simulator takes "\" as a
  // separator, as Windows does).
  virtual std::string NativePath(const std::string& name) = 0;
  // The names of the normal files in the directory dir (no folders, no
  // hidden or system files), in no particular order; false when dir is no
  // directory that can be read (the empty name included).
  virtual bool FilesIn(const std::string& dir,
                       std::vector<std::string>& names) = 0;

  // The files of dir that match pattern, in the order a file list box
  // shows them; false as for FilesIn.
  bool ListFiles(const std::string& dir, const std::string& pattern,
                 std::vector<std::string>& names);
};

// Whether a file name matches a pattern of the file list box: "*" stands
// for any run of characters, "?" for one; letters match without regard to
// case.
bool MatchesFilePattern(std::string_view name, std::string_view pattern);
// The order of a file list box: by name without regard to case, names that
// differ only in case by their bytes.
bool FileListOrder(const std::string& a, const std::string& b);

}  // namespace v2
