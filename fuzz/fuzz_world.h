#pragma once
// A simulated client with the member signed on and one room open, on a
// virtual clock. Each fuzz input gets a fresh one, so a finding replays the
// same way every time.
#include <string>

#include "aolsim/aol_client.h"
#include "aolsim/sim_window_host.h"
#include "platform/platform.h"
#include "platform/sim/sim_loop.h"
#include "platform/sim/sim_windows.h"

namespace v2::fuzz {

struct World {
  explicit World(std::string name = "Member")
      : loop(sim::TimeMode::kVirtual, LocalTime{2001, 6, 15, 14, 3, 0, 0}),
        platform{windows, loop},
        host(windows, loop),
        client(host, std::move(name)) {
    client.Start();
  }
  sim::SimWindows windows;
  sim::SimLoop loop;
  Platform platform;
  aolsim::SimWindowHost host;
  aolsim::AolClient client;
};

}  // namespace v2::fuzz
