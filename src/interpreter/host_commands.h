#pragma once
// The rows of the chat commands that drive the client and the program's own
// windows and settings.
#include <string>

namespace v2 {

class Program;

// `handle`: the member's handle becomes the argument, the empty text too.
void SetHandle(Program& prog, const std::string& CommandArg);

}  // namespace v2
