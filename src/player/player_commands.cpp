#include "player/player_commands.h"

#include <cmath>
#include <cstdlib>

#include "core/list_files.h"
#include "core/program.h"
#include "core/settings.h"
#include "core/styled_line.h"
#include "host/host_windows.h"
#include "platform/text.h"
#include "player/id3_tags.h"
#include "player/play_modes.h"
#include "player/player_text.h"

namespace v2 {
namespace {

constexpr const char* kSetADirectory = "please set a directory";
// The separator of the directory replies, a middle dot.
constexpr const char* kDot = " \xB7 mp3s: <b>";

// The full name of a file of the player's directory, as the control gets it.
std::string InDirectory(Program& prog, const std::string& file) {
  return prog.form1.File1.Path() + "\\" + file;
}

void ReplyWithTrack(Program& prog, const std::string& lead) {
  PlayerSay(
      prog,
      lead + "<u>" + TrackName(prog, prog.form1.Label6.Caption.Get()) + "</u>");
}

// cont, rep and ord: "on" makes the mode the only one, "off" drops it and
// leaves StopMode in force; an empty argument asks for one of the two.
void SwitchMode(Program& prog, const std::string& CommandArg,
                VbBool Form1::*mode, const char* name) {
  Form1& f = prog.form1;
  if (CommandArg.empty()) {
    PlayerSay(prog, "specify either <b>on</b> or <b>off</b>");
    return;
  }
  if (CommandArg == "on") {
    f.RepeatMode = f.ContinuousMode = f.OrderMode = f.StopMode = kVbFalse;
    f.*mode = kVbTrue;
  } else if (CommandArg == "off") {
    f.StopMode = kVbTrue;
    f.*mode = kVbFalse;
  } else {
    return;
  }
  ModesChanged(prog);
  PlayerSay(prog, std::string(name) + " mode: <b>" + CommandArg + "</b>");
}

}  // namespace

std::string TrackName(Program& prog, const std::string& file) {
  return LCase(ReplaceText(prog.platform, file, ".mp3", ""));
}

void OpenTrack(Program& prog, const std::string& path) {
  Platform& p = prog.platform;
  p.media().Open(path);
  const TrackTags tags = ReadTrackTags(p.files().NativePath(path));
  Form1& f = prog.form1;
  f.title.Text.Set(tags.title);
  f.artist.Text.Set(tags.artist);
  f.album.Text.Set(tags.album);
  f.year.Text.Set(tags.year);
  f.comment.Text.Set(tags.comment);
}

void StartTrackAtCursor(Program& prog) {
  Form1& f = prog.form1;
  OpenTrack(prog, InDirectory(prog, f.File1.FileName()));
  prog.platform.media().Play();
  f.Label6.Caption.Set(f.File1.FileName());
}

void PlayerSay(Program& prog, const std::string& middle) {
  ChatSend(prog.platform, StyledLine(prog.form4, Pair::kMain, middle));
}

int VolumeFor(double v) {
  return static_cast<int>(std::nearbyint(v * 25.0 - 2500.0));
}

void ReadPlayerPath(Program& prog) {
  Platform& p = prog.platform;
  std::string path = IniRead(p, kIniSection, "path", SettingsFile(p));
  // A stored folder that is not there now still stands, with no files in
  // it, so that a drive that comes back is found again by `ref`.
  prog.form1.File1.SetPath(path.empty() ? p.files().ProgramDir() : path);
}

void CdirCommand(Program& prog, const std::string& /*CommandArg*/) {
  // The one directory there is: the player's, and the one stored for the
  // next start, which will then begin in the program's own.
  Platform& p = prog.platform;
  prog.form1.File1.SetPath("");
  IniWrite(p, kIniSection, "path", "", SettingsFile(p));
  PlayerSay(prog, "directorys cleared");
}

void RandomCommand(Program& prog, const std::string& /*CommandArg*/) {
  FileListBox& files = prog.form1.File1;
  if (files.ListCount() == 0) {
    PlayerSay(prog, kSetADirectory);
    return;
  }
  files.SetListIndex(
      static_cast<int>(RandomPick(prog.platform, files.ListCount())) - 1);
  StartTrackAtCursor(prog);
  ReplyWithTrack(prog, "random: ");
}

void NextCommand(Program& prog, const std::string& /*CommandArg*/) {
  FileListBox& files = prog.form1.File1;
  if (files.Path().empty()) {
    PlayerSay(prog, kSetADirectory);
    return;
  }
  // From the last track, and from -1, to the first; an empty list keeps -1.
  const int at = files.ListIndex();
  files.SetListIndex(at + 1 < files.ListCount() ? at + 1 : 0);
  StartTrackAtCursor(prog);
  ReplyWithTrack(prog, "next: ");
}

void PrevCommand(Program& prog, const std::string& /*CommandArg*/) {
  FileListBox& files = prog.form1.File1;
  if (files.Path().empty()) {
    PlayerSay(prog, kSetADirectory);
    return;
  }
  // From the first track to the last; from -1 there is nothing before.
  const int at = files.ListIndex();
  files.SetListIndex(at == 0 ? files.ListCount() - 1 : at - 1);
  StartTrackAtCursor(prog);
  ReplyWithTrack(prog, "previous: ");
}

void DirCommand(Program& prog, const std::string& CommandArg) {
  Platform& p = prog.platform;
  // A folder that is not there changes nothing and says nothing: the stored
  // one is kept.
  std::vector<std::string> files;
  if (!p.files().FilesIn(CommandArg, files)) return;
  FileListBox& list = prog.form1.File1;
  list.SetPath(CommandArg);
  IniWrite(p, kIniSection, "path", list.Path(), SettingsFile(p));
  PlayerSay(prog, "directory set: " + LCase(list.Path()) + kDot +
                      std::to_string(list.ListCount()) + "</b>");
}

void UnpauseCommand(Program& prog, const std::string& /*CommandArg*/) {
  prog.platform.media().Play();
  ReplyWithTrack(prog, "unpaused: ");
}

void StopCommand(Program& prog, const std::string& /*CommandArg*/) {
  Form1& f = prog.form1;
  prog.platform.media().Stop();
  ReplyWithTrack(prog, "stopped: ");
  f.Label6.Caption.Set("");
  f.ContinuousMode = f.RepeatMode = f.OrderMode = kVbFalse;
  f.StopMode = kVbTrue;
  ModesChanged(prog);
  prog.platform.media().SetCurrentPosition(0.0);
}

void VolCommand(Program& prog, const std::string& CommandArg) {
  // A number as the member typed it; anything else is let go in silence.
  if (!IsNumeric(CommandArg)) return;
  std::string number = CommandArg;
  for (char& c : number) {
    if (c == 'd' || c == 'D') c = 'e';
  }
  const double v = std::strtod(number.c_str(), nullptr);
  if (v > 100 || v < 0) {
    ChatSend(prog.platform, StyledLineTight(prog.form4, Pair::kMain,
                                            "volume interval between 1 & 100"));
    return;
  }
  prog.platform.media().SetVolume(VolumeFor(v));
  PlayerSay(prog, "volume set to: <b>" + CommandArg + "</b>%");
}

void PauseCommand(Program& prog, const std::string& /*CommandArg*/) {
  prog.platform.media().Pause();
  ReplyWithTrack(prog, "paused: ");
}

void ContCommand(Program& prog, const std::string& CommandArg) {
  SwitchMode(prog, CommandArg, &Form1::ContinuousMode, "continuous");
}

void RepCommand(Program& prog, const std::string& CommandArg) {
  SwitchMode(prog, CommandArg, &Form1::RepeatMode, "repeat");
}

void OrdCommand(Program& prog, const std::string& CommandArg) {
  SwitchMode(prog, CommandArg, &Form1::OrderMode, "order");
}

void RefCommand(Program& prog, const std::string& /*CommandArg*/) {
  FileListBox& list = prog.form1.File1;
  list.Refresh();
  PlayerSay(prog, std::string("refreshed mp3 directory") + kDot +
                      std::to_string(list.ListCount()) + "</b>");
}

void SinfoCommand(Program& prog, const std::string& /*CommandArg*/) {
  PlayerSay(prog, "album: " + LCase(prog.form1.album.Text.Get()));
}

void LengthCommand(Program& prog, const std::string& /*CommandArg*/) {
  if (prog.form1.Label6.Caption.Get().empty()) {
    PlayerSay(prog, "no song playing");
    return;
  }
  const std::string position = SongPOS(prog);
  PlayerSay(prog, "current song length: <b>" + position + "</b> of <b>" +
                      SongLength(prog) + "</b>");
}

}  // namespace v2
