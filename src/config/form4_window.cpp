// Form4 as it was drawn: a shaped window of 5700 by 3240 twips over its
// picture, the fields standing side by side like the three lines they
// style, the labels naming them, two ruled lines and three labels that act
// as buttons. Places in twips.
#include "config/style_window.h"
#include "core/picture_form.h"
#include "core/pictures.h"
#include "core/program.h"

namespace v2 {
namespace {

constexpr int kFieldHeight = 285;
constexpr int kLabelHeight = 195;

struct FieldAt {
  TextBox Form4::*field;
  int left, top, width;
};

// In the order of the window: fonts, colours, then the three lines.
const FieldAt kFieldsAt[] = {
    {&Form4::Text1, 1080, 1080, 975},   {&Form4::Text2, 2520, 1080, 975},
    {&Form4::Text23, 4320, 1080, 975},  {&Form4::Text3, 1440, 1440, 735},
    {&Form4::Text4, 3000, 1440, 735},   {&Form4::Text5, 4560, 1440, 735},
    {&Form4::Text11, 600, 1920, 615},   {&Form4::Text6, 1200, 1920, 1335},
    {&Form4::Text7, 2520, 1920, 1335},  {&Form4::Text24, 3840, 1920, 255},
    {&Form4::Text8, 4080, 1920, 615},   {&Form4::Text20, 4680, 1920, 615},
    {&Form4::Text12, 600, 2280, 615},   {&Form4::Text9, 1200, 2280, 855},
    {&Form4::Text10, 2040, 2280, 2655}, {&Form4::Text21, 4680, 2280, 615},
    {&Form4::Text13, 600, 2640, 615},   {&Form4::Text15, 1200, 2640, 2415},
    {&Form4::Text16, 3600, 2640, 255},  {&Form4::Text17, 3840, 2640, 255},
    {&Form4::Text18, 4200, 2640, 255},  {&Form4::Text19, 4440, 2640, 255},
    {&Form4::Text22, 4680, 2640, 615},
};

struct LabelAt {
  Label Form4::*label;
  int left, top, width;
  void (*Click)(Program&);
};

// Each label as wide as the room before the next thing on its row.
const LabelAt kLabelsAt[] = {
    {&Form4::Label1, 600, 1080, 480, nullptr},
    {&Form4::Label2, 2160, 1080, 360, nullptr},
    {&Form4::Label7, 3600, 1080, 720, nullptr},
    {&Form4::Label3, 600, 1440, 840, nullptr},
    {&Form4::Label4, 2280, 1440, 720, nullptr},
    {&Form4::Label5, 3840, 1440, 720, nullptr},
    {&Form4::Label6, 4080, 2640, 120, nullptr},
    {&Form4::Label8, 1680, 3000, 945, Form4_Label8_Click},
    {&Form4::Label9, 2640, 3000, 705, Form4_Label9_Click},
    {&Form4::Label10, 3360, 3000, 600, Form4_Label10_Click},
};

}  // namespace

void CreateForm4Window(Program& prog) {
  Form4& f = prog.form4;
  UiToolkit& ui = prog.platform.ui();
  if (!CreatePictureForm(ui, f, "vantrel2 custom settings", 5700, 3240,
                         Form4Bmp(), 6000, 3750)) {
    return;
  }
  ui.AddLine(f.hwnd, f.Line2);
  ui.AddLine(f.hwnd, f.Line1);
  for (const FieldAt& at : kFieldsAt) {
    ui.AddTextBox(f.hwnd, f.*at.field,
                  {at.left, at.top, at.width, kFieldHeight}, nullptr);
  }
  for (const LabelAt& at : kLabelsAt) {
    std::function<void()> click;
    if (at.Click) click = [&prog, c = at.Click] { c(prog); };
    ui.AddLabel(f.hwnd, f.*at.label, {at.left, at.top, at.width, kLabelHeight},
                std::move(click));
  }
  // The window opens in the middle of the screen the first time.
  if (f.window) {
    const Screen screen = f.window->screen();
    f.window->SetLeft((screen.Width - f.window->Width()) / 2);
    f.window->SetTop((screen.Height - f.window->Height()) / 2);
  }
}

}  // namespace v2
