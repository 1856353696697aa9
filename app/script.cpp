// Script lines understood, once for both runners.
#include "app/script.h"

#include "app/script_words.h"
#include "core/style_keys.h"
#include "platform/text.h"

namespace v2 {

ScriptCommand ParseScriptLine(const std::string& utf8_line) {
  ScriptCommand c;
  c.line = Utf8ToCp1252(utf8_line);
  if (!c.line.empty() && c.line.back() == '\r') c.line.pop_back();
  const std::string& line = c.line;
  if (line.empty() || line[0] == '#') return c;
  std::string rest;
  if (Take(line, "say", rest) || Take(line, "type", rest) ||
      Take(line, "typeahead", rest) || line == "close welcome" ||
      ((Take(line, "roomfull", rest) || Take(line, "roomfree", rest)) &&
       !rest.empty() && rest.find(' ') == std::string::npos) ||
      line == "open welcome" || line == "close client" ||
      line == "open client") {
    c.kind = ScriptCommand::Kind::kClient;
  } else if (Take(line, "other", rest) || Take(line, "im", rest)) {
    c.kind = rest.empty() || rest[0] == ' '
                 ? ScriptCommand::Kind::kNotUnderstood
                 : ScriptCommand::Kind::kClient;
  } else if (Take(line, "person", rest)) {
    auto blank = rest.find(' ');
    std::string state =
        blank == std::string::npos ? "" : rest.substr(blank + 1);
    c.kind =
        blank != 0 && blank != std::string::npos &&
                (state == "offline" || state == "noims" || state == "online")
            ? ScriptCommand::Kind::kClient
            : ScriptCommand::Kind::kNotUnderstood;
  } else if (Take(line, "download", rest) || Take(line, "upload", rest)) {
    std::string name;
    int percent = 0, minutes = 0;
    c.kind = TakeTransfer(rest, name, percent, minutes)
                 ? ScriptCommand::Kind::kClient
                 : ScriptCommand::Kind::kNotUnderstood;
  } else if (line == "end download" || line == "end upload" ||
             line == "disconnect") {
    c.kind = ScriptCommand::Kind::kClient;
  } else if (Take(line, "signon-delay", rest)) {
    c.kind = ParseSeconds(rest, c.seconds)
                 ? ScriptCommand::Kind::kClient
                 : ScriptCommand::Kind::kNotUnderstood;
  } else if (Take(line, "queue", rest)) {
    bool uploads = false;
    int n = 0;
    c.kind = TakeQueue(rest, uploads, n) ? ScriptCommand::Kind::kClient
                                         : ScriptCommand::Kind::kNotUnderstood;
  } else if (Take(line, "aim", rest)) {
    c.kind = !rest.empty() && rest.find(' ') == std::string::npos
                 ? ScriptCommand::Kind::kDesktop
                 : ScriptCommand::Kind::kNotUnderstood;
  } else if (Take(line, "pointer", rest)) {
    int x = 0, y = 0;
    c.kind = TakePoint(rest, x, y) ? ScriptCommand::Kind::kDesktop
                                   : ScriptCommand::Kind::kNotUnderstood;
  } else if (Take(line, "wait", rest)) {
    c.kind = ParseSeconds(rest, c.seconds)
                 ? ScriptCommand::Kind::kWait
                 : ScriptCommand::Kind::kNotUnderstood;
  } else if (Take(line, "hang", rest)) {
    c.kind = ParseSeconds(rest, c.seconds) && c.seconds <= kMaxHangSeconds
                 ? ScriptCommand::Kind::kHang
                 : ScriptCommand::Kind::kNotUnderstood;
  } else if (Take(line, "at", rest)) {
    aolsim::AolClient::Moment at{};
    aolsim::AolClient::Fault fault;
    c.kind = TakeFault(rest, at, fault) ? ScriptCommand::Kind::kClient
                                        : ScriptCommand::Kind::kNotUnderstood;
  } else if (Take(line, "after", rest)) {
    int ms = 0;
    aolsim::AolClient::Fault fault;
    std::string later;
    if (TakeTimedFault(rest, ms, fault)) {
      c.kind = ScriptCommand::Kind::kClient;
    } else if (TakeTimedLine(rest, ms, later)) {
      c.kind = ScriptCommand::Kind::kAfter;
      c.seconds = ms / 1000.0;
      c.text = later;
    } else {
      c.kind = ScriptCommand::Kind::kNotUnderstood;
    }
  } else if (Take(line, "retitle", rest) ||
             Take(line, "download-texts", rest) ||
             Take(line, "upload-texts", rest)) {
    c.kind = rest.find(" | ") != std::string::npos
                 ? ScriptCommand::Kind::kClient
                 : ScriptCommand::Kind::kNotUnderstood;
  } else if (Take(line, "box", rest) || line == "close box" ||
             Take(line, "download-title", rest)) {
    c.kind = ScriptCommand::Kind::kClient;
  } else if (line == "clock off" || line == "clock on") {
    c.kind = ScriptCommand::Kind::kDesktop;
  } else if (line == "hold") {
    c.kind = ScriptCommand::Kind::kHold;
  } else if (line == "start") {
    c.kind = ScriptCommand::Kind::kStart;
  } else if (Take(line, "store", rest) || Take(line, "setting", rest)) {
    c.object = line.substr(0, line.find(' '));
    c.kind = TakeKeyValue(rest, c.text, c.value)
                 ? ScriptCommand::Kind::kStore
                 : ScriptCommand::Kind::kNotUnderstood;
  } else if (Take(line, "untrack", rest)) {
    c.kind = rest.empty() ? ScriptCommand::Kind::kNotUnderstood
                          : ScriptCommand::Kind::kUntrack;
    c.object = rest;
  } else if (Take(line, "reasons", rest)) {
    c.kind = ScriptCommand::Kind::kNotUnderstood;
    std::string n;
    if (Take(rest, "add", n)) {
      c.kind = ScriptCommand::Kind::kProgram;
      c.object = "reasons add";
      c.text = n;
    } else if (rest == "save" || rest == "cancel") {
      c.kind = ScriptCommand::Kind::kProgram;
      c.object = "reasons " + rest;
    } else if (Take(rest, "edit", n) && !n.empty() && n.size() < 10 &&
               n.find_first_not_of("0123456789") == std::string::npos) {
      c.kind = ScriptCommand::Kind::kProgram;
      c.object = "reasons edit";
      c.text = n;
    }
  } else if (Take(line, "custom", rest)) {
    std::string typed;
    c.kind = ScriptCommand::Kind::kNotUnderstood;
    if (rest == "save" || rest == "test" || rest == "cancel") {
      c.kind = ScriptCommand::Kind::kProgram;
      c.object = "custom " + rest;
    } else if (Take(rest, "type", typed)) {
      // FIELD, a blank and TEXT; TEXT may be empty.
      const std::string field = typed.substr(0, typed.find(' '));
      for (const char* name : Form4FieldNames()) {
        if (field != name) continue;
        c.kind = ScriptCommand::Kind::kProgram;
        c.object = "custom type";
        c.text = typed;
      }
    }
  } else if (Take(line, "track", rest)) {
    // NAME is everything before the last word, blanks and all.
    auto last = rest.rfind(' ');
    c.kind = last != std::string::npos && last > 0 &&
                     ParseSeconds(rest.substr(last + 1), c.seconds) &&
                     c.seconds > 0
                 ? ScriptCommand::Kind::kTrack
                 : ScriptCommand::Kind::kNotUnderstood;
    if (last != std::string::npos) c.object = rest.substr(0, last);
  } else if (Take(line, "tags", rest)) {
    c.kind = ScriptCommand::Kind::kTags;
    c.text = rest;
  } else if (Take(line, "answer", rest)) {
    c.kind = ScriptCommand::Kind::kAnswer;
    c.object = "answer";
    c.text = rest;
  } else if (line == "answer-cancel" || line == "answer-wait") {
    c.kind = ScriptCommand::Kind::kAnswer;
    c.object = line;
  } else if (Take(line, "menu", rest)) {
    c.kind = rest.empty() || rest.find(' ') != std::string::npos
                 ? ScriptCommand::Kind::kNotUnderstood
                 : ScriptCommand::Kind::kProgram;
    c.object = "menu";
    c.text = rest;
  } else if (line == "tray left" || line == "tray right") {
    c.kind = ScriptCommand::Kind::kProgram;
    c.object = "tray";
    c.text = line.substr(5);
  } else if (line == "restart") {
    c.kind = ScriptCommand::Kind::kRestart;
  } else if (Take(line, "show", rest)) {
    c.kind = ScriptCommand::Kind::kShow;
    c.object = rest;
  } else {
    c.kind = ScriptCommand::Kind::kNotUnderstood;
  }
  return c;
}

}  // namespace v2
