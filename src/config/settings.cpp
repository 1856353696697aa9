#include "config/settings.h"

#include <algorithm>
#include <functional>

#include "config/menu_tree.h"
#include "config/style_window.h"
#include "platform/text.h"
#include "player/player_commands.h"
#include "shell/program.h"

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

void ReadUserSettings(Program& prog, bool ask_for_handle) {
  Platform& p = prog.platform;
  Form2& f = prog.form2;
  auto flag = [&](const char* key, const char* def, MenuItem& item,
                  const std::function<void()>& then = {}) {
    if (GetSetting(p, key, def) != "true") return;
    item.Checked = true;
    if (then) then();
  };
  flag("chatsend time", "true", f.chatsendtime);
  flag("chatsend trans", "false", f.chatsendtrans);
  flag("chatsend reason", "true", f.chatsendreasons);
  f.Text1.Text.Set(GetSetting(p, "reason", "no reason"));
  flag("randomize", "true", f.randomize);
  f.Text2.Text.Set(GetSetting(p, "interval", "1"));
  f.interval.Caption = "interval : " + f.Text2.Text.Get() + "/m";
  flag("ims off", "false", f.imsoff);
  flag("ghosting on", "false", f.ghostingon);
  flag("ims on", "false", f.imson);
  flag("ghosting off", "false", f.ghostingoff);
  flag("autoup", "true", f.autoup, [&] { f.Timer2.SetEnabled(true); });
  flag("machine", "false", f.immachine, [&] { f.Timer6.SetEnabled(true); });
  flag("ccoms on", "true", f.cchat_on, [&] { prog.form1.Chat1.ScanOn(); });
  flag("ccoms off", "false", f.cchat_off, [&] { prog.form1.Chat2.ScanOn(); });
  flag("dcp aol", "true", f.reconaol, [&] { f.Timer4.SetEnabled(true); });
  flag("dcp pr", "true", f.enterpr);
  flag("dcp jap", "false", f.enterjap);
  f.Text4.Text.Set(GetSetting(p, "dcp room", "idle"));
  flag("dcp ul", "true", f.continueul);
  flag("dcp dl", "false", f.continuedl);
  flag("dcp ims", "true", f.imzoff);
  flag("dcp ghost", "false", f.ghoztingon);
  flag("dcp buddy", "false", f.hidebuddy);
  f.Text5.Text.Set(GetSetting(p, "handle"));
  if (ask_for_handle && f.Text5.Text.Get().empty()) {
    // Events go on under the box: a command that runs meanwhile finds the
    // handle still empty.
    f.Text5.Text.Set(
        p.ui().InputBox(p.loop, "enter your handle", kAskTitle, "new user"));
    if (f.Text5.Text.Get().empty()) f.Text5.Text.Set("new user");
    SaveSetting(p, "handle", f.Text5.Text.Get());
  }
  f.user.Caption = "user [" + f.Text5.Text.Get() + "]";
  f.Text6.Text.Set(GetSetting(p, "machine msg", "afk"));
}

void ReadSettingsFile(Program& prog) {
  Platform& p = prog.platform;
  const std::string brag = IniRead(p, kIniSection, "brag", SettingsFile(p));
  prog.form2.Label1.Caption.Set(brag.empty() ? std::string("0") : brag);
  // Touching the style loads Form4, whose load reads the 17 keys; the
  // start reads them once more, with the same result.
  EnsureForm4(prog);
  ReadStyleKeys(prog);
  ReadPlayerPath(prog);
}

}  // namespace v2
