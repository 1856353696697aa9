#pragma once
// Scenario script lines, understood once for both runners: the in-process
// one (virtual time) and aolhost.exe (real time, under Windows or Wine).
#include <string>

#include "aolsim/aol_client.h"
#include "aolsim/desktop.h"

namespace v2 {

struct ScriptCommand {
  enum class Kind {
    kNothing,  // an empty line or a comment
    kClient,   // something the member, another person or the client does
    kDesktop,  // the other messenger, the pointer: around the client
    kWait,
    kShow,
    kProgram,  // something the member does in one of the program's windows
               // (custom type: text is FIELD, a blank and TEXT)
    kAnswer,   // the answer to the next input box (object "answer" with
               // text, or "answer-cancel")
    kTrack,    // an MP3 file made: object its name, seconds its length
    kTags,     // the tags of the tracks made from here on: text
    kHang,     // the client stops answering for seconds
    kRestart,  // the program's process is ended and started again

    kNotUnderstood,
  };
  Kind kind = Kind::kNothing;
  std::string line;    // the line, in Windows-1252, without a trailing CR
  std::string object;  // show: what to show; kProgram: the command
  std::string text;    // kProgram: its argument
  double seconds = 0;  // wait, track
};

// The longest wait a script can ask for (about 31 years); more is cut to it.
inline constexpr double kMaxWaitSeconds = 1e9;
// The longest hang of the client a script can ask for.
inline constexpr double kMaxHangSeconds = 3600;

// One line of a script (UTF-8).
ScriptCommand ParseScriptLine(const std::string& utf8_line);

// What `show` tells of the client: input, room, windows, ims, ghosting,
// welcome, client, glyph, upload; false for anything else.
bool ShowOfClient(aolsim::AolClient& client, const std::string& object,
                  std::string& value);
// What `show` tells of the desktop: pointer; false for anything else.
bool ShowOfDesktop(aolsim::Desktop& desktop, const std::string& object,
                   std::string& value);

// Plays a kClient command on the client: say, type, typeahead, other, the
// client's windows opening and closing, its connection and its queues, and
// the faults armed by `at`.
void PlayOnClient(aolsim::AolClient& client, const ScriptCommand& command);
// Plays a kDesktop command: aim NAME, aim off, pointer X Y.
void PlayOnDesktop(aolsim::Desktop& desktop, const ScriptCommand& command);

}  // namespace v2
