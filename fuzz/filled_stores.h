#pragma once
// Both stores of a run filled with whatever text, for the fuzz target that
// starts the program on them: every key of the per-user store and of
// settings.dat, each given or left out.
#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <sstream>
#include <string>

#include "app/runner.h"
#include "platform/sim/sim_stores.h"

namespace v2::testing {

// The per-user store's keys, in the order the start reads them.
inline constexpr std::array<const char*, 25> kUserKeys = {
    "chatsend time", "chatsend trans", "chatsend reason", "reason",
    "randomize",     "interval",       "ims off",         "ghosting on",
    "ims on",        "ghosting off",   "autoup",          "machine",
    "ccoms on",      "ccoms off",      "dcp aol",         "dcp pr",
    "dcp jap",       "dcp room",       "dcp ul",          "dcp dl",
    "dcp ims",       "dcp ghost",      "dcp buddy",       "handle",
    "machine msg"};
// settings.dat's keys.
inline constexpr std::array<const char*, 19> kIniKeys = {
    "afont",   "font",   "efont",   "acolor",  "bcolor",  "ccolor", "ascii1",
    "ascii2",  "ascii3", "eascii1", "eascii2", "eascii3", "mid",    "min",
    "reasons", "per",    "ml",      "path",    "brag"};

// A folder of its own with the two stores of one run.
struct FilledStores {
  FilledStores()
      : dir(std::filesystem::temp_directory_path() /
            ("v2-stores-" + std::to_string(getpid()) + "-" +
             std::to_string(counter++))) {
    std::filesystem::create_directories(dir);
    options.script = "-";
    options.clock = LocalTime{2001, 6, 15, 14, 3, 0, 0};
    options.user_store = (dir / "user-store").string();
    options.program_dir = dir.string();
    options.end_process = false;
  }
  ~FilledStores() {
    std::error_code ec;
    std::filesystem::remove_all(dir, ec);
  }
  FilledStores(const FilledStores&) = delete;
  FilledStores& operator=(const FilledStores&) = delete;

  // Writes the per-user entries given (key by key, as SaveSetting would)
  // and settings.dat with a line for each key given, its key in upper case
  // as IniWrite writes it. A value cannot hold a line break there: those
  // go. What the file holds is kept in ini_bytes.
  void Fill(const std::map<std::string, std::string>& user,
            const std::map<std::string, std::string>& ini) {
    sim::SimUserStore store(options.user_store);
    for (const auto& [key, value] : user) {
      store.SaveSetting("vantrel2", "settings", key, value);
    }
    ini_bytes = "[vantrel2]\r\n";
    for (const auto& [key, value] : ini) {
      std::string upper = key, line = value;
      for (char& c : upper) c = static_cast<char>(std::toupper(c));
      std::erase(line, '\r');
      std::erase(line, '\n');
      ini_bytes += upper + "=" + line + "\r\n";
    }
    std::ofstream(dir / "settings.dat", std::ios::binary) << ini_bytes;
  }

  // The stored entry of the per-user store, nullopt when there is none.
  std::optional<std::string> User(const std::string& key) const {
    sim::SimUserStore store(options.user_store);
    const std::string none = "\x01(none)";
    std::string got = store.GetSetting("vantrel2", "settings", key, none);
    if (got == none) return std::nullopt;
    return got;
  }
  // settings.dat as it lies there now, without its BRAG line: the one
  // line the program writes in an idle minute.
  std::string IniWithoutBrag() const {
    std::ifstream in(dir / "settings.dat", std::ios::binary);
    std::stringstream all;
    all << in.rdbuf();
    std::string out, line;
    std::istringstream lines(all.str());
    while (std::getline(lines, line)) {
      if (line.rfind("BRAG=", 0) != 0) out += line + "\n";
    }
    return out;
  }

  static inline int counter = 0;
  std::filesystem::path dir;
  RunnerOptions options;
  std::string ini_bytes;
};

}  // namespace v2::testing
