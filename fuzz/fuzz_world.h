#pragma once
// Each fuzz input gets a fresh simulated client, so a finding replays the
// same way every time: the same world the unit tests use.
#include <array>
#include <string_view>

#include "tests/unit/world.h"

namespace v2::fuzz {
using World = testing::World;

// The input as three texts: its first line, its second line and the rest
// (empty where the input ends before).
inline std::array<std::string_view, 3> ThreeParts(std::string_view input) {
  std::array<std::string_view, 3> part;
  std::string_view rest = input;
  for (int i = 0; i < 2; ++i) {
    const auto nl = rest.find('\n');
    part[i] = rest.substr(0, nl);
    rest =
        nl == std::string_view::npos ? std::string_view() : rest.substr(nl + 1);
  }
  part[2] = rest;
  return part;
}
}  // namespace v2::fuzz
