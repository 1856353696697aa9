#include "idle/reason_list.h"
#include "platform/bmp.h"
#include "shell/pictures.h"
#include "shell/program.h"

namespace v2 {

void CreateForm3Window(Program& prog) {
  Form3& f = prog.form3;
  UiToolkit& ui = prog.platform.ui();
  // Sizes and places in twips, as the window was drawn.
  f.hwnd = ui.CreateForm("vantrel2 reasons", 2895, 3195);
  if (!f.hwnd) return;
  f.window = ui.Shaped(f.hwnd);
  // The picture is larger than the window; the window's own rectangle cuts
  // the outline too.
  if (auto pixels = LoadBmp(Form3Bmp())) {
    f.Picture1 = ui.Picture(
        f.hwnd, *pixels, 4500, 3750, Rgb(255, 0, 255),
        [&prog](std::int16_t Button, std::int16_t Shift, float X, float Y) {
          if (prog.form3.window) {
            Picture1_MouseMove(*prog.form3.window, prog.form3.grab, Button,
                               Shift, X, Y);
          }
        });
  }
  ui.AddListBox(f.hwnd, f.List1, {480, 960, 2055, 1395},
                [&prog] { Form3_List1_DblClick(prog); });
  ui.AddTextBox(f.hwnd, f.Text1, {480, 2520, 2055, 285},
                [&prog](int key) { Form3_Text1_KeyPress(prog, key); });
  ui.AddLabel(f.hwnd, f.Label1, {840, 3000, 975, 135},
              [&prog] { Form3_Label1_Click(prog); });
  ui.AddLabel(f.hwnd, f.Label2, {1920, 3000, 615, 135},
              [&prog] { Form3_Label2_Click(prog); });
}

void ShapeForm3(Program& prog) {
  Form3& f = prog.form3;
  if (!f.window) return;  // a platform without windows of the program's
  if (f.Picture1) ShapeForm(*f.window, *f.Picture1);
  StayOnTop(*f.window);
}

void SlideAwayForm3(Program& prog) {
  if (prog.form3.window) SlideAway(*prog.form3.window, prog.platform.loop);
}

void ShowForm3(Program& prog) {
  EnsureForm3(prog);
  if (prog.form3.window) ShowShaped(*prog.form3.window);
}

}  // namespace v2
