#include "platform/win32/win32_media.h"

#include <windows.h>
// After windows.h, whose types it uses.
#include <mmsystem.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "platform/mp3_frames.h"

namespace v2::win32 {
namespace {

constexpr const char* kWindowClass = "vantrel2 media";
constexpr const char* kAlias = "v2media";
// A notice that the media has run out is believed only this close to the
// time the clock says it should end: one that comes earlier belongs to a
// play command that a later one has replaced.
constexpr std::int64_t kEndSlackMs = 250;
// Past the expected end, with no notice yet, the mode is looked at this
// often.
constexpr std::int64_t kOverdueLookMs = 100;

LRESULT CALLBACK MediaProc(HWND hwnd, UINT msg, WPARAM w, LPARAM l) {
  if (msg == MM_MCINOTIFY) {
    auto* media =
        reinterpret_cast<Win32Media*>(GetWindowLongPtrA(hwnd, GWLP_USERDATA));
    if (media) {
      media->Notified(static_cast<unsigned>(w), static_cast<unsigned>(l));
    }
    return 0;
  }
  return DefWindowProcA(hwnd, msg, w, l);
}

HWND MakeWindow(Win32Media* media) {
  HINSTANCE instance = GetModuleHandleA(nullptr);
  WNDCLASSEXA wc{};
  wc.cbSize = sizeof(wc);
  wc.lpfnWndProc = MediaProc;
  wc.hInstance = instance;
  wc.lpszClassName = kWindowClass;
  RegisterClassExA(&wc);  // fails harmlessly when it is there already
  HWND hwnd = CreateWindowExA(0, kWindowClass, "", 0, 0, 0, 0, 0, HWND_MESSAGE,
                              nullptr, instance, nullptr);
  if (hwnd) {
    SetWindowLongPtrA(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(media));
  }
  return hwnd;
}

std::string Milliseconds(double seconds) {
  return std::to_string(std::llround(std::max(seconds, 0.0) * 1000.0));
}

}  // namespace

Win32Media::Win32Media(Clock& clock) : clock_(clock) {
  window_ = MakeWindow(this);
}

Win32Media::~Win32Media() {
  Close();
  if (window_) DestroyWindow(static_cast<HWND>(window_));
}

bool Win32Media::Command(const std::string& command, std::string* reply) {
  char buffer[128] = {};
  MCIERROR error = mciSendStringA(command.c_str(), buffer, sizeof(buffer),
                                  static_cast<HWND>(window_));
  if (reply) *reply = buffer;
  return error == 0;
}

int Win32Media::MciVolume(std::int32_t hundredths_db) {
  // Decibels to a factor of the full level, on MCI's scale of 1000.
  double factor = std::pow(10.0, static_cast<double>(hundredths_db) / 2000.0);
  return static_cast<int>(std::clamp(std::lround(factor * 1000.0), 0L, 1000L));
}

void Win32Media::Close() {
  if (state_ != State::kClosed) Command(std::string("close ") + kAlias);
  state_ = State::kClosed;
  device_ = 0;
  ended_ = false;
  duration_ = 0;
  position_ = 0;
}

void Win32Media::PlayFrom(double seconds) {
  state_ = State::kPlaying;
  ended_ = false;
  started_at_ = seconds;
  started_ms_ = clock_.NowMs();
  Command(std::string("play ") + kAlias + " from " + Milliseconds(seconds) +
          " notify");
}

std::int64_t Win32Media::ExpectedEndMs() const {
  return started_ms_ +
         static_cast<std::int64_t>(std::ceil((duration_ - started_at_) * 1000));
}

bool Win32Media::RanOut() {
  if (state_ != State::kPlaying) return false;
  if (ended_) return true;
  // Without a notice, only a device that has stopped by itself when it
  // should have ended: before that, a stopped device is one still opening.
  if (clock_.NowMs() < ExpectedEndMs()) return false;
  std::string mode;
  return Command(std::string("status ") + kAlias + " mode", &mode) &&
         mode == "stopped";
}

void Win32Media::Settle() {
  if (!RanOut()) return;
  Command(std::string("stop ") + kAlias);
  state_ = State::kStopped;
  position_ = duration_;
  ended_ = false;
}

double Win32Media::DevicePosition() {
  std::string reply;
  double at = 0;
  if (Command(std::string("status ") + kAlias + " position", &reply)) {
    at = std::strtod(reply.c_str(), nullptr) / 1000.0;
  } else {
    at = started_at_ +
         static_cast<double>(clock_.NowMs() - started_ms_) / 1000.0;
  }
  // Short of the end, however little, until the end has come.
  return std::clamp(at, 0.0, std::nextafter(duration_, 0.0));
}

void Win32Media::Open(const std::string& path) {
  Close();
  if (!Command(std::string("open \"") + path + "\" type mpegvideo alias " +
               kAlias)) {
    Changed();
    return;
  }
  state_ = State::kStopped;
  device_ = mciGetDeviceIDA(kAlias);
  std::string length;
  Command(std::string("set ") + kAlias + " time format milliseconds");
  if (!Command(std::string("status ") + kAlias + " length", &length) ||
      std::strtod(length.c_str(), nullptr) <= 0) {
    Close();
    Changed();
    return;
  }
  // The length of the frames there are, where they can be counted: the
  // device's own length is a guess wherever the file tells no frame count,
  // and a guess that takes tags it does not know for sound.
  const double counted = Mp3FrameSecondsOfFile(path);
  duration_ =
      counted > 0 ? counted : std::strtod(length.c_str(), nullptr) / 1000.0;
  Command(std::string("setaudio ") + kAlias + " volume to " +
          std::to_string(MciVolume(volume_)));
  PlayFrom(0);
  Changed();
}

void Win32Media::Play() {
  Settle();
  if (state_ == State::kClosed || state_ == State::kPlaying) return;
  if (position_ >= duration_) position_ = 0;  // at the end: from the start
  PlayFrom(position_);
  Changed();
}

void Win32Media::Pause() {
  Settle();
  if (state_ != State::kPlaying) return;
  position_ = DevicePosition();
  Command(std::string("pause ") + kAlias);
  state_ = State::kPaused;
  Changed();
}

void Win32Media::Stop() {
  Settle();
  if (state_ == State::kPlaying) position_ = DevicePosition();
  if (state_ != State::kPlaying && state_ != State::kPaused) return;
  Command(std::string("stop ") + kAlias);
  state_ = State::kStopped;
  Changed();
}

double Win32Media::Duration() {
  return state_ == State::kClosed ? kNoMediaDuration : duration_;
}

double Win32Media::CurrentPosition() {
  if (state_ == State::kClosed) return kNoMediaPosition;
  if (state_ != State::kPlaying) return position_;
  return RanOut() ? duration_ : DevicePosition();
}

void Win32Media::SetCurrentPosition(double seconds) {
  Settle();
  if (state_ == State::kClosed) return;
  const double at =
      std::isnan(seconds) ? 0.0 : std::clamp(seconds, 0.0, duration_);
  if (state_ != State::kPlaying) {
    position_ = at;
  } else if (at < duration_) {
    PlayFrom(at);
  } else {
    Command(std::string("stop ") + kAlias);
    ended_ = true;
  }
  Changed();
}

void Win32Media::SetVolume(std::int32_t hundredths_db) {
  volume_ = hundredths_db;
  if (state_ != State::kClosed) {
    Command(std::string("setaudio ") + kAlias + " volume to " +
            std::to_string(MciVolume(volume_)));
  }
}

std::int64_t Win32Media::NextChangeMs() {
  if (state_ != State::kPlaying || ended_) return kNeverMs;
  return std::max(ExpectedEndMs(), clock_.NowMs() + kOverdueLookMs);
}

void Win32Media::Notified(unsigned flags, unsigned device) {
  // Windows names the device; Wine's MPEG device names none (0).
  if (flags != MCI_NOTIFY_SUCCESSFUL || (device != device_ && device != 0) ||
      state_ != State::kPlaying || ended_) {
    return;
  }
  if (clock_.NowMs() < ExpectedEndMs() - kEndSlackMs) return;
  ended_ = true;
  Changed();
}

}  // namespace v2::win32
