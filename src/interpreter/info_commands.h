#pragma once
// The rows of the chat commands that tell a fact: the time since the
// machine's start, the task bar clock, the time on line, the other
// messenger's screen name, and the two lines about the program.
#include <string>

namespace v2 {

class Program;

// `boot`: Form1's Label3 to Label5 take the days, hours and minutes since
// the machine's start, and the line says as much of them as counts.
void BootCommand(Program& prog, const std::string& CommandArg);
// `time`: the task bar clock's own text, in lower case.
void TimeCommand(Program& prog, const std::string& CommandArg);
// `aotime`: the handle and the client's time on line.
void AotimeCommand(Program& prog, const std::string& CommandArg);
// `aim`: the other messenger's screen name, lower case, without blanks.
void AimCommand(Program& prog, const std::string& CommandArg);
// `adv`: the program's name and where to get it.
void AdvCommand(Program& prog, const std::string& CommandArg);

// The maker's web site in the second line of `adv`.
inline constexpr const char* kSiteAddress = "http://vantrel.example/";
inline constexpr const char* kSiteName = "vantrel\xB2 home";

}  // namespace v2
