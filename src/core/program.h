#pragma once
// The program's state is its forms: their controls hold every live value.
// One Program owns them all and every handler receives it. This header
// knows no handler: the Program's constructor and Start, which wire the
// forms to every handler, are the start's, in shell/wiring.cpp.
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "core/shaped_windows.h"
#include "host/window_watch.h"
#include "platform/chat_scanner.h"
#include "platform/controls.h"
#include "platform/platform.h"

namespace v2 {

// A minute of the program is one tick of Form1.Timer1: 63 seconds.
inline constexpr int kIdleTickMs = 63000;

// Hidden: the chat scanners, the idle counters and the idle timer, and the
// player: the tracks, the current file, the matches of a search, the tag
// boxes and the play state.
struct Form1 {
  explicit Form1(Platform& p);
  ChatScanner Chat1;
  ChatScanner Chat2;
  // The name and the message of the last `im` line that had a comma.
  std::string IMTarget, IMBody;
  Label Label1{TextControl("0")};  // idle minutes of this session
  Label Label2{TextControl("0")};  // ticks since the last scroll
  // Days, hours and minutes since the machine's start, at the last `boot`.
  Label Label3, Label4, Label5;
  Timer Timer1;                  // the idle minute, while a session runs
  Timer Timer2;                  // the end of a track
  std::int16_t ReasonIndex = 0;  // the reason drawn on the last tick
  std::string ReasonText;

  FileListBox File1;  // the tracks: "*.mp3" of the player's directory
  Label Label6;       // the current file, empty when no song counts
  ListBox List1;      // the matches of a search
  // A track's tags, once one is opened; until then their initial texts.
  TextBox title{TextControl("Text1")};
  TextBox artist{TextControl("Text2")};
  TextBox album{TextControl("Text3")};
  TextBox year{TextControl("Text4")};
  TextBox comment{TextControl("Text5")};
  // What happens at the end of a track, and whether a numbered list of
  // matches waits for `p` or `cancel`.
  VbBool RepeatMode = kVbFalse;
  VbBool ContinuousMode = kVbFalse;
  VbBool OrderMode = kVbFalse;
  VbBool StopMode = kVbFalse;
  VbBool SelectionPending = kVbFalse;
};

// Hidden: the board of small values (Text5 is the member's handle), the
// background timers and the popup menu, whose check marks are the live
// settings.
struct Form2 {
  explicit Form2(EventLoop& loop);
  TextBox Text1, Text2, Text3, Text4, Text5, Text6;
  Label Label1{TextControl("0")};
  Timer Timer2, Timer3, Timer4, Timer5, Timer6;
  // Auto-upchat: the upload now under way has been hidden and announced.
  bool UpChatAnnounced = false;
  // The reconnection's sequence has run; Timer5 begins nothing more until
  // the watch's next tick stops it.
  bool Reconnected = false;
  MenuItem chatsendtime, chatsendtrans, chatsendreasons, randomize, interval,
      imsoff, ghostingon, imson, ghostingoff, autoup, immachine, cchat_on,
      cchat_off, reconaol, enterpr, enterjap, continueul, continuedl, imzoff,
      ghoztingon, hidebuddy, user, idleon, idleoff;
  // The rest of the popup: its root, heads, actions and separators.
  MenuItem menu, blahblah, sep41, sep0, idleconfigure, sep8, sep42, complex,
      sep1, reason, sep2, buildreas, sep3, sep4, sep43, before, after,
      buildtran, chatsendstatus, custom, brag, sep21, buildcustom, sep22,
      instmsgs, imon, imoff, ghosting, ghoston, ghostoff, sep26, roomenter,
      cchat, sep16, sep17, exit;
  MenuItem sep24, viewcmds, eliminate, hidewelc, showelc, sep18, glyph, clock,
      modal, sep19, hideaol, showaol, sep20, signoff;
  MenuItem dcp, sep9, sep10, buildroom, sep11, sep12, onrecon, sep13, sep14,
      upchat, unupchat, sep15, sep25, buildafk;
  // Every named item, in the order of the popup's tree (the tree's builder
  // lists them), and one of them by its name (nullptr for none).
  std::vector<MenuItem*> all;
  MenuItem* Item(const std::string& name);
};

// The reason list window. Its controls hold the list; the window itself is
// shown on demand and slides away when closed.
struct Form3 {
  ListBox List1;
  TextBox Text1;
  Label Label1{TextControl("save and exit")};
  Label Label2{TextControl("cancel")};
  bool loaded = false;
  Hwnd hwnd = 0;  // the window, where the platform makes one
  std::unique_ptr<ShapedWindow> window;
  std::unique_ptr<PictureBox> Picture1;  // the background and outline
  Grab grab;                             // where the drag took hold
};

// The splash, shown while the program starts.
struct Form5 {
  Hwnd hwnd = 0;  // the window, where the platform makes one
  std::unique_ptr<ShapedWindow> window;
  std::unique_ptr<PictureBox> Picture1;
};

// The banner word of every announcement.
inline constexpr const char* kBanner = "vantrel\xB2";

// A field of the style window as it was drawn: no border, and what the
// member may type into it.
inline TextBox StyleField(const char* text, int max_length = 0,
                          bool enabled = true, int alignment = 0) {
  return TextBox{TextControl(text), max_length, enabled, alignment, 0};
}

// The style window. Its keyed fields are the live style of every line, read
// at the moment a line is made, whether the window shows or not; the
// samples only show where the values go. The window is loaded on its first
// touch (OnFirstTouch, set by the Program), which reads the stored style.
struct Form4 {
  // The fonts and colours of the three segments.
  TextBox Text1 = StyleField("arial narrow");   // lead font
  TextBox Text2 = StyleField("arial narrow");   // body font
  TextBox Text23 = StyleField("arial narrow");  // end font
  TextBox Text3 = StyleField("ff8000", 6);      // lead colour
  TextBox Text4 = StyleField("c0c0c0", 6);      // body colour
  TextBox Text5 = StyleField("ff8000", 6);      // end colour
  // The first line: lead, banner, word, count, unit, tail.
  TextBox Text11 = StyleField("\x8B\xA1'\x95");
  TextBox Text6 = StyleField(kBanner, 0, false);
  TextBox Text7 = StyleField(": idle :", 0, true, 2);
  TextBox Text24 = StyleField("0", 0, false);
  TextBox Text8 = StyleField("/mins");
  TextBox Text20 = StyleField("\x8B");
  // The second line: lead, word, reason, tail.
  TextBox Text12 = StyleField("\x8B\xA1\xCC\x9B");
  TextBox Text9 = StyleField("reason:");
  TextBox Text10 = StyleField("reason goes here", 0, false, 2);
  TextBox Text21 = StyleField("\x8B");
  // The third line: lead, file, percentage and its sign, minutes left and
  // their unit, tail.
  TextBox Text13 = StyleField(" \x8B\xCC\xA1");
  TextBox Text15 = StyleField("file goes here", 0, false, 2);
  TextBox Text16 = StyleField("0", 0, false);
  TextBox Text17 = StyleField("%");
  TextBox Text18 = StyleField("0", 0, false);
  TextBox Text19 = StyleField("ml");
  TextBox Text22 = StyleField("\x8B");
  Label Label1{TextControl("afont:")};
  Label Label2{TextControl("font:")};
  Label Label7{TextControl("end font:")};
  Label Label3{TextControl("begin color:")};
  Label Label4{TextControl("font color:")};
  Label Label5{TextControl("end color:")};
  Label Label6{TextControl(":")};
  Label Label8{TextControl("save and exit")};
  Label Label9{TextControl("scroll test")};
  Label Label10{TextControl("cancel")};
  Line Line2{120, 960, 5580, 960};
  Line Line1{120, 1800, 5580, 1800};

