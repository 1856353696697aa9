// Signing off, the sign-on window, and signing on again.
#include "aolsim/aol_client.h"

namespace v2::aolsim {

void AolClient::SignOff() {
  if (!signed_on_) return;
  signed_on_ = false;
  signing_on_ = false;
  ++session_;
  CloseWelcome();
  // The member is in one room at a time.
  if (host_.Exists(room_)) host_.Destroy(room_);
  room_ = transcript_ = input_ = 0;
  OpenSignOn();
  Event("[signed off]");
}

void AolClient::OpenSignOn() {
  if (!host_.Exists(mdi_)) return;
  if (!host_.Exists(signon_)) {
    signon_ = host_.Create(mdi_, "AOL Child", "Sign On");
    for (const char* title : {"Setup", "Access Numbers", "Help"}) {
      AddIcon(signon_, title, nullptr);
    }
    // The 4th icon signs on, pressed by a click or by the space bar.
    host_.Create(
        signon_, "_AOL_Icon", "Sign On",
        [this](Hwnd, std::uint32_t msg, WParam w,
               LParam) -> std::optional<LResult> {
          if (msg == kWmLButtonUp || (msg == kWmKeyUp && w == kVkSpace)) {
            PressSignOn();
          }
          return std::nullopt;
        });
  }
  host_.Raise(signon_);
}

void AolClient::PressSignOn() {
  if (signed_on_ || signing_on_) return;
  signing_on_ = true;
  const int session = session_;
  host_.After(signon_delay_ms, [this, session] { SignOn(session); });
}

void AolClient::SignOn(int session) {
  // The client quit or signed on otherwise since the press.
  if (session != session_ || !signing_on_ || !host_.Exists(mdi_)) return;
  signing_on_ = false;
  signed_on_ = true;
  signed_on_at_ms_ = host_.NowMs();
  if (host_.Exists(signon_)) host_.Destroy(signon_);
  signon_ = 0;
  OpenWelcome();
  host_.Raise(welcome_);
  Event("[signed on]");
}

}  // namespace v2::aolsim
