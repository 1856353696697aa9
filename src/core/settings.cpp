// The two stores as the program reads and writes them.
#include "core/settings.h"

#include <algorithm>

#include "platform/text.h"

namespace v2 {
namespace {

constexpr int kIniBuffer = 750;

std::string UpperCase(const std::string& s) {
  // The counterpart of LCase for the key names, which are plain letters.
  std::string out = s;
  for (char& c : out) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
  }
  return out;
}

}  // namespace

std::string GetSetting(Platform& p, const std::string& key,
                       const std::string& def) {
  return p.users().GetSetting(kSettingsApp, kSettingsSection, key, def);
}

void SaveSetting(Platform& p, const std::string& key,
                 const std::string& value) {
  p.users().SaveSetting(kSettingsApp, kSettingsSection, key, value);
}

std::string IniRead(Platform& p, const std::string& section,
                    const std::string& key, const std::string& file) {
  std::string buffer(kIniBuffer, '\0');
  int n = p.profiles().GetPrivateProfileStringA(
      section.c_str(), LCase(key).c_str(), "", buffer.data(), kIniBuffer,
      file.c_str());
  buffer.resize(static_cast<std::size_t>(std::clamp(n, 0, kIniBuffer - 1)));
  return buffer;
}

void IniWrite(Platform& p, const std::string& section, const std::string& key,
              const std::string& value, const std::string& file) {
  if (p.profiles().WritePrivateProfileStringA(section.c_str(),
                                              UpperCase(key).c_str(),
                                              value.c_str(), file.c_str())) {
    return;
  }
  // The caller goes on with the live value all the same; the member learns
  // at the first write that fails, by the tray and never in the room, that
  // what changes now lasts only for this run.
  p.ui().TrayBalloonOnce(kNotSavedTitle, kNotSavedText);
}

std::string SettingsFile(Platform& p) {
  return p.files().ProgramDir() + "\\settings.dat";
}

}  // namespace v2