  bool loaded = false;
  Hwnd hwnd = 0;  // the window, where the platform makes one
  std::unique_ptr<ShapedWindow> window;
  std::unique_ptr<PictureBox> Picture1;  // the background and outline
  Grab grab;                             // where the drag took hold
  std::function<void()> OnFirstTouch;
  // Whoever reads the style touches the window first.
  void Touch() const {
    if (!loaded && OnFirstTouch) OnFirstTouch();
  }
};

class Program {
 public:
  // Makes the forms and wires them to their handlers (shell/wiring.cpp).
  explicit Program(Platform& platform);
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  // The start: the splash, the member's settings, the two lines into the
  // room, then the tray entry.
  void Start();
  // The popup's item named name clicked, as the member would (nothing
  // happens for a disabled item, a separator or a submenu's head); false
  // when the popup has no such item.
  bool ClickMenu(const std::string& name);

  // A control's value by its name ("Form2.Text5"), as `show` prints it;
  // false when no control has that name.
  bool Show(const std::string& name, std::string& value) const;

  Platform& platform;
  Form1 form1;
  Form2 form2;
  Form3 form3;
  Form4 form4;
  Form5 form5;
  // The timers that only read the client's windows sleep through it.
  WindowWatch watch;

 private:
  // What `show` can read, by name.
  void AddControls();
  void AddPlayerControls();
  std::map<std::string, std::function<std::string()>> controls_;
};

}  // namespace v2
