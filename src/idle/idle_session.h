#pragma once
// The idle session: the time the member has declared to be away. It starts
// and ends from the menu or from chat, with the same steps, and can switch
// instant messages and ghosting on either side.
namespace v2 {

class Program;

void idleon_Click(Program& prog);
void idleoff_Click(Program& prog);

// The member's handle and the idle minutes of all time, in two lines.
void brag_Click(Program& prog);
// Asks for a new handle.
void user_Click(Program& prog);

}  // namespace v2
