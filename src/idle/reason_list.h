#pragma once
// The member's idle reasons: the list box List1 of Form3 (also its editor),
// kept in the text file vantrel2.lst in the working directory, and the
// program's one source of chance.
#include <string>
#include <vector>

#include <memory>

#include "platform/controls.h"
#include "platform/platform.h"
#include "shell/shaped_windows.h"

namespace v2 {

class Program;

inline constexpr const char* kReasonFile = "vantrel2.lst";

// Appends the file's items to the list (it is not cleared first), letting
// events run after each item. An item ends at a comma or at the end of a
// line; blanks in front of it are skipped; an item that opens with a double
// quote runs to the next one, commas included, and comes without the quotes.
// An empty line is one empty item. A file that cannot be read adds nothing.
void LoadList(Platform& p, const std::string& file, ListBox& list);
// Writes every entry, unchanged, each followed by CR LF. A failure changes
// nothing and says nothing.
void SaveList(Platform& p, const std::string& file, const ListBox& list);
// Whether a normal file of that name is there (hidden and system files
// count as missing; the empty name too).
bool FileExists(Platform& p, const std::string& file);
// A whole number from 1 to n (1 for n below 1), drawn after reseeding from
// the clock on every call.
double RandomPick(Platform& p, int n);

// The items of a list file, as LoadList reads them.
std::vector<std::string> ReadListItems(const std::string& bytes);

// The reason list window. Its controls hold the list; the window itself is
// shown on demand and slides away when closed.
struct Form3 {
  ListBox List1;
  TextBox Text1;
  Label Label1{TextControl("save and exit")};
  Label Label2{TextControl("cancel")};
  bool loaded = false;
  Hwnd hwnd = 0;  // the window, where the platform makes one
  std::unique_ptr<ShapedWindow> window;
  std::unique_ptr<PictureBox> Picture1;  // the background and outline
  Grab grab;                             // where the drag took hold
};

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
