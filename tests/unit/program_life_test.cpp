// The program's life across runs: what one run stores, the next one finds.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <sstream>

#include "app/runner.h"
#include "core/program.h"
#include "idle/idle_tick.h"
#include "platform/sim/sim_stores.h"
#include "tests/unit/filled_stores.h"

namespace v2 {
namespace {

namespace fs = std::filesystem;

TEST(IdleTick, GroupThousandsGroupsByThreesFromTheRight) {
  EXPECT_EQ(GroupThousands("0"), "0");
  EXPECT_EQ(GroupThousands("999"), "999");
  EXPECT_EQ(GroupThousands("1000"), "1,000");
  EXPECT_EQ(GroupThousands("100000"), "100,000");
  EXPECT_EQ(GroupThousands("999999"), "999,999");
  EXPECT_EQ(GroupThousands("1234567"), "1,234,567");
  EXPECT_EQ(GroupThousands("123456789"), "123,456,789");
  // Not a plain run of digits: left as it is.
  EXPECT_EQ(GroupThousands("12ab34"), "12ab34");
  EXPECT_EQ(GroupThousands(""), "");
}

TEST(IdleTick, CountersCountAsNumbersAndWriteDigits) {
  EXPECT_EQ(CountOneMore("0"), "1");
  EXPECT_EQ(CountOneMore("999"), "1000");
  EXPECT_EQ(CountOneMore(""), "1");
  EXPECT_EQ(CountOneMore("junk"), "1");
  EXPECT_EQ(CountOneMore("41.5"), "42.5");
  EXPECT_EQ(CountOneMore("99999999999999"), "100000000000000");
}

// Runs of the program on one pair of stores.
struct Runs {
  Runs()
      : dir(fs::temp_directory_path() / ("v2-life-" + std::to_string(getpid()) +
                                         "-" + std::to_string(counter++))) {
    fs::create_directories(dir);
    options.script = "-";
    options.clock = LocalTime{2001, 6, 15, 14, 3, 0, 0};
    options.user_store = (dir / "user-store").string();
    options.program_dir = dir.string();
  }
  ~Runs() { fs::remove_all(dir); }
  std::unique_ptr<Runner> Run() {
    out.str("");
    return std::make_unique<Runner>(options, out, err);
  }
  static inline int counter = 0;
  fs::path dir;
  RunnerOptions options;
  std::ostringstream out, err;
};

TEST(ProgramLife, OnlyTheFirstStartAsksForTheHandle) {
  Runs runs;
  {
    auto first = runs.Run();
    first->Execute("answer x");
    first->Start();
    EXPECT_EQ(first->program().form2.Text5.Text.Get(), "x");
  }
  EXPECT_NE(runs.out.str().find("[inputbox] enter your handle | vantrel by "
                                "mirrik | new user"),
            std::string::npos);
  // The one entry the first start wrote; settings.dat is not made.
  sim::SimUserStore store(runs.options.user_store);
  EXPECT_EQ(store.GetSetting("vantrel2", "settings", "handle", "-"), "x");
  EXPECT_EQ(store.GetSetting("vantrel2", "settings", "interval", "-"), "-");
  EXPECT_FALSE(fs::exists(runs.dir / "settings.dat"));
  {
    auto second = runs.Run();
    second->Start();
    EXPECT_EQ(second->program().form2.Text5.Text.Get(), "x");
    EXPECT_EQ(second->program().form2.user.Caption, "user [x]");
  }
  EXPECT_EQ(runs.out.str().find("[inputbox]"), std::string::npos);
  EXPECT_NE(runs.out.str().find("lo\xC3\xA1"
                                "d:(x) : 0/mins"),
            std::string::npos);
}

TEST(ProgramLife, IdleMinutesOfAllTimeGoOnAcrossRuns) {
  Runs runs;
  {
    auto first = runs.Run();
    first->Execute("say idleon");
    first->Execute("wait 126");  // two ticks
    EXPECT_EQ(first->program().form2.Label1.Caption.Get(), "2");
  }
  {
    auto second = runs.Run();
    second->Start();
    // The session did not resume; the minutes of all time did.
    EXPECT_EQ(second->program().form2.Label1.Caption.Get(), "2");
    EXPECT_FALSE(second->program().form1.Timer1.Enabled());
    EXPECT_NE(runs.out.str().find(": 2/mins"), std::string::npos);
    second->Execute("say idleon");
    second->Execute("wait 63");
    EXPECT_EQ(second->program().form2.Label1.Caption.Get(), "3");
    EXPECT_EQ(second->program().form1.Label1.Caption.Get(), "1");
  }
}

// Whatever text the stores hold, the program starts, answers its commands,
// counts its idle minutes (scrolling or, for an interval that is no count,
// quietly not), and loses nothing stored: every key it does not write
// reads back as it was. Each text goes into every key at once, but the
// command switch, which must stay on for commands to be answered.
TEST(ProgramLife, AnyStoredTextStartsTheProgramAndLosesNothing) {
  static const char kControls[] = "tab\tcr\rlf\nesc\x1b[2J\x01\x7f\0nul";
  const std::string texts[] = {
      std::string(10000, 'x'),
      "",
      "abc",
      "-1",
      "1e999",
      "nan",
      "99999999999999999999",
      "<b><font color=#000000 face=\"x\">",
      std::string(kControls, sizeof(kControls) - 1),
      "\xff\xfe\x80\x81 \"quoted\" ",
      "C:\\nowhere\\at all\\",
      "%s%n%d{}",
  };
  for (const std::string& text : texts) {
    SCOPED_TRACE(::testing::PrintToString(text.substr(0, 40)));
    testing::FilledStores stores;
    std::map<std::string, std::string> user, ini;
    for (const char* key : testing::kUserKeys) user[key] = text;
    user["ccoms on"] = "true";
    for (const char* key : testing::kIniKeys) ini[key] = text;
    stores.Fill(user, ini);
    const std::string ini_before = stores.IniWithoutBrag();
    std::ostringstream out, err;
    {
      Runner run(stores.options, out, err);
      run.Execute("answer x");  // for a handle stored empty
      run.Start();
      const std::string brag = run.program().form2.Label1.Caption.Get();
      run.Execute("say date");
      run.Execute("say brag");
      run.Execute("menu idleon");
      run.Execute("wait 63");
      EXPECT_EQ(run.program().form1.Label1.Caption.Get(), "1");
      EXPECT_EQ(run.program().form2.Label1.Caption.Get(), CountOneMore(brag));
      run.Execute("menu idleoff");
      EXPECT_FALSE(run.ended());
    }
    EXPECT_NE(out.str().find("todays date:"), std::string::npos);
    EXPECT_NE(out.str().find("total idle mins"), std::string::npos);
    EXPECT_EQ(err.str(), "");
    for (const char* key : testing::kUserKeys) {
      if (std::string(key) == "handle" && text.empty()) continue;  // asked
      // A stored text is read up to its first NUL, as the registry's is.
      EXPECT_EQ(stores.User(key), user[key].substr(0, user[key].find('\0')))
          << key;
    }
    EXPECT_EQ(stores.IniWithoutBrag(), ini_before);
  }
}

TEST(ProgramLife, OffLastsOneRunAndTheMenuSwitchIsStored) {
  Runs runs;
  {
    auto first = runs.Run();
    first->Execute("say off");
    EXPECT_FALSE(first->program().form1.Chat1.Scanning());
  }
  {
    auto second = runs.Run();
    second->Start();
    EXPECT_TRUE(second->program().form1.Chat1.Scanning());
    EXPECT_FALSE(second->program().form1.Chat2.Scanning());
    second->Execute("menu cchat_off");
  }
  sim::SimUserStore store(runs.options.user_store);
  EXPECT_EQ(store.GetSetting("vantrel2", "settings", "ccoms on", "-"), "false");
  EXPECT_EQ(store.GetSetting("vantrel2", "settings", "ccoms off", "-"), "true");
  {
    auto third = runs.Run();
    third->Start();
    EXPECT_FALSE(third->program().form1.Chat1.Scanning());
    EXPECT_TRUE(third->program().form1.Chat2.Scanning());
    EXPECT_TRUE(third->program().form2.cchat_off.Checked);
    // Both start enabled: the checked one can still be clicked.
    EXPECT_TRUE(third->program().form2.cchat_off.Enabled);
  }
}

TEST(ProgramLife, MenuTogglesAndValueBoxesAreStored) {
  Runs runs;
  {
    auto first = runs.Run();
    first->Execute("menu chatsendtrans");
    first->Execute("menu chatsendtime");
    first->Execute("menu ghostingon");
    first->Execute("answer-cancel");
    first->Execute("menu interval");  // a cancel stores what was offered
    first->Execute("answer 05");
    first->Execute("menu reason");
  }
  sim::SimUserStore store(runs.options.user_store);
  auto get = [&](const char* key) {
    return store.GetSetting("vantrel2", "settings", key, "-");
  };
  EXPECT_EQ(get("chatsend trans"), "true");
  EXPECT_EQ(get("chatsend time"), "false");
  EXPECT_EQ(get("ghosting on"), "true");
  EXPECT_EQ(get("interval"), "1");
  EXPECT_EQ(get("reason"), "05");
  auto second = runs.Run();
  second->Start();
  const Form2& f = second->program().form2;
  EXPECT_TRUE(f.chatsendtrans.Checked);
  EXPECT_FALSE(f.chatsendtime.Checked);
  EXPECT_TRUE(f.ghostingon.Checked);
  EXPECT_EQ(f.Text1.Text.Get(), "05");
}

TEST(ProgramLife, TheGuardsSwitchesAreStoredAndComeBackWithTheirTimers) {
  Runs runs;
  {
    auto first = runs.Run();
    first->Execute("menu reconaol");  // toggles with their timers
    first->Execute("menu autoup");
    first->Execute("menu immachine");
    const Form2& f = first->program().form2;
    EXPECT_FALSE(f.Timer4.Enabled());
    EXPECT_FALSE(f.Timer2.Enabled());
    EXPECT_TRUE(f.Timer6.Enabled());
    first->Execute("menu enterjap");    // an exclusive pair: the mark moves
    first->Execute("menu continueul");  // the checked one: both off now
    first->Execute("menu imzoff");
    first->Execute("menu hidebuddy");
    first->Execute("answer-cancel");
    first->Execute("menu buildroom");  // a cancel stores what was offered
    first->Execute("answer ");
    first->Execute("menu buildafk");  // so does an empty answer
    EXPECT_EQ(f.Text6.Text.Get(), "im afk");
    first->Execute("answer gone  fishing");
    first->Execute("menu buildafk");
  }
  sim::SimUserStore store(runs.options.user_store);
  auto get = [&](const char* key) {
    return store.GetSetting("vantrel2", "settings", key, "-");
  };
  EXPECT_EQ(get("dcp aol"), "false");
  EXPECT_EQ(get("autoup"), "false");
  EXPECT_EQ(get("machine"), "true");
  EXPECT_EQ(get("dcp jap"), "true");
  EXPECT_EQ(get("dcp pr"), "false");
  EXPECT_EQ(get("dcp ul"), "false");
  EXPECT_EQ(get("dcp dl"), "-");  // the other key only when it is moved to
  EXPECT_EQ(get("dcp ims"), "false");
  EXPECT_EQ(get("dcp buddy"), "true");
  EXPECT_EQ(get("dcp room"), "idle");
  EXPECT_EQ(get("machine msg"), "gone  fishing");
  auto second = runs.Run();
  second->Start();
  const Form2& f = second->program().form2;
  EXPECT_FALSE(f.reconaol.Checked || f.Timer4.Enabled());
  EXPECT_FALSE(f.autoup.Checked || f.Timer2.Enabled());
  EXPECT_TRUE(f.immachine.Checked && f.Timer6.Enabled());
  EXPECT_TRUE(f.enterjap.Checked);
  EXPECT_FALSE(f.enterpr.Checked || f.continueul.Checked ||
               f.continuedl.Checked || f.imzoff.Checked);
  EXPECT_TRUE(f.hidebuddy.Checked);
  EXPECT_EQ(f.Text4.Text.Get(), "idle");
  EXPECT_EQ(f.Text6.Text.Get(), "gone  fishing");
}

}  // namespace
}  // namespace v2
