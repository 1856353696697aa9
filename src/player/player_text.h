#pragma once
// The two text helpers of the player, which any part of the program may use.
#include <string>

#include "platform/platform.h"

namespace v2 {

// text without any blank (character 32); tabs stay.
std::string StripSpaces(const std::string& text);
// text with every occurrence of find replaced, found without regard to case
// (a search for ".mp3" takes ".MP3" too). The search goes on behind each
// replacement, so replaced text is never searched again; pending events run
// at each replacement. An empty find replaces nothing.
std::string ReplaceText(Platform& p, const std::string& text,
                        const std::string& find,
                        const std::string& replacement);

}  // namespace v2
