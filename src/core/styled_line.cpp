#include "core/styled_line.h"

#include "core/program.h"
#include "host/host_windows.h"

namespace v2 {
namespace {

const TextBox& Lead(const Form4& f, Pair pair) {
  switch (pair) {
    case Pair::kMain:
      return f.Text11;
    case Pair::kSecond:
    case Pair::kStat:
      return f.Text12;
    case Pair::kThird:
    case Pair::kTest:
      break;
  }
  return f.Text13;
}

const TextBox& Tail(const Form4& f, Pair pair) {
  switch (pair) {
    case Pair::kMain:
    case Pair::kStat:
      return f.Text20;
    case Pair::kSecond:
    case Pair::kThird:
      return f.Text21;
    case Pair::kTest:
      break;
  }
  return f.Text22;
}

std::string Compose(const Form4& f, Pair pair, std::string_view middle,
                    bool tight) {
  // Every field is read now, so a value typed and not saved counts.
  f.Touch();
  std::string line = "<font face=\"";
  line += f.Text1.Text.Get();
  line += "\" color=#";
  line += f.Text3.Text.Get();
  line += ">";
  line += Lead(f, pair).Text.Get();
  line += " <font face=\"";
  line += f.Text2.Text.Get();
  line += "\" color=#";
  line += f.Text4.Text.Get();
  line += ">";
  line += middle;
  line += tight ? "<font face=\"" : " <font face=\"";
  line += f.Text23.Text.Get();
  line += "\" color=#";
  line += f.Text5.Text.Get();
  line += ">";
  line += Tail(f, pair).Text.Get();
  return line;
}

}  // namespace

std::string StyledLine(const Form4& style, Pair pair, std::string_view middle) {
  return Compose(style, pair, middle, false);
}

std::string StyledLineTight(const Form4& style, Pair pair,
                            std::string_view middle) {
  return Compose(style, pair, middle, true);
}

void Reply(Program& prog, const std::string& middle) {
  ChatSend(prog.platform, StyledLine(prog.form4, Pair::kMain, middle));
}

}  // namespace v2
