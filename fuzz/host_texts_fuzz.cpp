// Fuzz target: the texts the program reads around the client: the time box's
// text (SessionTimeOf), the other messenger's buddy list title (AimNameOf,
// and AimName through its window) and the task bar clock's text
// (TrayClockTime through its window, TrayClockTimeOf). The input is the
// three texts separated by newlines.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/fuzz_check.h"
#include "fuzz/fuzz_world.h"
#include "host/host_menus.h"
#include "host/host_tweaks.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  const std::string input(reinterpret_cast<const char*>(data), size);
  const auto part = v2::fuzz::ThreeParts(input);
  const std::string box(part[0]), title(part[1]), clock(part[2]);

  // The time on line: what stands behind the first "for " (or from the 4th
  // character), without its dots.
  const std::string time = v2::SessionTimeOf(box);
  auto at = box.find("for ");
  std::string behind = at == std::string::npos
                           ? (box.size() > 3 ? box.substr(3) : std::string())
                           : box.substr(at + 4);
  std::erase(behind, '.');
  V2_FUZZ_CHECK(time == behind, "the time is the text behind \"for \"");

  // The screen name: what comes before the first quote, when the title
  // says it is a buddy list at all.
  const std::string name = v2::AimNameOf(title);
  if (title.find("'s Buddy List") == std::string::npos) {
    V2_FUZZ_CHECK(name.empty(), "no buddy list, no name");
  } else {
    V2_FUZZ_CHECK(title.compare(0, name.size(), name) == 0 &&
                      title[name.size()] == '\'' &&
                      name.find('\'') == std::string::npos,
                  "the name runs up to the first quote");
  }
  V2_FUZZ_CHECK(v2::TrayClockTimeOf(clock, 3) == clock.substr(0, 3) &&
                    v2::TrayClockTimeOf(clock, -1).empty(),
                "the clock's text is the first characters of its buffer");

  // Through windows of the simulated system.
  v2::fuzz::World world;
  v2::Platform& p = world.platform;
  world.windows.Create(0, "_Oscar_BuddyListWin", title);
  V2_FUZZ_CHECK(v2::AimName(p) == name, "the window reads as its title");
  v2::Hwnd tray = world.windows.Create(0, "Shell_TrayWnd", "");
  world.windows.Create(world.windows.Create(tray, "TrayNotifyWnd", ""),
                       "TrayClockWClass", clock);
  V2_FUZZ_CHECK(v2::TrayClockTime(p) == clock, "the clock reads as its text");
  return 0;
}
