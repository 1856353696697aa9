#include "config/menu_tree.h"

#include <utility>

#include "answering/answering_machine.h"
#include "config/settings.h"
#include "config/style_window.h"
#include "host/ghosting.h"
#include "host/host_menus.h"
#include "host/host_tweaks.h"
#include "host/instant_messages.h"
#include "host/keywords.h"
#include "idle/idle_session.h"
#include "idle/idle_tick.h"
#include "interpreter/client_commands.h"
#include "reconnect/disconnect_watch.h"
#include "shell/program.h"
#include "shell/start_exit.h"
#include "transfers/transfer_monitors.h"
#include "transfers/upchat.h"

namespace v2 {
namespace {

using Member = MenuItem Form2::*;

// Every item of Form2 with its name, in the popup's order.
const std::pair<const char*, Member> kItems[] = {
    {"menu", &Form2::menu},
    {"blahblah", &Form2::blahblah},
    {"sep41", &Form2::sep41},
    {"sep0", &Form2::sep0},
    {"idleconfigure", &Form2::idleconfigure},
    {"idleon", &Form2::idleon},
    {"idleoff", &Form2::idleoff},
    {"sep8", &Form2::sep8},
    {"sep42", &Form2::sep42},
    {"complex", &Form2::complex},
    {"chatsendtime", &Form2::chatsendtime},
    {"chatsendreasons", &Form2::chatsendreasons},
    {"chatsendtrans", &Form2::chatsendtrans},
    {"sep1", &Form2::sep1},
    {"reason", &Form2::reason},
    {"sep2", &Form2::sep2},
    {"randomize", &Form2::randomize},
    {"buildreas", &Form2::buildreas},
    {"sep3", &Form2::sep3},
    {"interval", &Form2::interval},
    {"sep4", &Form2::sep4},
    {"sep43", &Form2::sep43},
    {"before", &Form2::before},
    {"imsoff", &Form2::imsoff},
    {"ghostingon", &Form2::ghostingon},
    {"after", &Form2::after},
    {"imson", &Form2::imson},
    {"ghostingoff", &Form2::ghostingoff},
    {"dcp", &Form2::dcp},
    {"reconaol", &Form2::reconaol},
    {"sep9", &Form2::sep9},
    {"enterpr", &Form2::enterpr},
    {"enterjap", &Form2::enterjap},
    {"sep10", &Form2::sep10},
    {"buildroom", &Form2::buildroom},
    {"sep11", &Form2::sep11},
    {"continueul", &Form2::continueul},
    {"continuedl", &Form2::continuedl},
    {"sep12", &Form2::sep12},
    {"onrecon", &Form2::onrecon},
    {"imzoff", &Form2::imzoff},
    {"ghoztingon", &Form2::ghoztingon},
    {"sep13", &Form2::sep13},
    {"hidebuddy", &Form2::hidebuddy},
    {"buildtran", &Form2::buildtran},
    {"autoup", &Form2::autoup},
    {"sep14", &Form2::sep14},
    {"upchat", &Form2::upchat},
    {"unupchat", &Form2::unupchat},
    {"sep15", &Form2::sep15},
    {"chatsendstatus", &Form2::chatsendstatus},
    {"custom", &Form2::custom},
    {"user", &Form2::user},
    {"brag", &Form2::brag},
    {"sep21", &Form2::sep21},
    {"buildcustom", &Form2::buildcustom},
    {"sep22", &Form2::sep22},
    {"instmsgs", &Form2::instmsgs},
    {"imon", &Form2::imon},
    {"imoff", &Form2::imoff},
    {"ghosting", &Form2::ghosting},
    {"ghoston", &Form2::ghoston},
    {"ghostoff", &Form2::ghostoff},
    {"sep26", &Form2::sep26},
    {"roomenter", &Form2::roomenter},
    {"cchat", &Form2::cchat},
    {"cchat_on", &Form2::cchat_on},
    {"cchat_off", &Form2::cchat_off},
    {"sep24", &Form2::sep24},
    {"viewcmds", &Form2::viewcmds},
    {"sep25", &Form2::sep25},
    {"immachine", &Form2::immachine},
    {"buildafk", &Form2::buildafk},
    {"eliminate", &Form2::eliminate},
    {"hidewelc", &Form2::hidewelc},
    {"showelc", &Form2::showelc},
    {"sep18", &Form2::sep18},
    {"glyph", &Form2::glyph},
    {"clock", &Form2::clock},
    {"modal", &Form2::modal},
    {"sep19", &Form2::sep19},
    {"hideaol", &Form2::hideaol},
    {"showaol", &Form2::showaol},
    {"sep20", &Form2::sep20},
    {"signoff", &Form2::signoff},
    {"sep16", &Form2::sep16},
    {"sep17", &Form2::sep17},
    {"exit", &Form2::exit},
};

// Scanners, marks and keys after a click on the switch; the clicked item's
// key is written first.
void SwitchCommands(Program& prog, bool commands_on, bool clicked_on_item) {
  Form2& f2 = prog.form2;
  f2.cchat_on.Checked = commands_on;
  f2.cchat_on.Enabled = !commands_on;
  f2.cchat_off.Checked = !commands_on;
  f2.cchat_off.Enabled = commands_on;
  if (commands_on) {
    prog.form1.Chat1.ScanOn();
    prog.form1.Chat2.ScanOff();
  } else {
    prog.form1.Chat1.ScanOff();
    prog.form1.Chat2.ScanOn();
  }
  const char* on_value = commands_on ? "true" : "false";
  const char* off_value = commands_on ? "false" : "true";
  Platform& p = prog.platform;
  if (clicked_on_item) {
    SaveSetting(p, "ccoms on", on_value);
    SaveSetting(p, "ccoms off", off_value);
  } else {
    SaveSetting(p, "ccoms off", off_value);
    SaveSetting(p, "ccoms on", on_value);
  }
}

}  // namespace

MenuItem* Form2::Item(const std::string& name) {
  for (const auto& [item_name, member] : kItems) {
    if (name == item_name) return &(this->*member);
  }
  return nullptr;
}

void ForEachMenuItem(Program& prog, const std::function<void(MenuItem&)>& f) {
  for (const auto& entry : kItems) f(prog.form2.*entry.second);
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

void cchat_on_Click(Program& prog) {
  SwitchCommands(prog, !prog.form2.cchat_on.Checked, true);
}

void cchat_off_Click(Program& prog) {
  SwitchCommands(prog, prog.form2.cchat_off.Checked, false);
}

void BuildMenuTree(Program& prog) {
  Form2& f = prog.form2;
  for (const auto& [name, member] : kItems) (f.*member).Name = name;

  auto caption = [](MenuItem& item, const char* text) { item.Caption = text; };
  for (MenuItem* sep :
       {&f.sep41, &f.sep0,  &f.sep8,  &f.sep42, &f.sep1,  &f.sep2,  &f.sep3,
        &f.sep4,  &f.sep43, &f.sep9,  &f.sep10, &f.sep11, &f.sep12, &f.sep13,
        &f.sep14, &f.sep15, &f.sep21, &f.sep22, &f.sep26, &f.sep24, &f.sep25,
        &f.sep18, &f.sep19, &f.sep20, &f.sep16, &f.sep17}) {
    sep->Caption = std::string(1, '-');
  }
  caption(f.menu, "menu");
  caption(f.blahblah, "vantrel\xB2\xB7[tqa]");
  f.blahblah.Enabled = false;
  caption(f.idleconfigure, "idle configuration");
  caption(f.idleon, "activate idle timer");
  caption(f.idleoff, "deactivate idle timer");
  caption(f.complex, "define chatsend's");
  caption(f.chatsendtime, "send time");
  caption(f.chatsendreasons, "send rsn");
  caption(f.chatsendtrans, "send status");
  caption(f.reason, "build single message");
  caption(f.randomize, "randomize msgs");
  caption(f.buildreas, "build mess&ages");
  caption(f.before, "before activation");
  caption(f.imsoff, "inst msg's = off");
  caption(f.ghostingon, "ghosting = on");
  caption(f.after, "after activation");
  caption(f.imson, "inst msg's = on");
  caption(f.ghostingoff, "ghosting = off");
  caption(f.dcp, "disc. protection");
  caption(f.reconaol, "reconnect aol");
  caption(f.enterpr, "enter private room");
  caption(f.enterjap, "enter japan room");
  caption(f.buildroom, "build room name");
  caption(f.continueul, "continue uploads");
  caption(f.continuedl, "continue downloads");
  caption(f.onrecon, "on reconnection");
  caption(f.imzoff, "inst msg's = off");
  caption(f.ghoztingon, "ghosting = on");
  caption(f.hidebuddy, "hide buddy list");
  caption(f.buildtran, "file transfer opts ");
  caption(f.autoup, "activate auto-upchat");
  caption(f.upchat, "activate upchat");
  caption(f.unupchat, "deactivate upchat");
  caption(f.chatsendstatus, "chatsend status");
  caption(f.custom, "custom options");
  caption(f.brag, "brag stats");
  caption(f.buildcustom, "build custom");
  caption(f.instmsgs, "inst msg's");
  caption(f.imon, "on");
  caption(f.imoff, "off");
  caption(f.ghosting, "ghosting");
  caption(f.ghoston, "on");
  caption(f.ghostoff, "off");
  caption(f.roomenter, "enter room");
  caption(f.cchat, "cchat options");
  caption(f.cchat_on, "activate");
  caption(f.cchat_off, "deactivate");
  caption(f.viewcmds, "view cmds");
  caption(f.immachine, "away answer");
  caption(f.buildafk, "build afk msg");
  caption(f.eliminate, "eliminate options");
  caption(f.hidewelc, "hide welc");
  caption(f.showelc, "show welc");
  caption(f.glyph, "elim. glyph");
  caption(f.clock, "elim. clock");
  caption(f.modal, "elim. modal");
  caption(f.hideaol, "hide aol");
  caption(f.showaol, "show aol");
  caption(f.signoff, "signoff aol");
  caption(f.exit, "exit vantrel\xB2");

  f.menu.Items = {&f.blahblah,  &f.sep41,     &f.sep0,   &f.idleconfigure,
                  &f.dcp,       &f.buildtran, &f.custom, &f.cchat,
                  &f.eliminate, &f.sep16,     &f.sep17,  &f.exit};
  f.idleconfigure.Items = {&f.idleon,    &f.idleoff,   &f.sep8,   &f.sep42,
                           &f.complex,   &f.sep1,      &f.reason, &f.sep2,
                           &f.randomize, &f.buildreas, &f.sep3,   &f.interval,
                           &f.sep4,      &f.sep43,     &f.before, &f.after};
  f.complex.Items = {&f.chatsendtime, &f.chatsendreasons, &f.chatsendtrans};
  f.before.Items = {&f.imsoff, &f.ghostingon};
  f.after.Items = {&f.imson, &f.ghostingoff};
  f.dcp.Items = {&f.reconaol,   &f.sep9,      &f.enterpr, &f.enterjap,
                 &f.sep10,      &f.buildroom, &f.sep11,   &f.continueul,
                 &f.continuedl, &f.sep12,     &f.onrecon};
  f.onrecon.Items = {&f.imzoff, &f.ghoztingon, &f.sep13, &f.hidebuddy};
  f.buildtran.Items = {&f.autoup,   &f.sep14, &f.upchat,
                       &f.unupchat, &f.sep15, &f.chatsendstatus};
  f.custom.Items = {&f.user,        &f.brag,  &f.sep21,
                    &f.buildcustom, &f.sep22, &f.instmsgs,
                    &f.ghosting,    &f.sep26, &f.roomenter};
  f.instmsgs.Items = {&f.imon, &f.imoff};
  f.ghosting.Items = {&f.ghoston, &f.ghostoff};
  f.cchat.Items = {&f.cchat_on, &f.cchat_off, &f.sep24,   &f.viewcmds,
                   &f.sep25,    &f.immachine, &f.buildafk};
  f.eliminate.Items = {&f.hidewelc, &f.showelc, &f.sep18,  &f.glyph,
                       &f.clock,    &f.modal,   &f.sep19,  &f.hideaol,
                       &f.showaol,  &f.sep20,   &f.signoff};

  Program* pp = &prog;
  Platform* p = &prog.platform;
  auto toggle = [pp](MenuItem& item, const char* key) {
    item.Click = [pp, &item, key] { ToggleClick(*pp, item, key); };
  };
  toggle(f.chatsendtime, "chatsend time");
  toggle(f.chatsendreasons, "chatsend reason");
  toggle(f.chatsendtrans, "chatsend trans");
  toggle(f.randomize, "randomize");
  toggle(f.imsoff, "ims off");
  toggle(f.ghostingon, "ghosting on");
  toggle(f.imson, "ims on");
  toggle(f.ghostingoff, "ghosting off");
  toggle(f.imzoff, "dcp ims");
  toggle(f.ghoztingon, "dcp ghost");
  toggle(f.hidebuddy, "dcp buddy");
  f.reconaol.Click = [pp] { reconaol_Click(*pp); };
  f.enterpr.Click = [pp] { enterpr_Click(*pp); };
  f.enterjap.Click = [pp] { enterjap_Click(*pp); };
  f.buildroom.Click = [pp] { buildroom_Click(*pp); };
  f.continueul.Click = [pp] { continueul_Click(*pp); };
  f.continuedl.Click = [pp] { continuedl_Click(*pp); };
  f.autoup.Click = [pp] { autoup_Click(*pp); };
  f.upchat.Click = [p] { UpChat(*p); };
  f.unupchat.Click = [p] { UnUpChat(*p); };
  f.immachine.Click = [pp] { immachine_Click(*pp); };
  f.buildafk.Click = [pp] { buildafk_Click(*pp); };
  f.idleon.Click = [pp] { idleon_Click(*pp); };
  f.idleoff.Click = [pp] { idleoff_Click(*pp); };
  f.reason.Click = [pp] {
    ValueBoxClick(*pp, "enter your reason for idleing", "reason", "no reason",
                  pp->form2.Text1);
  };
  f.interval.Click = [pp] { interval_Click(*pp); };
  f.buildreas.Click = [pp] { ShowForm3(*pp); };
  f.chatsendstatus.Click = [pp] { PostTransferStatus(*pp); };
  f.user.Click = [pp] { user_Click(*pp); };
  f.brag.Click = [pp] { brag_Click(*pp); };
  f.buildcustom.Click = [pp] { ShowForm4(*pp); };
  f.imon.Click = [p] { IMsOn(*p); };
  f.imoff.Click = [p] { IMsOff(*p); };
  f.ghoston.Click = [p] { GhostOn(*p); };
  f.ghostoff.Click = [p] { GhostOff(*p); };
  f.roomenter.Click = [p] {
    std::string room =
        p->ui().InputBox(p->loop, "enter the private room name", kAskTitle, "");
    if (!room.empty()) EnterPrivateRoom(*p, room);
  };
  f.cchat_on.Click = [pp] { cchat_on_Click(*pp); };
  f.cchat_off.Click = [pp] { cchat_off_Click(*pp); };
  f.viewcmds.Click = [pp] { viewcmds_Click(*pp); };
  f.hidewelc.Click = [p] { HideWelcome(*p); };
  f.showelc.Click = [p] { ShowWelcome(*p); };
  f.glyph.Click = [p] { KillGlyph(*p); };
  f.clock.Click = [p] { KillClock(*p); };
  f.modal.Click = [p] { KillModal(*p); };
  f.hideaol.Click = [p] { HideHost(*p); };
  f.showaol.Click = [p] { ShowHost(*p); };
  f.signoff.Click = [p] { SignOff(*p); };
  f.exit.Click = [pp] { exit_Click(*pp); };
}

}  // namespace v2
