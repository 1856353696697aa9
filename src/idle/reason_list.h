#pragma once
// The member's idle reasons: the list box List1 of Form3 and its window, the
// list's editor, kept in the text file vantrel2.lst in the working
// directory.

namespace v2 {

class Program;

inline constexpr const char* kReasonFile = "vantrel2.lst";

// The window comes into being, hidden, at its first use.
void EnsureForm3(Program& prog);
// Shows the window, back in view if it had slid away.
void ShowForm3(Program& prog);
// The real window and its controls, where the platform shows windows.
void CreateForm3Window(Program& prog);
// The window's shape and stacking, and its leaving off the screen.
void ShapeForm3(Program& prog);
void SlideAwayForm3(Program& prog);

// The window's events.
void Form3_Load(Program& prog);
void Form3_Text1_KeyPress(Program& prog, int KeyAscii);
void Form3_List1_DblClick(Program& prog);
void Form3_Label1_Click(Program& prog);  // save and exit
void Form3_Label2_Click(Program& prog);  // cancel

}  // namespace v2
