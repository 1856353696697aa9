#pragma once
// The media control: one piece of media at a time, opened from a file, that
// starts playing by itself and is read by its length and position. The
// program never waits for it and never looks at a result; the end of a
// track is nothing but the position standing at the length.
#include <cstdint>
#include <functional>
#include <string>

#include "platform/event_loop.h"

namespace v2 {

class MediaControl {
 public:
  // The reads with nothing open (nothing opened yet, or the last Open
  // failed): a length of 0 and a position a millisecond before it, so the
  // position never stands at the length and no end is ever seen, while both
  // still read as 00:00.
  static constexpr double kNoMediaDuration = 0.0;
  static constexpr double kNoMediaPosition = -0.001;

  virtual ~MediaControl() = default;

  // The file becomes the current media and plays from its beginning, by
  // itself. A file that cannot be played leaves nothing open.
  virtual void Open(const std::string& path) = 0;
  // Plays from the present position: on from where Pause or Stop left it;
  // at the end of the media, from its beginning again. Playing already, or
  // nothing open: nothing happens.
  virtual void Play() = 0;
  // Halts a playing media where it is.
  virtual void Pause() = 0;
  // Ends playing; the position stays where it was.
  virtual void Stop() = 0;
  // Seconds.
  virtual double Duration() = 0;
  // Seconds from the beginning. Once the media has run out it reads exactly
  // Duration() until a call moves it.
  virtual double CurrentPosition() = 0;
  // Moves the position (0.0 rewinds) within the media; a playing media plays
  // on from there, a halted one stays halted.
  virtual void SetCurrentPosition(double seconds) = 0;
  // Hundredths of a decibel, 0 being full volume; it holds for later media
  // too.
  virtual void SetVolume(std::int32_t hundredths_db) = 0;

  // The earliest time on the loop's clock (ms) at which a read could give
  // something else with no call on the control: the end of a playing media.
  // kNeverMs when only a call, or a change reported through OnChange, can.
  virtual std::int64_t NextChangeMs() = 0;
  // Called after every call that may change what the reads give, and when
  // the control notices a change of its own (the real playback's end).
  void OnChange(std::function<void()> handler) {
    on_change_ = std::move(handler);
  }

 protected:
  void Changed() {
    if (on_change_) on_change_();
  }

 private:
  std::function<void()> on_change_;
};

// A platform that plays nothing: every Open fails.
class NoMedia : public MediaControl {
 public:
  void Open(const std::string&) override {}
  void Play() override {}
  void Pause() override {}
  void Stop() override {}
  double Duration() override { return kNoMediaDuration; }
  double CurrentPosition() override { return kNoMediaPosition; }
  void SetCurrentPosition(double) override {}
  void SetVolume(std::int32_t) override {}
  std::int64_t NextChangeMs() override { return kNeverMs; }
  static NoMedia& Instance() {
    static NoMedia none;
    return none;
  }
};

}  // namespace v2
