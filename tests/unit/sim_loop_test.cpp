#include "platform/sim/sim_loop.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "host/host_windows.h"
#include "platform/controls.h"
#include "platform/loop_core.h"
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

// A sleeping timer is one whose passes do nothing: the passes it does get
// fall on the beat they would have fallen on anyway.
TEST(SimLoop, ASleepingTimerKeepsItsBeat) {
  testing::World world;
  Timer timer(world.loop, 1);  // floored to 10 ms
  std::vector<std::int64_t> fired;
  std::int64_t sleep_until = 0;
  timer.OnTimer([&] {
    fired.push_back(world.loop.clock().NowMs());
    if (sleep_until) timer.Sleep(std::exchange(sleep_until, 0));
  });
  timer.SetEnabled(true);
  world.loop.RunFor(25);
  EXPECT_EQ(fired, (std::vector<std::int64_t>{10, 20}));

  // Asleep until a time between two beats: the next pass is on the first
  // beat after it.
  sleep_until = 1005;
  world.loop.RunFor(1000);
  EXPECT_EQ(fired, (std::vector<std::int64_t>{10, 20, 30, 1010, 1020}));
  // Until a beat itself: that beat.
  sleep_until = 2000;
  world.loop.RunFor(1000);
  EXPECT_EQ(fired[5], 1030);
  EXPECT_EQ(fired[6], 2000);
}

TEST(SimLoop, ATimerAsleepUntilWokenCostsNoPassesAndWakesOnItsBeat) {
  testing::World world;
  Timer timer(world.loop, 10);
  std::vector<std::int64_t> fired;
  bool sleep = true;
  timer.OnTimer([&] {
    fired.push_back(world.loop.clock().NowMs());
    if (sleep) timer.Sleep(kNeverMs);
  });
  timer.SetEnabled(true);
  // A day with nothing to do: one pass, and the clock goes straight on.
  world.loop.RunFor(86400000);
  EXPECT_EQ(fired, (std::vector<std::int64_t>{10}));

  // Woken between beats: the next beat. Waking again changes nothing.
  world.loop.RunFor(3);  // 86400003
  timer.Wake();
  timer.Wake();
  world.loop.RunUntilIdle();
  EXPECT_EQ(fired.size(), 1u);
  sleep = false;
  world.loop.RunFor(20);
  EXPECT_EQ(fired, (std::vector<std::int64_t>{10, 86400010, 86400020}));

  // Woken on the millisecond of a beat that has not fired: it fires then.
  sleep = true;
  world.loop.RunFor(10);  // 86400033: it fired at 30 and sleeps
  world.loop.RunFor(7);
  timer.Wake();
  world.loop.RunUntilIdle();
  EXPECT_EQ(fired.back(), 86400040);

  // Woken by its own handler (which called something that wakes it): the
  // next pass is still a beat later, never a second one in the same tick.
  sleep = false;
  timer.OnTimer([&] {
    fired.push_back(world.loop.clock().NowMs());
    timer.Sleep(kNeverMs);
    timer.Wake();
  });
  world.loop.RunFor(10);
  EXPECT_EQ(fired.back(), 86400050);
  EXPECT_EQ(fired.size(), 6u);

  // Switching the timer off and on again forgets the sleep.
  timer.Sleep(kNeverMs);
  timer.SetEnabled(false);
  timer.SetEnabled(true);
  world.loop.RunFor(10);
  EXPECT_EQ(fired.back(), 86400060);
}

