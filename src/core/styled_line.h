#pragma once
// The one shape of everything the program says: three font segments whose
// faces, colours and decorations come from the live style fields.
#include <string>
#include <string_view>

namespace v2 {

class Program;
struct Form4;

enum class Pair { kMain, kSecond, kThird, kStat, kTest };

std::string StyledLine(const Form4& style, Pair pair, std::string_view middle);
// The same, with the end font directly behind the middle text.
std::string StyledLineTight(const Form4& style, Pair pair,
                            std::string_view middle);

// A reply in the room, in the main pair.
void Reply(Program& prog, const std::string& middle);

}  // namespace v2
