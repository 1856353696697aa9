#pragma once
// Form3 and Form4 have no frame: each takes its outline from the picture
// that fills it, stays above every other window, is dragged by its picture,
// and leaves by sliding off the right of the screen. These operations know
// nothing of what the windows hold.
#include <cstdint>
#include <functional>
#include <string>

#include "platform/event_loop.h"
#include "platform/shaped.h"

namespace v2 {

// The outline made by the last ShapeForm (the window owns it; it is never
// read again nor deleted).
extern Hrgn WindowRegion;

// Where the pointer last stood over a form's Picture1 with no button down,
// in twips of the picture. One pair per form.
struct Grab {
  std::int16_t GrabX = 0;
  std::int16_t GrabY = 0;
};

// The union of one rectangle, one pixel high, per run of pixels that differ
// from colour, line by line. A colour below 1 is first replaced by the top
// left pixel's, and the new value goes back through colour. The picture's
// size in pixels is its size in twips over the screen's twips per pixel.
Hrgn RegionFromPicture(Regions& regions, const Screen& screen,
                       PictureBox& picture, std::int32_t& colour);
// The window's outline from its picture (transparent colour: the top left
// pixel), kept in WindowRegion and given to the window with a redraw.
void ShapeForm(ShapedWindow& form, PictureBox& picture);
// Above every window that is not topmost; a hidden window stays hidden.
void StayOnTop(ShapedWindow& form);
// Hands the pointer to the system's own window move, as a press on a
// caption would.
void DragForm(ShapedWindow& form);
// Moves the window right by 500 twips per step, pumping events before each,
// until its Left is past the screen's width. Events run during the slide,
// and a second slide may start inside the first.
void SlideAway(ShapedWindow& form, const std::function<void()>& pump);
void SlideAway(ShapedWindow& form, EventLoop& loop);
// The pointer over Picture1 (X, Y in twips of the picture): with no button
// it notes the grab point, with the left button alone it moves the window
// so that the grab point follows the pointer; anything else does nothing.
void Picture1_MouseMove(ShapedWindow& form, Grab& grab, std::int16_t Button,
                        std::int16_t Shift, float X, float Y);
// Shows the window. One that has slid off the screen comes back first to
// where it stood before the slide, or to the middle of the screen when that
// place is not known.
void ShowShaped(ShapedWindow& form);
// "shown", "hidden" (also for a window not made) or "off screen" (shown,
// and slid off to the right).
std::string WindowState(ShapedWindow* form);

}  // namespace v2
