#pragma once
// The disconnect watch. Form2.Timer4 (every 500 ms while "reconnect aol" is
// on) watches the member's being signed on; when the sign-on is gone it
// presses the client's sign-on control 3 s later and hands over to
// Form2.Timer5, which waits (ticking every second, for as long as it takes)
// for the Welcome window and then puts the session in order as the options
// of "disc. protection" say: IMs off, ghosting on, the room of "build room
// name", the transfers. Nothing is said in the room and nothing stored.
//
// The sequence runs once for each reconnection. When it has run, its ticks
// do nothing more (Form2.Reconnected) until the next tick of the watch,
// which stops Timer5 and starts the watch over; a tick of Timer5 that comes
// between the end of the sequence and that tick finds the Welcome window
// but begins nothing.
namespace v2 {

class Program;
struct Platform;

// Clicks, presses the space bar on and clicks again the 4th icon of the
// client's first child, where the client shows its sign-on window.
void ReconnectHost(Platform& p);

void Timer4_Timer(Program& prog);
void Timer5_Timer(Program& prog);

// The menu items of "disc. protection" that do more than flip a mark: the
// watch on or off, the exclusive pairs, and the room's value box.
void reconaol_Click(Program& prog);
void enterpr_Click(Program& prog);
void enterjap_Click(Program& prog);
void continueul_Click(Program& prog);
void continuedl_Click(Program& prog);
void buildroom_Click(Program& prog);

}  // namespace v2
