// The keyword line and what it runs: rooms, new IMs, the buddy list and the
// privacy preferences; IMs received and sent.
#include "aolsim/aol_client.h"

namespace v2::aolsim {

namespace {

constexpr const char* kPrivateRoom = "aol://2719:2-2-";
constexpr const char* kJapanRoom = "aol://2719:73-2-";
constexpr const char* kNewIm = "aol://9293:";
constexpr int kRefusalMs = 300;
constexpr int kAnswerMs = 300;

bool StartsWith(const std::string& s, const char* prefix) {
  return s.rfind(prefix, 0) == 0;
}

}  // namespace

std::optional<LResult> AolClient::OnKeyword(Hwnd h, std::uint32_t msg,
                                            WParam w) {
  if (msg != kWmChar) return std::nullopt;
  if (w == kVkReturn) {
    std::string text(host_.Text(h));
    while (!text.empty() && text.back() == ' ') text.pop_back();
    // A fault armed for this moment happens instead: the address is not run.
    if (!text.empty() && !FaultAt(Moment::kKeyword)) RunAddress(text);
  } else if (w >= 32 && w < 256) {
    host_.AppendText(h, std::string(1, static_cast<char>(w)));
  }
  return 0;
}

void AolClient::RunAddress(const std::string& address) {
  Event("[keyword] " + address);
  if (StartsWith(address, kNewIm)) {
    OpenNewIm(address.substr(std::string(kNewIm).size()));
    return;
  }
  if (address == "Buddy") {
    OpenBuddyList();
    return;
  }
  std::string room;
  if (StartsWith(address, kPrivateRoom)) {
    room = address.substr(std::string(kPrivateRoom).size());
  } else if (StartsWith(address, kJapanRoom)) {
    room = address.substr(std::string(kJapanRoom).size());
  } else {
    return;  // other keywords open windows this client does not have
  }
  if (room.empty() || full_rooms_.count(room)) {
    // The refusal comes back from the host a moment later.
    host_.After(kRefusalMs, [this] {
      ShowDialog("The room you requested is full or unavailable.");
    });
    return;
  }
  MoveToRoom(room);
}

void AolClient::MoveToRoom(const std::string& name) {
  if (!host_.Exists(mdi_)) return;
  // The member is in one room at a time.
  if (host_.Exists(room_)) host_.Destroy(room_);
  OpenRoom(name);
  Event("[room] " + name);
}

void AolClient::SetRoomFull(const std::string& name, bool full) {
  if (full) {
    full_rooms_.insert(name);
  } else {
    full_rooms_.erase(name);
  }
}

void AolClient::AddIcons(Hwnd parent, std::function<void()> ninth,
                         std::function<void()> tenth) {
  for (int i = 1; i <= 10; ++i) {
    AddIcon(parent, "", i == 9 ? ninth : i == 10 ? tenth : nullptr);
  }
}

Hwnd AolClient::AddIcon(Hwnd parent, const std::string& title,
                        std::function<void()> work) {
  if (!work) return host_.Create(parent, "_AOL_Icon", title);
  return host_.Create(parent, "_AOL_Icon", title,
                      [work](Hwnd, std::uint32_t msg, WParam,
                             LParam) -> std::optional<LResult> {
                        if (msg == kWmLButtonUp) work();
                        return std::nullopt;
                      });
}

void AolClient::OpenNewIm(const std::string& to) {
  if (!host_.Exists(mdi_)) return;
  Hwnd im = host_.Create(mdi_, "AOL Child", "Send Instant Message");
  Hwnd box = host_.Create(im, "RICHCNTL", "");
  host_.Create(im, "_AOL_Static", "To: " + to);
  AddIcons(
      im, [this, im, box, to] { SendNewIm(im, box, to); },
      [this, to] { AnswerAvailability(to); });
}

void AolClient::SendNewIm(Hwnd im, Hwnd box, const std::string& to) {
  if (!host_.Exists(im)) return;
  const std::string text(host_.Text(box));
  // Two reserved names are orders to the client itself.
  if (to == "$IM_OFF" || to == "$IM_ON") {
    ims_on_ = to == "$IM_ON";
    Event(ims_on_ ? "[ims] on" : "[ims] off");
    ShowDialog(ims_on_ ? "You are now accepting Instant Messages."
                       : "You are now ignoring Instant Messages.");
    return;
  }
  auto it = people_.find(to);
  Reach reach = it == people_.end() ? Reach::kOnline : it->second;
  if (reach == Reach::kOffline) {
    ShowDialog(to + " is not currently signed on.");
  } else if (reach == Reach::kNoIms) {
    ShowDialog(to + " cannot currently receive Instant Messages.");
  } else {
    Event("[im to " + to + "] " + text);
    host_.Destroy(im);
  }
}

void AolClient::AnswerAvailability(const std::string& to) {
  auto it = people_.find(to);
  Reach reach = it == people_.end() ? Reach::kOnline : it->second;
  std::string answer =
      reach == Reach::kOnline
          ? to + " is online and able to receive Instant Messages."
      : reach == Reach::kNoIms
          ? to + " is online but not accepting Instant Messages."
          : to + " is not currently signed on.";
  // The host's answer comes a moment later.
  host_.After(kAnswerMs, [this, answer] { ShowDialog(answer); });
}

Hwnd AolClient::OpenImFrom(const std::string& name) {
  const std::string title = "Instant Message From: " + name;
  if (Hwnd open = ChildTitled(title)) return open;
  Hwnd im = host_.Create(mdi_, "AOL Child", title);
  Hwnd talk = host_.Create(im, "RICHCNTL", "");
  Hwnd reply = host_.Create(im, "RICHCNTL", "");
  AddIcons(
      im,
      [this, talk, reply, name] {
        const std::string text(host_.Text(reply));
        if (text.empty()) return;
        Event("[im to " + name + "] " + text);
        host_.AppendText(talk, "\r" + name_ + ":\t" + text);
        host_.SetText(reply, "");
      },
      nullptr);
  host_.Create(im, "_AOL_Static", "");
  return im;
}

void AolClient::ReceiveIm(const std::string& name, const std::string& text) {
  if (!ims_on_ || !host_.Exists(mdi_)) return;
  Hwnd im = OpenImFrom(name);
  Hwnd talk = host_.Children(im).empty() ? 0 : host_.Children(im).front();
  if (talk) host_.AppendText(talk, "\r" + name + ":\t" + text);
}

void AolClient::OpenBuddyList() {
  if (!host_.Exists(mdi_)) return;
  const std::string title = name_ + "'s Buddy List";
  if (ChildTitled(title)) return;
  Hwnd list = host_.Create(mdi_, "AOL Child", title);
  host_.Create(list, "_AOL_Tree", "");
  // The 5th icon opens the privacy preferences.
  for (int i = 1; i <= 6; ++i) {
    AddIcon(
        list, "",
        i == 5 ? std::function<void()>([this] { OpenPrivacy(); }) : nullptr);
  }
}

void AolClient::OpenPrivacy() {
  if (!host_.Exists(mdi_)) return;
  if (ChildTitled("Privacy Preferences")) return;
  Hwnd prefs = host_.Create(mdi_, "AOL Child", "Privacy Preferences");
  // Five boxes, one choice: from everyone sees the member (1st) to nobody
  // does (5th). Setting one clears the others.
  for (int i = 1; i <= 5; ++i) {
    host_.Create(prefs, "_AOL_Checkbox", "",
                 [this, i](Hwnd, std::uint32_t msg, WParam w,
                           LParam) -> std::optional<LResult> {
                   if (msg == kBmSetCheck && w != 0) privacy_choice_ = i;
                   return msg == kBmSetCheck ? std::optional<LResult>(0)
                                             : std::nullopt;
                 });
  }
  // The 4th icon saves, and the client confirms with its dialog.
  for (int i = 1; i <= 3; ++i) AddIcon(prefs, "", nullptr);
  AddIcon(prefs, "", [this] {
    ghosting_ = privacy_choice_ == 5;
    Event(ghosting_ ? "[ghosting] on" : "[ghosting] off");
    ShowDialog("Your preferences have been saved.");
  });
}

void AolClient::SetPerson(const std::string& name, Reach reach) {
  people_[name] = reach;
}

}  // namespace v2::aolsim
