#pragma once
// The start's load: both stores into the live objects, the background work
// the switches ask for, a handle asked for when there is none, and the two
// lines that tell the room the program is there.
namespace v2 {

class Program;

void info(Program& prog);

}  // namespace v2
