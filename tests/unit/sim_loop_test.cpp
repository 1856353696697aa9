#include "platform/sim/sim_loop.h"

#include <gtest/gtest.h>

#include "host/host_windows.h"
#include "platform/controls.h"
#include "tests/unit/world.h"

namespace v2 {
namespace {

TEST(SimLoop, TimersFireAtTheirDueTimesInVirtualTime) {
  testing::World world;
  Timer timer(world.loop, 63000);
  std::vector<std::int64_t> fired;
  timer.OnTimer([&] { fired.push_back(world.loop.clock().NowMs()); });
  timer.SetEnabled(true);
  world.loop.RunFor(200000);
  EXPECT_EQ(fired, (std::vector<std::int64_t>{63000, 126000, 189000}));
  EXPECT_EQ(world.loop.clock().NowMs(), 200000);

  timer.SetEnabled(false);
  world.loop.RunFor(100000);
  EXPECT_EQ(fired.size(), 3u);
  // Re-enabling restarts the countdown from now.
  timer.SetEnabled(true);
  world.loop.RunFor(63000);
  EXPECT_EQ(fired.back(), 363000);
}

TEST(SimLoop, ATimerNeverStartsWhileItsHandlerStillRuns) {
  testing::World world;
  Timer timer(world.loop, 100);
  int depth = 0, deepest = 0, ticks = 0;
  timer.OnTimer([&] {
    ++ticks;
    deepest = std::max(deepest, ++depth);
    Pause(world.platform, 1.0);  // pumps: other events run, not this one
    --depth;
  });
  timer.SetEnabled(true);
  world.loop.RunFor(5000);
  EXPECT_EQ(deepest, 1);
  EXPECT_GE(ticks, 4);
}

TEST(SimLoop, PauseWaitsAndPumpsButNotForNothing) {
  testing::World world;
  int ran = 0;
  world.loop.Post([&] { ++ran; });
  Pause(world.platform, 0);
  Pause(world.platform, -1);
  EXPECT_EQ(ran, 0);
  EXPECT_EQ(world.loop.clock().NowMs(), 0);
  Pause(world.platform, 1.5);
  EXPECT_EQ(ran, 1);
  EXPECT_EQ(world.loop.clock().NowMs(), 1500);
}

TEST(SimLoop, ClockDateAndItsParsing) {
  LocalTime t;
  EXPECT_TRUE(sim::ParseLocalTime("2001-12-31 23:59:30", t));
  sim::SimClock clock(sim::TimeMode::kVirtual, t);
  EXPECT_EQ(clock.ShortDate(), "12/31/2001");
  clock.Advance(45000);  // across midnight and the new year
  EXPECT_EQ(clock.ShortDate(), "1/1/2002");
  EXPECT_DOUBLE_EQ(clock.SecondsSinceMidnight(), 15.0);
  EXPECT_FALSE(sim::ParseLocalTime("2001-02-30 10:00:00", t));
  EXPECT_FALSE(sim::ParseLocalTime("2001-06-15", t));
  EXPECT_FALSE(sim::ParseLocalTime("2001-06-15 24:00:00", t));
  EXPECT_FALSE(sim::ParseLocalTime("2001-06-15 10:00:00x", t));
}

}  // namespace
}  // namespace v2
