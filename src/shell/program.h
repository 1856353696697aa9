#pragma once
// The program's state is its forms: their controls hold every live value.
// One Program owns them all and every handler receives it.
#include <functional>
#include <map>
#include <string>

#include "idle/reason_list.h"
#include "platform/chat_scanner.h"
#include "platform/controls.h"
#include "platform/platform.h"

namespace v2 {

// Hidden: the chat scanners.
struct Form1 {
  explicit Form1(Platform& p);
  ChatScanner Chat1;
  ChatScanner Chat2;
  // The name and the message of the last `im` line that had a comma.
  std::string IMTarget, IMBody;
};

// Hidden: the board of small values (Text5 is the member's handle) and the
// popup menu, whose check marks are the live settings.
struct Form2 {
  Form2();
  TextBox Text1, Text2, Text3, Text4, Text5, Text6;
  Label Label1{TextControl("0")};
  MenuItem chatsendtime, chatsendtrans, chatsendreasons, randomize, interval,
      imsoff, ghostingon, imson, ghostingoff, autoup, immachine, cchat_on,
      cchat_off, reconaol, enterpr, enterjap, continueul, continuedl, imzoff,
      ghoztingon, hidebuddy, user, idleon, idleoff;
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

  // Starts as the program starts on Windows (so far: the stores are read
  // into the live objects, and the scanners start as they say).
  void Start();

  // A control's value by its name ("Form2.Text5"), as `show` prints it;
  // false when no control has that name.
  bool Show(const std::string& name, std::string& value) const;

  Platform& platform;
  Form1 form1;
  Form2 form2;
  Form3 form3;
  Form4 form4;

 private:
  std::map<std::string, std::function<std::string()>> controls_;
};

}  // namespace v2
