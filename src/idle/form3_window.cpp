#include "idle/reason_list.h"
#include "shell/program.h"

namespace v2 {

// The window's outline, its place on top and its slide off the screen come
// with the shaped windows; until they are there the window keeps its
// rectangle and stays where it stands.
void ShapeForm3(Program&) {}
void SlideAwayForm3(Program&) {}

}  // namespace v2
