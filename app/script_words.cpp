// Reading the words of script lines.
#include "app/script_words.h"

#include <algorithm>
#include <cstdlib>

#include "app/script.h"
#include "platform/text.h"

namespace v2 {

// "word rest": true when line is word alone or word, a blank and rest.
bool Take(const std::string& line, const std::string& word, std::string& rest) {
  if (line == word) {
    rest.clear();
    return true;
  }
  if (line.compare(0, word.size() + 1, word + " ") == 0) {
    rest = line.substr(word.size() + 1);
    return true;
  }
  return false;
}

bool ParseSeconds(const std::string& text, double& seconds) {
  if (text.empty() ||
      text.find_first_not_of("0123456789.") != std::string::npos) {
    return false;
  }
  char* end = nullptr;
  seconds = std::min(std::strtod(text.c_str(), &end), kMaxWaitSeconds);
  return end && *end == '\0';
}

// A count of things: digits only, short enough to be one.
bool TakeCount(const std::string& word, int& n) {
  if (word.empty() || word.size() > 9 ||
      word.find_first_not_of("0123456789") != std::string::npos) {
    return false;
  }
  n = std::atoi(word.c_str());
  return true;
}

// "NAME PERCENT MINUTES" of download and upload: NAME is all before the last
// two words, blanks and all, and not empty; the numbers are digits only, and
// short enough to be counts.
bool TakeTransfer(const std::string& rest, std::string& name, int& percent,
                  int& minutes) {
  auto last = rest.rfind(' ');
  if (last == std::string::npos || last == 0) return false;
  auto middle = rest.rfind(' ', last - 1);
  if (middle == std::string::npos || middle == 0) return false;
  name = rest.substr(0, middle);
  return TakeCount(rest.substr(middle + 1, last - middle - 1), percent) &&
         TakeCount(rest.substr(last + 1), minutes);
}

// "uploads N" or "downloads N" of queue: which list, and how many.
bool TakeQueue(const std::string& rest, bool& uploads, int& n) {
  std::string count;
  if (Take(rest, "uploads", count)) {
    uploads = true;
  } else if (Take(rest, "downloads", count)) {
    uploads = false;
  } else {
    return false;
  }
  return TakeCount(count, n);
}

// The longest a sign-on can be made to take: what the client's timers hold.

// "X Y" of pointer: two counts of pixels.
bool TakePoint(const std::string& rest, int& x, int& y) {
  auto blank = rest.find(' ');
  if (blank == std::string::npos) return false;
  return TakeCount(rest.substr(0, blank), x) &&
         TakeCount(rest.substr(blank + 1), y);
}

// FAULT of `at` and `after`: hang SECONDS, close client, room NAME or dialog.
bool TakeFaultKind(const std::string& what, aolsim::AolClient::Fault& fault) {
  using Kind = aolsim::AolClient::Fault::Kind;
  std::string arg;
  double seconds = 0;
  if (Take(what, "hang", arg)) {
    if (!ParseSeconds(arg, seconds) || seconds > kMaxHangSeconds) return false;
    fault = {Kind::kHang, static_cast<int>(seconds * 1000.0 + 0.5), {}};
  } else if (what == "close client") {
    fault = {Kind::kQuit, 0, {}};
  } else if (Take(what, "room", arg) && !arg.empty()) {
    fault = {Kind::kRoom, 0, arg};
  } else if (what == "dialog") {
    fault = {Kind::kDialog, 0, {}};
  } else {
    return false;
  }
  return true;
}

// "MOMENT FAULT" of `at`: reply, return, popup or keyword.
bool TakeFault(const std::string& rest, aolsim::AolClient::Moment& at,
               aolsim::AolClient::Fault& fault) {
  std::string what;
  if (Take(rest, "reply", what)) {
    at = aolsim::AolClient::Moment::kReply;
  } else if (Take(rest, "return", what)) {
    at = aolsim::AolClient::Moment::kReturn;
  } else if (Take(rest, "popup", what)) {
    at = aolsim::AolClient::Moment::kPopup;
  } else if (Take(rest, "keyword", what)) {
    at = aolsim::AolClient::Moment::kKeyword;
  } else {
    return false;
  }
  return TakeFaultKind(what, fault);
}

// "SECONDS WHAT" of `after`, SECONDS at most an hour.
bool TakeAhead(const std::string& rest, int& ms, std::string& what) {
  const auto blank = rest.find(' ');
  double seconds = 0;
  if (blank == std::string::npos ||
      !ParseSeconds(rest.substr(0, blank), seconds) ||
      seconds > kMaxHangSeconds) {
    return false;
  }
  ms = static_cast<int>(seconds * 1000.0 + 0.5);
  what = rest.substr(blank + 1);
  return true;
}

// "SECONDS FAULT" of `after`.
bool TakeTimedFault(const std::string& rest, int& ms,
                    aolsim::AolClient::Fault& fault) {
  std::string what;
  return TakeAhead(rest, ms, what) && TakeFaultKind(what, fault);
}

// "SECONDS LINE" of `after`: LINE one of the client's own commands (what
// the member or others do through it), in UTF-8 as the script has it.
bool TakeTimedLine(const std::string& rest, int& ms, std::string& later) {
  std::string what;
  if (!TakeAhead(rest, ms, what)) return false;
  later = Cp1252ToUtf8(what);
  // One step ahead only: an `after` in it would nest without end; the
  // program's start and end are the script's own.
  using Kind = ScriptCommand::Kind;
  const Kind kind = ParseScriptLine(later).kind;
  return kind != Kind::kNotUnderstood && kind != Kind::kNothing &&
         kind != Kind::kAfter && kind != Kind::kHold && kind != Kind::kStart &&
         kind != Kind::kRestart && later.rfind("after ", 0) != 0;
}

bool TakeKeyValue(const std::string& rest, std::string& key,
                  std::string& value) {
  const auto eq = rest.find(" = ");
  if (eq != std::string::npos) {
    key = rest.substr(0, eq);
    value = rest.substr(eq + 3);
  } else if (rest.size() > 2 && rest.compare(rest.size() - 2, 2, " =") == 0) {
    key = rest.substr(0, rest.size() - 2);
    value.clear();
  } else {
    return false;
  }
  return !key.empty();
}

void TakePair(const std::string& rest, std::string& first,
              std::string& second) {
  const auto bar = rest.find(" | ");
  first = rest.substr(0, bar);
  second = bar == std::string::npos ? std::string() : rest.substr(bar + 3);
}

}  // namespace v2
