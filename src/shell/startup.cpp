#include "shell/startup.h"

#include <functional>

#include "config/style_window.h"
#include "core/list_files.h"
#include "core/menu_items.h"
#include "core/program.h"
#include "core/settings.h"
#include "core/style_keys.h"
#include "core/styled_line.h"
#include "host/host_windows.h"
#include "idle/idle_tick.h"
#include "idle/reason_list.h"
#include "player/player_commands.h"

namespace v2 {

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

void info(Program& prog) {
  Platform& p = prog.platform;
  // The reason list lies in the working directory; without it the window
  // stays unmade for now.
  if (FileExists(p, kReasonFile)) {
    EnsureForm3(prog);
    LoadList(p, kReasonFile, prog.form3.List1);
  }
  ReadUserSettings(prog, /*ask_for_handle=*/true);
  ReadSettingsFile(prog);
  ChatSend(p, StyledLine(prog.form4, Pair::kMain,
                         std::string(kBanner) + " by mirrik"));
  const std::string minutes = GroupThousands(prog.form2.Label1.Caption.Get());
  // "/mins" is fixed here: the style's minute word is for the idle lines.
  ChatSend(p, StyledLine(prog.form4, Pair::kSecond,
                         "lo\xE1"
                         "d:(" +
                             prog.form2.Text5.Text.Get() + ") : " + minutes +
                             "/mins"));
}

}  // namespace v2
