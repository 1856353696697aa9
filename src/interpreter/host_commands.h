#pragma once
// The rows of the chat commands that drive the client and the program's own
// windows and settings.
#include <string>

namespace v2 {

class Program;

// `handle`: the member's handle becomes the argument, the empty text too.
void SetHandle(Program& prog, const std::string& CommandArg);
// `pr`: into a private room, and whether the client let the member in.
void PrivateRoom(Program& prog, const std::string& CommandArg);
// `ioff`, `ion`: the member's incoming IMs off and on.
void ImsOffCommand(Program& prog, const std::string& CommandArg);
void ImsOnCommand(Program& prog, const std::string& CommandArg);
// `ghoston`, `ghostoff`: the client's privacy choice.
void GhostOnCommand(Program& prog, const std::string& CommandArg);
void GhostOffCommand(Program& prog, const std::string& CommandArg);
// `ck`: whether a member can receive IMs.
void CheckImCommand(Program& prog, const std::string& CommandArg);
// `im`: "name,message" sends an IM.
void SendImCommand(Program& prog, const std::string& CommandArg);
// `vcus`: shows the style window, without waiting for it.
void ViewCustom(Program& prog, const std::string& CommandArg);
// `kw`: the client runs a keyword or address.
void Keyword(Program& prog, const std::string& CommandArg);

}  // namespace v2
