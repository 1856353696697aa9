#pragma once
// The words of script lines, read the same way where a line is understood
// (script.cpp) and where it is played (script_play.cpp).
#include <string>

#include "aolsim/aol_client.h"

namespace v2 {

// "word rest": true when line is word alone or word, a blank and rest.
bool Take(const std::string& line, const std::string& word, std::string& rest);

// Seconds: digits and a decimal point, cut to kMaxWaitSeconds.
bool ParseSeconds(const std::string& text, double& seconds);

// A count of things: digits only, short enough to be one.
bool TakeCount(const std::string& word, int& n);

// "NAME PERCENT MINUTES" of download and upload: NAME is all before the last
// two words, blanks and all, and not empty; the numbers are digits only, and
// short enough to be counts.
bool TakeTransfer(const std::string& rest, std::string& name, int& percent,
                  int& minutes);

// "uploads N" or "downloads N" of queue: which list, and how many.
bool TakeQueue(const std::string& rest, bool& uploads, int& n);

// The longest a sign-on can be made to take: what the client's timers hold.
inline constexpr double kMaxSignOnSeconds = 2000000;

// "X Y" of pointer: two counts of pixels.
bool TakePoint(const std::string& rest, int& x, int& y);

// FAULT of `at` and `after`: hang SECONDS, close client, room NAME or dialog.
bool TakeFaultKind(const std::string& what, aolsim::AolClient::Fault& fault);

// "MOMENT FAULT" of `at`: reply, return, popup or keyword.
bool TakeFault(const std::string& rest, aolsim::AolClient::Moment& at,
               aolsim::AolClient::Fault& fault);

// "SECONDS WHAT" of `after`, SECONDS at most an hour.
bool TakeAhead(const std::string& rest, int& ms, std::string& what);

// "SECONDS FAULT" of `after`.
bool TakeTimedFault(const std::string& rest, int& ms,
                    aolsim::AolClient::Fault& fault);

// "SECONDS LINE" of `after`: LINE any command but after, hold, start and
// restart, in UTF-8 as the script has it.
bool TakeTimedLine(const std::string& rest, int& ms, std::string& later);

// "KEY = VALUE" of store and setting: KEY all before the first " = " (not
// empty), VALUE all after it; a line that ends in " =" holds the empty
// VALUE.
bool TakeKeyValue(const std::string& rest, std::string& key,
                  std::string& value);

// "FIRST | SECOND" of retitle and the transfer texts: split at the first
// " | ".
void TakePair(const std::string& rest, std::string& first, std::string& second);

}  // namespace v2
