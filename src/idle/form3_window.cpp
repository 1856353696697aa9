#include "core/picture_form.h"
#include "core/pictures.h"
#include "core/program.h"
#include "idle/reason_list.h"

namespace v2 {

void CreateForm3Window(Program& prog) {
  Form3& f = prog.form3;
  UiToolkit& ui = prog.platform.ui();
  // Sizes and places in twips, as the window was drawn.
  if (!CreatePictureForm(ui, f, "vantrel2 reasons", 2895, 3195, Form3Bmp(),
                         4500, 3750)) {
    return;
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
