#pragma once
// The rows of the chat commands that drive the client's menus and windows,
// open things through the system's shell, and show the reasons window.
// Each acts, then says what it did, whatever the client made of it; `web`
// says it first.
#include <string>

namespace v2 {

class Program;
struct Platform;

void HideWelcomeCommand(Program& prog, const std::string& CommandArg);
void ShowWelcomeCommand(Program& prog, const std::string& CommandArg);
void GlyphCommand(Program& prog, const std::string& CommandArg);
void ViewReasonsCommand(Program& prog, const std::string& CommandArg);
void SignOffCommand(Program& prog, const std::string& CommandArg);
void NewMailCommand(Program& prog, const std::string& CommandArg);
void OldMailCommand(Program& prog, const std::string& CommandArg);
void SentMailCommand(Program& prog, const std::string& CommandArg);
void FlashMailCommand(Program& prog, const std::string& CommandArg);
void CharmapCommand(Program& prog, const std::string& CommandArg);
// `web`: the address behind "http://", as typed.
void WebCommand(Program& prog, const std::string& CommandArg);
// `cmds`: opens the command list, or says it cannot.
void CommandListCommand(Program& prog, const std::string& CommandArg);

}  // namespace v2
