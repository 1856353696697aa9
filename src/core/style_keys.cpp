// The style's keys in settings.dat and Form4's fields by their names.
#include "core/style_keys.h"

#include "core/program.h"
#include "core/settings.h"

namespace v2 {
namespace {

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

}  // namespace v2
