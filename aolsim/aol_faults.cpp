// Faults of the client, set off at a moment of the program's: a thread that
// stops answering, a client that vanishes, a window the program did not
// wait for.
#include "aolsim/aol_client.h"

namespace v2::aolsim {

void AolClient::Arm(Moment at, Fault fault) { armed_[at] = std::move(fault); }

bool AolClient::FaultAt(Moment at) {
  auto it = armed_.find(at);
  if (it == armed_.end()) return false;
  const Fault fault = std::move(it->second);
  armed_.erase(it);
  Do(fault);
  return true;
}

void AolClient::ArmAfter(int ms, Fault fault) {
  Later(ms, [this, fault = std::move(fault)] { Do(fault); });
}

void AolClient::Later(int ms, std::function<void()> work) {
  const int quits = quits_;
  host_.After(ms, [this, quits, work = std::move(work)] {
    if (quits == quits_) work();
  });
}

void AolClient::Do(const Fault& fault) {
  switch (fault.kind) {
    case Fault::Kind::kHang:
      host_.Hang(fault.ms);
      break;
    case Fault::Kind::kQuit:
      Quit();
      break;
    case Fault::Kind::kRoom:
      MoveToRoom(fault.room);
      break;
    case Fault::Kind::kDialog:
      ShowDialog("This feature is temporarily unavailable.");
      break;
  }
}

}  // namespace v2::aolsim
