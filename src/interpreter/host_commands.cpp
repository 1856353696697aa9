#include "interpreter/host_commands.h"

#include "config/settings.h"
#include "host/host_windows.h"
#include "interpreter/styled_line.h"
#include "shell/program.h"

namespace v2 {

void SetHandle(Program& prog, const std::string& CommandArg) {
  prog.form2.Text5.Text.Set(CommandArg);
  SaveSetting(prog.platform, "handle", prog.form2.Text5.Text.Get());
  prog.form2.user.Caption = "user [" + prog.form2.Text5.Text.Get() + "]";
  ChatSend(prog.platform, StyledLine(prog.form4, Pair::kMain,
                                     "handle now '" + CommandArg + "'"));
}

}  // namespace v2
