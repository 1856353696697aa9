#include "platform/sim/sim_media.h"

#include <algorithm>
#include <cmath>
#include <sstream>

#include "platform/sim/mp3_reader.h"

namespace v2::sim {
namespace {

std::string BaseName(const std::string& path) {
  auto slash = path.find_last_of("\\/");
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string SecondsText(double seconds) {
  std::ostringstream out;
  out << seconds;
  return out.str();
}

}  // namespace

bool SimMedia::RanOut() {
  return state_ == State::kPlaying && clock_.NowMs() >= end_ms_;
}

void SimMedia::Settle() {
  if (!RanOut()) return;
  state_ = State::kStopped;
  position_ = duration_;
}

void SimMedia::StartPlaying() {
  state_ = State::kPlaying;
  started_ms_ = clock_.NowMs();
  end_ms_ = started_ms_ + static_cast<std::int64_t>(
                              std::ceil((duration_ - position_) * 1000));
}

void SimMedia::Open(const std::string& path) {
  Event("[media] open " + BaseName(path));
  duration_ = Mp3DurationOfFile(files_.NativePath(path));
  position_ = 0;
  if (duration_ > 0) {
    name_ = BaseName(path);
    StartPlaying();
  } else {
    state_ = State::kClosed;
    name_.clear();
    duration_ = 0;
  }
  Changed();
}

void SimMedia::Play() {
  Event("[media] play");
  Settle();
  if (state_ == State::kClosed || state_ == State::kPlaying) return;
  if (position_ >= duration_) position_ = 0;  // at the end: from the start
  StartPlaying();
  Changed();
}

void SimMedia::Pause() {
  Event("[media] pause");
  Settle();
  if (state_ != State::kPlaying) return;
  position_ = CurrentPosition();
  state_ = State::kPaused;
  Changed();
}

void SimMedia::Stop() {
  Event("[media] stop");
  Settle();
  if (state_ != State::kPlaying && state_ != State::kPaused) return;
  position_ = CurrentPosition();
  state_ = State::kStopped;
  Changed();
}

double SimMedia::Duration() {
  return state_ == State::kClosed ? kNoMediaDuration : duration_;
}

double SimMedia::CurrentPosition() {
  if (state_ == State::kClosed) return kNoMediaPosition;
  if (state_ != State::kPlaying) return position_;
  if (RanOut()) return duration_;
  double at =
      position_ + static_cast<double>(clock_.NowMs() - started_ms_) / 1000.0;
  // Until the end has come the position is short of it, however little.
  return at < duration_ ? at : std::nextafter(duration_, 0.0);
}

void SimMedia::SetCurrentPosition(double seconds) {
  Event(seconds == 0.0 ? std::string("[media] rewind")
                       : "[media] position " + SecondsText(seconds));
  Settle();
  if (state_ == State::kClosed) return;
  position_ = std::isnan(seconds) ? 0.0 : std::clamp(seconds, 0.0, duration_);
  if (state_ == State::kPlaying) StartPlaying();
  Changed();
}

void SimMedia::SetVolume(std::int32_t hundredths_db) {
  Event("[media] volume " + std::to_string(hundredths_db));
  volume_ = hundredths_db;
  volume_set_ = true;
}

std::int64_t SimMedia::NextChangeMs() {
  return state_ == State::kPlaying && !RanOut() ? end_ms_ : kNeverMs;
}

std::string SimMedia::Describe() {
  const char* state = "closed";
  if (state_ != State::kClosed && CurrentPosition() == duration_) {
    state = "at end";
  } else if (state_ == State::kPlaying) {
    state = "playing";
  } else if (state_ == State::kPaused) {
    state = "paused";
  } else if (state_ == State::kStopped) {
    state = "stopped";
  }
  return std::string(state) + " " + name_;
}

}  // namespace v2::sim
