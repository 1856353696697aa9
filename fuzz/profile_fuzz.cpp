// Fuzz target: settings.dat, a file the member may edit by hand. The profile
// service reads any bytes without a crash and within its buffer, and a write
// keeps the rest of the file and reads back.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

#include "fuzz/fuzz_check.h"
#include "platform/sim/sim_stores.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  static const std::string path =
      "/tmp/v2-profile-fuzz-" + std::to_string(getpid()) + ".dat";
  if (!v2::sim::WriteFileAtomically(path, bytes)) return 0;
  v2::sim::SimProfileService profile;
  char buffer[750];
  for (const char* key : {"afont", "MID", "x", ""}) {
    int n = profile.GetPrivateProfileStringA("vantrel2", key, "", buffer,
                                             sizeof(buffer), path.c_str());
    V2_FUZZ_CHECK(n >= 0 && n < static_cast<int>(sizeof(buffer)),
                  "a read stays inside its buffer");
    V2_FUZZ_CHECK(buffer[n] == '\0', "a read ends with its NUL");
  }
  const std::string value = "courier new";
  profile.WritePrivateProfileStringA("vantrel2", "AFONT", value.c_str(),
                                     path.c_str());
  int n = profile.GetPrivateProfileStringA("vantrel2", "afont", "", buffer,
                                           sizeof(buffer), path.c_str());
  V2_FUZZ_CHECK(std::string(buffer, static_cast<std::size_t>(n)) == value,
                "what was written reads back");
  std::string after;
  v2::sim::ReadFile(path, after);
  auto lines = [](const std::string& s) {
    std::size_t count = 0;
    for (char c : s) count += c == '\n';
    return count + (!s.empty() && s.back() != '\n');
  };
  V2_FUZZ_CHECK(lines(after) >= lines(bytes),
                "a write replaces or adds lines, it drops none");
  std::remove(path.c_str());
  return 0;
}
