#pragma once
// The two settings stores as the program uses them: the per-user store of
// application "vantrel2", section "settings" (switches and typed texts), and
// settings.dat beside the program (the style of the lines, the music folder,
// the idle minutes of all time).
#include <string>

#include "platform/platform.h"

namespace v2 {

inline constexpr const char* kSettingsApp = "vantrel2";
inline constexpr const char* kSettingsSection = "settings";
inline constexpr const char* kIniSection = "vantrel2";
// The balloon of a settings.dat that cannot be written.
inline constexpr const char* kNotSavedTitle =
    "vantrel\xB2 can't save your settings";
inline constexpr const char* kNotSavedText =
    "vantrel\xB2 can't write settings.dat in its folder, so what you change "
    "lasts only until it ends. To keep your settings, move the vantrel2 "
    "folder to a folder of your own, such as your Documents.";

// A per-user entry, or def when there is none.
std::string GetSetting(Platform& p, const std::string& key,
                       const std::string& def = {});
void SaveSetting(Platform& p, const std::string& key, const std::string& value);

// A profile read of at most 749 characters; the key is looked up in lower
// case, and a missing file, section or key give "".
std::string IniRead(Platform& p, const std::string& section,
                    const std::string& key, const std::string& file);
// The key is written in upper case; the value unchanged, the empty one too.
// The first write of a run that fails (a folder the member cannot write
// to) tells the member so by a balloon from the tray: the settings then
// last for the run only.
void IniWrite(Platform& p, const std::string& section, const std::string& key,
              const std::string& value, const std::string& file);

// The full name of settings.dat: the program's own directory and
// "\settings.dat", never the current directory.
std::string SettingsFile(Platform& p);

}  // namespace v2
