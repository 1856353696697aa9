#include "config/style_window.h"

#include "config/settings.h"
#include "host/host_windows.h"
#include "interpreter/styled_line.h"
#include "shell/program.h"
#include "shell/shaped_windows.h"

namespace v2 {
namespace {

// How long a cancel lets the reloaded fields stand before it writes them.
constexpr double kCancelPauseSeconds = 0.5;

const std::pair<const char*, TextBox Form4::*> kFields[] = {
    {"Text1", &Form4::Text1},   {"Text2", &Form4::Text2},
    {"Text3", &Form4::Text3},   {"Text4", &Form4::Text4},
    {"Text5", &Form4::Text5},   {"Text6", &Form4::Text6},
    {"Text7", &Form4::Text7},   {"Text8", &Form4::Text8},
    {"Text9", &Form4::Text9},   {"Text10", &Form4::Text10},
    {"Text11", &Form4::Text11}, {"Text12", &Form4::Text12},
    {"Text13", &Form4::Text13}, {"Text15", &Form4::Text15},
    {"Text16", &Form4::Text16}, {"Text17", &Form4::Text17},
    {"Text18", &Form4::Text18}, {"Text19", &Form4::Text19},
    {"Text20", &Form4::Text20}, {"Text21", &Form4::Text21},
    {"Text22", &Form4::Text22}, {"Text23", &Form4::Text23},
    {"Text24", &Form4::Text24},
};

}  // namespace

const std::array<StyleKey, 17>& StyleKeys() {
  static const std::array<StyleKey, 17> kKeys = {{
      {"afont", &Form4::Text1, "arial narrow"},
      {"font", &Form4::Text2, "arial narrow"},
      {"efont", &Form4::Text23, "arial narrow"},
      {"acolor", &Form4::Text3, "ff8000"},
      {"bcolor", &Form4::Text4, "c0c0c0"},
      {"ccolor", &Form4::Text5, "ff8000"},
      {"ascii1", &Form4::Text11, "\x8B\xA1'\x95"},
      {"ascii2", &Form4::Text12, "\x8B\xA1\xCC\x9B"},
      {"ascii3", &Form4::Text13, " \x8B\xCC\xA1"},
      {"eascii1", &Form4::Text20, nullptr},
      {"eascii2", &Form4::Text21, nullptr},
      {"eascii3", &Form4::Text22, nullptr},
      {"mid", &Form4::Text7, ": idle :"},
      {"min", &Form4::Text8, "/mins"},
      {"reasons", &Form4::Text9, "reason:"},
      {"per", &Form4::Text17, "%"},
      {"ml", &Form4::Text19, "ml"},
  }};
  return kKeys;
}

void ReadStyleKeys(Program& prog) {
  Platform& p = prog.platform;
  const std::string file = SettingsFile(p);
  for (const StyleKey& k : StyleKeys()) {
    TextControl& field = (prog.form4.*k.field).Text;
    field.Set(IniRead(p, kIniSection, k.key, file));
    // The field is asked, not the read: on Windows it is the real edit.
    if (k.fallback && field.Get().empty()) field.Set(k.fallback);
  }
}

void WriteStyleKeys(Program& prog) {
  Platform& p = prog.platform;
  const std::string file = SettingsFile(p);
  for (const StyleKey& k : StyleKeys()) {
    IniWrite(p, kIniSection, k.key, (prog.form4.*k.field).Text.Get(), file);
  }
}

const std::array<const char*, 23>& Form4FieldNames() {
  static const std::array<const char*, 23> kNames = [] {
    std::array<const char*, 23> names{};
    for (std::size_t i = 0; i < names.size(); ++i) names[i] = kFields[i].first;
    return names;
  }();
  return kNames;
}

TextBox* Form4Field(Form4& form, std::string_view name) {
  for (const auto& [field_name, member] : kFields) {
    if (name == field_name) return &(form.*member);
  }
  return nullptr;
}

void EnsureForm4(Program& prog) {
  if (!prog.form4.loaded) Form4_Load(prog);
}

void Form4_Load(Program& prog) {
  Form4& f = prog.form4;
  f.loaded = true;
  CreateForm4Window(prog);
  if (f.window) {
    StayOnTop(*f.window);
    if (f.Picture1) ShapeForm(*f.window, *f.Picture1);
  }
  ReadStyleKeys(prog);
}

void ShowForm4(Program& prog) {
  EnsureForm4(prog);
  if (prog.form4.window) ShowShaped(*prog.form4.window);
}

namespace {

void SlideAwayForm4(Program& prog) {
  if (prog.form4.window) SlideAway(*prog.form4.window, prog.platform.loop);
}

}  // namespace

void Form4_Label8_Click(Program& prog) {
  WriteStyleKeys(prog);
  SlideAwayForm4(prog);
}

void Form4_Label10_Click(Program& prog) {
  // The member's edits go: every field back to what the file holds, and
  // what it now holds written, fallbacks included.
  ReadStyleKeys(prog);
  Pause(prog.platform, kCancelPauseSeconds);
  WriteStyleKeys(prog);
  SlideAwayForm4(prog);
}

void Form4_Label9_Click(Program& prog) {
  // The three kinds of line, from the fields as they stand now.
  Platform& p = prog.platform;
  const Form4& f = prog.form4;
  ChatSend(p, StyledLine(f, Pair::kMain,
                         std::string(kBanner) + " " + f.Text7.Text.Get() +
                             " 0" + f.Text8.Text.Get()));
  ChatSend(p, StyledLine(f, Pair::kSecond,
                         f.Text9.Text.Get() + " testing custom settings"));
  ChatSend(p, StyledLineTight(f, Pair::kTest,
                              "file: file transfer here \xB7 0" +
                                  f.Text17.Text.Get() + " : 0" +
                                  f.Text19.Text.Get()));
}

}  // namespace v2
