#pragma once
// The program's own windows on Windows: borderless popups holding real list
// boxes, edit controls and labels, whose text is the controls' value.
#include <map>
#include <memory>

#include "platform/ui.h"

namespace v2::win32 {

class Win32Ui : public UiToolkit {
 public:
  Win32Ui();
  ~Win32Ui() override;
  Hwnd CreateForm(const std::string& title, int width_twips,
                  int height_twips) override;
  void AddListBox(Hwnd form, ListBox& list, TwipsRect at,
                  std::function<void()> DblClick) override;
  void AddTextBox(Hwnd form, TextBox& box, TwipsRect at,
                  std::function<void(int KeyAscii)> KeyPress) override;
  void AddLabel(Hwnd form, Label& label, TwipsRect at,
                std::function<void()> Click) override;
  std::unique_ptr<ShapedWindow> Shaped(Hwnd form) override;
  std::unique_ptr<PictureBox> Picture(Hwnd form, const Pixels& picture,
                                      float width_twips, float height_twips,
                                      ColorRef back,
                                      MouseMove handler) override;

  struct Control;  // one real control and what it stands for

 private:
  std::map<Hwnd, std::unique_ptr<Control>> controls_;
  int next_id_ = 100;
};

}  // namespace v2::win32
