#pragma once
// The program's start, from the splash to the tray icon, and the tray
// icon's popup. (The end is the menu item exit's, config/menu_tree.h.)
#include <cstdint>

namespace v2 {

class Program;

// The tip of the tray entry.
inline constexpr const char* kTrayTip = "vantrel\xB2: rgt clk for menu";
// How long the splash stays after the start has done its work, with the
// program already answering events.
inline constexpr double kSplashSeconds = 1.2;

void Form1_Load(Program& prog);
// A mouse button released over the tray entry: the right one opens the
// popup menu at the pointer.
void SystemTray1_MouseUp(Program& prog, std::int16_t Button);

}  // namespace v2
