#pragma once
// The style window, Form4: the member designs the look of the lines in it.
// Its 17 keyed fields are the live style (read by every line, saved or
// not), kept in settings.dat; three labels act as buttons: save and exit,
// scroll test, cancel.
#include <array>
#include <string>
#include <string_view>

namespace v2 {

class Program;
struct Form4;
struct TextBox;

// A keyed field: its key in settings.dat, the field, and the text it takes
// when the key reads empty (none for the three end ornaments, which stay
// empty).
struct StyleKey {
  const char* key;
  TextBox Form4::*field;
  const char* fallback;
};
// The 17 keys in the one order in which they are always read and written.
const std::array<StyleKey, 17>& StyleKeys();

// Each key into its field, an empty read taking the fallback; the start
// and the window's own load and cancel all read through here.
void ReadStyleKeys(Program& prog);
// The 17 fields under their keys as they stand, empty ones too.
void WriteStyleKeys(Program& prog);

// The names of all Form4's text fields ("Text1" ... "Text24"), and a field
// by its name (nullptr for a name that is none).
const std::array<const char*, 23>& Form4FieldNames();
TextBox* Form4Field(Form4& form, std::string_view name);

// The window is loaded, hidden, at its first touch: on top, cut to its
// picture, the style read.
void EnsureForm4(Program& prog);
void Form4_Load(Program& prog);
// Shows the window without waiting, back in view if it had slid away.
void ShowForm4(Program& prog);
// The real window and its controls, where the platform shows windows.
void CreateForm4Window(Program& prog);

// The three labels.
void Form4_Label8_Click(Program& prog);   // save and exit
void Form4_Label9_Click(Program& prog);   // scroll test
void Form4_Label10_Click(Program& prog);  // cancel

}  // namespace v2
