#include "player/play_modes.h"

#include <cmath>

#include "core/list_files.h"
#include "core/program.h"
#include "host/host_windows.h"
#include "player/player_commands.h"

namespace v2 {
namespace {

// Longer than any media the controls report (about 69 days): the minutes
// counted stay a bounded loop whatever a control reads.
constexpr double kLongestSeconds = 6000000;

// The test for the end: two fresh reads, compared exactly.
bool AtEnd(MediaControl& media) {
  const double duration = media.Duration();
  const double position = media.CurrentPosition();
  return duration == position;
}

std::string TwoDigits(long long n) {
  std::string digits = std::to_string(n);
  if (digits.size() < 2) digits.insert(digits.begin(), '0');
  return digits;
}

// Blocks 2 and 3: the track at the cursor (where it could be moved) plays,
// with its line.
void PlayFromCursor(Program& prog, const char* lead) {
  StartTrackAtCursor(prog);
  PlayerSay(prog, std::string(lead) + "<u>" +
                      TrackName(prog, prog.form1.Label6.Caption.Get()) +
                      "</u>");
}

}  // namespace

void Timer2_Timer(Program& prog) {
  Form1& f = prog.form1;
  MediaControl& media = prog.platform.media();
  bool acted = false, at_end = false;
  if ((at_end = AtEnd(media)) && f.RepeatMode) {
    media.SetCurrentPosition(0.0);
    media.Play();
    PlayerSay(prog, "repeating: <u>" + TrackName(prog, f.Label6.Caption.Get()) +
                        "</u>");
    acted = true;
  }
  if ((at_end = AtEnd(media)) && f.ContinuousMode) {
    f.File1.SetListIndex(
        static_cast<int>(RandomPick(prog.platform, f.File1.ListCount())) - 1);
    PlayFromCursor(prog, "random: ");
    acted = true;
  }
  if ((at_end = AtEnd(media)) && f.OrderMode) {
    // No going round: on the last track the cursor stays, and it plays again.
    f.File1.SetListIndex(f.File1.ListIndex() + 1);
    PlayFromCursor(prog, "next: ");
    acted = true;
  }
  if ((at_end = AtEnd(media)) && f.StopMode) {
    f.Label6.Caption.Set("");
    media.SetCurrentPosition(0.0);
    media.Stop();
    acted = true;
  }
  // A pass that did nothing read the same four times. The next one that
  // could do anything comes when the reads can change: at the end of a
  // playing track, or (a track at its end with no mode, or nothing playing)
  // when a call on the control or a mode wakes the timer.
  if (!acted) f.Timer2.Sleep(at_end ? kNeverMs : media.NextChangeMs());
}

void ModesChanged(Program& prog) { prog.form1.Timer2.Wake(); }

std::string SongTime(Platform& p, double seconds) {
  double whole = std::nearbyint(seconds);
  if (!(whole > 0)) whole = 0;  // a position before the start, or no number
  auto s = static_cast<long long>(std::min(whole, kLongestSeconds));
  long long m = 0;
  while (s > 59) {
    s -= 60;
    ++m;
    p.loop.PumpEvents();
  }
  return TwoDigits(m) + ":" + TwoDigits(s);
}

std::string SongLength(Program& prog) {
  return SongTime(prog.platform, prog.platform.media().Duration());
}

std::string SongPOS(Program& prog) {
  return SongTime(prog.platform, prog.platform.media().CurrentPosition());
}

}  // namespace v2