// Under real time a watcher looks about every interval, moved by at most a
// quarter of it so that it shares the wakes of a timer: earlier, at a wake for
// the timer, or later, waiting for the timer's wake. Asleep it never looks,
// and no wait counts on it, until woken.
TEST(LoopCore, AWatcherSharesTheTimersWakesAndSleepsUntilWoken) {
  for (std::int64_t added : {100, 400}) {
    SCOPED_TRACE(added);
    LoopCore core;
    std::vector<std::int64_t> looks, wakes;
    std::int64_t now = 0;
    TimerId timer = core.CreateTimer([] {});
    core.SetTimer(timer, 500, true, now);  // ticks at 500, 1000, ...
    now = added;  // the first look is due at 600 or at 900
    WatcherId watcher =
        core.AddWatcher([&] { looks.push_back(now); }, 500, now);
    for (int i = 0; i < 4; ++i) {  // the loop wakes for whatever is due
      now = core.NextDue(true);
      wakes.push_back(now);
      core.RunWatchers(now, false);
      core.FireDueTimers(now);
    }
    const std::vector<std::int64_t> beats{500, 1000, 1500, 2000};
    EXPECT_EQ(wakes, beats);
    EXPECT_EQ(looks, added == 100
                         ? beats
                         : (std::vector<std::int64_t>{1000, 1500, 2000}));

    core.SleepWatcher(watcher);
    core.SetTimer(timer, 500, false, now);
    EXPECT_EQ(core.NextDue(true), std::numeric_limits<std::int64_t>::max());
    const auto before = looks.size();
    core.RunWatchers(now + 5000, false);
    core.RunWatchers(now + 5000, true);  // virtual time's "every watcher"
    EXPECT_EQ(looks.size(), before);
    core.WakeWatcher(watcher, 9000);
    EXPECT_EQ(core.NextDue(true), 9000);
    now = 9000;
    core.RunWatchers(now, false);
    EXPECT_EQ(looks.back(), 9000);
    EXPECT_EQ(core.NextDue(true), 9500);
  }
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

TEST(SimLoop, AHoldLetsTheClientRunAndTimePassButNothingOfTheProgram) {
  testing::World world;
  Platform& p = world.platform;
  Timer timer(world.loop, 100);
  int ticks = 0, events = 0;
  timer.OnTimer([&] { ++ticks; });
  timer.SetEnabled(true);
  world.loop.Post([&] { ++events; });
  // A message posted to the client is handled while the program holds.
  Hwnd input = world.client.input();
  p.windows.PostMessageA(input, kWmChar, 'x', 0);
  // So does what a person does meanwhile, at its time.
  std::vector<std::int64_t> hands;
  world.loop.AfterOutside(300,
                          [&] { hands.push_back(world.loop.clock().NowMs()); });
  world.loop.AfterOutside(700,
                          [&] { hands.push_back(world.loop.clock().NowMs()); });
  world.loop.Hold(1000);
  EXPECT_EQ(world.loop.clock().NowMs(), 1000);
  EXPECT_EQ(world.client.InputText(), "x");
  EXPECT_EQ(hands, (std::vector<std::int64_t>{300, 700}));
  EXPECT_EQ(ticks, 0);
  EXPECT_EQ(events, 0);
  // Afterwards the program catches up; the missed ticks are one.
  world.loop.PumpEvents();
  EXPECT_EQ(events, 1);
  EXPECT_EQ(ticks, 1);

  // A holding wait on the client: bounded, and nothing of the program runs
  // meanwhile however long it holds.
  world.loop.Post([&] { ++events; });
  const std::int64_t start = world.loop.clock().NowMs();
  int passes = 0;
  EXPECT_FALSE(HoldForHost(
      p, [&] { return ++passes < 0; }, 2.5));
  EXPECT_EQ(world.loop.clock().NowMs() - start, 2500);
  EXPECT_EQ(events, 1);
  EXPECT_EQ(ticks, 1);
  EXPECT_GT(passes, 100);  // looked again every few milliseconds
  passes = 0;
  EXPECT_TRUE(HoldForHost(p, [&] { return ++passes == 3; }));
  EXPECT_EQ(events, 1);
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

  // The machine's tick count starts at its uptime and wraps at 2^32.
  EXPECT_EQ(clock.TickCount(), 45000u);
  clock.SetUptime(4294967295u);
  EXPECT_EQ(clock.TickCount(), 44999u);
}

}  // namespace
}  // namespace v2
