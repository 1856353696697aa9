#pragma once
// The popup's items as data, and the kinds of click they share: a plain
// toggle, a toggle with its timer, one of an exclusive pair, a value box.
// The behaviours give their items these clicks; the tree itself, which item
// is where and does what, is config/menu_tree's.
#include <functional>
#include <string>
#include <vector>

namespace v2 {

class Program;
struct Form2;
struct MenuItem;
struct TextBox;
class Timer;

// The title of every question the program asks.
inline constexpr const char* kAskTitle = "vantrel by mirrik";

// The whole popup below its root, one line per item in the order it
// opens: the level (1 for the popup's own items), the name, the caption in
// double quotes, "checked" or "unchecked", "enabled" or "disabled".
std::vector<std::string> MenuLines(const Form2& form2);
// Every named item of Form2, in the order of the popup's tree.
void ForEachMenuItem(Program& prog, const std::function<void(MenuItem&)>& f);
// A plain toggle: flips the mark and stores "true" or "false" under key.
void ToggleClick(Program& prog, MenuItem& item, const std::string& key);
// A toggle with its timer: as the plain toggle, with the timer stopped or
// started to match between the mark and the store.
void ToggleTimerClick(Program& prog, MenuItem& item, Timer& timer,
                      const std::string& key);
// One of an exclusive pair: a checked item is unchecked (the other stays
// as it is, so both may be off); an unchecked one is checked and the other
// unchecked, and both keys are stored, the clicked item's first.
void ExclusiveClick(Program& prog, MenuItem& item, const std::string& key,
                    MenuItem& other, const std::string& other_key);
// A value box: asks for the value under key (offering what is stored, or
// preset), puts the answer into box (an empty answer or a cancel keeps the
// offered value), stores it, then runs after.
void ValueBoxClick(Program& prog, const std::string& prompt,
                   const std::string& key, const std::string& preset,
                   TextBox& box, const std::function<void()>& after = {});

}  // namespace v2
