#include "idle/reason_list.h"

#include "core/list_files.h"
#include "core/program.h"

namespace v2 {

void EnsureForm3(Program& prog) {
  if (!prog.form3.loaded) Form3_Load(prog);
}

void Form3_Load(Program& prog) {
  prog.form3.loaded = true;
  CreateForm3Window(prog);
  ShapeForm3(prog);
}

void Form3_Text1_KeyPress(Program& prog, int KeyAscii) {
  if (KeyAscii != 13) return;
  Form3& f = prog.form3;
  f.List1.AddItem(f.Text1.Text.Get());
  f.Text1.Text.Set("");
}

void Form3_List1_DblClick(Program& prog) {
  ListBox& list = prog.form3.List1;
  if (list.ListCount() == 0) return;
  // With nothing selected there is nothing to take out.
  if (list.ListIndex < 0 || list.ListIndex >= list.ListCount()) return;
  const int at = list.ListIndex;
  prog.form3.Text1.Text.Set(list.items[static_cast<std::size_t>(at)]);
  list.RemoveItem(at);
  list.ListIndex = -1;
}

void Form3_Label1_Click(Program& prog) {
  SaveList(prog.platform, kReasonFile, prog.form3.List1);
  SlideAwayForm3(prog);
}

void Form3_Label2_Click(Program& prog) {
  Form3& f = prog.form3;
  f.List1.Clear();
  if (FileExists(prog.platform, kReasonFile)) {
    LoadList(prog.platform, kReasonFile, f.List1);
    SaveList(prog.platform, kReasonFile, f.List1);
  }
  SlideAwayForm3(prog);
}

}  // namespace v2
