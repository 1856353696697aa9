#include "aolsim/aol_client.h"

namespace v2::aolsim {

AolClient::AolClient(WindowHost& host, std::string screen_name)
    : host_(host), name_(std::move(screen_name)) {}

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

void AolClient::Start() {
  if (host_.Exists(frame_)) return;
  frame_ = host_.Create(0, "AOL Frame25", "America  Online");
  // The toolbar with its keyword line.
  Hwnd bar = host_.Create(frame_, "AOL Toolbar", "");
  Hwnd inner = host_.Create(bar, "_AOL_Toolbar", "");
  Hwnd combo = host_.Create(inner, "_AOL_Combobox", "");
  host_.Create(combo, "Edit", "",
               [this](Hwnd h, std::uint32_t msg, WParam w, LParam) {
                 return OnKeyword(h, msg, w);
               });
  mdi_ = host_.Create(frame_, "MDIClient", "");
  OpenWelcome();

  // An IM window has everything of a room but the people list.
  OpenImFrom("Guide");

  OpenRoom("Lobby 1");
}

void AolClient::OpenRoom(const std::string& name) {
  room_ = host_.Create(mdi_, "AOL Child", name);
  transcript_ = host_.Create(room_, "RICHCNTL", "");
  input_ = host_.Create(room_, "RICHCNTL", "",
                        [this](Hwnd h, std::uint32_t msg, WParam w, LParam l) {
                          return OnInput(h, msg, w, l);
                        });
  host_.Create(room_, "_AOL_Listbox", "");
  host_.Create(room_, "_AOL_Icon", "");
  host_.Create(room_, "_AOL_Icon", "");
  host_.Create(room_, "_AOL_Static", name);
  lines_ = 0;
}

std::optional<LResult> AolClient::OnKeyword(Hwnd h, std::uint32_t msg,
                                            WParam w) {
  if (msg != kWmChar) return std::nullopt;
  if (w == kVkReturn) {
    std::string text(host_.Text(h));
    while (!text.empty() && text.back() == ' ') text.pop_back();
    if (!text.empty()) RunAddress(text);
  } else if (w >= 32 && w < 256) {
    host_.AppendText(h, std::string(1, static_cast<char>(w)));
  }
  return 0;
}

void AolClient::AddIcons(Hwnd parent, std::function<void()> ninth,
                         std::function<void()> tenth) {
  for (int i = 1; i <= 10; ++i) {
    std::function<void()> work = i == 9 ? ninth : i == 10 ? tenth : nullptr;
    if (!work) {
      host_.Create(parent, "_AOL_Icon", "");
      continue;
    }
    host_.Create(parent, "_AOL_Icon", "",
                 [work](Hwnd, std::uint32_t msg, WParam,
                        LParam) -> std::optional<LResult> {
                   if (msg == kWmLButtonUp) work();
                   return std::nullopt;
                 });
  }
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
  for (Hwnd h : host_.Children(mdi_)) {
    if (host_.Text(h) == title) return h;
  }
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
  for (Hwnd h : host_.Children(mdi_)) {
    if (host_.Text(h) == title) return;
  }
  Hwnd list = host_.Create(mdi_, "AOL Child", title);
  host_.Create(list, "_AOL_Tree", "");
  // The 5th icon opens the privacy preferences.
  for (int i = 1; i <= 6; ++i) {
    if (i != 5) {
      host_.Create(list, "_AOL_Icon", "");
      continue;
    }
    host_.Create(list, "_AOL_Icon", "",
                 [this](Hwnd, std::uint32_t msg, WParam,
                        LParam) -> std::optional<LResult> {
                   if (msg == kWmLButtonUp) OpenPrivacy();
                   return std::nullopt;
                 });
  }
}

void AolClient::OpenPrivacy() {
  if (!host_.Exists(mdi_)) return;
  for (Hwnd h : host_.Children(mdi_)) {
    if (host_.Text(h) == "Privacy Preferences") return;
  }
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
  for (int i = 1; i <= 4; ++i) {
    if (i != 4) {
      host_.Create(prefs, "_AOL_Icon", "");
      continue;
    }
    host_.Create(prefs, "_AOL_Icon", "",
                 [this](Hwnd, std::uint32_t msg, WParam,
                        LParam) -> std::optional<LResult> {
                   if (msg != kWmLButtonUp) return std::nullopt;
                   ghosting_ = privacy_choice_ == 5;
                   Event(ghosting_ ? "[ghosting] on" : "[ghosting] off");
                   ShowDialog("Your preferences have been saved.");
                   return std::nullopt;
                 });
  }
}

void AolClient::SetPerson(const std::string& name, Reach reach) {
  people_[name] = reach;
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
  // The member is in one room at a time.
  if (host_.Exists(room_)) host_.Destroy(room_);
  OpenRoom(room);
  Event("[room] " + room);
}

void AolClient::Event(const std::string& text) {
  if (on_event) on_event(text);
}

void AolClient::SetRoomFull(const std::string& name, bool full) {
  if (full) {
    full_rooms_.insert(name);
  } else {
    full_rooms_.erase(name);
  }
}

std::string AolClient::RoomName() {
  if (!host_.Exists(room_)) return {};
  return std::string(host_.Text(room_));
}

std::vector<std::string> AolClient::WindowTitles() {
  std::vector<std::string> titles;
  if (!host_.Exists(mdi_)) return titles;
  for (Hwnd h : host_.Children(mdi_)) titles.emplace_back(host_.Text(h));
  return titles;
}

void AolClient::ShowTransfer(Hwnd& window, Hwnd parent, const std::string& cls,
                             const std::string& verb, const std::string& name,
                             int percent, int minutes) {
  const std::string title = "File Transfer - " + std::to_string(percent) + "%";
  const std::string now = "Now " + verb + " " + name;
  const std::string left =
      "About " + std::to_string(minutes) + " minutes remaining";
  if (host_.Exists(window)) {
    std::vector<Hwnd> statics = host_.Children(window);
    host_.SetText(window, title);
    if (statics.size() == 2) {
      host_.SetText(statics[0], now);
      host_.SetText(statics[1], left);
    }
    return;
  }
  window = host_.Create(parent, cls, title);
  host_.Create(window, "_AOL_Static", now);
  host_.Create(window, "_AOL_Static", left);
}

void AolClient::Download(const std::string& name, int percent, int minutes) {
  // Transfers belong to a running client.
  if (!host_.Exists(mdi_)) return;
  ShowTransfer(download_, mdi_, "AOL Child", "Downloading", name, percent,
               minutes);
}

void AolClient::Upload(const std::string& name, int percent, int minutes) {
  if (!host_.Exists(frame_)) return;
  ShowTransfer(upload_, 0, "_AOL_Modal", "Uploading", name, percent, minutes);
}

void AolClient::EndDownload() {
  if (host_.Exists(download_)) host_.Destroy(download_);
  download_ = 0;
}

void AolClient::EndUpload() {
  if (host_.Exists(upload_)) host_.Destroy(upload_);
  upload_ = 0;
}

void AolClient::Quit() {
  // The upload window is top level and does not go with the frame.
  EndUpload();
  host_.Destroy(frame_);
  frame_ = mdi_ = welcome_ = room_ = transcript_ = input_ = download_ = 0;
}

std::optional<LResult> AolClient::OnInput(Hwnd h, std::uint32_t msg, WParam w,
                                          LParam) {
  if (msg != kWmChar) return std::nullopt;
  if (w == kVkReturn) {
    // Return sends what is typed; an empty line is not sent at all.
    std::string text(host_.Text(h));
    if (!text.empty()) {
      host_.SetText(h, "");
      Append(name_, text);
    }
  } else if (w >= 32 && w < 256) {
    host_.AppendText(h, std::string(1, static_cast<char>(w)));
  }
  return 0;
}

void AolClient::Append(const std::string& name, const std::string& text) {
  if (!host_.Exists(transcript_)) return;
  std::string line = name + ":\t" + text;
  host_.AppendText(transcript_, "\r" + line);
  ++lines_;
  if (on_line) on_line(line);
  Trim();
}

void AolClient::Trim() {
  if (lines_ <= max_lines) return;
  // Drop the oldest tenth at once, as a client that keeps its window short.
  std::size_t drop = max_lines / 10 + (lines_ - max_lines);
  std::string_view all = host_.Text(transcript_);
  std::size_t cut = 0;
  for (std::size_t i = 0; i < drop; ++i) {
    cut = all.find('\r', cut + 1);
    if (cut == std::string_view::npos) return;
  }
  host_.EraseFront(transcript_, cut);
  lines_ -= drop;
}

void AolClient::MemberTypes(const std::string& text) {
  if (host_.Exists(input_)) host_.SetText(input_, text);
}

void AolClient::MemberPressesReturn() {
  if (!host_.Exists(input_)) return;
  OnInput(input_, kWmChar, kVkReturn, 0);
  if (!typeahead_.empty() && host_.Exists(input_)) {
    host_.SetText(input_, typeahead_);
  }
  typeahead_.clear();
}

void AolClient::OtherSays(const std::string& name, const std::string& text) {
  Append(name, text);
}

void AolClient::CloseWelcome() {
  if (host_.Exists(welcome_)) host_.Destroy(welcome_);
  welcome_ = 0;
}

void AolClient::OpenWelcome() {
  if (host_.Exists(welcome_) || !host_.Exists(mdi_)) return;
  welcome_ = host_.Create(mdi_, "AOL Child", "Welcome, " + name_ + "!");
  host_.Create(welcome_, "_AOL_Icon", "");
}

void AolClient::ShowDialog(const std::string& message) {
  Hwnd dialog = host_.Create(0, "#32770", "America Online");
  host_.Create(dialog, "Button", "OK",
               [this, dialog](Hwnd, std::uint32_t msg, WParam w,
                              LParam) -> std::optional<LResult> {
                 if (msg == kWmKeyUp && w == kVkSpace) host_.Destroy(dialog);
                 return std::nullopt;
               });
  host_.Create(dialog, "Static", "");
  host_.Create(dialog, "Static", message);
}

std::string AolClient::InputText() { return std::string(host_.Text(input_)); }

std::string AolClient::TranscriptText() {
  return std::string(host_.Text(transcript_));
}

}  // namespace v2::aolsim
