#pragma once
// Upchat: the upload's status window (the client's _AOL_Modal) hidden and
// minimized while the upload goes on, so that the member can chat. By hand
// from the menu, and with "activate auto-upchat" on, by Form2.Timer2 for
// every upload, announced once in the room.
#include "platform/platform.h"

namespace v2 {

class Program;

// Hides, then minimizes, the first top-level _AOL_Modal, whatever it shows.
void UpChat(Platform& p);
// Hides, then restores, the first top-level _AOL_Modal, if there is one.
void UnUpChat(Platform& p);

// The tick of Form2.Timer2 (every 10 ms while auto-upchat is on): an upload
// not yet announced is hidden and announced; a tick that sees no modal at
// all ends the announced upload. It never waits: with a box of another kind
// in front (the time on line, say) it changes nothing and looks again at
// its next tick, so it neither holds up whoever will close that box nor
// takes the upload behind it for gone.
void Form2_Timer2_Timer(Program& prog);

// The menu's "activate auto-upchat": the mark, Form2.Timer2 and the key
// "autoup" follow each other.
void autoup_Click(Program& prog);

}  // namespace v2
