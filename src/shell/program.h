#pragma once
// The program's state is its forms: their controls hold every live value.
// One Program owns them all and every handler receives it.
#include <cstdint>
#include <functional>
#include <map>
#include <string>

#include "idle/reason_list.h"
#include "platform/chat_scanner.h"
#include "platform/controls.h"
#include "platform/platform.h"

namespace v2 {

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
  Timer Timer1;                    // the idle minute, while a session runs
  Timer Timer2;                    // the end of a track
  std::int16_t ReasonIndex = 0;    // the reason drawn on the last tick
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
  MenuItem chatsendtime, chatsendtrans, chatsendreasons, randomize, interval,
      imsoff, ghostingon, imson, ghostingoff, autoup, immachine, cchat_on,
      cchat_off, reconaol, enterpr, enterjap, continueul, continuedl, imzoff,
      ghoztingon, hidebuddy, user, idleon, idleoff;
  // The rest of the popup: its root, heads, actions and separators.
  MenuItem menu, blahblah, sep41, sep0, idleconfigure, sep8, sep42, complex,
      sep1, reason, sep2, buildreas, sep3, sep4, sep43, before, after,
      buildtran, chatsendstatus, custom, brag, sep21, instmsgs, imon, imoff,
      ghosting, ghoston, ghostoff, sep26, roomenter, cchat, sep16, sep17, exit;
  // Every item by its name.
  MenuItem* Item(const std::string& name);
};

// The splash, shown while the program starts.
struct Form5 {
  Hwnd hwnd = 0;  // the window, where the platform makes one
  std::unique_ptr<ShapedWindow> window;
  std::unique_ptr<PictureBox> Picture1;
};

// The style fields, live even while the window is hidden. They start at the
// values a line has when nothing is stored.
struct Form4 {
  TextBox Text1{TextControl("arial narrow")};  // lead font
  TextBox Text2{TextControl("arial narrow")};  // body font
  TextBox Text3{TextControl("ff8000")};        // lead colour
  TextBox Text4{TextControl("c0c0c0")};        // body colour
  TextBox Text5{TextControl("ff8000")};        // end colour
  TextBox Text7{TextControl(": idle :")};
  TextBox Text8{TextControl("/mins")};
  TextBox Text9{TextControl("reason:")};
  TextBox Text11{TextControl("\x8B\xA1'\x95")};     // lead of main
  TextBox Text12{TextControl("\x8B\xA1\xCC\x9B")};  // lead of second, stat
  TextBox Text13{TextControl(" \x8B\xCC\xA1")};     // lead of third, test
  TextBox Text17{TextControl("%")};
  TextBox Text19{TextControl("ml")};
  TextBox Text20, Text21, Text22;               // tails
  TextBox Text23{TextControl("arial narrow")};  // end font
};

// The banner word of every announcement.
inline constexpr const char* kBanner = "vantrel\xB2";

class Program {
 public:
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

 private:
  void AddPlayerControls();
  std::map<std::string, std::function<std::string()>> controls_;
};

}  // namespace v2
