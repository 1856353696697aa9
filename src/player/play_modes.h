#pragma once
// The end of a track. Nothing says that a track has ended: Form1.Timer2
// looks at the control on every pass, and when the position stands at the
// length it acts by the play modes. Also the two time formatters of
// `length`.
#include <string>

#include "platform/platform.h"

namespace v2 {

class Program;

// One pass: four blocks (repeat, continuous, order, stop), each testing the
// end afresh before it looks at its mode.
void Timer2_Timer(Program& prog);
// A play mode has changed: the next pass looks again.
void ModesChanged(Program& prog);

// "mm:ss" of the control's length and position: whole seconds (halves to
// the even one), minutes in at least two digits, never hours. Pending
// events run at each minute counted.
std::string SongLength(Program& prog);
std::string SongPOS(Program& prog);
std::string SongTime(Platform& p, double seconds);

}  // namespace v2
