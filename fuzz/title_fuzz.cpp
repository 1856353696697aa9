// Fuzz target: the Welcome window's title, where the signed-on member's name
// is read from. The client writes it, so it can hold any bytes.
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/fuzz_check.h"
#include "fuzz/fuzz_world.h"
#include "host/host_windows.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  const std::string title(reinterpret_cast<const char*>(data), size);
  v2::fuzz::World world;
  world.windows.SetText(world.client.welcome(), title);

  const std::string prefix = "Welcome, ";
  const bool welcomes = title.rfind(prefix, 0) == 0;
  // The Welcome window is the client's first child; the others (an IM and a
  // room) never start that way.
  v2::Hwnd found = v2::FindWelcome(world.platform);
  V2_FUZZ_CHECK(found == (welcomes ? world.client.welcome() : 0),
                "the Welcome window is found by its title alone");

  std::string user = v2::GetUser(world.platform);
  V2_FUZZ_CHECK(title.find(user) != std::string::npos,
                "the name is part of the title");
  if (!user.empty()) {
    V2_FUZZ_CHECK(welcomes, "only a Welcome title names the member");
    V2_FUZZ_CHECK(title.compare(prefix.size(), user.size(), user) == 0,
                  "the name stands right behind the greeting");
    V2_FUZZ_CHECK(title.size() > prefix.size() + user.size() &&
                      title[prefix.size() + user.size()] == '!',
                  "the name ends at an exclamation mark");
    V2_FUZZ_CHECK(user.find('!') == std::string::npos,
                  "the name ends at the first exclamation mark");
  } else if (welcomes) {
    auto bang = title.find('!');
    V2_FUZZ_CHECK(bang == std::string::npos || bang <= prefix.size(),
                  "a greeting with a name behind it gives that name");
  }
  V2_FUZZ_CHECK(v2::SignedOnName(world.platform) ==
                    (user.empty() ? v2::kVbFalse : v2::kVbTrue),
                "signed on exactly when there is a name");
  return 0;
}
