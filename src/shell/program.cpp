#include "shell/program.h"

#include "config/settings.h"
#include "host/host_windows.h"
#include "interpreter/chat_event.h"

namespace v2 {

Form1::Form1(Platform& p)
    : Chat1(p, [&p] { return FindTranscript(p); }),
      Chat2(p, [&p] { return FindTranscript(p); }) {}

Form2::Form2() {
  // As the window defines them, before the stores are read.
  idleoff.Checked = true;
  idleoff.Enabled = false;
  interval.Checked = true;
  interval.Caption = "interval : 1/m";
  user.Caption = "user [mirrik]";
}

Program::Program(Platform& platform_in)
    : platform(platform_in), form1(platform_in) {
  form1.Chat1.OnChatMsg(
      [this](const std::string& name, const std::string& said) {
        Chat1_ChatMsg(*this, name, said);
      });
  auto text = [this](const char* name, const TextBox& box) {
    controls_[name] = [&box] { return box.Text.Get(); };
  };
  text("Form2.Text1", form2.Text1);
  text("Form2.Text2", form2.Text2);
  text("Form2.Text3", form2.Text3);
  text("Form2.Text4", form2.Text4);
  text("Form2.Text5", form2.Text5);
  text("Form2.Text6", form2.Text6);
  controls_["Form2.Label1"] = [this] { return form2.Label1.Caption.Get(); };
  const std::pair<const char*, const TextBox*> style[] = {
      {"Form4.Text1", &form4.Text1},   {"Form4.Text2", &form4.Text2},
      {"Form4.Text3", &form4.Text3},   {"Form4.Text4", &form4.Text4},
      {"Form4.Text5", &form4.Text5},   {"Form4.Text7", &form4.Text7},
      {"Form4.Text8", &form4.Text8},   {"Form4.Text9", &form4.Text9},
      {"Form4.Text11", &form4.Text11}, {"Form4.Text12", &form4.Text12},
      {"Form4.Text13", &form4.Text13}, {"Form4.Text17", &form4.Text17},
      {"Form4.Text19", &form4.Text19}, {"Form4.Text20", &form4.Text20},
      {"Form4.Text21", &form4.Text21}, {"Form4.Text22", &form4.Text22},
      {"Form4.Text23", &form4.Text23}};
  for (const auto& [name, box] : style) text(name, *box);
  const std::pair<const char*, const MenuItem*> items[] = {
      {"chatsendtime", &form2.chatsendtime},
      {"chatsendtrans", &form2.chatsendtrans},
      {"chatsendreasons", &form2.chatsendreasons},
      {"randomize", &form2.randomize},
      {"interval", &form2.interval},
      {"imsoff", &form2.imsoff},
      {"ghostingon", &form2.ghostingon},
      {"imson", &form2.imson},
      {"ghostingoff", &form2.ghostingoff},
      {"autoup", &form2.autoup},
      {"immachine", &form2.immachine},
      {"cchat_on", &form2.cchat_on},
      {"cchat_off", &form2.cchat_off},
      {"reconaol", &form2.reconaol},
      {"enterpr", &form2.enterpr},
      {"enterjap", &form2.enterjap},
      {"continueul", &form2.continueul},
      {"continuedl", &form2.continuedl},
      {"imzoff", &form2.imzoff},
      {"ghoztingon", &form2.ghoztingon},
      {"hidebuddy", &form2.hidebuddy},
      {"user", &form2.user},
      {"idleon", &form2.idleon},
      {"idleoff", &form2.idleoff}};
  for (const auto& [name, item] : items) {
    const MenuItem* m = item;
    controls_[std::string("Form2.") + name] = [m] {
      return std::string(m->Checked ? "checked" : "unchecked") +
             (m->Enabled ? " enabled" : " disabled");
    };
    controls_[std::string("Form2.") + name + ".Caption"] = [m] {
      return m->Caption;
    };
  }
  controls_["Form3.List1"] = [this] {
    const ListBox& list = form3.List1;
    std::string out = std::to_string(list.ListCount());
    for (const std::string& item : list.items) out += " \"" + item + "\"";
    return out;
  };
  text("Form3.Text1", form3.Text1);
  controls_["Form1.Chat1"] = [this] {
    return std::string(form1.Chat1.Scanning() ? "scanning" : "off");
  };
  controls_["Form1.Chat2"] = [this] {
    return std::string(form1.Chat2.Scanning() ? "scanning" : "off");
  };
}

void Program::Start() {
  // The reason list first (it lies in the working directory), then the
  // stores into the live objects; the switches start the scanners.
  if (FileExists(platform, kReasonFile)) {
    EnsureForm3(*this);
    LoadList(platform, kReasonFile, form3.List1);
  }
  ReadUserSettings(*this);
  ReadSettingsFile(*this);
}

bool Program::Show(const std::string& name, std::string& value) const {
  auto it = controls_.find(name);
  if (it == controls_.end()) return false;
  value = it->second();
  return true;
}

}  // namespace v2
