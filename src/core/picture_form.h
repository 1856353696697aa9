#pragma once
// Form3 and Form4 are made alike: a form of the program's own over the
// picture that fills it, shaped by it and dragged by it.
#include <cstdint>
#include <string>
#include <string_view>

#include "core/shaped_windows.h"
#include "platform/bmp.h"
#include "platform/ui.h"

namespace v2 {

// Makes f's form (title; size in twips) as a shaped window, with Picture1
// from the bitmap's bytes at its top left corner, picture_width by
// picture_height twips (larger than the form: the form's own rectangle cuts
// the outline too), magenta behind it. The pointer over the picture drags
// the form. False when the platform makes no form; a bitmap that cannot be
// read leaves Picture1 empty.
template <typename Form>
bool CreatePictureForm(UiToolkit& ui, Form& f, const std::string& title,
                       int width, int height, std::string_view bitmap,
                       float picture_width, float picture_height) {
  f.hwnd = ui.CreateForm(title, width, height);
  if (!f.hwnd) return false;
  f.window = ui.Shaped(f.hwnd);
  if (auto pixels = LoadBmp(bitmap)) {
    f.Picture1 = ui.Picture(
        f.hwnd, *pixels, picture_width, picture_height, Rgb(255, 0, 255),
        [&f](std::int16_t Button, std::int16_t Shift, float X, float Y) {
          if (f.window) {
            Picture1_MouseMove(*f.window, f.grab, Button, Shift, X, Y);
          }
        });
  }
  return true;
}

}  // namespace v2
