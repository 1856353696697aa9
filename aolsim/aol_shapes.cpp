// The client's other shapes, as a script makes them: titles of its windows,
// the dialog that stays open, the transfer windows' texts as they stand,
// and the list of its top-level windows.
#include "aolsim/aol_client.h"

namespace v2::aolsim {

bool AolClient::Retitle(const std::string& old, const std::string& now) {
  std::vector<Hwnd> order;
  if (host_.Exists(mdi_)) order = host_.Children(mdi_);
  for (Hwnd h : Dialogs()) order.push_back(h);
  for (Hwnd h : order) {
    if (host_.Text(h) != old) continue;
    host_.SetText(h, now);
    return true;
  }
  return false;
}

void AolClient::Box(const std::string& text) {
  if (host_.Exists(box_)) {
    // Its second Static holds the message.
    std::vector<Hwnd> statics;
    for (Hwnd h : host_.Children(box_)) {
      if (host_.ClassName(h) == "Static") statics.push_back(h);
    }
    if (statics.size() >= 2) host_.SetText(statics[1], text);
    return;
  }
  box_ = ShowDialog(text);
}

void AolClient::CloseBox() {
  if (host_.Exists(box_)) host_.Destroy(box_);
  box_ = 0;
}

void AolClient::SetDownloadTitle(const std::string& title) {
  if (host_.Exists(download_)) host_.SetText(download_, title);
}

void AolClient::SetTransferTexts(bool upload, const std::string& first,
                                 const std::string& second) {
  const Hwnd window = upload ? upload_ : download_;
  if (!host_.Exists(window)) return;
  std::vector<Hwnd> statics;
  for (Hwnd h : host_.Children(window)) {
    if (host_.ClassName(h) == "_AOL_Static") statics.push_back(h);
  }
  if (statics.size() >= 1) host_.SetText(statics[0], first);
  if (statics.size() >= 2) host_.SetText(statics[1], second);
}

std::vector<Hwnd> AolClient::Dialogs() {
  std::vector<Hwnd> out;
  for (Hwnd h : host_.TopLevel()) {
    // The task bar and the other messenger's window stand on the same
    // desktop, but they are other programs'.
    const std::string cls = host_.ClassName(h);
    if (h == frame_ || cls == "Shell_TrayWnd" || cls == "_Oscar_BuddyListWin")
      continue;
    out.push_back(h);
  }
  return out;
}

std::vector<std::pair<std::string, std::string>>
AolClient::DialogClassesAndTitles() {
  std::vector<std::pair<std::string, std::string>> out;
  for (Hwnd h : Dialogs()) {
    out.emplace_back(host_.ClassName(h), std::string(host_.Text(h)));
  }
  return out;
}

}  // namespace v2::aolsim
