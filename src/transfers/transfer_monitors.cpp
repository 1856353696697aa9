#include "transfers/transfer_monitors.h"

#include "core/program.h"
#include "core/styled_line.h"
#include "host/host_windows.h"
#include "platform/text.h"

namespace v2 {
namespace {

constexpr const char* kTransferTitle = "File Transfer - ";

// The status readers cut the client's texts step by step. A step that cannot
// be carried out (a start before the first character, a negative length)
// leaves the text as it was and the next step goes on with it, so a window
// whose text has an unexpected shape still gives an answer, never an error.
// (A start found by InStr plus an offset is always valid: 0 + offset.)
void LeftStep(std::string& t, int length) {
  if (length >= 0) t = Left(t, length);
}

std::string NthStaticText(Platform& p, Hwnd window, int n) {
  Hwnd label = window ? NthChild(p, window, "_AOL_Static", n) : 0;
  return GetText(p, label);
}

Hwnd FirstModal(Platform& p) {
  return p.windows.FindWindowA("_AOL_Modal", nullptr);
}

}  // namespace

Hwnd FindDownload(Platform& p) {
  Hwnd found = 0;
  ForEachHostChild(p, [&](Hwnd child) {
    if (InStr(1, GetCaption(p, child), kTransferTitle) > 0) {
      found = child;
      return false;
    }
    return true;
  });
  return found;
}

ModalLook LookForUpload(Platform& p, Hwnd* upload) {
  Hwnd modal = FirstModal(p);
  if (modal == 0) return ModalLook::kNone;
  if (InStr(1, GetCaption(p, modal), kTransferTitle) == 0) {
    return ModalLook::kOther;
  }
  Hwnd label = p.windows.FindWindowExA(modal, 0, "_AOL_Static", nullptr);
  if (label == 0 || InStr(1, GetText(p, label), "Now Uploading ") == 0) {
    return ModalLook::kOther;
  }
  if (upload) *upload = modal;
  return ModalLook::kUpload;
}

Hwnd FindUpload(Platform& p) {
  Hwnd upload = 0;
  WaitForHost(
      p,
      [&] {
        PumpEvents(p);
        // Another box in front: looked at again until it goes or becomes
        // the upload's.
        return LookForUpload(p, &upload) != ModalLook::kOther;
      },
      kUploadWaitBoundSeconds);
  return upload;
}

std::string DownloadNameOf(std::string_view first) {
  std::string t(first);
  t = Mid(t, InStr(1, t, "g") + 2);
  return t;
}

std::string DownloadPercentOf(std::string_view title) {
  std::string t(title);
  t = Mid(t, InStr(1, t, "-") + 2);
  LeftStep(t, InStr(1, t, "%") - 1);
  return t;
}

std::string DownloadMinsOf(std::string_view second) {
  // The minutes are the second word. A text too short to have one (empty,
  // or without a blank before or after that word) has no minutes to tell.
  std::string t(second);
  if (t.empty()) return "n/a";
  const std::string rest = Mid(t, 2);
  const int p = InStr(1, t, " ");
  if (p == 0) return "n/a";
  t = Mid(rest, p);
  const int q = InStr(1, t, " ");
  if (q == 0) return "n/a";
  t = Left(t, q - 1);
  return IsNumeric(t) ? t : "n/a";
}

std::string UploadNameOf(std::string_view first) {
  std::string t(first);
  t = Mid(t, InStr(1, t, "Uploading") + 10);
  return t;
}

std::string UploadPercentOf(std::string_view title) {
  std::string t(title);
  if (InStr(1, t, " - ") == 0) return "";
  t = Mid(t, InStr(1, t, "r - ") + 4);
  LeftStep(t, static_cast<int>(t.size()) - 1);
  return IsNumeric(t) ? t : "0";
}

std::string UploadMinsOf(std::string_view first, std::string_view second) {
  std::string a(first);
  a = Mid(a, InStr(1, a, "ing") + 3);
  std::string b(second);
  const std::string rest = Mid(b, 7);
  // Where the minutes start is taken from the name's text, not from b's; with
  // no blank there the cut is skipped and b stays whole.
  const int p = InStr(1, a, " ");
  if (p >= 1) b = Mid(rest, p);
  LeftStep(b, InStr(1, b, " ") - 1);
  return IsNumeric(b) ? b : "0";
}

std::string DownloadName(Platform& p) {
  Hwnd window = FindDownload(p);
  if (window == 0) return "none";
  return DownloadNameOf(NthStaticText(p, window, 1));
}

std::string DownloadPercent(Platform& p) {
  Hwnd window = FindDownload(p);
  if (window == 0) return "";
  return DownloadPercentOf(GetCaption(p, window));
}

std::string DownloadMins(Platform& p) {
  Hwnd window = FindDownload(p);
  if (window == 0) return "n/a";
  return DownloadMinsOf(NthStaticText(p, window, 2));
}

std::string UploadName(Platform& p) {
  Hwnd modal = FirstModal(p);
  if (modal == 0) return "";
  return UploadNameOf(NthStaticText(p, modal, 1));
}

std::string UploadPercent(Platform& p) {
  Hwnd modal = FirstModal(p);
  if (modal == 0) return "";
  return UploadPercentOf(GetCaption(p, modal));
}

std::string UploadMins(Platform& p) {
  Hwnd modal = FirstModal(p);
  if (modal == 0) return "";
  return UploadMinsOf(NthStaticText(p, modal, 1), NthStaticText(p, modal, 2));
}

void PostTransferStatus(Program& prog) {
  // Each value is read when its line is made, after the line before it went
  // into the room: the transfer goes on while the program talks.
  Platform& p = prog.platform;
  auto say = [&](const std::string& text) {
    ChatSend(p, StyledLine(prog.form4, Pair::kMain, text));
  };
  auto say_stat = [&](std::string (*percent)(Platform&),
                      std::string (*mins)(Platform&)) {
    std::string text = "percent: " + percent(p);
    text += " \xB7 mins remaining: " + mins(p);
    ChatSend(p, StyledLineTight(prog.form4, Pair::kStat, text));
  };
  if (FindDownload(p) != 0) {
    say("down file: " + LCase(DownloadName(p)));
    say_stat(DownloadPercent, DownloadMins);
  }
  if (FindUpload(p) != 0) {
    say("up file: " + LCase(UploadName(p)));
    say_stat(UploadPercent, UploadMins);
  }
  if (FindDownload(p) == 0 && FindUpload(p) == 0) {
    say("no file transfer in progress!");
  }
}

}  // namespace v2
