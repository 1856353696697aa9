#include "config/menu_tree.h"

#include <vector>

#include "answering/answering_machine.h"
#include "config/style_window.h"
#include "core/list_files.h"
#include "core/menu_items.h"
#include "core/program.h"
#include "core/settings.h"
#include "core/styled_line.h"
#include "host/ghosting.h"
#include "host/host_menus.h"
#include "host/host_tweaks.h"
#include "host/host_windows.h"
#include "host/instant_messages.h"
#include "host/keywords.h"
#include "idle/idle_session.h"
#include "idle/idle_tick.h"
#include "idle/reason_list.h"
#include "reconnect/disconnect_watch.h"
#include "transfers/transfer_monitors.h"
#include "transfers/upchat.h"

namespace v2 {
namespace {

using Member = MenuItem Form2::*;
using ClickFn = void (*)(Program&);

// How an item starts, where it differs from unchecked and enabled.
enum Start { kPlain = 0, kChecked = 1, kDisabled = 2 };

// One item of the popup. A plain toggle names its key and nothing else; any
// other item that acts names its Click.
struct Row {
  int level;
  const char* name;
  Member item;
  const char* caption;
  int start = kPlain;
  const char* toggle_key = nullptr;
  ClickFn click = nullptr;
};

constexpr const char* kSep = "-";

void roomenter_Click(Program& prog) {
  Platform& p = prog.platform;
  const std::string room =
      p.ui().InputBox(p.loop, "enter the private room name", kAskTitle, "");
  if (!room.empty()) EnterPrivateRoom(p, room);
}

void reason_Click(Program& prog) {
  ValueBoxClick(prog, "enter your reason for idleing", "reason", "no reason",
                prog.form2.Text1);
}

// The whole popup in the order it opens, each item below the head of the
// level above it; level 0 is the popup itself.
const Row kTree[] = {
    {0, "menu", &Form2::menu, "menu"},
    {1, "blahblah", &Form2::blahblah, "vantrel\xB2\xB7[tqa]", kDisabled},
    {1, "sep41", &Form2::sep41, kSep},
    {1, "sep0", &Form2::sep0, kSep},
    {1, "idleconfigure", &Form2::idleconfigure, "idle configuration"},
    {2, "idleon", &Form2::idleon, "activate idle timer", kPlain, nullptr,
     idleon_Click},
    {2, "idleoff", &Form2::idleoff, "deactivate idle timer",
     kChecked | kDisabled, nullptr, idleoff_Click},
    {2, "sep8", &Form2::sep8, kSep},
    {2, "sep42", &Form2::sep42, kSep},
    {2, "complex", &Form2::complex, "define chatsend's"},
    {3, "chatsendtime", &Form2::chatsendtime, "send time", kPlain,
     "chatsend time"},
    {3, "chatsendreasons", &Form2::chatsendreasons, "send rsn", kPlain,
     "chatsend reason"},
    {3, "chatsendtrans", &Form2::chatsendtrans, "send status", kPlain,
     "chatsend trans"},
    {2, "sep1", &Form2::sep1, kSep},
    {2, "reason", &Form2::reason, "build single message", kPlain, nullptr,
     reason_Click},
    {2, "sep2", &Form2::sep2, kSep},
    {2, "randomize", &Form2::randomize, "randomize msgs", kPlain, "randomize"},
    {2, "buildreas", &Form2::buildreas, "build mess&ages", kPlain, nullptr,
     ShowForm3},
    {2, "sep3", &Form2::sep3, kSep},
    {2, "interval", &Form2::interval, "interval : 1/m", kChecked, nullptr,
     interval_Click},
    {2, "sep4", &Form2::sep4, kSep},
    {2, "sep43", &Form2::sep43, kSep},
    {2, "before", &Form2::before, "before activation"},
    {3, "imsoff", &Form2::imsoff, "inst msg's = off", kPlain, "ims off"},
    {3, "ghostingon", &Form2::ghostingon, "ghosting = on", kPlain,
     "ghosting on"},
    {2, "after", &Form2::after, "after activation"},
    {3, "imson", &Form2::imson, "inst msg's = on", kPlain, "ims on"},
    {3, "ghostingoff", &Form2::ghostingoff, "ghosting = off", kPlain,
     "ghosting off"},
    {1, "dcp", &Form2::dcp, "disc. protection"},
    {2, "reconaol", &Form2::reconaol, "reconnect aol", kPlain, nullptr,
     reconaol_Click},
    {2, "sep9", &Form2::sep9, kSep},
    {2, "enterpr", &Form2::enterpr, "enter private room", kPlain, nullptr,
     enterpr_Click},
    {2, "enterjap", &Form2::enterjap, "enter japan room", kPlain, nullptr,
     enterjap_Click},
    {2, "sep10", &Form2::sep10, kSep},
    {2, "buildroom", &Form2::buildroom, "build room name", kPlain, nullptr,
     buildroom_Click},
    {2, "sep11", &Form2::sep11, kSep},
    {2, "continueul", &Form2::continueul, "continue uploads", kPlain, nullptr,
     continueul_Click},
    {2, "continuedl", &Form2::continuedl, "continue downloads", kPlain, nullptr,
     continuedl_Click},
    {2, "sep12", &Form2::sep12, kSep},
    {2, "onrecon", &Form2::onrecon, "on reconnection"},
    {3, "imzoff", &Form2::imzoff, "inst msg's = off", kPlain, "dcp ims"},
    {3, "ghoztingon", &Form2::ghoztingon, "ghosting = on", kPlain, "dcp ghost"},
    {3, "sep13", &Form2::sep13, kSep},
    {3, "hidebuddy", &Form2::hidebuddy, "hide buddy list", kPlain, "dcp buddy"},
    {1, "buildtran", &Form2::buildtran, "file transfer opts "},
    {2, "autoup", &Form2::autoup, "activate auto-upchat", kPlain, nullptr,
     autoup_Click},
    {2, "sep14", &Form2::sep14, kSep},
    {2, "upchat", &Form2::upchat, "activate upchat", kPlain, nullptr,
     [](Program& g) { UpChat(g.platform); }},
    {2, "unupchat", &Form2::unupchat, "deactivate upchat", kPlain, nullptr,
     [](Program& g) { UnUpChat(g.platform); }},
    {2, "sep15", &Form2::sep15, kSep},
    {2, "chatsendstatus", &Form2::chatsendstatus, "chatsend status", kPlain,
     nullptr, PostTransferStatus},
    {1, "custom", &Form2::custom, "custom options"},
    {2, "user", &Form2::user, "user [mirrik]", kPlain, nullptr, user_Click},
    {2, "brag", &Form2::brag, "brag stats", kPlain, nullptr, brag_Click},
    {2, "sep21", &Form2::sep21, kSep},
    {2, "buildcustom", &Form2::buildcustom, "build custom", kPlain, nullptr,
     ShowForm4},
    {2, "sep22", &Form2::sep22, kSep},
    {2, "instmsgs", &Form2::instmsgs, "inst msg's"},
    {3, "imon", &Form2::imon, "on", kPlain, nullptr,
     [](Program& g) { IMsOn(g.platform); }},
    {3, "imoff", &Form2::imoff, "off", kPlain, nullptr,
     [](Program& g) { IMsOff(g.platform); }},
    {2, "ghosting", &Form2::ghosting, "ghosting"},
    {3, "ghoston", &Form2::ghoston, "on", kPlain, nullptr,
     [](Program& g) { GhostOn(g.platform); }},
    {3, "ghostoff", &Form2::ghostoff, "off", kPlain, nullptr,
     [](Program& g) { GhostOff(g.platform); }},
    {2, "sep26", &Form2::sep26, kSep},
    {2, "roomenter", &Form2::roomenter, "enter room", kPlain, nullptr,
     roomenter_Click},
    {1, "cchat", &Form2::cchat, "cchat options"},
    {2, "cchat_on", &Form2::cchat_on, "activate", kPlain, nullptr,
     cchat_on_Click},
    {2, "cchat_off", &Form2::cchat_off, "deactivate", kPlain, nullptr,
     cchat_off_Click},
    {2, "sep24", &Form2::sep24, kSep},
    {2, "viewcmds", &Form2::viewcmds, "view cmds", kPlain, nullptr,
     viewcmds_Click},
    {2, "sep25", &Form2::sep25, kSep},
    {2, "immachine", &Form2::immachine, "away answer", kPlain, nullptr,
     immachine_Click},
    {2, "buildafk", &Form2::buildafk, "build afk msg", kPlain, nullptr,
     buildafk_Click},
    {1, "eliminate", &Form2::eliminate, "eliminate options"},
    {2, "hidewelc", &Form2::hidewelc, "hide welc", kPlain, nullptr,
     [](Program& g) { HideWelcome(g.platform); }},
    {2, "showelc", &Form2::showelc, "show welc", kPlain, nullptr,
     [](Program& g) { ShowWelcome(g.platform); }},
    {2, "sep18", &Form2::sep18, kSep},
    {2, "glyph", &Form2::glyph, "elim. glyph", kPlain, nullptr,
     [](Program& g) { KillGlyph(g.platform); }},
    {2, "clock", &Form2::clock, "elim. clock", kPlain, nullptr,
     [](Program& g) { KillClock(g.platform); }},
    {2, "modal", &Form2::modal, "elim. modal", kPlain, nullptr,
     [](Program& g) { KillModal(g.platform); }},
    {2, "sep19", &Form2::sep19, kSep},
    {2, "hideaol", &Form2::hideaol, "hide aol", kPlain, nullptr,
     [](Program& g) { HideHost(g.platform); }},
    {2, "showaol", &Form2::showaol, "show aol", kPlain, nullptr,
     [](Program& g) { ShowHost(g.platform); }},
    {2, "sep20", &Form2::sep20, kSep},
    {2, "signoff", &Form2::signoff, "signoff aol", kPlain, nullptr,
     [](Program& g) { SignOff(g.platform); }},
    {1, "sep16", &Form2::sep16, kSep},
    {1, "sep17", &Form2::sep17, kSep},
    {1, "exit", &Form2::exit, "exit vantrel\xB2", kPlain, nullptr, exit_Click},
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

void cchat_on_Click(Program& prog) {
  SwitchCommands(prog, !prog.form2.cchat_on.Checked, true);
}

void cchat_off_Click(Program& prog) {
  SwitchCommands(prog, prog.form2.cchat_off.Checked, false);
}

void viewcmds_Click(Program& prog) {
  Platform& p = prog.platform;
  const std::string file = CommandListFile(p);
  const bool there = FileExists(p, file);
  if (there) OpenFile(p, file);
  Reply(prog, std::string(kBanner) +
                  (there ? " : viewing cmds" : " : error viewing cmds"));
}

void exit_Click(Program& prog) {
  Platform& p = prog.platform;
  p.ui().TrayRemove();
  ChatSend(p, StyledLine(prog.form4, Pair::kMain,
                         std::string(kBanner) + " by mirrik"));
  const std::string minutes = GroupThousands(prog.form2.Label1.Caption.Get());
  ChatSend(p, StyledLine(prog.form4, Pair::kSecond,
                         "end:(" + prog.form2.Text5.Text.Get() +
                             ") : " + minutes + "/mins"));
  // Nothing is saved here: every setting was stored when it changed.
  p.ui().EndProgram();
}

void BuildMenuTree(Program& prog) {
  Form2& f = prog.form2;
  f.all.clear();
  // The head of each level, as the rows go down the tree.
  std::vector<MenuItem*> heads;
  for (const Row& row : kTree) {
    MenuItem& item = f.*row.item;
    f.all.push_back(&item);
    item.Name = row.name;
    item.Caption = row.caption;
    item.Checked = (row.start & kChecked) != 0;
    item.Enabled = (row.start & kDisabled) == 0;
    item.Items.clear();
    heads.resize(static_cast<std::size_t>(row.level));
    if (!heads.empty()) heads.back()->Items.push_back(&item);
    heads.push_back(&item);
    Program* pp = &prog;
    if (row.toggle_key) {
      const char* key = row.toggle_key;
      MenuItem* it = &item;
      item.Click = [pp, it, key] { ToggleClick(*pp, *it, key); };
    } else if (row.click) {
      ClickFn click = row.click;
      item.Click = [pp, click] { click(*pp); };
    }
  }
}

}  // namespace v2
