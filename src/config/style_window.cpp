#include "config/style_window.h"

#include "core/program.h"
#include "core/settings.h"
#include "core/shaped_windows.h"
#include "core/style_keys.h"
#include "core/styled_line.h"
#include "host/host_windows.h"

namespace v2 {
namespace {

// How long a cancel lets the reloaded fields stand before it writes them.
constexpr double kCancelPauseSeconds = 0.5;

}  // namespace

void EnsureForm4(Program& prog) {
  if (!prog.form4.loaded) Form4_Load(prog);
}

void Form4_Load(Program& prog) {
  Form4& f = prog.form4;
  f.loaded = true;
  CreateForm4Window(prog);
  if (f.window) {
    StayOnTop(*f.window);
    if (f.Picture1) ShapeForm(*f.window, *f.Picture1);
  }
  ReadStyleKeys(prog);
}

void ShowForm4(Program& prog) {
  EnsureForm4(prog);
  if (prog.form4.window) ShowShaped(*prog.form4.window);
}

namespace {

void SlideAwayForm4(Program& prog) {
  if (prog.form4.window) SlideAway(*prog.form4.window, prog.platform.loop);
}

}  // namespace

void Form4_Label8_Click(Program& prog) {
  WriteStyleKeys(prog);
  SlideAwayForm4(prog);
}

void Form4_Label10_Click(Program& prog) {
  // The member's edits go: every field back to what the file holds, and
  // what it now holds written, fallbacks included.
  ReadStyleKeys(prog);
  Pause(prog.platform, kCancelPauseSeconds);
  WriteStyleKeys(prog);
  SlideAwayForm4(prog);
}

void Form4_Label9_Click(Program& prog) {
  // The three kinds of line, from the fields as they stand now.
  Platform& p = prog.platform;
  const Form4& f = prog.form4;
  ChatSend(p, StyledLine(f, Pair::kMain,
                         std::string(kBanner) + " " + f.Text7.Text.Get() +
                             " 0" + f.Text8.Text.Get()));
  ChatSend(p, StyledLine(f, Pair::kSecond,
                         f.Text9.Text.Get() + " testing custom settings"));
  ChatSend(p, StyledLineTight(f, Pair::kTest,
                              "file: file transfer here \xB7 0" +
                                  f.Text17.Text.Get() + " : 0" +
                                  f.Text19.Text.Get()));
}

}  // namespace v2
