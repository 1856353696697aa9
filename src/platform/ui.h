#pragma once
// The windows of the program's own that the member works with, and their
// controls. On Windows they are real windows and real controls, and reading
// a control reads the real window; in the simulator a form is a window of
// the window tree, with its place and outline, and its controls are plain
// values that scenarios drive.
#include <functional>
#include <memory>
#include <set>
#include <string>

#include "platform/bmp.h"
#include "platform/controls.h"
#include "platform/shaped.h"
#include "platform/types.h"

namespace v2 {

struct TwipsRect {
  int left = 0, top = 0, width = 0, height = 0;
};

class UiToolkit {
 public:
  virtual ~UiToolkit() = default;
  // A borderless top-level window, hidden; 0 where no window is made.
  virtual Hwnd CreateForm(const std::string& title, int width_twips,
                          int height_twips) = 0;
  // The controls on a form, showing the given control and raising its
  // events: a double click on the list (with ListIndex set to the entry
  // under it), each character typed into the text box, a click on a label.
  // A text box shows as its MaxLength, Enabled, Alignment and BorderStyle
  // say.
  virtual void AddListBox(Hwnd form, ListBox& list, TwipsRect at,
                          std::function<void()> DblClick) = 0;
  virtual void AddTextBox(Hwnd form, TextBox& box, TwipsRect at,
                          std::function<void(int KeyAscii)> KeyPress) = 0;
  virtual void AddLabel(Hwnd form, Label& label, TwipsRect at,
                        std::function<void()> Click) = 0;
  // A ruled line drawn on the form.
  virtual void AddLine(Hwnd form, const Line& line) = 0;

  // The form as a shaped window (its place, outline and stacking).
  virtual std::unique_ptr<ShapedWindow> Shaped(Hwnd form) = 0;
  // A picture box at the form's top left corner, of the given size in
  // twips, holding picture there and back elsewhere; the pointer moving
  // over it raises MouseMove (Button, Shift, X and Y in twips).
  using MouseMove = std::function<void(std::int16_t Button, std::int16_t Shift,
                                       float X, float Y)>;
  virtual std::unique_ptr<PictureBox> Picture(Hwnd form, const Pixels& picture,
                                              float width_twips,
                                              float height_twips, ColorRef back,
                                              MouseMove handler) = 0;

  // A modal box asking for one line: the answer, or the empty text when the
  // member cancels. The program's events go on while it waits (the loop is
  // pumped).
  virtual std::string InputBox(EventLoop& loop, const std::string& prompt,
                               const std::string& title,
                               const std::string& preset) = 0;

  // The program's entry in the tray: its icon with tip; a mouse button
  // released over it raises MouseUp (1 left, 2 right, 4 middle). Adding an
  // entry that is there already changes its tip.
  using TrayMouseUp = std::function<void(std::int16_t Button)>;
  virtual void TrayAdd(const std::string& tip, TrayMouseUp handler) = 0;
  virtual void TrayRemove() = 0;
  // A balloon from the tray entry with a title and a text: news of the
  // program's own for the member alone (never in the chat room). One asked
  // for before the entry is there shows as soon as the entry appears.
  virtual void TrayBalloon(const std::string& title,
                           const std::string& text) = 0;
  // The same, once in a run for each title: news the member needs once,
  // not at every time it holds true.
  void TrayBalloonOnce(const std::string& title, const std::string& text) {
    if (balloons_told_.insert(title).second) TrayBalloon(title, text);
  }

  // Opens root's items as a popup menu at the pointer and returns when it
  // closes; the item chosen, if any, then has its Click called. Disabled
  // items can not be chosen; events go on while the menu is open.
  virtual void PopupMenu(EventLoop& loop, const MenuItem& root) = 0;

  // Ends the program at once: no window gets a chance to act.
  virtual void EndProgram() = 0;

 private:
  std::set<std::string> balloons_told_;
};

// A platform without windows of its own.
class NoUi : public UiToolkit {
 public:
  Hwnd CreateForm(const std::string&, int, int) override { return 0; }
  void AddListBox(Hwnd, ListBox&, TwipsRect, std::function<void()>) override {}
  void AddTextBox(Hwnd, TextBox&, TwipsRect,
                  std::function<void(int)>) override {}
  void AddLabel(Hwnd, Label&, TwipsRect, std::function<void()>) override {}
  void AddLine(Hwnd, const Line&) override {}
  std::unique_ptr<ShapedWindow> Shaped(Hwnd) override { return nullptr; }
  std::unique_ptr<PictureBox> Picture(Hwnd, const Pixels&, float, float,
                                      ColorRef, MouseMove) override {
    return nullptr;
  }
  // Nobody to ask: every box is cancelled.
  std::string InputBox(EventLoop&, const std::string&, const std::string&,
                       const std::string&) override {
    return {};
  }
  void TrayAdd(const std::string&, TrayMouseUp) override {}
  void TrayRemove() override {}
  void TrayBalloon(const std::string&, const std::string&) override {}
  void PopupMenu(EventLoop&, const MenuItem&) override {}
  void EndProgram() override { ended = true; }
  bool ended = false;
  static NoUi& Instance() {
    static NoUi none;
    return none;
  }
};

}  // namespace v2
