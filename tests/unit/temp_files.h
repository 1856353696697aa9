#pragma once
// A folder of a test's own, gone with the test, and whole files in and out
// of it as bytes.
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace v2::testing {

struct TempDir {
  TempDir()
      : path(std::filesystem::temp_directory_path() /
             ("v2-test-" + std::to_string(getpid()) + "-" +
              std::to_string(counter++))) {
    std::filesystem::create_directories(path);
  }
  ~TempDir() { std::filesystem::remove_all(path); }
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;
  std::string File(const std::string& name) const {
    return (path / name).string();
  }
  static inline int counter = 0;
  std::filesystem::path path;
};

inline std::string ReadAll(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream out;
  out << in.rdbuf();
  return out.str();
}

inline void WriteAll(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

}  // namespace v2::testing
