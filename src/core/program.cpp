// The forms as data: their timers and controls, the popup's items by name,
// and every control by the name `show` gives it.
#include "core/program.h"

#include "core/menu_items.h"
#include "core/style_keys.h"
#include "host/host_windows.h"

namespace v2 {

namespace {

// A list as `show` prints it: the count, then each entry in double quotes.
std::string ListText(const ListBox& list) {
  std::string out = std::to_string(list.ListCount());
  for (const std::string& item : list.items) out += " \"" + item + "\"";
  return out;
}

}  // namespace

Form1::Form1(Platform& p)
    : Chat1(p, [&p] { return FindTranscript(p); }),
      Chat2(p, [&p] { return FindTranscript(p); }),
      Timer1(p.loop, kIdleTickMs),
      Timer2(p.loop, 1),
      File1(p.files(), "*.mp3") {}

Form2::Form2(EventLoop& loop)
    : Timer2(loop, 10),
      Timer3(loop, 10),
      Timer4(loop, 500),
      Timer5(loop, 1000),
      Timer6(loop, 1000) {}

void Program::AddControls() {
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
  controls_["Form2.UpChatAnnounced"] = [this] {
    return std::to_string(form2.UpChatAnnounced ? kVbTrue : kVbFalse);
  };
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
  controls_["Form3.List1"] = [this] { return ListText(form3.List1); };
  text("Form3.Text1", form3.Text1);
  AddPlayerControls();
  controls_["Form1.Chat1"] = [this] {
    return std::string(form1.Chat1.Scanning() ? "scanning" : "off");
  };
  controls_["Form1.Chat2"] = [this] {
    return std::string(form1.Chat2.Scanning() ? "scanning" : "off");
  };
}

namespace {

bool InTree(const MenuItem& head, const MenuItem* wanted) {
  for (const MenuItem* item : head.Items) {
    if (item == wanted || InTree(*item, wanted)) return true;
  }
  return false;
}

}  // namespace

MenuItem* Form2::Item(const std::string& name) {
  for (MenuItem* item : all) {
    if (item->Name == name) return item;
  }
  return nullptr;
}

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

void Program::AddPlayerControls() {
  controls_["Form1.File1"] = [this] {
    return "ListIndex=" + std::to_string(form1.File1.ListIndex()) +
           " ListCount=" + std::to_string(form1.File1.ListCount());
  };
  controls_["Form1.File1.Path"] = [this] { return form1.File1.Path(); };
  controls_["Form1.File1.FileName"] = [this] { return form1.File1.FileName(); };
  controls_["Form1.Label6"] = [this] { return form1.Label6.Caption.Get(); };
  controls_["Form1.List1"] = [this] { return ListText(form1.List1); };
  const std::pair<const char*, const TextBox*> tags[] = {
      {"Form1.title", &form1.title},
      {"Form1.artist", &form1.artist},
      {"Form1.album", &form1.album},
      {"Form1.year", &form1.year},
      {"Form1.comment", &form1.comment}};
  for (const auto& [name, box] : tags) {
    const TextBox* b = box;
    controls_[name] = [b] { return b->Text.Get(); };
  }
  const std::pair<const char*, const VbBool*> modes[] = {
      {"Form1.RepeatMode", &form1.RepeatMode},
      {"Form1.ContinuousMode", &form1.ContinuousMode},
      {"Form1.OrderMode", &form1.OrderMode},
      {"Form1.StopMode", &form1.StopMode},
      {"Form1.SelectionPending", &form1.SelectionPending}};
  for (const auto& [name, flag] : modes) {
    const VbBool* f = flag;
    controls_[name] = [f] { return std::to_string(*f); };
  }
}

bool Program::Show(const std::string& name, std::string& value) const {
  auto it = controls_.find(name);
  if (it == controls_.end()) return false;
  value = it->second();
  return true;
}

}  // namespace v2
