// The client's toolbar popups in virtual time: a mail list walked through
// the simulated client's Mail Center popup, and a popup that never comes,
// whose holding wait looks for it every 10 ms until the bound.
#include <benchmark/benchmark.h>

#include "host/host_menus.h"
#include "host/host_windows.h"
#include "tests/unit/world.h"

namespace {

void BM_MailOpenNew(benchmark::State& state) {
  v2::testing::World world;
  int opened = 0;
  world.client.on_event = [&](const std::string&) { ++opened; };
  for (auto _ : state) {
    v2::MailOpenNew(world.platform);
    world.loop.Hold(10);  // the client takes the keys
  }
  if (opened != state.iterations()) {
    state.SkipWithError("a walk did not reach Read New Mail");
  }
}
BENCHMARK(BM_MailOpenNew);

void BM_PopupNeverComes(benchmark::State& state) {
  v2::testing::World world;
  // No client: every lookup gives 0 until the bound.
  world.client.Quit();
  std::int64_t held_ms = 0;
  for (auto _ : state) {
    const std::int64_t start = world.loop.clock().NowMs();
    v2::MailOpenNew(world.platform);
    held_ms = world.loop.clock().NowMs() - start;
  }
  if (held_ms != 10000) state.SkipWithError("the hold did not end at 10 s");
  state.counters["held_virtual_ms"] = static_cast<double>(held_ms);
}
BENCHMARK(BM_PopupNeverComes)->Unit(benchmark::kMicrosecond);

}  // namespace
