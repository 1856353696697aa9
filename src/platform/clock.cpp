#include "platform/event_loop.h"

namespace v2 {

double Clock::SecondsSinceMidnight() {
  LocalTime t = LocalNow();
  return t.hour * 3600.0 + t.minute * 60.0 + t.second + t.millisecond / 1000.0;
}

}  // namespace v2
