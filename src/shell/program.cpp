#include "shell/program.h"

#include "config/menu_tree.h"
#include "config/settings.h"
#include "config/style_window.h"
#include "host/host_windows.h"
#include "idle/idle_tick.h"
#include "interpreter/chat_event.h"
#include "shell/start_exit.h"

namespace v2 {

Form1::Form1(Platform& p)
    : Chat1(p, [&p] { return FindTranscript(p); }),
      Chat2(p, [&p] { return FindTranscript(p); }),
      Timer1(p.loop, kIdleTickMs),
      Timer2(p.loop, 1) {}

Form2::Form2(EventLoop& loop)
    : Timer2(loop, 10),
      Timer3(loop, 10),
      Timer4(loop, 500),
      Timer5(loop, 1000),
      Timer6(loop, 1000) {
  // As the window defines them, before the stores are read.
  idleoff.Checked = true;
  idleoff.Enabled = false;
  interval.Checked = true;
  interval.Caption = "interval : 1/m";
  user.Caption = "user [mirrik]";
}

Program::Program(Platform& platform_in)
    : platform(platform_in), form1(platform_in), form2(platform_in.loop) {
  BuildMenuTree(*this);
  form1.Chat1.OnChatMsg(
      [this](const std::string& name, const std::string& said) {
        Chat1_ChatMsg(*this, name, said);
      });
  form1.Chat2.OnChatMsg(
      [this](const std::string& name, const std::string& said) {
        Chat2_ChatMsg(*this, name, said);
      });
  form1.Timer1.OnTimer([this] { Timer1_Timer(*this); });
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
  form4.OnFirstTouch = [this] { EnsureForm4(*this); };
  for (const char* name : Form4FieldNames()) {
    text((std::string("Form4.") + name).c_str(), *Form4Field(form4, name));
  }
  controls_["Form3"] = [this] { return WindowState(form3.window.get()); };
  controls_["Form4"] = [this] { return WindowState(form4.window.get()); };
  ForEachMenuItem(*this, [this](MenuItem& item) {
    const MenuItem* m = &item;
    controls_["Form2." + item.Name] = [m] {
      return std::string(m->Checked ? "checked" : "unchecked") +
             (m->Enabled ? " enabled" : " disabled");
    };
    controls_["Form2." + item.Name + ".Caption"] = [m] { return m->Caption; };
  });
  controls_["Form1.Label1"] = [this] { return form1.Label1.Caption.Get(); };
  controls_["Form1.Label2"] = [this] { return form1.Label2.Caption.Get(); };
  controls_["Form1.Label3"] = [this] { return form1.Label3.Caption.Get(); };
  controls_["Form1.Label4"] = [this] { return form1.Label4.Caption.Get(); };
  controls_["Form1.Label5"] = [this] { return form1.Label5.Caption.Get(); };
  controls_["Form1.ReasonIndex"] = [this] {
    return std::to_string(form1.ReasonIndex);
  };
  controls_["Form1.ReasonText"] = [this] { return form1.ReasonText; };
  const std::pair<const char*, const Timer*> timers[] = {
      {"Form1.Timer1", &form1.Timer1}, {"Form1.Timer2", &form1.Timer2},
      {"Form2.Timer2", &form2.Timer2}, {"Form2.Timer3", &form2.Timer3},
      {"Form2.Timer4", &form2.Timer4}, {"Form2.Timer5", &form2.Timer5},
      {"Form2.Timer6", &form2.Timer6}};
  for (const auto& [name, timer] : timers) {
    const Timer* t = timer;
    controls_[name] = [t] {
      return std::string(t->Enabled() ? "enabled " : "disabled ") +
             std::to_string(t->Interval());
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
  // The end-of-track test runs from the load on.
  form1.Timer2.SetEnabled(true);
  Form1_Load(*this);
}

namespace {

bool InTree(const MenuItem& head, const MenuItem* wanted) {
  for (const MenuItem* item : head.Items) {
    if (item == wanted || InTree(*item, wanted)) return true;
  }
  return false;
}

}  // namespace

bool Program::ClickMenu(const std::string& name) {
  MenuItem* item = form2.Item(name);
  if (!item || !InTree(form2.menu, item)) return false;
  if (item->IsSeparator() || !item->Items.empty() || !item->Enabled ||
      !item->Visible || !item->Click) {
    return true;
  }
  item->Click();
  return true;
}

bool Program::Show(const std::string& name, std::string& value) const {
  auto it = controls_.find(name);
  if (it == controls_.end()) return false;
  value = it->second();
  return true;
}

}  // namespace v2
