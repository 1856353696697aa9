#pragma once
// The program's own windows in the simulator: a form is a hidden window of
// the window tree with its place and outline; its controls stay plain values.
#include "platform/sim/sim_shaped.h"
#include "platform/sim/sim_windows.h"
#include "platform/ui.h"

namespace v2::sim {

class SimUi : public UiToolkit {
 public:
  explicit SimUi(SimWindows& windows) : windows_(windows), regions_(windows) {}
  Hwnd CreateForm(const std::string& title, int width_twips,
                  int height_twips) override;
  void AddListBox(Hwnd, ListBox&, TwipsRect, std::function<void()>) override {}
  void AddTextBox(Hwnd, TextBox&, TwipsRect,
                  std::function<void(int)>) override {}
  void AddLabel(Hwnd, Label&, TwipsRect, std::function<void()>) override {}
  std::unique_ptr<ShapedWindow> Shaped(Hwnd form) override;
  std::unique_ptr<PictureBox> Picture(Hwnd form, const Pixels& picture,
                                      float width_twips, float height_twips,
                                      ColorRef back,
                                      MouseMove handler) override;
  SimRegions& regions() { return regions_; }

 private:
  SimWindows& windows_;
  SimRegions regions_;
};

}  // namespace v2::sim
