// The runner's command line.
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "app/runner.h"
#include "platform/text.h"

namespace v2 {
namespace {

std::string DefaultUserStore() {
  const char* config = std::getenv("XDG_CONFIG_HOME");
  const char* home = std::getenv("HOME");
  std::string base = config && *config ? config
                     : home            ? std::string(home) + "/.config"
                                       : std::string(".");
  return base + "/vantrel2/user-store";
}

std::string ExecutableDir() {
  char path[4096];
  ssize_t n = readlink("/proc/self/exe", path, sizeof(path) - 1);
  if (n <= 0) return ".";
  std::string exe(path, static_cast<std::size_t>(n));
  auto slash = exe.rfind('/');
  return slash == std::string::npos ? "." : exe.substr(0, slash);
}

}  // namespace

bool ParseRunnerArgs(int argc, const char* const* argv, RunnerOptions& options,
                     std::string& error) {
  options.program_dir = ExecutableDir();
  options.user_store = DefaultUserStore();
  for (int i = 1; i < argc; ++i) {
    std::string arg = argv[i];
    if (arg == "--raw") {
      options.raw = true;
      continue;
    }
    if (i + 1 >= argc) {
      error = "missing value after " + arg;
      return false;
    }
    std::string value = argv[++i];
    if (arg == "--script") {
      options.script = value;
    } else if (arg == "--screen-name") {
      if (value.empty() || value.find(' ') != std::string::npos) {
        error = "a screen name is one word";
        return false;
      }
      options.screen_name = Utf8ToCp1252(value);
    } else if (arg == "--clock") {
      LocalTime t;
      if (!sim::ParseLocalTime(value, t)) {
        error = "--clock wants \"YYYY-MM-DD HH:MM:SS\", not \"" + value + "\"";
        return false;
      }
      options.clock = t;
    } else if (arg == "--program-dir") {
      options.program_dir = value;
    } else if (arg == "--user-store") {
      options.user_store = value;
    } else if (arg == "--uptime") {
      // Whole seconds; the machine's counter of milliseconds wraps at 2^32,
      // and so does this.
      if (value.empty() || value.size() > 9 ||
          value.find_first_not_of("0123456789") != std::string::npos) {
        error = "--uptime wants whole seconds, not \"" + value + "\"";
        return false;
      }
      options.uptime_ms = static_cast<std::uint32_t>(std::stoull(value) * 1000 %
                                                     (std::uint64_t{1} << 32));
    } else {
      error = "unknown option " + arg;
      return false;
    }
  }
  return true;
}
}  // namespace v2
