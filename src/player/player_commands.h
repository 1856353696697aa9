#pragma once
// The player's chat commands, and what they share with the search and the
// play modes: the member plays music for the room by typing in it, and every
// command answers in the room, so the whole room sees what plays.
#include <string>

namespace v2 {

class Program;

// The rows of the command table.
void CdirCommand(Program& prog, const std::string& CommandArg);
void RandomCommand(Program& prog, const std::string& CommandArg);  // r
void NextCommand(Program& prog, const std::string& CommandArg);
void PrevCommand(Program& prog, const std::string& CommandArg);
void DirCommand(Program& prog, const std::string& CommandArg);
void UnpauseCommand(Program& prog, const std::string& CommandArg);
void StopCommand(Program& prog, const std::string& CommandArg);
void VolCommand(Program& prog, const std::string& CommandArg);
void PauseCommand(Program& prog, const std::string& CommandArg);
void ContCommand(Program& prog, const std::string& CommandArg);
void RepCommand(Program& prog, const std::string& CommandArg);
void OrdCommand(Program& prog, const std::string& CommandArg);
void RefCommand(Program& prog, const std::string& CommandArg);
void SinfoCommand(Program& prog, const std::string& CommandArg);
void LengthCommand(Program& prog, const std::string& CommandArg);

// A file name as the replies show it: every ".mp3" taken out, in lower
// case.
std::string TrackName(Program& prog, const std::string& file);
// The file becomes the control's media; the tag boxes take its tags (a file
// without them empties them).
void OpenTrack(Program& prog, const std::string& path);
// The track at File1's cursor: opened, played, and the current file.
void StartTrackAtCursor(Program& prog);
// One of the player's lines: a StyledLine with the pair main.
void PlayerSay(Program& prog, const std::string& middle);
// The control's volume for a level v from 0 to 100: v * 25 - 2500, to the
// nearest whole number, halves to the even one.
int VolumeFor(double v);
// The start: the player's directory from settings.dat, or the program's own
// when none is stored.
void ReadPlayerPath(Program& prog);

}  // namespace v2
