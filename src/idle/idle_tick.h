#pragma once
// The idle minute: while a session runs, Form1.Timer1 counts the member's
// idle minutes (of the session and of all time) and every `interval` ticks
// scrolls the time, a reason and the transfers into the room.
#include <string>

namespace v2 {

class Program;

// One tick of Form1.Timer1.
void Timer1_Timer(Program& prog);

// A count's digits grouped by threes with ",", from the right: 1234567 gives
// 1,234,567. A count below 1000 comes back unchanged, and so does a text
// that is not a plain run of digits.
std::string GroupThousands(const std::string& count);

// A counter caption plus one, back as decimal text. A caption that is no
// number counts from 0.
std::string CountOneMore(const std::string& caption);

// The `interval` menu item: asks for the ticks between scrolls.
void interval_Click(Program& prog);

}  // namespace v2
