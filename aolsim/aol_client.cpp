#include "aolsim/aol_client.h"

namespace v2::aolsim {

AolClient::AolClient(WindowHost& host, std::string screen_name)
    : host_(host), name_(std::move(screen_name)) {}

void AolClient::Start() {
  if (host_.Exists(frame_)) return;
  frame_ = host_.Create(0, "AOL Frame25", "America  Online",
                        [this](Hwnd, std::uint32_t msg, WParam w,
                               LParam) -> std::optional<LResult> {
                          if (msg != kWmCommand) return std::nullopt;
                          MenuCommand(static_cast<std::uint32_t>(w & 0xFFFF));
                          return 0;
                        });
  AddMenuBar();
  AddToolbar();
  mdi_ = host_.Create(frame_, "MDIClient", "");
  ++session_;
  signed_on_ = true;
  signing_on_ = false;
  signed_on_at_ms_ = host_.NowMs();
  OpenWelcome();
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

std::optional<LResult> AolClient::OnInput(Hwnd h, std::uint32_t msg, WParam w,
                                          LParam l) {
  if (msg == kWmSetText && !own_text_ && l != 0 &&
      *reinterpret_cast<const char*>(l) != '\0' && FaultAt(Moment::kReply)) {
    return 1;  // the line did not go in
  }
  if (msg != kWmChar) return std::nullopt;
  if (w == kVkReturn && !own_text_ && FaultAt(Moment::kReturn)) {
    return 0;  // the line stays in the input line
  }
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

void AolClient::SetInput(const std::string& text) {
  own_text_ = true;
  host_.SetText(input_, text);
  own_text_ = false;
}

void AolClient::MemberTypes(const std::string& text) {
  if (host_.Exists(input_)) SetInput(text);
}

void AolClient::MemberPressesReturn() {
  if (!host_.Exists(input_)) return;
  own_text_ = true;  // the member's own key, not a program's
  OnInput(input_, kWmChar, kVkReturn, 0);
  own_text_ = false;
  if (!typeahead_.empty() && host_.Exists(input_)) SetInput(typeahead_);
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

Hwnd AolClient::ShowDialog(const std::string& message) {
  Hwnd dialog = host_.Create(0, "#32770", "America Online");
  host_.Create(dialog, "Button", "OK",
               [this, dialog](Hwnd, std::uint32_t msg, WParam w,
                              LParam) -> std::optional<LResult> {
                 if (msg == kWmKeyUp && w == kVkSpace) host_.Destroy(dialog);
                 return std::nullopt;
               });
  host_.Create(dialog, "Static", "");
  host_.Create(dialog, "Static", message);
  return dialog;
}

void AolClient::Event(const std::string& text) {
  if (on_event) on_event(text);
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

Hwnd AolClient::ChildTitled(const std::string& title) {
  if (!host_.Exists(mdi_)) return 0;
  for (Hwnd h : host_.Children(mdi_)) {
    if (host_.Text(h) == title) return h;
  }
  return 0;
}

std::string AolClient::Showing(Hwnd h) {
  if (!host_.Exists(h)) return "none";
  return host_.Shown(h) ? "shown" : "hidden";
}

void AolClient::Quit() {
  // The upload window and the time box are top level and do not go with the
  // frame.
  EndUpload();
  if (host_.Exists(time_box_)) host_.Destroy(time_box_);
  host_.Destroy(frame_);
  frame_ = mdi_ = welcome_ = room_ = transcript_ = input_ = download_ = 0;
  strip_ = glyph_ = signon_ = time_box_ = 0;
  ++session_;  // a sign-on under way ends with the client
  signed_on_ = signing_on_ = false;
  armed_.clear();  // a fault belongs to the client that quits
  ++quits_;
}

std::string AolClient::InputText() { return std::string(host_.Text(input_)); }

std::string AolClient::TranscriptText() {
  return std::string(host_.Text(transcript_));
}

}  // namespace v2::aolsim
