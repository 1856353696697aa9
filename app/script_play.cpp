// Script lines played on the simulated client and the desktop around it, and
// what `show` tells of them.
#include <algorithm>

#include "app/script.h"
#include "app/script_words.h"

namespace v2 {

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
  } else if (object == "dialogs") {
    value.clear();
    for (const auto& [cls, title] : client.DialogClassesAndTitles()) {
      value += (value.empty() ? "" : " ") + cls + " \"" + title + "\"";
    }
    if (value.empty()) value = "none";
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
  if (command.line == "clock off") desktop.ClockOff();
  if (command.line == "clock on") desktop.ClockOn();
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

void PlayOnClient(aolsim::AolClient& client, const ScriptCommand& command,
                  aolsim::Desktop* desktop) {
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
    if (TakeTimedFault(rest, ms, fault)) client.ArmAfter(ms, std::move(fault));
  } else if (Take(line, "retitle", rest)) {
    std::string old, now;
    TakePair(rest, old, now);
    if (!client.Retitle(old, now) && desktop) desktop->Retitle(old, now);
  } else if (Take(line, "box", rest)) {
    client.Box(rest);
  } else if (line == "close box") {
    client.CloseBox();
  } else if (Take(line, "download-title", rest)) {
    client.SetDownloadTitle(rest);
  } else if (Take(line, "download-texts", rest) ||
             Take(line, "upload-texts", rest)) {
    std::string first, second;
    TakePair(rest, first, second);
    client.SetTransferTexts(line[0] == 'u', first, second);
  }
}

std::string MessageName(std::uint32_t msg) {
  static const std::pair<std::uint32_t, const char*> kNames[] = {
      {kWmSetText, "WM_SETTEXT"},
      {kWmGetText, "WM_GETTEXT"},
      {kWmGetTextLength, "WM_GETTEXTLENGTH"},
      {kWmClose, "WM_CLOSE"},
      {kWmKeyDown, "WM_KEYDOWN"},
      {kWmKeyUp, "WM_KEYUP"},
      {kWmChar, "WM_CHAR"},
      {kWmCommand, "WM_COMMAND"},
      {kWmSysCommand, "WM_SYSCOMMAND"},
      {kWmLButtonDown, "WM_LBUTTONDOWN"},
      {kWmLButtonUp, "WM_LBUTTONUP"},
      {kBmSetCheck, "BM_SETCHECK"},
      {kLbGetCount, "LB_GETCOUNT"},
      {kEmGetTextRange, "EM_GETTEXTRANGE"},
  };
  for (const auto& [number, name] : kNames) {
    if (number == msg) return name;
  }
  return std::to_string(msg);
}

}  // namespace v2
