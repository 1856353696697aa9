#pragma once
// The shared helpers of lists and files: a list box to and from a text
// file, a file's presence, the program's one source of chance, and where the
// command list lies.
#include <string>
#include <vector>

#include "platform/controls.h"
#include "platform/platform.h"

namespace v2 {

// Appends the file's items to the list (it is not cleared first), letting
// events run after each item. An item ends at a comma or at the end of a
// line; blanks in front of it are skipped; an item that opens with a double
// quote runs to the next one, commas included, and comes without the quotes.
// An empty line is one empty item. A file that cannot be read adds nothing.
void LoadList(Platform& p, const std::string& file, ListBox& list);
// Writes every entry, unchanged, each followed by CR LF. A failure changes
// nothing and says nothing.
void SaveList(Platform& p, const std::string& file, const ListBox& list);
// Whether a normal file of that name is there (hidden and system files
// count as missing; the empty name too).
bool FileExists(Platform& p, const std::string& file);
// A whole number from 1 to n (1 for n below 1), drawn after reseeding from
// the clock on every call.
double RandomPick(Platform& p, int n);

// The items of a list file, as LoadList reads them.
std::vector<std::string> ReadListItems(const std::string& bytes);

// The command list for the members: commands.txt in the program's own
// folder.
std::string CommandListFile(Platform& p);

}  // namespace v2
