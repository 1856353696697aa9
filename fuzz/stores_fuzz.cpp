// Fuzz target: both stores filled with any content, then the program starts
// and lives a little: a command, the brag, an idle minute. The input is the
// values of the stores' keys, separated by 0 bytes, in the order of
// testing::kUserKeys and then kIniKeys (a settings.dat value loses its line
// breaks); keys past the input's end are not stored. Whatever the values,
// the program starts and goes on: it answers while its commands are on,
// counts the idle minute, and every key it does not write reads back as it
// was.
#include <cstddef>
#include <cstdint>
#include <map>
#include <sstream>
#include <string>

#include "fuzz/filled_stores.h"
#include "fuzz/fuzz_check.h"
#include "idle/idle_tick.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  using v2::testing::kIniKeys;
  using v2::testing::kUserKeys;
  const std::string input(reinterpret_cast<const char*>(data), size);
  std::map<std::string, std::string> user, ini;
  std::size_t field = 0, pos = 0;
  while (pos <= input.size() && field < kUserKeys.size() + kIniKeys.size()) {
    std::size_t end = input.find('\0', pos);
    if (end == std::string::npos) end = input.size();
    std::string value = input.substr(pos, end - pos);
    if (field < kUserKeys.size()) {
      user[kUserKeys[field]] = value;
    } else {
      ini[kIniKeys[field - kUserKeys.size()]] = value;
    }
    ++field;
    pos = end + 1;
  }
  v2::testing::FilledStores stores;
  stores.Fill(user, ini);
  const std::string ini_before = stores.IniWithoutBrag();

  std::ostringstream out, err;
  bool commands_on = true;
  {
    v2::Runner run(stores.options, out, err);
    run.Execute("answer x");  // for a handle that is missing or empty
    run.Start();
    commands_on = run.program().form2.cchat_on.Checked;
    const std::string brag = run.program().form2.Label1.Caption.Get();
    run.Execute("say date");
    run.Execute("menu idleon");
    run.Execute("wait 63");
    V2_FUZZ_CHECK(
        run.program().form2.Label1.Caption.Get() == v2::CountOneMore(brag),
        "an idle minute is counted, whatever was stored");
    run.Execute("menu idleoff");
    V2_FUZZ_CHECK(!run.ended(), "the program goes on");
  }
  if (commands_on) {
    V2_FUZZ_CHECK(out.str().find("todays date:") != std::string::npos,
                  "a command is answered");
  }
  for (const auto& [key, value] : user) {
    if (key == "handle" && value.empty()) continue;  // asked for, stored
    V2_FUZZ_CHECK(stores.User(key) == value, "a stored setting is kept");
  }
  V2_FUZZ_CHECK(stores.IniWithoutBrag() == ini_before,
                "settings.dat keeps every line but the count");
  return 0;
}
