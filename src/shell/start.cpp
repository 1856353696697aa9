#include "shell/start.h"

#include "core/pictures.h"
#include "core/program.h"
#include "core/shaped_windows.h"
#include "core/styled_line.h"
#include "host/host_windows.h"
#include "idle/idle_tick.h"
#include "platform/bmp.h"
#include "shell/startup.h"

namespace v2 {
namespace {

// The splash: a borderless window holding its picture, above the others.
void ShowSplash(Program& prog) {
  Form5& f = prog.form5;
  UiToolkit& ui = prog.platform.ui();
  // 350 by 190 pixels, at 15 twips to the pixel.
  f.hwnd = ui.CreateForm("vantrel2", 5250, 2850);
  if (!f.hwnd) return;
  f.window = ui.Shaped(f.hwnd);
  if (auto pixels = LoadBmp(Form5Bmp())) {
    f.Picture1 =
        ui.Picture(f.hwnd, *pixels, 5250, 2850, Rgb(255, 0, 255), nullptr);
  }
  if (!f.window) return;
  StayOnTop(*f.window);
  ShowShaped(*f.window);
}

void HideSplash(Program& prog) {
  if (prog.form5.hwnd) {
    prog.platform.windows.ShowWindow(prog.form5.hwnd, kSwHide);
  }
}

}  // namespace

void Form1_Load(Program& prog) {
  Platform& p = prog.platform;
  ShowSplash(prog);
  // Form1 has no window to hide: it is the program's hidden state.
  info(prog);
  // Events already run: a chat command can come before the tray entry.
  Pause(p, kSplashSeconds);
  HideSplash(prog);
  p.ui().TrayAdd(kTrayTip, [&prog](std::int16_t Button) {
    SystemTray1_MouseUp(prog, Button);
  });
}

void SystemTray1_MouseUp(Program& prog, std::int16_t Button) {
  if (Button != 2) return;
  prog.platform.ui().PopupMenu(prog.platform.loop, prog.form2.menu);
}

}  // namespace v2
