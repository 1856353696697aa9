#include "interpreter/info_commands.h"

#include "core/program.h"
#include "core/styled_line.h"
#include "host/host_menus.h"
#include "host/host_tweaks.h"
#include "host/host_windows.h"
#include "interpreter/host_commands.h"
#include "platform/text.h"

namespace v2 {

void BootCommand(Program& prog, const std::string&) {
  Form1& f = prog.form1;
  Platform& p = prog.platform;
  f.Label3.Caption.Set(UptimeDays(p));
  f.Label4.Caption.Set(UptimeHours(p));
  f.Label5.Caption.Set(UptimeMinutes(p));
  const std::string days = f.Label3.Caption.Get();
  const std::string hours = f.Label4.Caption.Get();
  const std::string minutes = f.Label5.Caption.Get();
  if (days == "0" && hours == "0") {
    Reply(prog, "last boot was<b> " + minutes + " </b>mins ago");
  } else if (days == "0") {
    Reply(prog, "last boot was<b> " + hours + " </b>hours and <b>" + minutes +
                    "</b> mins ago");
  } else {
    // Whole days and no hour beyond them say the days too, with 0 hours.
    Reply(prog, "last boot was<b> " + days + " </b>days, <b>" + hours +
                    "</b> hours and <b>" + minutes + "</b> mins ago");
  }
}

void TimeCommand(Program& prog, const std::string&) {
  Reply(prog, "current time is: " + LCase(TrayClockTime(prog.platform)));
}

void AotimeCommand(Program& prog, const std::string&) {
  Pause(prog.platform, 0.5);
  const std::string time = SessionTime(prog.platform);
  Reply(prog, prog.form2.Text5.Text.Get() + " has been on aol for " + time);
}

void AimCommand(Program& prog, const std::string&) {
  std::string name = LCase(AimName(prog.platform));
  std::erase(name, ' ');  // the blanks go, tabs stay
  ChatSend(prog.platform,
           StyledLine(prog.form4, Pair::kThird, "current aim: " + name));
}

void AdvCommand(Program& prog, const std::string&) {
  Reply(prog, std::string(kBanner) + " by mirrik");
  // The blanks behind the opening brackets belong to the line.
  Reply(prog, std::string("dl -\x9B < a HREF=\"") + kSiteAddress + "\">" +
                  kSiteName + "< /a>");
}

}  // namespace v2
