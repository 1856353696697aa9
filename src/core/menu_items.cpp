// The kinds of click the popup's items share, and the popup as lines.
#include "core/menu_items.h"

#include "core/program.h"
#include "core/settings.h"

namespace v2 {

void ForEachMenuItem(Program& prog, const std::function<void(MenuItem&)>& f) {
  for (MenuItem* item : prog.form2.all) f(*item);
}

void ToggleClick(Program& prog, MenuItem& item, const std::string& key) {
  item.Checked = !item.Checked;
  SaveSetting(prog.platform, key, item.Checked ? "true" : "false");
}

void ToggleTimerClick(Program& prog, MenuItem& item, Timer& timer,
                      const std::string& key) {
  item.Checked = !item.Checked;
  timer.SetEnabled(item.Checked);
  SaveSetting(prog.platform, key, item.Checked ? "true" : "false");
}

void ExclusiveClick(Program& prog, MenuItem& item, const std::string& key,
                    MenuItem& other, const std::string& other_key) {
  Platform& p = prog.platform;
  if (item.Checked) {
    item.Checked = false;
    SaveSetting(p, key, "false");
    return;
  }
  item.Checked = true;
  other.Checked = false;
  SaveSetting(p, key, "true");
  SaveSetting(p, other_key, "false");
}

void ValueBoxClick(Program& prog, const std::string& prompt,
                   const std::string& key, const std::string& preset,
                   TextBox& box, const std::function<void()>& after) {
  Platform& p = prog.platform;
  const std::string old = GetSetting(p, key, preset);
  box.Text.Set(p.ui().InputBox(p.loop, prompt, kAskTitle, old));
  // A cancel gives the empty text too; either keeps what was offered, and
  // that is stored even when nothing was there before.
  if (box.Text.Get().empty()) box.Text.Set(old);
  SaveSetting(p, key, box.Text.Get());
  if (after) after();
}

std::vector<std::string> MenuLines(const Form2& form2) {
  std::vector<std::string> lines;
  auto walk = [&lines](const MenuItem& head, int level, auto& self) -> void {
    for (const MenuItem* item : head.Items) {
      lines.push_back(std::to_string(level) + " " + item->Name + " \"" +
                      item->Caption + "\" " +
                      (item->Checked ? "checked" : "unchecked") +
                      (item->Enabled ? " enabled" : " disabled"));
      self(*item, level + 1, self);
    }
  };
  walk(form2.menu, 1, walk);
  return lines;
}

}  // namespace v2
