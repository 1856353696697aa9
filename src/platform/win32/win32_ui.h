#pragma once
// The program's own windows on Windows: borderless popups holding real list
// boxes, edit controls and labels, whose text is the controls' value; the
// input box, the tray entry and its popup menu.
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/ui.h"

namespace v2::win32 {

// The input box's window class, by which another program can find it.
inline constexpr char kInputBoxClass[] = "vantrel2 inputbox";
// The hidden window that owns the tray entry and the popup menu, and the
// message the tray sends it (WM_APP + 1; lParam is the mouse message).
inline constexpr char kTrayWindowClass[] = "vantrel2 tray";
inline constexpr unsigned kTrayCallbackMessage = 0x8000 + 1;

// Builds root's items as a real popup menu: checks and grays as the items
// say, "-" as a separator line, heads with Items as submenus, invisible
// items left out. Each chosen command's number is its index in commands
// plus one. The caller destroys the menu; 0 where none could be made.
Hmenu BuildPopupMenu(const MenuItem& root, std::vector<MenuItem*>& commands);

class Win32Ui : public UiToolkit {
 public:
  Win32Ui();
  ~Win32Ui() override;
  Win32Ui(const Win32Ui&) = delete;
  Win32Ui& operator=(const Win32Ui&) = delete;

  Hwnd CreateForm(const std::string& title, int width_twips,
                  int height_twips) override;
  void AddListBox(Hwnd form, ListBox& list, TwipsRect at,
                  std::function<void()> DblClick) override;
  void AddTextBox(Hwnd form, TextBox& box, TwipsRect at,
                  std::function<void(int KeyAscii)> KeyPress) override;
  void AddLabel(Hwnd form, Label& label, TwipsRect at,
                std::function<void()> Click) override;
  // An etched line, two pixels high.
  void AddLine(Hwnd form, const Line& line) override;
  std::unique_ptr<ShapedWindow> Shaped(Hwnd form) override;
  std::unique_ptr<PictureBox> Picture(Hwnd form, const Pixels& picture,
                                      float width_twips, float height_twips,
                                      ColorRef back,
                                      MouseMove handler) override;

  // A window of kInputBoxClass, in the middle of the screen and above the
  // rest; the program's other windows are disabled while it is up.
  std::string InputBox(EventLoop& loop, const std::string& prompt,
                       const std::string& title,
                       const std::string& preset) override;
  void TrayAdd(const std::string& tip, TrayMouseUp handler) override;
  void TrayRemove() override;
  // Shell_NotifyIconA's balloon (NIF_INFO), with the warning icon.
  void TrayBalloon(const std::string& title, const std::string& text) override;
  void PopupMenu(EventLoop& loop, const MenuItem& root) override;
  [[noreturn]] void EndProgram() override;

  // Whether the shell holds the entry now, and whether a balloon waits for
  // the entry to be shown.
  bool TrayShown() const { return tray_shown_; }
  bool BalloonWaiting() const { return balloon_.has_value(); }
  // The window of kTrayWindowClass, 0 before the tray or a menu needed it.
  Hwnd TrayWindow() const;

  struct Control;  // one real control and what it stands for
  struct Owner;    // the tray's and the menu's hidden window

 private:
  bool EnsureOwner();
  bool Notify(unsigned message);
  // The balloon asked for, if the entry is there to show it.
  void ShowBalloon();

  std::map<Hwnd, std::unique_ptr<Control>> controls_;
  int next_id_ = 100;
  std::unique_ptr<Owner> owner_;
  bool tray_wanted_ = false;  // added and not removed since
  bool tray_shown_ = false;
  // A balloon's title and text, until the shell has shown it.
  std::optional<std::pair<std::string, std::string>> balloon_;
};

}  // namespace v2::win32
