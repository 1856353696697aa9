#include "platform/sim/sim_ui.h"

namespace v2::sim {

Hwnd SimUi::CreateForm(const std::string& title, int width_twips,
                       int height_twips) {
  Hwnd h = windows_.Create(0, "vantrel2 form", title, {}, false);
  const int px = static_cast<int>(SimScreen().TwipsPerPixelX);
  windows_.SetWindowPos(h, 0, 0, 0, width_twips / px, height_twips / px,
                        kSwpNoMove | kSwpNoZOrder);
  return h;
}

std::unique_ptr<ShapedWindow> SimUi::Shaped(Hwnd form) {
  if (!form) return nullptr;
  return std::make_unique<SimShapedWindow>(windows_, regions_, form);
}

std::unique_ptr<PictureBox> SimUi::Picture(Hwnd, const Pixels& picture,
                                           float width_twips,
                                           float height_twips, ColorRef back,
                                           MouseMove) {
  // The pointer is the scenario's; it does not move over pictures here.
  return std::make_unique<SimPictureBox>(picture, width_twips, height_twips,
                                         back);
}

}  // namespace v2::sim
