#include "config/startup.h"

#include "config/settings.h"
#include "host/host_windows.h"
#include "idle/idle_tick.h"
#include "interpreter/styled_line.h"
#include "shell/program.h"

namespace v2 {

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
