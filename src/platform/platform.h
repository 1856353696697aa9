#pragma once
#include "platform/event_loop.h"
#include "platform/window_services.h"

namespace v2 {

// Everything the program asks of the operating system, handed down together.
struct Platform {
  WindowServices& windows;
  EventLoop& loop;
  Clock& clock() { return loop.clock(); }
};

}  // namespace v2
