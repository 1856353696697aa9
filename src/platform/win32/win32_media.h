#pragma once
// The media control on Windows: MCI's MPEG device (winmm) plays the real
// file, with whatever decoder the system has for it; nothing is shipped.
// The wrapper keeps the control's promises that MCI does not make by
// itself: a file plays on Open, Play at the end starts over, and once the
// real playback has run out the position reads exactly the length until a
// call moves it (MCI's own position may then read 0, or a little past the
// length). The end is learnt from MCI's notification to a hidden window.
// The length is the file's frames counted (mp3_frames.h), as the simulator
// counts them, where MCI's own is a guess for files that tell no frame count.
#include <cstdint>
#include <string>

#include "platform/event_loop.h"
#include "platform/media.h"

namespace v2::win32 {

class Win32Media : public MediaControl {
 public:
  explicit Win32Media(Clock& clock);
  ~Win32Media() override;
  Win32Media(const Win32Media&) = delete;
  Win32Media& operator=(const Win32Media&) = delete;

  void Open(const std::string& path) override;
  void Play() override;
  void Pause() override;
  void Stop() override;
  double Duration() override;
  double CurrentPosition() override;
  void SetCurrentPosition(double seconds) override;
  void SetVolume(std::int32_t hundredths_db) override;
  std::int64_t NextChangeMs() override;

  // MCI's notification that a play command has finished (flags and device
  // as MM_MCINOTIFY brings them).
  void Notified(unsigned flags, unsigned device);
  // MCI's volume scale (0 to 1000, a factor of the full level) for a level
  // in hundredths of a decibel.
  static int MciVolume(std::int32_t hundredths_db);

 private:
  enum class State { kClosed, kPlaying, kPaused, kStopped };
  bool Command(const std::string& command, std::string* reply = nullptr);
  void Close();
  void PlayFrom(double seconds);
  // When a playing media should run out, by the clock.
  std::int64_t ExpectedEndMs() const;
  bool RanOut();
  void Settle();
  double DevicePosition();

  Clock& clock_;
  void* window_ = nullptr;  // receives MCI's notifications
  State state_ = State::kClosed;
  unsigned device_ = 0;
  bool ended_ = false;  // MCI said the playing media has run out
  double duration_ = 0;
  double position_ = 0;    // where a halted media stands
  double started_at_ = 0;  // where the playing media started from, and when
  std::int64_t started_ms_ = 0;
  std::int32_t volume_ = 0;
};

}  // namespace v2::win32
