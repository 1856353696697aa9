// The one-shot acts on the client and the desktop, and the values read
// around it.
#include "host/host_tweaks.h"

#include <gtest/gtest.h>

#include "aolsim/desktop.h"
#include "host/host_windows.h"
#include "tests/unit/world.h"

namespace v2 {
namespace {

// Every request the program makes of the shell, with all its arguments.
struct Recorder : ShellService {
  std::intptr_t ShellExecuteA(Hwnd owner, const char* verb, const char* file,
                              const char* parameters, const char* directory,
                              int show) override {
    calls.push_back(std::to_string(owner) + "|" + verb + "|" + file + "|" +
                    parameters + "|" + directory + "|" + std::to_string(show));
    return 42;
  }
  std::vector<std::string> calls;
};

struct Dir : NoStores {
  std::string ProgramDir() override { return "C:\\vantrel"; }
};

TEST(HostTweaks, WithTheClientGoneNothingHappens) {
  testing::World w;
  Platform& p = w.platform;
  w.client.Quit();
  HideHost(p);
  ShowHost(p);
  HideWelcome(p);
  ShowWelcome(p);
  KillGlyph(p);
  KillClock(p);  // its click goes to handle 0
  KillModal(p);
  w.loop.RunUntilIdle();
  EXPECT_EQ(w.windows.FindWindowA("AOL Frame25", nullptr), 0u);
}

TEST(HostTweaks, TheGlyphOfTheFrameAndTheTimeBoxsIcon) {
  testing::World w;
  Platform& p = w.platform;
  // The glyph is that of the frame titled with two blanks.
  w.windows.SetText(w.client.frame(), "America Online");
  KillGlyph(p);
  w.loop.Hold(10);
  EXPECT_TRUE(w.windows.IsWindow(w.client.glyph()));

  w.client.MenuCommand(35);  // Time Online
  ASSERT_TRUE(w.windows.IsWindow(w.client.time_box()));
  KillClock(p);
  w.loop.Hold(10);
  EXPECT_FALSE(w.windows.IsWindow(w.client.time_box()));

  w.client.Upload("a.zip", 1, 2);
  KillClock(p);  // the upload's box has no icon: nothing
  w.loop.Hold(10);
  EXPECT_TRUE(w.windows.IsWindow(w.client.upload()));
}

TEST(HostTweaks, AddressesAndFilesOpenThroughTheShell) {
  testing::World w;
  Recorder shell;
  Dir dir;
  Platform p = w.platform;
  p.shell_service = &shell;
  p.file_system = &dir;
  OpenWeb(p, "http://www.Example.com");
  OpenFile(p, "C:\\vantrel\\commands.txt");
  OpenCharmap(p);
  EXPECT_EQ(shell.calls,
            (std::vector<std::string>{
                "0|Open|http://www.Example.com||C:\\vantrel|1",
                "0|Open|C:\\vantrel\\commands.txt||C:\\vantrel|1",
                "0|Open|c:\\windows\\charmap.exe||C:\\vantrel|1"}));
}

TEST(HostTweaks, TheOtherMessengersNameAndTheTaskBarClock) {
  EXPECT_EQ(AimNameOf("mirrik's Buddy List"), "mirrik");
  EXPECT_EQ(AimNameOf("Some Body's Buddy List Window"), "Some Body");
  EXPECT_EQ(AimNameOf("o'neil's Buddy List"), "o");  // the first quote
  EXPECT_EQ(AimNameOf("'s Buddy List"), "");
  EXPECT_EQ(AimNameOf("mirrik's buddy list"), "");  // the case counts
  EXPECT_EQ(AimNameOf("Buddy List"), "");
  EXPECT_EQ(AimNameOf(""), "");
  EXPECT_EQ(TrayClockTimeOf("2:05 PM ", 7), "2:05 PM");
  EXPECT_EQ(TrayClockTimeOf("2:05", 7), "2:05");
  EXPECT_EQ(TrayClockTimeOf("2:05", -1), "");

  testing::World w;
  Platform& p = w.platform;
  aolsim::Desktop desktop(w.host);
  EXPECT_EQ(AimName(p), "");
  EXPECT_EQ(TrayClockTime(p), "");
  desktop.AimSignOn("Some Body");
  EXPECT_EQ(AimName(p), "Some Body");
  desktop.AimQuit();
  EXPECT_EQ(AimName(p), "");
  desktop.ShowTaskBar();
  EXPECT_EQ(TrayClockTime(p), "2:03 PM");
  w.loop.RunFor(10 * 3600 * 1000);
  EXPECT_EQ(TrayClockTime(p), "12:03 AM");
}

TEST(HostTweaks, TheTimeSinceTheMachinesStart) {
  auto uptime = [](std::uint32_t ms) {
    return UptimeDaysOf(ms) + " " + UptimeHoursOf(ms) + " " +
           UptimeMinutesOf(ms);
  };
  EXPECT_EQ(uptime(0), "0 0 0");
  EXPECT_EQ(uptime(59999), "0 0 0");
  EXPECT_EQ(uptime(180000), "0 0 3");
  EXPECT_EQ(uptime(7199999), "0 1 59");  // rounded down, never up
  EXPECT_EQ(uptime(7380000), "0 2 3");
  EXPECT_EQ(uptime(93780000), "1 2 3");
  EXPECT_EQ(uptime(86400000), "1 0 0");
  // Past 24.8 days the count still reads as the true time, up to its wrap.
  EXPECT_EQ(uptime(2147483648u), "24 20 31");
  EXPECT_EQ(uptime(4294967295u), "49 17 2");

  testing::World w;
  w.loop.sim_clock().SetUptime(93780000);
  EXPECT_EQ(UptimeDays(w.platform), "1");
  EXPECT_EQ(UptimeHours(w.platform), "2");
  EXPECT_EQ(UptimeMinutes(w.platform), "3");
  w.loop.RunFor(57 * 60000);
  EXPECT_EQ(UptimeHours(w.platform), "3");
  EXPECT_EQ(UptimeMinutes(w.platform), "0");
}

}  // namespace
}  // namespace v2
