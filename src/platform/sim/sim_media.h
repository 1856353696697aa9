#pragma once
// The media control of the simulator: it plays in the loop's clock (virtual
// time in scripts, real time interactively), and a file lasts as long as its
// frames say. Each call the program makes is reported as a "[media] ..."
// event.
#include <functional>
#include <string>

#include "platform/event_loop.h"
#include "platform/media.h"
#include "platform/stores.h"

namespace v2::sim {

class SimMedia : public MediaControl {
 public:
  SimMedia(Clock& clock, FileSystem& files) : clock_(clock), files_(files) {}

  void Open(const std::string& path) override;
  void Play() override;
  void Pause() override;
  void Stop() override;
  double Duration() override;
  double CurrentPosition() override;
  void SetCurrentPosition(double seconds) override;
  void SetVolume(std::int32_t hundredths_db) override;
  std::int64_t NextChangeMs() override;

  // "STATE NAME": closed, playing, paused, stopped or at end (the position
  // stands at the length), and the media's file name without its folder.
  std::string Describe();
  std::int32_t volume() const { return volume_; }
  // Whether the volume has been set since the control was made.
  bool volume_set() const { return volume_set_; }

  std::function<void(const std::string&)> on_event;

 private:
  enum class State { kClosed, kPlaying, kPaused, kStopped };
  void Event(const std::string& text) {
    if (on_event) on_event(text);
  }
  bool RanOut();  // playing, and the end has come
  // A media that has run out is, from the next call on, stopped at its end.
  void Settle();
  void StartPlaying();

  Clock& clock_;
  FileSystem& files_;
  State state_ = State::kClosed;
  std::string name_;
  double duration_ = 0;
  // Where the media stands; while playing, where it stood at started_ms_.
  double position_ = 0;
  std::int64_t started_ms_ = 0;
  std::int64_t end_ms_ = 0;  // while playing: when it reaches the end
  std::int32_t volume_ = 0;
  bool volume_set_ = false;
};

}  // namespace v2::sim
