// The waits that do not wait on the client (a shaped window's slide, an
// input box) and the upload's wait behind another box, with the client
// quitting, hanging or speaking in the middle of them: each ends within its
// bound and the program answers afterwards.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <filesystem>
#include <sstream>

#include "app/runner.h"
#include "config/style_window.h"
#include "core/shaped_windows.h"
#include "tests/unit/world.h"
#include "transfers/transfer_monitors.h"

namespace v2 {
namespace {

namespace fs = std::filesystem;

// The runner in virtual time, on stores of its own.
struct Session {
  Session() {
    dir = fs::temp_directory_path() /
          ("v2-waits-" + std::to_string(getpid()) + "-" +
           ::testing::UnitTest::GetInstance()->current_test_info()->name());
    fs::create_directories(dir);
    fs::current_path(dir);  // where the reason list lies
    options.script = "-";
    options.clock = LocalTime{2001, 6, 15, 14, 3, 0, 0};
    options.user_store = (dir / "user-store").string();
    options.program_dir = dir.string();
    options.end_process = false;
    runner = std::make_unique<Runner>(options, out, err);
    runner->Start();
    out.str("");
  }
  ~Session() {
    runner.reset();
    fs::current_path(before);
    fs::remove_all(dir);
  }
  // Whether the room shows the program's answer to the date.
  bool Dated() { return out.str().find("todays date: ") != std::string::npos; }
  std::int64_t Now() { return runner->loop().clock().NowMs(); }

  const fs::path before = fs::current_path();
  fs::path dir;
  RunnerOptions options;
  std::ostringstream out, err;
  std::unique_ptr<Runner> runner;
};

TEST(Waits, ASlideCarriesCommandsAndEndsWithTheClientGone) {
  Session r;
  Program& prog = r.runner->program();
  EnsureForm4(prog);
  ShowForm4(prog);
  ShapedWindow& form = *prog.form4.window;
  const float edge = form.screen().Width;
  // The member's line comes in the middle of the slide: the scanner sees it
  // in one of the slide's pumps, and the reply goes out before the slide
  // goes on.
  int steps = 0;
  float left_at_reply = 0;
  const std::int64_t began = r.Now();
  SlideAway(form, [&] {
    if (++steps == 3) {
      r.runner->client().MemberTypes("date");
      r.runner->client().MemberPressesReturn();
      r.runner->loop().WaitUntil(r.Now());  // the scanner looks
    }
    r.runner->loop().PumpEvents();
    if (r.Dated() && left_at_reply == 0) left_at_reply = form.Left();
  });
  EXPECT_TRUE(r.Dated());
  EXPECT_LT(left_at_reply, edge);  // answered while still on the screen
  EXPECT_GT(form.Left(), edge);    // and the slide ended off it
  EXPECT_EQ(r.Now(), began);       // a slide waits for nothing

  // The client quits in the middle of the next slide: the slide ends all the
  // same, and the program answers in the client started again.
  ShowForm4(prog);
  steps = 0;
  SlideAway(form, [&] {
    if (++steps == 3) r.runner->client().Quit();
    r.runner->loop().PumpEvents();
  });
  EXPECT_GT(form.Left(), edge);
  EXPECT_LE(steps, static_cast<int>(edge / 500) + 2);
  r.out.str("");
  r.runner->Execute("open client");
  r.runner->Execute("say date");
  EXPECT_TRUE(r.Dated());
}

TEST(Waits, AnInputBoxAnsweredWhileTheClientQuitsOrHangs) {
  Session r;
  sim::SimUi& ui = dynamic_cast<sim::SimUi&>(r.runner->program().platform.ui());
  // The member answers the box of the reconnection's room just as the client
  // quits: the answer is kept, nothing waits for the client.
  ui.ask = [&]() -> std::optional<std::string> {
    r.runner->client().Quit();
    return "hideout";
  };
  const std::int64_t began = r.Now();
  ASSERT_TRUE(r.runner->Execute("menu buildroom"));
  EXPECT_EQ(r.runner->program().form2.Text4.Text.Get(), "hideout");
  EXPECT_EQ(r.Now(), began);
  r.runner->Execute("open client");

  // A box answered while the client hangs: the same.
  ui.ask = [&]() -> std::optional<std::string> {
    r.runner->client().Hang(60000);
    return "back soon";
  };
  ASSERT_TRUE(r.runner->Execute("menu buildafk"));
  EXPECT_EQ(r.runner->program().form2.Text6.Text.Get(), "back soon");
  r.out.str("");
  r.runner->Execute("say date");  // once the client answers again
  EXPECT_TRUE(r.Dated());
}

TEST(Waits, TheUploadsWaitBehindAnotherBoxEndsWithTheClientHungOrGone) {
  testing::World w;
  Platform& p = w.platform;
  // The upload behind a box of the client's that stays; the client hangs
  // half a second into the wait: every read of a text then takes a send's
  // bound, and the wait still ends, well within a minute.
  w.client.Upload("big.zip", 5, 30);
  Hwnd other = w.host.Create(0, "_AOL_Modal", "Please Wait", nullptr);
  w.host.Create(other, "_AOL_Static", "One moment", nullptr);
  w.host.Raise(other);
  ASSERT_EQ(w.windows.FindWindowA("_AOL_Modal", nullptr), other);
  w.host.After(500, [&] { w.client.Hang(60000); });
  std::int64_t start = w.loop.clock().NowMs();
  FindUpload(p);
  const std::int64_t hung = w.loop.clock().NowMs() - start;
  EXPECT_GE(hung, std::llround(kUploadWaitBoundSeconds * 1000));
  EXPECT_LE(hung, std::llround(kUploadWaitBoundSeconds * 1000) + 2 * 5000);
  w.loop.RunFor(60000);

  // The client quits half a second into the wait, taking the upload with
  // it; the box in front stays (the client does not close it), so the wait
  // runs to its bound and finds no upload.
  w.host.After(500, [&] { w.client.Quit(); });
  start = w.loop.clock().NowMs();
  EXPECT_EQ(FindUpload(p), 0u);
  EXPECT_EQ(w.loop.clock().NowMs() - start,
            std::llround(kUploadWaitBoundSeconds * 1000));
  // With the box gone too, there is nothing to wait for.
  w.windows.Destroy(other);
  start = w.loop.clock().NowMs();
  EXPECT_EQ(FindUpload(p), 0u);
  EXPECT_EQ(w.loop.clock().NowMs(), start);
}

}  // namespace
}  // namespace v2
