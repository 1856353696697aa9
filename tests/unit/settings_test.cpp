#include "core/settings.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "app/runner.h"
#include "core/program.h"
#include "platform/sim/sim_stores.h"
#include "tests/unit/world.h"

namespace v2 {
namespace {

namespace fs = std::filesystem;

// A world whose program has stores in a folder of its own.
struct StoreWorld {
  StoreWorld()
      : dir(fs::temp_directory_path() /
            ("v2-settings-" + std::to_string(getpid()) + "-" +
             std::to_string(counter++))),
        users((fs::create_directories(dir), (dir / "user-store").string())),
        files(dir.string()),
        platform{world.windows, world.loop, &users, &profiles, &files},
        program(platform) {}
  ~StoreWorld() { fs::remove_all(dir); }
  std::string Ini() { return SettingsFile(platform); }
  void WriteIni(const std::string& text) {
    std::ofstream(dir / "settings.dat", std::ios::binary) << text;
  }
  std::string ReadIni() {
    std::ifstream in(dir / "settings.dat", std::ios::binary);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
  }

  static inline int counter = 0;
  testing::World world;
  fs::path dir;
  sim::SimUserStore users;
  sim::SimProfileService profiles;
  sim::SimFileSystem files;
  Platform platform;
  Program program;
};

std::string Marks(const Form2& f) {
  const MenuItem* items[] = {
      &f.chatsendtime, &f.chatsendtrans, &f.chatsendreasons, &f.randomize,
      &f.imsoff,       &f.ghostingon,    &f.imson,           &f.ghostingoff,
      &f.autoup,       &f.immachine,     &f.cchat_on,        &f.cchat_off,
      &f.reconaol,     &f.enterpr,       &f.enterjap,        &f.continueul,
      &f.continuedl,   &f.imzoff,        &f.ghoztingon,      &f.hidebuddy};
  std::string out;
  for (const MenuItem* m : items) out += m->Checked ? 'x' : '.';
  return out;
}

TEST(Settings, EmptyStoresGiveEveryDefaultAndWriteOnlyTheHandle) {
  StoreWorld w;
  w.program.Start();
  const Form2& f = w.program.form2;
  EXPECT_EQ(Marks(f), "x.xx....x.x.xx.x.x..");
  EXPECT_EQ(f.Text1.Text.Get(), "no reason");
  EXPECT_EQ(f.Text2.Text.Get(), "1");
  EXPECT_EQ(f.interval.Caption, "interval : 1/m");
  EXPECT_EQ(f.Text4.Text.Get(), "idle");
  // Nobody answered the question for a handle.
  EXPECT_EQ(f.Text5.Text.Get(), "new user");
  EXPECT_EQ(f.user.Caption, "user [new user]");
  EXPECT_EQ(f.Text6.Text.Get(), "afk");
  EXPECT_EQ(f.Label1.Caption.Get(), "0");
  EXPECT_TRUE(f.idleoff.Checked);
  EXPECT_FALSE(f.idleoff.Enabled);
  EXPECT_TRUE(w.program.form1.Chat1.Scanning());
  EXPECT_FALSE(w.program.form1.Chat2.Scanning());
  const Form4& s = w.program.form4;
  EXPECT_EQ(s.Text1.Text.Get(), "arial narrow");
  EXPECT_EQ(s.Text5.Text.Get(), "ff8000");
  EXPECT_EQ(s.Text13.Text.Get(), " \x8B\xCC\xA1");
  EXPECT_EQ(s.Text20.Text.Get(), "");
  EXPECT_EQ(s.Text19.Text.Get(), "ml");
  sim::SimUserStore written((w.dir / "user-store").string());
  EXPECT_EQ(written.GetSetting("vantrel2", "settings", "handle", "-"),
            "new user");
  EXPECT_EQ(written.GetSetting("vantrel2", "settings", "interval", "-"), "-");
  EXPECT_FALSE(fs::exists(w.dir / "settings.dat"));
}

TEST(Settings, FlagsAreTheExactTextTrueAndStoredTextsStand) {
  StoreWorld w;
  SaveSetting(w.platform, "chatsend time", "True");  // default true, now off
  SaveSetting(w.platform, "autoup", "1");
  SaveSetting(w.platform, "ccoms on", "false");
  SaveSetting(w.platform, "ccoms off", "true");
  SaveSetting(w.platform, "interval", "");  // a stored empty text is a value
  SaveSetting(w.platform, "handle", "mirrik");
  // A style field reads its fallback for an empty line; an end ornament
  // stays empty whatever it held.
  w.WriteIni("[vantrel2]\r\nMID=\r\neascii1=\r\nBRAG=1234\r\n");
  w.program.form4.Text20.Text.Set("old");
  w.program.Start();
  const Form2& f = w.program.form2;
  EXPECT_FALSE(f.chatsendtime.Checked);
  EXPECT_FALSE(f.autoup.Checked);
  EXPECT_FALSE(f.cchat_on.Checked);
  EXPECT_FALSE(w.program.form1.Chat1.Scanning());
  EXPECT_TRUE(w.program.form1.Chat2.Scanning());
  EXPECT_EQ(f.Text2.Text.Get(), "");
  EXPECT_EQ(f.interval.Caption, "interval : /m");
  EXPECT_EQ(f.user.Caption, "user [mirrik]");
  EXPECT_EQ(w.program.form4.Text7.Text.Get(), ": idle :");
  EXPECT_EQ(w.program.form4.Text20.Text.Get(), "");
  EXPECT_EQ(f.Label1.Caption.Get(), "1234");

  // The store survives the program: another one reads it.
  sim::SimUserStore again((w.dir / "user-store").string());
  EXPECT_EQ(again.GetSetting("vantrel2", "settings", "interval", "x"), "");
  EXPECT_EQ(again.GetSetting("vantrel2", "settings", "handle", ""), "mirrik");
  EXPECT_EQ(again.GetSetting("vantrel2", "settings", "nothing", "d"), "d");
}

TEST(Settings, TheProfileFileAsWindowsKeepsIt) {
  StoreWorld w;
  const std::string ini = w.Ini();
  EXPECT_EQ(IniRead(w.platform, "vantrel2", "afont", ini), "");  // no file
  // A hand-edited file: keys in any case, blanks, LF lines, other sections.
  w.WriteIni(
      "; mine\n[other]\nafont=comic\n\n[VanTrel2]\n afont = courier \nmin=\n"
      "[last]\nx=1\n");
  EXPECT_EQ(IniRead(w.platform, "vantrel2", "AFONT", ini), "courier");
  EXPECT_EQ(IniRead(w.platform, "vantrel2", "min", ini), "");
  EXPECT_EQ(IniRead(w.platform, "vantrel2", "x", ini), "");

  IniWrite(w.platform, "vantrel2", "afont", "arial", ini);
  IniWrite(w.platform, "vantrel2", "brag", "", ini);  // written, though empty
  IniWrite(w.platform, "vantrel2", "path", "c:\\music", ini);
  EXPECT_EQ(w.ReadIni(),
            "; mine\r\n[other]\r\nafont=comic\r\n\r\n[VanTrel2]\r\nAFONT=arial"
            "\r\nmin=\r\nBRAG=\r\nPATH=c:\\music\r\n[last]\r\nx=1\r\n");
  EXPECT_EQ(IniRead(w.platform, "vantrel2", "path", ini), "c:\\music");
  EXPECT_FALSE(fs::exists(w.dir / "settings.dat.new"));

  // A read gives at most 749 characters.
  const std::string long_value(800, 'v');
  IniWrite(w.platform, "vantrel2", "mid", long_value, ini);
  EXPECT_EQ(IniRead(w.platform, "vantrel2", "mid", ini),
            long_value.substr(0, 749));
  const std::string exact(749, 'w');
  IniWrite(w.platform, "vantrel2", "mid", exact, ini);
  EXPECT_EQ(IniRead(w.platform, "vantrel2", "mid", ini), exact);
}

TEST(Settings, TheHandleCommandStoresTheHandleForTheNextRun) {
  fs::path dir =
      fs::temp_directory_path() / ("v2-handle-" + std::to_string(getpid()));
  fs::create_directories(dir);
  RunnerOptions options;
  options.script = "-";
  options.clock = LocalTime{2001, 6, 15, 14, 3, 0, 0};
  options.user_store = (dir / "user-store").string();
  options.program_dir = dir.string();
  std::ostringstream out, err;
  {
    Runner first(options, out, err);
    first.Execute("say handle mirrik");
    EXPECT_EQ(first.program().form2.user.Caption, "user [mirrik]");
    first.Execute("say handle");  // empties it
    EXPECT_EQ(first.program().form2.Text5.Text.Get(), "");
    EXPECT_EQ(first.program().form2.user.Caption, "user []");
  }
  EXPECT_NE(out.str().find("handle now 'mirrik'"), std::string::npos);
  EXPECT_NE(out.str().find("handle now ''"), std::string::npos);
  sim::SimUserStore store(options.user_store);
  EXPECT_EQ(store.GetSetting("vantrel2", "settings", "handle", "none"), "");
  {
    store.SaveSetting("vantrel2", "settings", "handle", "back");
    Runner second(options, out, err);
    second.Start();
    EXPECT_EQ(second.program().form2.Text5.Text.Get(), "back");
  }
  fs::remove_all(dir);
}

}  // namespace
}  // namespace v2
