#pragma once
// Windows-1252 text helpers with the conventions the program relies on:
// 1-based positions, case-sensitive searches giving 0 when nothing is found.
#include <cstdint>
#include <string>
#include <string_view>

namespace v2 {

// Lower case as the ANSI code page 1252 defines it (A-Z, the accented
// capitals, and the letters 0x8A, 0x8C, 0x8E, 0x9F).
std::string LCase(std::string_view s);
// Position of needle in haystack searching from start (1-based), or 0.
int InStr(int start, std::string_view haystack, std::string_view needle);
// The text from position start (1-based) with at most length characters;
// length < 0 means to the end.
std::string Mid(std::string_view s, int start, int length = -1);
std::string Left(std::string_view s, int length);
// Whether s reads as a number the way a classic BASIC's IsNumeric takes
// it: blanks (spaces, tabs) around, a sign, digits with at most one decimal
// point, and an exponent (E or D, with its own sign and digits). Empty or
// blank text is no number.
bool IsNumeric(std::string_view s);
// Equal but for the case of the ASCII letters, as the window manager
// compares class names and the profile API compares sections and keys.
bool SameIgnoringCase(std::string_view a, std::string_view b);

// Edges only: the terminal and test helpers.
// One Unicode code point as UTF-8.
void AppendUtf8(std::string& out, std::uint32_t u);
std::string Cp1252ToUtf8(std::string_view s);
// Characters with no Windows-1252 form become '?'.
std::string Utf8ToCp1252(std::string_view s);

}  // namespace v2
