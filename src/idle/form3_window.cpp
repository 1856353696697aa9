#include "idle/reason_list.h"
#include "shell/program.h"

namespace v2 {

void CreateForm3Window(Program& prog) {
  Form3& f = prog.form3;
  UiToolkit& ui = prog.platform.ui();
  // Sizes and places in twips, as the window was drawn.
  f.hwnd = ui.CreateForm("vantrel2 reasons", 2895, 3195);
  if (!f.hwnd) return;
  ui.AddListBox(f.hwnd, f.List1, {480, 960, 2055, 1395},
                [&prog] { Form3_List1_DblClick(prog); });
  ui.AddTextBox(f.hwnd, f.Text1, {480, 2520, 2055, 285},
                [&prog](int key) { Form3_Text1_KeyPress(prog, key); });
  ui.AddLabel(f.hwnd, f.Label1, {840, 3000, 975, 135},
              [&prog] { Form3_Label1_Click(prog); });
  ui.AddLabel(f.hwnd, f.Label2, {1920, 3000, 615, 135},
              [&prog] { Form3_Label2_Click(prog); });
}

// The window's outline, its place on top and its slide off the screen come
// with the shaped windows; until they are there the window keeps its
// rectangle and stays where it stands.
void ShapeForm3(Program&) {}
void SlideAwayForm3(Program&) {}

}  // namespace v2
