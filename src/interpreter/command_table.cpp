// The whole command table, in the order the words are compared. A row's
// start is the word's length plus 2 (behind the one blank), except for
// vcus, vrea and charmap, whose argument keeps that blank.
#include "config/menu_tree.h"
#include "idle/idle_session.h"
#include "interpreter/chat_event.h"
#include "interpreter/client_commands.h"
#include "interpreter/host_commands.h"
#include "interpreter/info_commands.h"
#include "player/player_commands.h"
#include "player/track_search.h"
#include "transfers/transfer_monitors.h"

namespace v2 {
namespace {

// The rows that do what a menu item does.
void IdleOn(Program& prog, const std::string&) { idleon_Click(prog); }
void IdleOff(Program& prog, const std::string&) { idleoff_Click(prog); }
void Exit(Program& prog, const std::string&) { exit_Click(prog); }
void Brag(Program& prog, const std::string&) { brag_Click(prog); }
void Stats(Program& prog, const std::string&) { PostTransferStatus(prog); }

}  // namespace

const std::array<CommandRow, kCommandCount>& CommandTable() {
  using R = ArgRule;
  // clang-format off
  static const std::array<CommandRow, kCommandCount> kTable = {{
      {"ioff", 6, R::kNone, ImsOffCommand},
      {"ion", 5, R::kNone, ImsOnCommand},
      {"ghoston", 9, R::kNone, GhostOnCommand},
      {"ghostoff", 10, R::kNone, GhostOffCommand},
      {"hwelc", 7, R::kNone, HideWelcomeCommand},
      {"swelc", 7, R::kNone, ShowWelcomeCommand},
      {"idleon", 8, R::kNone, IdleOn},
      {"idleoff", 9, R::kNone, IdleOff},
      {"vcus", 5, R::kNone, ViewCustom},
      {"vrea", 5, R::kNone, ViewReasonsCommand},
      {"glyph", 7, R::kNone, GlyphCommand},
      {"exit", 6, R::kNone, Exit},
      {"brag", 6, R::kNone, Brag},
      {"handle", 8, R::kFree, SetHandle},
      {"pr", 4, R::kFree, PrivateRoom},
      {"off", 5, R::kNone, CommandsOff},
      {"cmds", 6, R::kNone, CommandListCommand},
      {"soff", 6, R::kNone, SignOffCommand},
      {"new", 5, R::kNone, NewMailCommand},
      {"old", 5, R::kNone, OldMailCommand},
      {"sent", 6, R::kNone, SentMailCommand},
      {"flash", 7, R::kNone, FlashMailCommand},
      {"boot", 6, R::kNone, BootCommand},
      {"kw", 4, R::kNeeded, Keyword},
      {"web", 5, R::kNeeded, WebCommand},
      {"ck", 4, R::kNeeded, CheckImCommand},
      {"time", 6, R::kNone, TimeCommand},
      {"charmap", 8, R::kNone, CharmapCommand},
      {"date", 6, R::kNone, PostDate},
      {"aotime", 8, R::kNone, AotimeCommand},
      {"cdir", 6, R::kNone, CdirCommand},
      {"r", 3, R::kNone, RandomCommand},
      {"next", 6, R::kNone, NextCommand},
      {"prev", 6, R::kNone, PrevCommand},
      {"dir", 5, R::kNeeded, DirCommand},
      {"unpause", 9, R::kNone, UnpauseCommand},
      {"stop", 6, R::kNone, StopCommand},
      {"vol", 5, R::kFree, VolCommand},
      {"pause", 7, R::kNone, PauseCommand},
      {"p", 3, R::kP, PCommand},
      {"cancel", 8, R::kNone, CancelCommand},
      {"cont", 6, R::kOnOff, ContCommand},
      {"rep", 5, R::kOnOff, RepCommand},
      {"ord", 5, R::kOnOff, OrdCommand},
      {"ref", 5, R::kNone, RefCommand},
      {"im", 4, R::kFree, SendImCommand},
      {"adv", 5, R::kNone, AdvCommand},
      {"sinfo", 7, R::kNone, SinfoCommand},
      {"length", 8, R::kNone, LengthCommand},
      {"aim", 5, R::kNone, AimCommand},
      {"stats", 7, R::kNone, Stats},
  }};
  // clang-format on
  return kTable;
}

}  // namespace v2
