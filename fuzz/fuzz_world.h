#pragma once
// Each fuzz input gets a fresh simulated client, so a finding replays the
// same way every time: the same world the unit tests use.
#include "tests/unit/world.h"

namespace v2::fuzz {
using World = testing::World;
}  // namespace v2::fuzz
