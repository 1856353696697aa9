#pragma once
// The search: `p` and a piece of a name finds the tracks that hold it and
// plays the one match, or lists several by number for `p` and a number, or
// `cancel`.
#include <string>

namespace v2 {

class Program;

// Finds text (blanks and case do not count) in the names of File1's
// tracks; one match plays at once, several are listed.
void PlayIt(Program& prog, const std::string& text);
// The row `p`: a search, or while a list waits, the number of a match.
void PCommand(Program& prog, const std::string& CommandArg);
// The row `cancel`: drops a waiting list.
void CancelCommand(Program& prog, const std::string& CommandArg);

}  // namespace v2
