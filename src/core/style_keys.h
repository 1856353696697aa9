#pragma once
// The style of the lines as it is kept: the 17 keyed fields of Form4 and
// their keys in settings.dat, and every field of Form4 by its name.
#include <array>
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

}  // namespace v2
