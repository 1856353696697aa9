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
               // text, "answer-cancel" or "answer-wait")
    kTrack,    // an MP3 file made: object its name, seconds its length
    kTags,     // the tags of the tracks made from here on: text
    kUntrack,  // the file object is deleted
    kHang,     // the client stops answering for seconds
    kRestart,  // the program's process is ended and started again
    kHold,     // the program does not start with the run
    kStart,    // the held (or ended) program starts
    kStore,    // object "store" or "setting": text is KEY, value VALUE
    kAfter,    // text (UTF-8, as the script has it) is played seconds from
               // now; a fault of the client's is a kClient line instead

    kNotUnderstood,
  };
  Kind kind = Kind::kNothing;
  std::string line;    // the line, in Windows-1252, without a trailing CR
  std::string object;  // show: what to show; kProgram: the command
  std::string text;    // kProgram: its argument
  std::string value;   // kStore: the value
  double seconds = 0;  // wait, track, after
};

// The longest wait a script can ask for (about 31 years); more is cut to it.
inline constexpr double kMaxWaitSeconds = 1e9;
// The longest hang of the client a script can ask for.
inline constexpr double kMaxHangSeconds = 3600;

// One line of a script (UTF-8).
ScriptCommand ParseScriptLine(const std::string& utf8_line);

// What `show` tells of the client: input, room, windows, ims, ghosting,
// welcome, client, glyph, upload, dialogs; false for anything else.
bool ShowOfClient(aolsim::AolClient& client, const std::string& object,
                  std::string& value);
// What `show` tells of the desktop: pointer; false for anything else.
bool ShowOfDesktop(aolsim::Desktop& desktop, const std::string& object,
                   std::string& value);

// Plays a kClient command on the client: say, type, typeahead, other, the
// client's windows opening and closing, its connection and its queues, the
// faults armed by `at` and `after`, and its other shapes (retitle, box,
// the transfer windows' texts); retitle reaches the desktop's buddy list
// too, where one is given.
void PlayOnClient(aolsim::AolClient& client, const ScriptCommand& command,
                  aolsim::Desktop* desktop = nullptr);
// Plays a kDesktop command: aim NAME, aim off, pointer X Y, clock off/on.
void PlayOnDesktop(aolsim::Desktop& desktop, const ScriptCommand& command);

// A window message by its Windows name (WM_KEYDOWN, BM_SETCHECK, ...), or
// its number for one the program does not send.
std::string MessageName(std::uint32_t msg);

}  // namespace v2
