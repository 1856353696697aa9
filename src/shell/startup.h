#pragma once
// The start's load: both stores into the live objects, the background work
// the switches ask for, a handle asked for when there is none, and the two
// lines that tell the room the program is there.
namespace v2 {

class Program;

void info(Program& prog);

// The per-user store into the live objects, key by key in the store's
// order: the check marks (a flag counts only as the exact text "true"; a read
// never clears a mark), the texts of Form2, the captions that show them, and
// the scanners and timers the switches ask for. With ask_for_handle, a
// missing or empty handle is asked for and stored ("new user" when the
// member gives none).
void ReadUserSettings(Program& prog, bool ask_for_handle = false);
// settings.dat into the live objects: the idle minutes of all time, the
// style fields (loading Form4), each with its text for an empty read, and
// the player's directory (the program's own when none is stored).
void ReadSettingsFile(Program& prog);

}  // namespace v2
