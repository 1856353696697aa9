#include "app/script.h"

#include <algorithm>
#include <cstdlib>

#include "config/style_window.h"
#include "platform/text.h"

namespace v2 {
namespace {

// "word rest": true when line is word alone or word, a blank and rest.
bool Take(const std::string& line, const std::string& word, std::string& rest) {
  if (line == word) {
    rest.clear();
    return true;
  }
  if (line.compare(0, word.size() + 1, word + " ") == 0) {
    rest = line.substr(word.size() + 1);
    return true;
  }
  return false;
}

bool ParseSeconds(const std::string& text, double& seconds) {
  if (text.empty() ||
      text.find_first_not_of("0123456789.") != std::string::npos) {
    return false;
  }
  char* end = nullptr;
  seconds = std::min(std::strtod(text.c_str(), &end), kMaxWaitSeconds);
  return end && *end == '\0';
}

// A count of things: digits only, short enough to be one.
bool TakeCount(const std::string& word, int& n) {
  if (word.empty() || word.size() > 9 ||
      word.find_first_not_of("0123456789") != std::string::npos) {
    return false;
  }
  n = std::atoi(word.c_str());
  return true;
}

// "NAME PERCENT MINUTES" of download and upload: NAME is all before the last
// two words, blanks and all, and not empty; the numbers are digits only, and
// short enough to be counts.
bool TakeTransfer(const std::string& rest, std::string& name, int& percent,
                  int& minutes) {
  auto last = rest.rfind(' ');
  if (last == std::string::npos || last == 0) return false;
  auto middle = rest.rfind(' ', last - 1);
  if (middle == std::string::npos || middle == 0) return false;
  name = rest.substr(0, middle);
  return TakeCount(rest.substr(middle + 1, last - middle - 1), percent) &&
         TakeCount(rest.substr(last + 1), minutes);
}

// "uploads N" or "downloads N" of queue: which list, and how many.
bool TakeQueue(const std::string& rest, bool& uploads, int& n) {
  std::string count;
  if (Take(rest, "uploads", count)) {
    uploads = true;
  } else if (Take(rest, "downloads", count)) {
    uploads = false;
  } else {
    return false;
  }
  return TakeCount(count, n);
}

// The longest a sign-on can be made to take: what the client's timers hold.
constexpr double kMaxSignOnSeconds = 2000000;

// "X Y" of pointer: two counts of pixels.
bool TakePoint(const std::string& rest, int& x, int& y) {
  auto blank = rest.find(' ');
  if (blank == std::string::npos) return false;
  return TakeCount(rest.substr(0, blank), x) &&
         TakeCount(rest.substr(blank + 1), y);
}

// FAULT of `at` and `after`: hang SECONDS, close client, room NAME or dialog.
bool TakeFaultKind(const std::string& what, aolsim::AolClient::Fault& fault) {
  using Kind = aolsim::AolClient::Fault::Kind;
  std::string arg;
  double seconds = 0;
  if (Take(what, "hang", arg)) {
    if (!ParseSeconds(arg, seconds) || seconds > kMaxHangSeconds) return false;
    fault = {Kind::kHang, static_cast<int>(seconds * 1000.0 + 0.5), {}};
  } else if (what == "close client") {
    fault = {Kind::kQuit, 0, {}};
  } else if (Take(what, "room", arg) && !arg.empty()) {
    fault = {Kind::kRoom, 0, arg};
  } else if (what == "dialog") {
    fault = {Kind::kDialog, 0, {}};
  } else {
    return false;
  }
  return true;
}

// "MOMENT FAULT" of `at`: reply, return, popup or keyword.
bool TakeFault(const std::string& rest, aolsim::AolClient::Moment& at,
               aolsim::AolClient::Fault& fault) {
  std::string what;
  if (Take(rest, "reply", what)) {
    at = aolsim::AolClient::Moment::kReply;
  } else if (Take(rest, "return", what)) {
    at = aolsim::AolClient::Moment::kReturn;
  } else if (Take(rest, "popup", what)) {
    at = aolsim::AolClient::Moment::kPopup;
  } else if (Take(rest, "keyword", what)) {
    at = aolsim::AolClient::Moment::kKeyword;
  } else {
    return false;
  }
  return TakeFaultKind(what, fault);
}

// "SECONDS WHAT" of `after`, SECONDS at most an hour.
bool TakeAhead(const std::string& rest, int& ms, std::string& what) {
  const auto blank = rest.find(' ');
  double seconds = 0;
  if (blank == std::string::npos ||
      !ParseSeconds(rest.substr(0, blank), seconds) ||
      seconds > kMaxHangSeconds) {
    return false;
  }
  ms = static_cast<int>(seconds * 1000.0 + 0.5);
  what = rest.substr(blank + 1);
  return true;
}

// "SECONDS FAULT" of `after`.
bool TakeTimedFault(const std::string& rest, int& ms,
                    aolsim::AolClient::Fault& fault) {
  std::string what;
  return TakeAhead(rest, ms, what) && TakeFaultKind(what, fault);
}

// "SECONDS LINE" of `after`: LINE one of the client's own commands (what
// the member or others do through it), in UTF-8 as the script has it.
bool TakeTimedLine(const std::string& rest, int& ms, std::string& later) {
  std::string what;
  if (!TakeAhead(rest, ms, what)) return false;
  later = Cp1252ToUtf8(what);
  // One step ahead only: an `after` in it would nest without end.
  if (later.rfind("after ", 0) == 0) return false;
  return ParseScriptLine(later).kind == ScriptCommand::Kind::kClient;
}

}  // namespace

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
    c.kind = TakeTimedFault(rest, ms, fault) || TakeTimedLine(rest, ms, later)
                 ? ScriptCommand::Kind::kClient
                 : ScriptCommand::Kind::kNotUnderstood;
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
  } else if (line == "answer-cancel") {
    c.kind = ScriptCommand::Kind::kAnswer;
    c.object = "answer-cancel";
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

bool ShowOfClient(aolsim::AolClient& client, const std::string& object,
                  std::string& value) {
  if (object == "input") {
    value = client.InputText();
  } else if (object == "ghosting") {
    value = client.Ghosting() ? "on" : "off";
  } else if (object == "ims") {
    value = client.ImsOn() ? "on" : "off";
  } else if (object == "room") {
    value = client.RoomName();
  } else if (object == "windows") {
    value.clear();
    for (const std::string& title : client.WindowTitles()) {
      value += (value.empty() ? "\"" : " \"") + title + "\"";
    }
  } else if (object == "welcome") {
    value = client.Showing(client.welcome());
  } else if (object == "client") {
    value = client.Showing(client.frame());
  } else if (object == "glyph") {
    value = client.Showing(client.glyph()) == "none" ? "gone" : "there";
  } else if (object == "upload") {
    value = client.UploadShowing();
  } else {
    return false;
  }
  return true;
}

bool ShowOfDesktop(aolsim::Desktop& desktop, const std::string& object,
                   std::string& value) {
  if (object != "pointer") return false;
  const Point at = desktop.Pointer();
  value = std::to_string(at.x) + "," + std::to_string(at.y);
  return true;
}

void PlayOnDesktop(aolsim::Desktop& desktop, const ScriptCommand& command) {
  std::string rest;
  if (Take(command.line, "aim", rest)) {
    if (rest == "off") {
      desktop.AimQuit();
    } else {
      desktop.AimSignOn(rest);
    }
  } else if (Take(command.line, "pointer", rest)) {
    int x = 0, y = 0;
    if (TakePoint(rest, x, y)) desktop.MovePointer(x, y);
  }
}

void PlayOnClient(aolsim::AolClient& client, const ScriptCommand& command) {
  const std::string& line = command.line;
  std::string rest;
  if (Take(line, "say", rest)) {
    client.MemberTypes(rest);
    client.MemberPressesReturn();
  } else if (Take(line, "typeahead", rest)) {
    client.TypeAhead(rest);
  } else if (Take(line, "type", rest)) {
    client.MemberTypes(rest);
  } else if (Take(line, "other", rest)) {
    auto blank = rest.find(' ');
    client.OtherSays(rest.substr(0, blank),
                     blank == std::string::npos ? "" : rest.substr(blank + 1));
  } else if (line == "close welcome") {
    client.CloseWelcome();
  } else if (line == "open welcome") {
    client.OpenWelcome();
  } else if (Take(line, "im", rest)) {
    auto blank = rest.find(' ');
    client.ReceiveIm(rest.substr(0, blank),
                     blank == std::string::npos ? "" : rest.substr(blank + 1));
  } else if (Take(line, "person", rest)) {
    auto blank = rest.find(' ');
    const std::string state = rest.substr(blank + 1);
    client.SetPerson(rest.substr(0, blank),
                     state == "offline" ? aolsim::AolClient::Reach::kOffline
                     : state == "noims" ? aolsim::AolClient::Reach::kNoIms
                                        : aolsim::AolClient::Reach::kOnline);
  } else if (Take(line, "roomfull", rest)) {
    client.SetRoomFull(rest, true);
  } else if (Take(line, "roomfree", rest)) {
    client.SetRoomFull(rest, false);
  } else if (Take(line, "download", rest) || Take(line, "upload", rest)) {
    std::string name;
    int percent = 0, minutes = 0;
    if (!TakeTransfer(rest, name, percent, minutes)) return;
    if (line[0] == 'd') {
      client.Download(name, percent, minutes);
    } else {
      client.Upload(name, percent, minutes);
    }
  } else if (line == "end download") {
    client.EndDownload();
  } else if (line == "end upload") {
    client.EndUpload();
  } else if (line == "disconnect") {
    client.SignOff();  // the connection is gone: at once, as by the menu
  } else if (Take(line, "signon-delay", rest)) {
    double seconds = 0;
    if (ParseSeconds(rest, seconds)) {
      client.signon_delay_ms =
          static_cast<int>(std::min(seconds, kMaxSignOnSeconds) * 1000.0 + 0.5);
    }
  } else if (Take(line, "queue", rest)) {
    bool uploads = false;
    int n = 0;
    if (TakeQueue(rest, uploads, n)) {
      (uploads ? client.queued_uploads : client.queued_downloads) = n;
    }
  } else if (line == "close client") {
    client.Quit();
  } else if (line == "open client") {
    client.Start();
  } else if (Take(line, "at", rest)) {
    aolsim::AolClient::Moment at{};
    aolsim::AolClient::Fault fault;
    if (TakeFault(rest, at, fault)) client.Arm(at, std::move(fault));
  } else if (Take(line, "after", rest)) {
    int ms = 0;
    aolsim::AolClient::Fault fault;
    std::string later;
    if (TakeTimedFault(rest, ms, fault)) {
      client.ArmAfter(ms, std::move(fault));
    } else if (TakeTimedLine(rest, ms, later)) {
      client.Later(ms, [&client, later] {
        PlayOnClient(client, ParseScriptLine(later));
      });
    }
  }
}

}  // namespace v2
