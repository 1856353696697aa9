#include "idle/idle_tick.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "core/list_files.h"
#include "core/menu_items.h"
#include "core/program.h"
#include "core/settings.h"
#include "core/styled_line.h"
#include "host/host_windows.h"
#include "idle/reason_list.h"
#include "platform/text.h"
#include "transfers/transfer_monitors.h"

namespace v2 {
namespace {

bool AllDigits(const std::string& s) {
  if (s.empty()) return false;
  for (char c : s) {
    if (c < '0' || c > '9') return false;
  }
  return true;
}

}  // namespace

std::string GroupThousands(const std::string& count) {
  if (!AllDigits(count) || std::atof(count.c_str()) < 1000) return count;
  std::string out;
  const std::size_t n = count.size();
  for (std::size_t i = 0; i < n; ++i) {
    if (i > 0 && (n - i) % 3 == 0) out += ',';
    out += count[i];
  }
  return out;
}

std::string CountOneMore(const std::string& caption) {
  double value = std::atof(caption.c_str()) + 1;
  char text[64];
  // Whole counts are written as plain digits, as far as a double holds
  // them exactly; beyond that the shortest form that reads back the same.
  if (std::fabs(value) < 1e15 && value == std::floor(value)) {
    std::snprintf(text, sizeof(text), "%.0f", value);
  } else {
    std::snprintf(text, sizeof(text), "%.15g", value);
  }
  return text;
}

void Timer1_Timer(Program& prog) {
  Platform& p = prog.platform;
  Form1& f1 = prog.form1;
  Form2& f2 = prog.form2;
  const Form4& style = prog.form4;

  // A reason is drawn on every tick, from the list as it stands now, edits
  // nobody has saved included.
  EnsureForm3(prog);
  const ListBox& list = prog.form3.List1;
  f1.ReasonIndex = static_cast<std::int16_t>(RandomPick(p, list.ListCount()));
  const int entry = f1.ReasonIndex - 1;
  f1.ReasonText = entry >= 0 && entry < list.ListCount()
                      ? list.items[static_cast<std::size_t>(entry)]
                      : std::string();

  f1.Label1.Caption.Set(CountOneMore(f1.Label1.Caption.Get()));
  f2.Label1.Caption.Set(CountOneMore(f2.Label1.Caption.Get()));
  // The minutes of all time are stored at once, so that no way of ending
  // the program loses them.
  IniWrite(p, kIniSection, "brag", f2.Label1.Caption.Get(), SettingsFile(p));
  f1.Label2.Caption.Set(CountOneMore(f1.Label2.Caption.Get()));
  // Compared as text: an interval such as "05" or "abc" never scrolls.
  if (f1.Label2.Caption.Get() != f2.Text2.Text.Get()) return;

  f1.Label2.Caption.Set("0");
  Pause(p, 0.5);
  if (f2.chatsendtime.Checked) {
    ChatSend(p, StyledLine(style, Pair::kMain,
                           std::string(kBanner) + " " + style.Text7.Text.Get() +
                               " " + GroupThousands(f1.Label1.Caption.Get()) +
                               style.Text8.Text.Get()));
  }
  if (f2.chatsendreasons.Checked) {
    const std::string reason =
        f2.randomize.Checked ? f1.ReasonText : f2.Text1.Text.Get();
    ChatSend(p, StyledLine(style, Pair::kSecond,
                           style.Text9.Text.Get() + " " + reason));
  }
  // The windows are looked for whatever the switch says.
  if (FindDownload(p) && f2.chatsendtrans.Checked) {
    ChatSend(p, StyledLineTight(style, Pair::kThird,
                                "dl file: " + LCase(DownloadName(p)) +
                                    " \xB7 " + DownloadPercent(p) +
                                    style.Text17.Text.Get() + " : " +
                                    DownloadMins(p) + style.Text19.Text.Get()));
  }
  if (FindUpload(p) && f2.chatsendtrans.Checked) {
    ChatSend(p, StyledLineTight(style, Pair::kThird,
                                "ul file: " + LCase(UploadName(p)) + " \xB7 " +
                                    UploadPercent(p) + style.Text17.Text.Get() +
                                    " : " + UploadMins(p) +
                                    style.Text19.Text.Get()));
  }
}

void interval_Click(Program& prog) {
  ValueBoxClick(prog, "enter your scrolling interval", "interval", "1",
                prog.form2.Text2, [&prog] {
                  prog.form2.interval.Caption =
                      "interval : " + prog.form2.Text2.Text.Get() + "/m";
                  // The next scroll comes a full interval later.
                  prog.form1.Label2.Caption.Set("0");
                });
}

}  // namespace v2
