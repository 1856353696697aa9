#include "player/track_search.h"

#include <cmath>
#include <cstdlib>

#include "core/program.h"
#include "host/host_windows.h"
#include "platform/text.h"
#include "player/player_commands.h"
#include "player/player_text.h"

namespace v2 {
namespace {

// A match becomes the current file; the control starts it by itself. The
// entry is a copy: the list can change while the reply goes out.
void PlayMatch(Program& prog, const std::string entry) {
  Form1& f = prog.form1;
  OpenTrack(prog, f.File1.Path() + "\\" + entry);
  PlayerSay(prog, "playing: <u>" + TrackName(prog, entry) + "</u>");
  f.Label6.Caption.Set(entry);
}

// The number of a listed match, as a 16-bit whole number (halves to the
// even one); false for no number or one out of that range.
bool MatchNumber(const std::string& text, int& n) {
  if (!IsNumeric(text)) return false;
  std::string number = text;
  for (char& c : number) {
    if (c == 'd' || c == 'D') c = 'e';
  }
  const double v = std::nearbyint(std::strtod(number.c_str(), nullptr));
  if (!(v >= -32768 && v <= 32767)) return false;
  n = static_cast<int>(v);
  return true;
}

}  // namespace

void PlayIt(Program& prog, const std::string& text) {
  Form1& f = prog.form1;
  const std::string wanted = LCase(StripSpaces(text));
  const int count = f.File1.ListCount();
  for (int i = 0; i < count; ++i) {
    const std::string name = f.File1.List(i);
    if (InStr(1, LCase(StripSpaces(name)), wanted) > 0) f.List1.AddItem(name);
  }
  const int matches = f.List1.ListCount();
  if (matches == 1) {
    PlayMatch(prog, f.List1.items[0]);
    f.List1.Clear();
    return;
  }
  if (matches == 0) {
    PlayerSay(prog, "no matches were found");
    return;
  }
  PlayerSay(prog,
            "<b>" + std::to_string(matches) + "</b> multiple matches found");
  for (int i = 0; i < matches; ++i) {
    // A search that runs during the pauses adds to the same list; the
    // numbers shown are those of this one.
    const std::string entry = i < f.List1.ListCount()
                                  ? f.List1.items[static_cast<std::size_t>(i)]
                                  : std::string();
    PlayerSay(prog, "<b>" + std::to_string(i) + "</b>  <u>" +
                        TrackName(prog, entry) + "</u>");
    Pause(prog.platform, 1);
  }
  PlayerSay(prog, "type <b>p</b> and a number or <b>cancel</b>");
  f.SelectionPending = kVbTrue;
}

void PCommand(Program& prog, const std::string& CommandArg) {
  Form1& f = prog.form1;
  if (f.File1.Path().empty()) {
    PlayerSay(prog, "please set a directory");
    return;
  }
  if (!f.SelectionPending) {
    PlayIt(prog, CommandArg);
    return;
  }
  int n = -1;
  if (!MatchNumber(CommandArg, n) || n < 0 || n >= f.List1.ListCount()) {
    PlayerSay(prog, "invalid number, select again");
    return;
  }
  PlayMatch(prog, f.List1.items[static_cast<std::size_t>(n)]);
  f.SelectionPending = kVbFalse;
  f.List1.Clear();
}

void CancelCommand(Program& prog, const std::string& /*CommandArg*/) {
  Form1& f = prog.form1;
  if (!f.SelectionPending) return;
  f.SelectionPending = kVbFalse;
  f.List1.Clear();
  PlayerSay(prog, "multiple track matches canceled");
}

}  // namespace v2
