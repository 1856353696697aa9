// `show`: what the client, the desktop, the program, its media control, the
// stores and the files hold now, and what the program has sent.
#include <cstdio>
#include <fstream>

#include "app/runner.h"
#include "app/script.h"
#include "core/menu_items.h"
#include "core/settings.h"

namespace v2 {
namespace {

// The local clock to the millisecond, for `show time`: how long a wait
// took can be read off two of them.
std::string ClockText(const LocalTime& t) {
  char text[32];
  std::snprintf(text, sizeof(text), "%02d:%02d:%02d.%03d", t.hour, t.minute,
                t.second, t.millisecond);
  return text;
}

std::string Seconds(double s) {
  char text[32];
  std::snprintf(text, sizeof(text), "%.3f", s);
  return text;
}

}  // namespace

bool Runner::Show(const std::string& object) {
  if (object == "settings.dat") {
    ShowSettingsFile();
    return true;
  }
  if (object == "sent") {
    ShowSent();
    return true;
  }
  if (object.compare(0, 6, "store ") == 0) {
    const std::string key = object.substr(6);
    const auto stored = user_store_.Find(kStoreApp, kStoreSection, key);
    Print("[store " + key + "] " +
          (stored ? "\"" + *stored + "\"" : std::string("none")));
    return true;
  }
  if (object == "menu") {
    for (const std::string& line : MenuLines(program().form2)) {
      Print("[menu] " + line);
    }
    return true;
  }
  std::string value;
  if (object == "time") {
    value = ClockText(loop_.clock().LocalNow());
  } else if (ShowOfClient(client_, object, value) ||
             ShowOfDesktop(desktop_, object, value)) {
  } else if (!process_) {
    return false;
  } else if (object == "media") {
    value = process_->media.Describe();
  } else if (object == "media-state") {
    sim::SimMedia& m = process_->media;
    value = "position " + Seconds(m.CurrentPosition()) + " duration " +
            Seconds(m.Duration()) + " volume " +
            (m.volume_set() ? std::to_string(m.volume()) : "none");
  } else if (object == "inputbox") {
    const auto prompt = process_->ui.OpenBoxPrompt();
    value = prompt ? "open " + *prompt : "none";
  } else if (!program().Show(object, value)) {
    return false;
  }
  Print("[" + object + "] " + value);
  return true;
}

// settings.dat line by line, as it lies beside the program.
void Runner::ShowSettingsFile() {
  Platform files_only{windows_, loop_, nullptr, &profile_, &files_};
  std::ifstream in(files_.NativePath(SettingsFile(files_only)),
                   std::ios::binary);
  if (!in) {
    Print("[settings.dat] missing");
    return;
  }
  std::string line;
  while (std::getline(in, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    Print("[settings.dat] " + line);
  }
}

void Runner::ShowSent() {
  // At the terminal what is sent is kept from the first time it is asked.
  windows_.KeepSent(true);
  const auto sent = windows_.TakeSent();
  if (sent.empty()) Print("[sent] none");
  for (const auto& s : sent) {
    Print("[sent] " + std::to_string(s.count) + " " + MessageName(s.msg) + " " +
          s.cls + " \"" + s.title + "\"");
  }
}

}  // namespace v2
